#include <QComboBox>

#include "app/angle_dial.h"
#include "app/edit_batch.h"
#include "app/pages/page_lists.h"
#include "app/pages/page_makers.h"
#include "app/slider_field.h"
#include "effects/wave_effect.h"

namespace {

class TeskWaveEffectPropertyPage final : public TeskEffectPropertyPage {
  public:
    TeskWaveEffectPropertyPage(TeskWaveEffect& effect, const TeskPageContext& context,
                               QWidget* parent)
        : TeskEffectPropertyPage(effect, context, TeskWaveEffect::kPropertiesName,
                                 "::/Text/WaveEffectDialog.txt", parent),
          effect_(effect) {
        AddObjectSlot(0, "Wave Object Properties", "&Change...");
        direction_ = new TeskAngleDial;
        style_ = TeskMakeIndexList({"Continuous", "Pulse", "Rise & Fall"});
        wavelength_ = new TeskSliderField(10, 400, "Short", "Long");
        amplitude_ = new TeskSliderField(0, 1000, "Low", "High");
        AddSetting("&Direction:", direction_);
        AddSetting("&Style:", style_);
        AddSetting("&Wavelength:", wavelength_);
        AddSetting("&Amplitude:", amplitude_);
        AddGridControl(effect);
        AddLightingControl(effect);
        Start();
    }

  private:
    void LoadControls() override {
        direction_->SetAngle(effect_.GetDirection());
        TeskShowCode(*style_, effect_.GetWaveStyle());
        wavelength_->SetValue(effect_.GetWavelength());
        amplitude_->SetValue(effect_.GetAmplitude());
    }

    void ApplyControls(TeskEditBatch& batch) override {
        TeskWaveEffect& e = effect_;
        batch.Set(e, &TeskWaveEffect::SetWavelength, wavelength_->GetValue(), e.GetWavelength(),
                  TeskWaveEffect::kWavelengthName);
        batch.Set(e, &TeskWaveEffect::SetAmplitude, amplitude_->GetValue(), e.GetAmplitude(),
                  TeskWaveEffect::kAmplitudeName);
        batch.Set(e, &TeskWaveEffect::SetDirection, direction_->GetAngle(), e.GetDirection(),
                  TeskWaveEffect::kDirectionName);
        batch.Set(e, &TeskWaveEffect::SetWaveStyle, TeskShownCode(*style_, e.GetWaveStyle()),
                  e.GetWaveStyle(), TeskWaveEffect::kWaveStyleName);
    }

    TeskWaveEffect& effect_;
    TeskAngleDial* direction_;
    QComboBox* style_;
    TeskSliderField* wavelength_;
    TeskSliderField* amplitude_;
};

}  // namespace

TeskPagePtr TeskMakePage(TeskWaveEffect& effect, const TeskPageContext& context, QWidget* parent) {
    return std::make_unique<TeskWaveEffectPropertyPage>(effect, context, parent);
}
