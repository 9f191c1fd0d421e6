#pragma once
// The editor's per-user settings, kept in QSettings("Kestrane", "Vimbo")
// under the sections the editor has always used, so a reset clears them all.
#include <QString>
#include <filesystem>

class QSettings;

/// Sections and values.
inline constexpr const char* kTeskFileDialogsSection = "FileDialogs";
inline constexpr const char* kTeskOpenFolderValue = "Open";
inline constexpr const char* kTeskSaveAsFolderValue = "SaveAs";
inline constexpr const char* kTeskMainWindowSection = "Main Window Settings";

/// The folder a file dialog last used ("Open" or "SaveAs"), or the user's
/// documents folder when none is stored.
std::filesystem::path TeskReadDialogFolder(QSettings& settings, const char* value);
void TeskWriteDialogFolder(QSettings& settings, const char* value,
                           const std::filesystem::path& folder);

/// Where a window was when it last closed. Coordinates are pixels.
struct TeskWindowPlacement {
    /// Marks a value that was never stored.
    static constexpr int kNotStored = -10000;

    int x = kNotStored;
    int y = kNotStored;
    int width = kNotStored;
    int height = kNotStored;
    int divider = kNotStored;

    /// True when all four of the position and size were stored.
    bool HasGeometry() const noexcept;
};

TeskWindowPlacement TeskReadWindowPlacement(QSettings& settings, const char* section);
void TeskWriteWindowPlacement(QSettings& settings, const char* section,
                              const TeskWindowPlacement& placement);

/// Forgets every setting of the application (held Alt+Ctrl at start).
void TeskResetSettings(QSettings& settings);

/// A value name in the form the settings use ("Window x pos").
QString TeskSettingKey(const char* section, const char* value);
