#include <QComboBox>
#include <QSettings>

#include "app/edit_batch.h"
#include "app/pages/page_lists.h"
#include "app/pages/page_makers.h"
#include "app/slider_field.h"
#include "effects/spiral_effect.h"

namespace {

// The spiral page waits as long as the user's settings say before applying.
constexpr const char* kSpiralSettingsKey = "Spiral Effect Settings/Apply Delay";

class TeskSpiralEffectPropertyPage final : public TeskEffectPropertyPage {
  public:
    TeskSpiralEffectPropertyPage(TeskSpiralEffect& effect, const TeskPageContext& context,
                                 QWidget* parent)
        : TeskEffectPropertyPage(effect, context, TeskSpiralEffect::kPropertiesName,
                                 "::/Text/SpiralEffectDialog.txt", parent),
          effect_(effect) {
        if (context.settings)
            SetApplyDelay(context.settings
                              ->value(QString::fromUtf8(kSpiralSettingsKey),
                                      TeskDelayedApply::kDefaultDelayMs)
                              .toInt());
        AddObjectSlot(0, "Spiral Object Properties", "&Change...");
        style_ = TeskMakeIndexList(
            {"Washing Machine", "Screw Up", "Un-Screw Up", "Spin In", "Spin Out"});
        speed_ = new TeskSliderField(0, 100, "Slow", "Fast");
        AddSetting("&Style:", style_);
        AddSetting("S&pin Speed:", speed_);
        AddGridControl(effect);
        Start();
    }

  private:
    void LoadControls() override {
        TeskShowCode(*style_, effect_.GetSpiralStyle());
        speed_->SetValue(effect_.GetSpiralSpeed());
    }

    void ApplyControls(TeskEditBatch& batch) override {
        TeskSpiralEffect& e = effect_;
        batch.Set(e, &TeskSpiralEffect::SetSpiralStyle, TeskShownCode(*style_, e.GetSpiralStyle()),
                  e.GetSpiralStyle(), TeskSpiralEffect::kSpiralStyleName);
        batch.Set(e, &TeskSpiralEffect::SetSpiralSpeed, speed_->GetValue(), e.GetSpiralSpeed(),
                  TeskSpiralEffect::kSpiralSpeedName);
    }

    TeskSpiralEffect& effect_;
    QComboBox* style_;
    TeskSliderField* speed_;
};

}  // namespace

TeskPagePtr TeskMakePage(TeskSpiralEffect& effect, const TeskPageContext& context,
                         QWidget* parent) {
    return std::make_unique<TeskSpiralEffectPropertyPage>(effect, context, parent);
}
