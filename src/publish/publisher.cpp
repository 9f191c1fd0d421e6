#include "publish/publisher.h"

#include <system_error>

#include "document/file.h"
#include "platform/atomic_file.h"
#include "platform/zo_exception.h"
#include "publish/html_page.h"
#include "publish/movie_compiler.h"

namespace {

constexpr const char* kTwoFilesQuestion =
    "Files '%s' and '%s' already exist. Do you want to overwrite them?";
constexpr const char* kOneFileQuestion = "File '%s' already exists. Do you want to overwrite it?";
constexpr const char* kHtmlError = "Error creating HTML file.";
constexpr const char* kTemporaryHtmlError = "Error creating temporary HTML file.";
constexpr const char* kRunError = "Error running published file.";

bool Exists(const std::filesystem::path& path) {
    std::error_code ignored;
    return std::filesystem::exists(path, ignored);
}

}  // namespace

ZoString TeskOfferedPublishLocation(TeskFile& file, const std::filesystem::path& homeFolder) {
    const ZoString& stored = file.GetPublishSettings().GetLocation();
    if (!stored.empty())
        return stored;
    const ZoString& project = file.GetFilename();
    if (project.empty())
        return (homeFolder / "Untitled" / "Untitled.swf").string();
    // The project file always ends in its four-character extension.
    return project.substr(0, project.size() < 4 ? 0 : project.size() - 4) + ".swf";
}

ZoString TeskCompletePublishLocation(const ZoString& location) {
    if (std::filesystem::path(location).has_extension())
        return location;
    return location + ".swf";
}

TeskPublisher::TeskPublisher(TeskFile& file, TeskPublishUi& ui, std::filesystem::path tempFolder)
    : file_(file), ui_(ui), tempFolder_(std::move(tempFolder)) {}

bool TeskPublisher::Publish() {
    const std::filesystem::path swfPath(file_.GetPublishSettings().GetLocation());
    if (file_.GetPublishSettings().GetConfirmOverwrite() && !ConfirmOverwrite(swfPath))
        return false;
    std::error_code ignored;
    if (swfPath.has_parent_path())
        std::filesystem::create_directories(swfPath.parent_path(), ignored);
    try {
        TeskWriteMovie(file_, swfPath);
    } catch (const ZoException& e) {
        ui_.MovieNotWritten(e.what());
    }
    bool htmlWritten = false;
    std::filesystem::path htmlPath;
    if (file_.GetPublishSettings().embedHTML) {
        htmlWritten = WriteHTML(false, htmlPath);
        if (!htmlWritten)
            ui_.ShowMessage(kHtmlError);
    }
    if (file_.GetPublishSettings().testImmediately)
        OpenResult(swfPath, htmlWritten, htmlPath);
    return true;
}

bool TeskPublisher::ConfirmOverwrite(const std::filesystem::path& swfPath) {
    std::vector<std::filesystem::path> existing;
    if (Exists(swfPath))
        existing.push_back(swfPath);
    if (file_.GetPublishSettings().embedHTML) {
        const std::filesystem::path htmlPath = TeskHtmlPathFor(swfPath);
        if (Exists(htmlPath))
            existing.push_back(htmlPath);
    }
    if (existing.empty())
        return true;
    const ZoString question =
        existing.size() == 2 ? ZoFormat(kTwoFilesQuestion, existing[0].c_str(), existing[1].c_str())
                             : ZoFormat(kOneFileQuestion, existing[0].c_str());
    const TeskPublishUi::OverwriteAnswer answer = ui_.AskOverwrite(question, existing);
    // The box's state is kept whichever button closed it.
    file_.GetPublishSettings().SetConfirmOverwrite(!answer.doNotAskAgain);
    return answer.overwrite;
}

void TeskPublisher::OpenResult(const std::filesystem::path& swfPath, bool htmlWritten,
                               const std::filesystem::path& htmlPath) {
    if (htmlWritten) {
        if (!ui_.Open(htmlPath))
            ui_.ShowMessage(kRunError);
        return;
    }
    // Without a player for .swf files the movie is shown through a page.
    if (ui_.Open(swfPath))
        return;
    std::filesystem::path testPath;
    if (!WriteHTML(true, testPath)) {
        ui_.ShowMessage(kTemporaryHtmlError);
        return;
    }
    if (!ui_.Open(testPath))
        ui_.ShowMessage(kRunError);
}

bool TeskPublisher::WriteHTML(bool temporary, std::filesystem::path& htmlPath) {
    const std::filesystem::path swfPath(file_.GetPublishSettings().GetLocation());
    TeskHtmlPageValues values;
    values.title = TeskHtmlTitle(file_.GetFilename());
    std::error_code ignored;
    values.swfReference = temporary
                              ? "file://" + std::filesystem::absolute(swfPath, ignored).string()
                              : swfPath.filename().string();
    values.backgroundColour = file_.GetBackgroundColour();
    values.width = file_.GetWidth();
    values.height = file_.GetHeight();
    values.disableRightClick = file_.GetDisableRightClick();
    const std::filesystem::path path =
        temporary ? tempFolder_ / "Vimbo Test.html" : TeskHtmlPathFor(swfPath);
    try {
        ZoWriteFileAtomically(path, TeskMakeHtmlPage(values));
    } catch (const ZoException&) {
        return false;
    }
    htmlPath = path;
    return true;
}
