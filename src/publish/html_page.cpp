#include "publish/html_page.h"

extern const std::string_view kTeskPublishTemplate;

namespace {

void ReplaceAll(ZoString& text, std::string_view placeholder, std::string_view value) {
    for (size_t at = text.find(placeholder); at != ZoString::npos;
         at = text.find(placeholder, at + value.size())) {
        text.replace(at, placeholder.size(), value);
    }
}

bool IsAsciiLetter(char c) noexcept {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}
bool IsAsciiDigit(char c) noexcept {
    return c >= '0' && c <= '9';
}

}  // namespace

std::string_view TeskHtmlTemplate() {
    return kTeskPublishTemplate;
}

ZoString TeskMakeHtmlPage(const TeskHtmlPageValues& values) {
    ZoString page(TeskHtmlTemplate());
    // The movie name is made from the title, so it must be replaced first:
    // "insert_title" is not a part of "insert_movie_name", but a title could
    // contain another placeholder's text.
    ReplaceAll(page, "insert_movie_name", TeskConvertToLegalIdentifier(values.title));
    ReplaceAll(page, "insert_colour",
               ZoFormat("%02x%02x%02x", ZoGetRed(values.backgroundColour),
                        ZoGetGreen(values.backgroundColour), ZoGetBlue(values.backgroundColour)));
    ReplaceAll(page, "insert_menu", values.disableRightClick ? "false" : "true");
    ReplaceAll(page, "insert_width", ZoFormat("%d", values.width));
    ReplaceAll(page, "insert_height", ZoFormat("%d", values.height));
    ReplaceAll(page, "insert_swf_file", values.swfReference);
    ReplaceAll(page, "insert_title", values.title);
    return page;
}

ZoString TeskConvertToLegalIdentifier(std::string_view title) {
    ZoString identifier;
    for (char c : title) {
        identifier += IsAsciiLetter(c) || IsAsciiDigit(c) ? c : '_';
    }
    if (identifier.empty() || IsAsciiDigit(identifier.front()))
        identifier.insert(0, 1, '_');
    return identifier;
}

ZoString TeskHtmlTitle(std::string_view projectFilename) {
    if (projectFilename.empty())
        return "Untitled";
    return std::filesystem::path(projectFilename).stem().string();
}

std::filesystem::path TeskHtmlPathFor(const std::filesystem::path& swfPath) {
    return std::filesystem::path(swfPath).replace_extension(".html");
}
