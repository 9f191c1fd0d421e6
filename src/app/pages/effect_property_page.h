#pragma once
// An effect's property page: the controls of the effect's own settings, its
// objects and, for mesh effects, the grid and lighting panels. Controls are
// loaded from the effect's state when the page opens and after every change
// to the document (so undo and redo show at once). Edits are applied after a
// pause as one undoable step, named after the one setting that changed or
// after the page when several did; object buttons and reverse buttons act at
// once with steps of their own.
#include <QWidget>
#include <functional>
#include <string_view>

#include "app/delayed_apply.h"
#include "document/file_observer.h"
#include "platform/zo_auto_ptr.h"
#include "platform/zo_string.h"

namespace ZoEditor {
class ZoEditTransaction;
}

class QAbstractButton;
class QBoxLayout;
class QFormLayout;
class QSettings;
class TeskEditBatch;
class TeskEffect;
class TeskFile;
class TeskHelpViewer;
class TeskGridCombo;
class TeskLightingControl;
class TeskObject;
class TeskObjectSlot;
class TeskUserPrompts;
class Tesk3DEffect;
class TeskGridEffect;

/// What a page needs of the editor around it.
struct TeskPageContext {
    TeskFile& document;
    /// Runs the object dialog.
    TeskUserPrompts& prompts;
    /// Application settings (the spiral page's pause, dialog placements).
    QSettings* settings = nullptr;
    TeskHelpViewer* help = nullptr;
};

class TeskEffectPropertyPage : public QWidget, public TeskFileObserver {
    Q_OBJECT
  public:
    ~TeskEffectPropertyPage() override;

    TeskEffect& GetEffect() const noexcept { return effect_; }
    /// The name of a step that changes several settings at once.
    std::string_view GetMultiChangeName() const noexcept { return multiChangeName_; }

    /// The pause between the last edit and its application (tests shorten it).
    void SetApplyDelay(int ms) { apply_.SetDelay(ms); }
    int GetApplyDelay() const { return apply_.GetDelay(); }
    bool IsApplyPending() const { return apply_.IsPending(); }
    /// Applies what the controls show now, as one step.
    void Apply();
    /// Sets every control from the effect's state.
    void Reload();
    /// True while the page edits `effect`, which is still in its document.
    bool IsShowing(const TeskEffect* effect) const noexcept;

  protected:
    /// `contextHelpFile` holds the What's This texts of the page's controls.
    TeskEffectPropertyPage(TeskEffect& effect, const TeskPageContext& context,
                           std::string_view multiChangeName, const char* contextHelpFile,
                           QWidget* parent);

    /// Ends a derived page's construction: loads the controls and starts
    /// following the document.
    void Start();

    /// Sets the page's own controls from the effect's state.
    virtual void LoadControls() = 0;
    /// Sets, in `batch`, every setting whose control differs from the state.
    virtual void ApplyControls(TeskEditBatch& batch) = 0;

    /// Makes edits of `control` (slider, list, check box, number field, angle
    /// dial, radio button) restart the pause; number fields apply at once when
    /// they are left.
    void Watch(QWidget* control);
    /// Runs `change` at once in its own step named `name` (buttons).
    void ChangeAtOnce(std::string_view name,
                      const std::function<void(ZoEditor::ZoEditTransaction*)>& change);

    /// An object preview with its change button, for object slot `slot`,
    /// opening the object dialog titled `title`. The object is stored in a
    /// step named `stepName`.
    TeskObjectSlot* AddObjectSlot(int slot, const char* title, const char* buttonText,
                                  std::string_view stepName = {});
    /// An object slot made of `source` and `store` (the cube's faces, or
    /// a button alone without `withPreview`).
    TeskObjectSlot* MakeObjectSlot(
        std::function<TeskObject*()> source,
        std::function<void(ZoAutoPtr<TeskObject>&, ZoEditor::ZoEditTransaction*)> store,
        const char* title, const char* buttonText, std::string_view stepName, bool withPreview);
    /// The lighting panel of a 3D effect.
    TeskLightingControl* AddLightingControl(Tesk3DEffect& effect);
    /// The grid panel of a grid effect.
    TeskGridCombo* AddGridControl(TeskGridEffect& effect);

    /// Adds a watched control to the settings, after a label `caption`
    /// whose mnemonic focuses it (none for check boxes and groups).
    void AddSetting(const char* caption, QWidget* control);
    /// Adds a watched control across the whole settings area.
    void AddSetting(QWidget* control) { AddSetting(nullptr, control); }
    /// The row of object previews, for pages that add more than slots.
    QBoxLayout* ObjectRow() const noexcept { return objectRow_; }

    const TeskPageContext& Context() const noexcept { return context_; }

    void OnUpdate(ZoEditor::ZoUpdateHintList& hints) override;
    void OnTeskFileDetach() override;

  private:
    /// The effect is still one of the document's (not replaced or gone).
    bool IsEffectLive() const noexcept;
    void ControlEdited();

    TeskEffect& effect_;
    TeskPageContext context_;
    ZoString multiChangeName_;
    const char* contextHelpFile_;
    TeskDelayedApply apply_;
    bool loading_ = false;
    // Set when the whole document was replaced (New, Open): the effect is
    // gone and the page waits to be closed.
    bool orphaned_ = false;
    QBoxLayout* objectRow_;
    QFormLayout* settings_;
    QBoxLayout* panelRow_;
    std::vector<TeskObjectSlot*> objectSlots_;
    std::vector<TeskGridCombo*> gridControls_;
    std::vector<TeskLightingControl*> lightingControls_;
};

/// The page of `effect`'s type, loaded and following `context.document`;
/// null for a type without one.
std::unique_ptr<TeskEffectPropertyPage> TeskCreatePropertyPage(TeskEffect& effect,
                                                               const TeskPageContext& context,
                                                               QWidget* parent = nullptr);

/// Shows the page of `effect` (none for null) in `area`, unless the page
/// there already shows it; the old page is closed.
void TeskShowPropertyPage(QWidget& area, TeskEffect* effect, const TeskPageContext& context);
