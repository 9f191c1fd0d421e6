#include <QGroupBox>
#include <QRadioButton>
#include <QVBoxLayout>

#include "app/edit_batch.h"
#include "app/number_fields.h"
#include "app/pages/animation_path_combo.h"
#include "app/pages/page_makers.h"
#include "app/slider_field.h"
#include "effects/lens_effect.h"

namespace {

constexpr int32_t kTwipsPerPixel = 20;

class TeskLensEffectPropertyPage final : public TeskEffectPropertyPage {
  public:
    TeskLensEffectPropertyPage(TeskLensEffect& effect, const TeskPageContext& context,
                               QWidget* parent)
        : TeskEffectPropertyPage(effect, context, TeskLensEffect::kPropertiesName,
                                 "::/Text/LensEffectDialog.txt", parent),
          effect_(effect) {
        AddObjectSlot(0, "Lens Object Properties", "&Change...");
        radius_ = new TeskIntegerField(1, 1000);
        radius_->setSuffix(QStringLiteral(" px"));
        power_ = new TeskSliderField(-100, 100, "Reduce", "Magnify");
        path_ = new TeskAnimationPathCombo;
        auto* atEnd = new QGroupBox(QStringLiteral("At end of path"));
        reset_ = new QRadioButton(QStringLiteral("Reset to &beginning"));
        return_ = new QRadioButton(QStringLiteral("R&eturn to beginning"));
        auto* radios = new QVBoxLayout(atEnd);
        radios->addWidget(reset_);
        radios->addWidget(return_);
        AddSetting("Lens &Radius:", radius_);
        AddSetting("&Lens Power:", power_);
        AddSetting("Lens &Path:", path_);
        AddSetting(atEnd);
        AddGridControl(effect);
        Start();
    }

  private:
    void LoadControls() override {
        radius_->setValue(effect_.GetLensRadius() / kTwipsPerPixel);
        power_->SetValue(effect_.GetLensPower());
        path_->SetSelectedPath(effect_.GetPath());
        const bool returns = effect_.GetPathAtEnd() == TeskLensEffect::kReturnToBeginning;
        return_->setChecked(returns);
        reset_->setChecked(!returns);
    }

    void ApplyControls(TeskEditBatch& batch) override {
        TeskLensEffect& e = effect_;
        // A radius between whole pixels stays as it is until the field changes.
        if (radius_->value() != e.GetLensRadius() / kTwipsPerPixel) {
            batch.Note(TeskLensEffect::kLensRadiusName);
            e.SetLensRadius(radius_->value() * kTwipsPerPixel, batch.GetTransaction());
        }
        batch.Set(e, &TeskLensEffect::SetLensPower, power_->GetValue(), e.GetLensPower(),
                  TeskLensEffect::kLensPowerName);
        // A stored path that is no preset is kept until another is chosen.
        if (const std::optional<TeskAnimationPath> path = path_->GetSelectedPath())
            batch.Set(e, &TeskLensEffect::SetPath, *path, e.GetPath(), TeskLensEffect::kPathName);
        const bool returns = return_->isChecked();
        if (returns != (e.GetPathAtEnd() == TeskLensEffect::kReturnToBeginning)) {
            batch.Note(TeskLensEffect::kPathAtEndName);
            e.SetPathAtEnd(
                returns ? TeskLensEffect::kReturnToBeginning : TeskLensEffect::kResetToBeginning,
                batch.GetTransaction());
        }
    }

    TeskLensEffect& effect_;
    TeskIntegerField* radius_;
    TeskSliderField* power_;
    TeskAnimationPathCombo* path_;
    QRadioButton* reset_;
    QRadioButton* return_;
};

}  // namespace

TeskPagePtr TeskMakePage(TeskLensEffect& effect, const TeskPageContext& context, QWidget* parent) {
    return std::make_unique<TeskLensEffectPropertyPage>(effect, context, parent);
}
