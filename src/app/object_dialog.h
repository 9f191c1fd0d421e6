#pragma once
// The object dialog: the user chooses what an object is (a picture, a
// gradient, text, a solid colour or nothing) and edits it on that kind's
// page while a preview shows the result. Each kind keeps a working copy of
// its own, so trying another kind and coming back loses nothing, and the
// caller's object is never touched: Cancel changes nothing, OK hands back
// the working copy of the chosen kind.
#include <QDialog>
#include <array>
#include <functional>
#include <string_view>

#include "objects/object.h"
#include "platform/zo_colour.h"

namespace ZoEditor {
class ZoEditTransaction;
}
class QAbstractButton;
class QLabel;
class QSettings;
class QStackedWidget;
class TeskEditorApp;
class TeskFile;
class TeskHelpViewer;
class TeskObjectPreview;

/// What the dialog needs of its surroundings.
struct TeskObjectDialogContext {
    /// The movie's size in pixels: the preview's shape and the text's page.
    ZoSize movieSize{182, 202};
    /// Shown behind objects, and new text stands out on it.
    COLORREF movieBackground = 0xFFFFFF;
    /// Keeps the window's placement between uses; none keeps nothing.
    QSettings* settings = nullptr;
    /// Opens the help topic of the chosen kind; none hides the Help button.
    TeskHelpViewer* help = nullptr;
};

/// The context for editing an object of `file` in `app`'s editor.
TeskObjectDialogContext TeskObjectContextFor(TeskEditorApp& app);

class TeskObjectDialog final : public QDialog {
    Q_OBJECT
  public:
    /// The registry section of the window's placement.
    static constexpr const char* kSettingsSection = "Object Window Settings";

    /// Opens on working copies: a clone of `object` (null for an empty
    /// holder) for its own kind, new default objects for the others.
    TeskObjectDialog(const TeskObject* object, const QString& title,
                     const TeskObjectDialogContext& context, QWidget* parent = nullptr);
    ~TeskObjectDialog() override;

    /// The kind code shown now; kTeskNoObject for none.
    int32_t GetCurrentKind() const noexcept { return currentKind_; }
    /// Shows the page of `kind` (the kind buttons call this).
    void SetKind(int32_t kind);
    /// The working copy of `kind`; null for kTeskNoObject.
    TeskObject* GetWorkingObject(int32_t kind) const noexcept;
    /// Moves the working copy of the current kind out; null for no object.
    ZoAutoPtr<TeskObject> TakeResult();

    /// Draws the preview again; every page calls it after a change.
    void ObjectChanged();
    /// The preview of the working copy shown.
    TeskObjectPreview& GetPreview() const noexcept { return *preview_; }

  protected:
    void done(int result) override;

  private:
    QWidget* MakeKindButtons();
    QWidget* PageFor(int32_t kind);
    void ShowHelp();
    void RestorePlacement();
    void SavePlacement() const;

    TeskObjectDialogContext context_;
    /// Indexed by kind code 0..5; the entries of codes 3 and 4 stay empty.
    std::array<ZoAutoPtr<TeskObject>, 6> working_;
    std::array<QWidget*, 6> pages_{};
    std::array<QAbstractButton*, 6> kindButtons_{};
    int32_t currentKind_ = kTeskNoObject;
    QStackedWidget* pageArea_;
    QLabel* note_;
    TeskObjectPreview* preview_;
};

/// Stores a changed object in its holder: the effect's or document's setter.
using TeskObjectStore =
    std::function<void(ZoAutoPtr<TeskObject>& object, ZoEditor::ZoEditTransaction* transaction)>;

/// Runs the dialog on `object` (not changed) through the application's
/// prompts. On OK, begins one transaction named `transactionName` on the
/// document's undo list, hands the new object (null for no object) to
/// `store` with it and commits: one history entry. Returns whether OK was
/// pressed.
bool TeskChangeObject(TeskEditorApp& app, QWidget* parent, const TeskObject* object,
                      const QString& title, std::string_view transactionName,
                      const TeskObjectStore& store);

/// The same for a document alone, with `run` showing the dialog modally
/// (true when accepted).
bool TeskChangeObject(TeskFile& file, const std::function<bool(QDialog&)>& run,
                      const TeskObjectDialogContext& context, QWidget* parent,
                      const TeskObject* object, const QString& title,
                      std::string_view transactionName, const TeskObjectStore& store);
