#include <QComboBox>

#include "app/angle_dial.h"
#include "app/edit_batch.h"
#include "app/pages/page_lists.h"
#include "app/pages/page_makers.h"
#include "effects/twist_effect.h"

namespace {

class TeskTwistEffectPropertyPage final : public TeskEffectPropertyPage {
  public:
    TeskTwistEffectPropertyPage(TeskTwistEffect& effect, const TeskPageContext& context,
                                QWidget* parent)
        : TeskEffectPropertyPage(effect, context, TeskTwistEffect::kPropertiesName,
                                 "::/Text/TwistEffectDialog.txt", parent),
          effect_(effect) {
        AddObjectSlot(0, "Twist Object Properties", "&Change...");
        angle_ = new TeskAngleDial;
        style_ = TeskMakeIndexList({"Continuous", "Pulse"});
        AddSetting("&Twist Angle", angle_);
        AddSetting("&Style:", style_);
        AddGridControl(effect);
        AddLightingControl(effect);
        Start();
    }

  private:
    void LoadControls() override {
        angle_->SetAngle(effect_.GetTwistAngle());
        TeskShowCode(*style_, effect_.GetTwistStyle());
    }

    void ApplyControls(TeskEditBatch& batch) override {
        TeskTwistEffect& e = effect_;
        batch.Set(e, &TeskTwistEffect::SetTwistAngle, angle_->GetAngle(), e.GetTwistAngle(),
                  TeskTwistEffect::kTwistAngleName);
        batch.Set(e, &TeskTwistEffect::SetTwistStyle, TeskShownCode(*style_, e.GetTwistStyle()),
                  e.GetTwistStyle(), TeskTwistEffect::kTwistStyleName);
    }

    TeskTwistEffect& effect_;
    TeskAngleDial* angle_;
    QComboBox* style_;
};

}  // namespace

TeskPagePtr TeskMakePage(TeskTwistEffect& effect, const TeskPageContext& context, QWidget* parent) {
    return std::make_unique<TeskTwistEffectPropertyPage>(effect, context, parent);
}
