#include <QCheckBox>
#include <QComboBox>

#include "app/angle_dial.h"
#include "app/edit_batch.h"
#include "app/pages/page_lists.h"
#include "app/pages/page_makers.h"
#include "app/slider_field.h"
#include "effects/curl_up_effect.h"

namespace {

using Style = TeskCurlUpEffect::StyleBits;

class TeskCurlUpEffectPropertyPage final : public TeskEffectPropertyPage {
  public:
    TeskCurlUpEffectPropertyPage(TeskCurlUpEffect& effect, const TeskPageContext& context,
                                 QWidget* parent)
        : TeskEffectPropertyPage(effect, context, TeskCurlUpEffect::kPropertiesName,
                                 "::/Text/CurlUpEffectDialog.txt", parent),
          effect_(effect) {
        AddObjectSlot(0, "Curl Up Object Properties", "&Change...");
        direction_ = new TeskAngleDial;
        curlStyle_ = TeskMakeCodeList(
            {{"Tear Away Curl", Style::kTearAway}, {"Roll Up Curl", Style::kRollUp}});
        underneath_ = new QCheckBox(QStringLiteral("Curl &Underneath"));
        reverse_ = new QCheckBox(QStringLiteral("&Reverse Curl"));
        radius_ = new TeskSliderField(10, 50, "Small", "Large");
        AddSetting("&Direction:", direction_);
        AddSetting("Curl &Style:", curlStyle_);
        AddSetting(underneath_);
        AddSetting(reverse_);
        AddSetting("R&adius of Curl:", radius_);
        AddGridControl(effect);
        AddLightingControl(effect);
        Start();
    }

  private:
    void LoadControls() override {
        const uint32_t style = effect_.GetStyle();
        direction_->SetAngle(effect_.GetDirection());
        TeskShowCode(*curlStyle_, static_cast<int>(style & Style::kCurlStyleMask));
        underneath_->setChecked(style & Style::kUnderneath);
        reverse_->setChecked(!(style & Style::kForwards));
        radius_->SetValue(effect_.GetRadius());
    }

    /// The style the three controls make up; bits they do not show are kept.
    uint32_t ShownStyle() const {
        const uint32_t stored = effect_.GetStyle();
        const auto curl = static_cast<uint32_t>(
            TeskShownCode(*curlStyle_, static_cast<int>(stored & Style::kCurlStyleMask)));
        uint32_t style =
            stored & ~uint32_t{Style::kCurlStyleMask | Style::kUnderneath | Style::kForwards};
        style |= curl & Style::kCurlStyleMask;
        if (underneath_->isChecked())
            style |= Style::kUnderneath;
        if (!reverse_->isChecked())
            style |= Style::kForwards;
        return style;
    }

    void ApplyControls(TeskEditBatch& batch) override {
        TeskCurlUpEffect& e = effect_;
        batch.Set(e, &TeskCurlUpEffect::SetStyle, ShownStyle(), e.GetStyle(),
                  TeskCurlUpEffect::kStyleName);
        batch.Set(e, &TeskCurlUpEffect::SetDirection, direction_->GetAngle(), e.GetDirection(),
                  TeskCurlUpEffect::kDirectionName);
        batch.Set(e, &TeskCurlUpEffect::SetRadius, radius_->GetValue(), e.GetRadius(),
                  TeskCurlUpEffect::kRadiusName);
    }

    TeskCurlUpEffect& effect_;
    TeskAngleDial* direction_;
    QComboBox* curlStyle_;
    QCheckBox* underneath_;
    QCheckBox* reverse_;
    TeskSliderField* radius_;
};

}  // namespace

TeskPagePtr TeskMakePage(TeskCurlUpEffect& effect, const TeskPageContext& context,
                         QWidget* parent) {
    return std::make_unique<TeskCurlUpEffectPropertyPage>(effect, context, parent);
}
