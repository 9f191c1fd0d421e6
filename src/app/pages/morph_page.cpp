#include <QApplication>
#include <QHBoxLayout>
#include <QPushButton>

#include "app/edit_batch.h"
#include "app/morph_mesh_panel.h"
#include "app/object_slot.h"
#include "app/pages/page_makers.h"
#include "app/pages/return_controls.h"
#include "app/user_prompts.h"
#include "effects/morph_effect.h"
#include "geometry/edit_grid_triangulation.h"

namespace {

constexpr const char* kStartObjectName = "Edit start object";
constexpr const char* kEndObjectName = "Edit end object";

class TeskMorphEffectPropertyPage final : public TeskEffectPropertyPage {
  public:
    TeskMorphEffectPropertyPage(TeskMorphEffect& effect, const TeskPageContext& context,
                                QWidget* parent)
        : TeskEffectPropertyPage(effect, context, TeskMorphEffect::kPropertiesName,
                                 "::/Text/MorphEffectDialog.txt", parent),
          effect_(effect) {
        auto* meshes = new QVBoxLayout;
        meshes->addWidget(new TeskMorphMeshPanel(context.document, effect), 1);
        auto* buttons = new QHBoxLayout;
        buttons->addWidget(
            ObjectButton(0, "Morph Start Object Properties", "&Change...", kStartObjectName));
        auto* reverse = new QPushButton(QStringLiteral("Reverse"));
        reverse->setToolTip(QStringLiteral("Morph from the end object back to the start object"));
        buttons->addWidget(reverse);
        buttons->addWidget(
            ObjectButton(1, "Morph End Object Properties", "C&hange...", kEndObjectName));
        meshes->addLayout(buttons);
        ObjectRow()->addLayout(meshes, 1);
        connect(reverse, &QPushButton::clicked, this, &TeskMorphEffectPropertyPage::OnReverse);

        AddSetting(return_.GetCheckBox());
        AddSetting("Hold Time", return_.GetHoldField());
        Start();
    }

  private:
    QWidget* ObjectButton(int slot, const char* title, const char* text, const char* stepName) {
        TeskMorphEffect& effect = effect_;
        return MakeObjectSlot(
            [&effect, slot] { return effect.GetObject(slot); },
            [&effect, slot](ZoAutoPtr<TeskObject>& object, ZoEditor::ZoEditTransaction* t) {
                effect.SetObject(object, slot, t);
            },
            title, text, stepName, false);
    }

    void OnReverse() {
        // A developer's back door: with Shift, Ctrl and Alt held the grid is
        // saved as the header that the built-in preset is made from.
        constexpr Qt::KeyboardModifiers kExport =
            Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier;
        if ((QApplication::keyboardModifiers() & kExport) == kExport) {
            ExportGrid();
            return;
        }
        ChangeAtOnce(TeskMorphEffect::kReverseName,
                     [this](ZoEditor::ZoEditTransaction* t) { effect_.Reverse(t); });
    }

    void ExportGrid() {
        const TeskEditGridTriangulation* grid = effect_.GetEditGrid();
        if (!grid)
            return;
        TeskUserPrompts& prompts = Context().prompts;
        const auto path =
            prompts.AskSavePath("TeskMorphPreset.h", "C Headers (*.h);;All Files (*)", "h");
        if (path && !grid->ExportPresetHeader(*path))
            prompts.ShowMessage("The grid could not be written to '" + path->string() + "'.");
    }

    void LoadControls() override {
        return_.Show(effect_.GetReturnToStart(), effect_.GetReturnHoldTime());
    }

    void ApplyControls(TeskEditBatch& batch) override {
        TeskMorphEffect& e = effect_;
        batch.Set(e, &TeskMorphEffect::SetReturnToStart, return_.ShownReturn(),
                  e.GetReturnToStart(), TeskMorphEffect::kReturnToStartName);
        batch.Set(e, &TeskMorphEffect::SetReturnHoldTime, return_.ShownHold(),
                  e.GetReturnHoldTime(), TeskMorphEffect::kReturnHoldTimeName);
    }

    TeskMorphEffect& effect_;
    TeskReturnControls return_;
};

}  // namespace

TeskPagePtr TeskMakePage(TeskMorphEffect& effect, const TeskPageContext& context, QWidget* parent) {
    return std::make_unique<TeskMorphEffectPropertyPage>(effect, context, parent);
}
