#pragma once
// The main window: the effect's name and timing strip, the property area on
// the left, the live preview on the right with a movable divider between
// them, and the menus whose commands the application carries out. It
// observes the document and shows every change, undo and redo at once, and
// hears from the resource manager when a picture file changes on disk.
#include <QMainWindow>

#include "document/file_observer.h"
#include "platform/zo_string.h"

class QAction;
class QMenu;
class QSplitter;
class TeskEditorApp;
class TeskEffectBar;
class TeskPreviewPane;
class ZoResource;

class TeskEditorDlg final : public QMainWindow, public TeskFileObserver {
    Q_OBJECT
  public:
    /// The size the window opens with when no placement is stored.
    static constexpr int kDesignedWidth = 800;
    static constexpr int kDesignedHeight = 500;

    /// Attaches to the application's document and restores the stored
    /// placement.
    explicit TeskEditorDlg(TeskEditorApp& app, QWidget* parent = nullptr);
    ~TeskEditorDlg() override;

    TeskPreviewPane* GetPreviewPane() const noexcept { return preview_; }
    QSplitter* GetDivider() const noexcept { return divider_; }

    /// Applies the time fields to the selected effect as "Edit Effect Time"
    /// when they differ from its timing.
    void ApplyTimeFields();
    /// Replaces the selected effect by a new one of registry type `index`
    /// that copies its timing and objects, as "Change Effect".
    void OnEffectChosen(int index);
    /// The Undo and Redo items as the history stands.
    void UpdateUndoItems();

    void SaveWindowSettings();
    void RestoreWindowSettings();

  protected:
    void OnUpdate(ZoEditor::ZoUpdateHintList& hints) override;
    void OnTeskFileAttach() override;
    void OnTeskFileDetach() override;
    void closeEvent(QCloseEvent* event) override;

  private:
    // Menus (editor_menus.cpp).
    void CreateMenus();
    void CreateFileMenu();
    void CreateEditMenu();
    void CreateEffectsMenu();
    void CreateHelpMenu();
    void UpdateRecentFileMenu();
    QAction* AddCommand(QMenu* menu, const char* text, const char* name,
                        void (TeskEditorDlg::*handler)());
    void OnMovieProperties();
    void OnLinkURL();
    void OnFitToObject();
    /// The object dialog on the movie-wide foreground or background object;
    /// OK stores its object as one undoable change.
    void EditMovieObject(bool foreground);
    void OnAbout();

    void ShowDocument();
    /// The resource a batch of hints reports changed on disk, if any.
    static const ZoResource* ChangedPicture(const ZoEditor::ZoUpdateHintList& hints);
    /// Builds the preview again and redraws every object showing the
    /// picture file at `path`.
    void PictureChanged(const ZoString& path);
    void UpdateTitle();
    void OnEffectHelp();

    TeskEditorApp& app_;
    TeskEffectBar* effectBar_;
    QWidget* propertyArea_;
    TeskPreviewPane* preview_;
    QSplitter* divider_;
    QMenu* fileMenu_ = nullptr;
    QAction* recentPlaceholder_ = nullptr;
    QAction* undo_ = nullptr;
    QAction* redo_ = nullptr;
};
