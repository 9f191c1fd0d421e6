#pragma once
// Help is a folder of HTML pages installed beside the program and shown in
// the browser. Topics keep the names the dialogs and effects give them
// ("::/html/Publishing/Publish.htm"); the pages are stored in lower case so
// that names differing only in case find the same page.
#include <filesystem>
#include <string_view>

/// Where the program finds the pages and samples it ships with.
struct TeskInstallFolders {
    std::filesystem::path help;
    std::filesystem::path samples;
};

/// The installed folders (`programFolder`/../share/vimbo/...), or those of
/// the source tree for a program run from its build folder.
TeskInstallFolders TeskLocateInstallFolders(const std::filesystem::path& programFolder);

/// The page of `topic` inside `helpFolder`.
std::filesystem::path TeskHelpTopicPage(const std::filesystem::path& helpFolder,
                                        std::string_view topic);

/// The pages behind Help > Contents, Index and Search.
inline constexpr std::string_view kTeskHelpContents = "::/index.html";
inline constexpr std::string_view kTeskHelpIndex = "::/topics.html";
inline constexpr std::string_view kTeskHelpSearch = "::/search.html";

class TeskUserPrompts;

/// Opens help pages in the browser.
class TeskHelpViewer {
  public:
    TeskHelpViewer(std::filesystem::path helpFolder, TeskUserPrompts& prompts)
        : helpFolder_(std::move(helpFolder)), prompts_(prompts) {}

    /// Shows the page of `topic`; a missing page does nothing.
    void ShowTopic(std::string_view topic);
    /// The file behind `topic` (which may not exist).
    std::filesystem::path PageOf(std::string_view topic) const {
        return TeskHelpTopicPage(helpFolder_, topic);
    }

  private:
    std::filesystem::path helpFolder_;
    TeskUserPrompts& prompts_;
};
