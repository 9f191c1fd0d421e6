#pragma once
// The application: the one document of the run, its recent files and
// settings, and the file, publish, help and support commands of the menu.
// Every question goes through TeskUserPrompts, so the commands run the same
// with a person at the screen and under test.
#include <QTimer>
#include <filesystem>
#include <vector>

#include "app/help_topics.h"
#include "app/recent_file_list.h"
#include "document/file.h"

class QSettings;
class TeskUserPrompts;

class TeskEditorApp {
  public:
    /// How often idle processing runs: each run checks one picture file for
    /// a change on disk, and a round over all of them starts at most once a
    /// second.
    static constexpr int kIdleMilliseconds = 100;

    /// Registers the effect types and makes the new document.
    TeskEditorApp(QSettings& settings, TeskUserPrompts& prompts, TeskInstallFolders folders);
    TeskEditorApp(const TeskEditorApp&) = delete;
    TeskEditorApp& operator=(const TeskEditorApp&) = delete;
    ~TeskEditorApp();

    TeskFile& GetDocument() noexcept { return document_; }
    QSettings& GetSettings() noexcept { return settings_; }
    TeskUserPrompts& GetPrompts() noexcept { return prompts_; }
    TeskHelpViewer& GetHelp() noexcept { return help_; }
    const TeskRecentFileList& GetRecentFiles() const noexcept { return recentFiles_; }

    /// Asks "Do you want to save your changes?" when there are unsaved
    /// changes; false when the user cancelled (or saving failed).
    bool SaveModified();

    void OnFileNew();
    void OnFileOpen();
    /// Loads `path` as the document; on failure shows why and keeps the
    /// current document.
    bool Open(const ZoString& path);
    bool OnFileSave();
    bool OnFileSaveAs();
    void OnOpenRecentFile(int index);

    /// Shows the publish dialog and publishes when it is accepted.
    void OnPublish();
    /// Publishes with the stored settings, or asks first when the movie has
    /// no location yet.
    void OnQuickPublish();
    /// Publishes with the document's settings; false when cancelled.
    bool Publish();

    /// The sample projects, sorted by name.
    std::vector<std::filesystem::path> GetSamples() const;
    /// Opens a sample as a new, untitled project.
    bool OpenSample(const std::filesystem::path& path);

    void OnContactSupport();

  private:
    QSettings& settings_;
    TeskUserPrompts& prompts_;
    TeskInstallFolders folders_;
    TeskHelpViewer help_;
    TeskRecentFileList recentFiles_;
    TeskFile document_;
    QTimer idle_;
};
