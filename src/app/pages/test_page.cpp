#include <QComboBox>
#include <QLabel>

#include "app/edit_batch.h"
#include "app/pages/page_lists.h"
#include "app/pages/page_makers.h"
#include "app/slider_field.h"
#include "effects/test_effect.h"

namespace {

class TeskTestEffectPropertyPage final : public TeskEffectPropertyPage {
  public:
    TeskTestEffectPropertyPage(TeskTestEffect& effect, const TeskPageContext& context,
                               QWidget* parent)
        : TeskEffectPropertyPage(effect, context, TeskTestEffect::kPropertiesName,
                                 "::/TestEffectDialog.txt", parent),
          effect_(effect) {
        AddObjectSlot(0, "Test Effect Start Object Properties", "&Edit...");
        AddObjectSlot(1, "Test Effect End Object Properties", "E&dit...");
        auto* note = new QLabel(QString::fromUtf8(TeskTestEffect::kExplanation));
        note->setWordWrap(true);
        type_ = TeskMakeIndexList({"Explode", "Sphere", "CurlUp", "Cube", "AlphaBlend", "Twist"});
        parameter1_ = new TeskSliderField(0, 100, "0", "100");
        parameter2_ = new TeskSliderField(0, 100, "0", "100");
        AddSetting(note);
        AddSetting("&Choose Test Effect:", type_);
        AddSetting("Parameter&1", parameter1_);
        AddSetting("Parameter&2", parameter2_);
        AddGridControl(effect);
        AddLightingControl(effect);
        Start();
    }

  private:
    void LoadControls() override {
        TeskShowCode(*type_, effect_.GetTestType());
        parameter1_->SetValue(effect_.GetParameter1());
        parameter2_->SetValue(effect_.GetParameter2());
    }

    void ApplyControls(TeskEditBatch& batch) override {
        TeskTestEffect& e = effect_;
        batch.Set(e, &TeskTestEffect::SetTestType, TeskShownCode(*type_, e.GetTestType()),
                  e.GetTestType(), TeskTestEffect::kTestTypeName);
        batch.Set(e, &TeskTestEffect::SetParameter1, parameter1_->GetValue(), e.GetParameter1(),
                  TeskTestEffect::kParameter1Name);
        batch.Set(e, &TeskTestEffect::SetParameter2, parameter2_->GetValue(), e.GetParameter2(),
                  TeskTestEffect::kParameter2Name);
    }

    TeskTestEffect& effect_;
    QComboBox* type_;
    TeskSliderField* parameter1_;
    TeskSliderField* parameter2_;
};

}  // namespace

TeskPagePtr TeskMakePage(TeskTestEffect& effect, const TeskPageContext& context, QWidget* parent) {
    return std::make_unique<TeskTestEffectPropertyPage>(effect, context, parent);
}
