#pragma once
// Publishing: the movie at the chosen location, optionally its HTML page, and
// optionally opening the result. Questions and messages go through
// TeskPublishUi, which the editor answers with dialogs and the command line
// with flags and stderr.
#include <filesystem>
#include <vector>

#include "platform/zo_string.h"

class TeskFile;

/// What publishing asks or tells the person publishing.
class TeskPublishUi {
  public:
    struct OverwriteAnswer {
        bool overwrite = false;
        /// "Do not show this warning again" was ticked.
        bool doNotAskAgain = false;
    };

    virtual ~TeskPublishUi() = default;
    /// Asks `question` about `existing` (one or two files) with an overwrite
    /// and a cancel choice and the unticked "Do not show this warning again"
    /// box.
    virtual OverwriteAnswer AskOverwrite(const ZoString& question,
                                         const std::vector<std::filesystem::path>& existing) = 0;
    /// Shows `message` on its own (an error that does not stop publishing).
    virtual void ShowMessage(const ZoString& message) = 0;
    /// The movie could not be written; publishing goes on with the page
    /// and the test regardless, as the movie write is not verified.
    virtual void MovieNotWritten(const ZoString& reason) = 0;
    /// Opens `path` in the program the desktop associates with it; false
    /// when nothing could open it.
    virtual bool Open(const std::filesystem::path& path) = 0;
};

/// The location the publish dialog offers: the stored one, else the project
/// file with ".swf" in place of ".vmb", else "Untitled/Untitled.swf" in
/// `homeFolder`.
ZoString TeskOfferedPublishLocation(TeskFile& file, const std::filesystem::path& homeFolder);

/// A location as the dialog stores it: ".swf" appended when it has no extension.
ZoString TeskCompletePublishLocation(const ZoString& location);

/// Publishes `file` with its publish settings. `tempFolder` receives the
/// test page when the movie cannot be opened directly.
class TeskPublisher {
  public:
    TeskPublisher(TeskFile& file, TeskPublishUi& ui, std::filesystem::path tempFolder);

    /// Writes the movie (and page), then opens the result when asked to.
    /// False when the overwrite question was answered with cancel: nothing
    /// was written.
    bool Publish();

    /// Writes the published page beside the movie, or with `temporary` the
    /// test page that refers to the movie by a "file://" address; false when
    /// the file cannot be created. On success `htmlPath` is the page's path.
    bool WriteHTML(bool temporary, std::filesystem::path& htmlPath);

  private:
    /// The existing files publishing would replace; true when it may go on.
    bool ConfirmOverwrite(const std::filesystem::path& swfPath);
    void OpenResult(const std::filesystem::path& swfPath, bool htmlWritten,
                    const std::filesystem::path& htmlPath);

    TeskFile& file_;
    TeskPublishUi& ui_;
    std::filesystem::path tempFolder_;
};
