#pragma once
// Pictures of the main window for the documentation: the new document and
// one example project per effect type, each paused on the middle frame of
// its preview, so the same sources always give the same pictures. The
// object dialog is pictured once per kind of object, on an example's object.
#include <cstdint>
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

/// One picture of the object dialog: the kind it shows and the example
/// project whose first object of that kind it edits (none for no object).
struct TeskObjectShot {
    int32_t kind;
    std::filesystem::path project;
    std::filesystem::path picture;
};

/// A shot per kind, in the order of the dialog's buttons: "object-image.png",
/// "object-graduated-colour.png", "object-text.png", "object-solid-colour.png"
/// on the first example by file name holding such an object (a kind that no
/// example holds is left out), and "object-no-object.png" on an empty holder.
std::vector<TeskObjectShot> TeskPlanObjectScreenshots(const std::filesystem::path& examplesFolder);

/// Opens each shot's project in `app` (a new document for none), shows the
/// object dialog on the object and writes the dialog's picture into
/// `outFolder`. Returns the pictures written; throws ZoException when a
/// project does not open or no longer holds an object of the shot's kind.
std::vector<std::filesystem::path> TeskTakeObjectScreenshots(
    TeskEditorApp& app, const std::vector<TeskObjectShot>& shots,
    const std::filesystem::path& outFolder);
