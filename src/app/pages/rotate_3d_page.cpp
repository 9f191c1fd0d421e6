#include "app/angle_dial.h"
#include "app/edit_batch.h"
#include "app/pages/page_makers.h"
#include "effects/rotate_3d_effect.h"

namespace {

class TeskRotate3DEffectPropertyPage final : public TeskEffectPropertyPage {
  public:
    TeskRotate3DEffectPropertyPage(TeskRotate3DEffect& effect, const TeskPageContext& context,
                                   QWidget* parent)
        : TeskEffectPropertyPage(effect, context, TeskRotate3DEffect::kPropertiesName,
                                 "::/Text/Rotate3DEffectDialog.txt", parent),
          effect_(effect) {
        AddObjectSlot(0, "Rotate 3D Object Properties", "&Change...");
        axis_ = new TeskAngleDial;
        AddSetting("&Direction of Axis", axis_);
        AddGridControl(effect);
        AddLightingControl(effect);
        Start();
    }

  private:
    void LoadControls() override { axis_->SetAngle(effect_.GetAxisDirection()); }

    void ApplyControls(TeskEditBatch& batch) override {
        batch.Set(effect_, &TeskRotate3DEffect::SetAxisDirection, axis_->GetAngle(),
                  effect_.GetAxisDirection(), TeskRotate3DEffect::kAxisDirectionName);
    }

    TeskRotate3DEffect& effect_;
    TeskAngleDial* axis_;
};

}  // namespace

TeskPagePtr TeskMakePage(TeskRotate3DEffect& effect, const TeskPageContext& context,
                         QWidget* parent) {
    return std::make_unique<TeskRotate3DEffectPropertyPage>(effect, context, parent);
}
