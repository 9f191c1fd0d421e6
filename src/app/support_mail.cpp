#include "app/support_mail.h"

#include <QUrl>

namespace {

constexpr const char* kDashes = "----------------------------------------";
constexpr const char* kQuestionForm =
    "Name:\r\nQuestion: <Please enter your technical support question here>\r\n\r\n";

QByteArray Encode(std::string_view text) {
    return QUrl::toPercentEncoding(
        QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())));
}

}  // namespace

ZoString TeskVersionText() {
    return VIMBO_VERSION;
}

ZoString TeskBuildDateText() {
    // __DATE__ reads "Mmm dd yyyy" with a space-padded day.
    const std::string date = __DATE__;
    const int day = std::stoi(date.substr(4, 2));
    return ZoFormat("%d %s %s", day, date.substr(0, 3).c_str(), date.substr(7).c_str());
}

ZoString TeskBuildTypeText() {
#ifdef NDEBUG
    return "Release";
#else
    return "Debug";
#endif
}

ZoString TeskSystemInfoBlock(std::string_view operatingSystem) {
    return ZoFormat(
        "%s\r\nSystem Info\r\nVersion: %s\r\nBuild Date: %s\r\nBuild Type: %s\r\n"
        "Operating System: %.*s\r\n%s\r\n",
        kDashes, TeskVersionText().c_str(), TeskBuildDateText().c_str(),
        TeskBuildTypeText().c_str(), static_cast<int>(operatingSystem.size()),
        operatingSystem.data(), kDashes);
}

ZoString TeskSupportMailUrl(uint32_t reference, std::string_view systemInfo) {
    const ZoString subject = ZoFormat("Technical Support Question (%08X)", reference);
    const ZoString body = ZoString(kQuestionForm) + ZoString(systemInfo);
    return ZoFormat("mailto:%s?subject=%s&body=%s", kTeskSupportAddress,
                    Encode(subject).constData(), Encode(body).constData());
}
