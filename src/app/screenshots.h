#pragma once
// Pictures of the main window for the documentation: the new document and
// one example project per effect type, each paused on the middle frame of
// its preview, so the same sources always give the same pictures.
#include <filesystem>
#include <vector>

class TeskEditorApp;
class TeskEditorDlg;

/// One picture to take: the project to open (empty for a new document) and
/// the file name of its picture.
struct TeskScreenshotShot {
    std::filesystem::path project;
    std::filesystem::path picture;
};

/// "main-window.png" for a new document, then for each registered effect
/// type that some example uses, the first such example by file name,
/// pictured as "effect-<name>.png" ("effect-rotate-3d.png"). Examples that
/// fail to load are left out.
std::vector<TeskScreenshotShot> TeskPlanScreenshots(const std::filesystem::path& examplesFolder);

/// Opens each shot's project in `window`, waits for its preview, shows the
/// middle frame and writes the window's picture into `outFolder`. Returns
/// the pictures written; throws ZoException when a project does not open or
/// its preview does not arrive within a minute.
std::vector<std::filesystem::path> TeskTakeScreenshots(TeskEditorApp& app, TeskEditorDlg& window,
                                                       const std::vector<TeskScreenshotShot>& shots,
                                                       const std::filesystem::path& outFolder);
