#include <QComboBox>

#include "app/edit_batch.h"
#include "app/pages/page_lists.h"
#include "app/pages/page_makers.h"
#include "app/slider_field.h"
#include "effects/explode_effect.h"

namespace {

class TeskExplodeEffectPropertyPage final : public TeskEffectPropertyPage {
  public:
    TeskExplodeEffectPropertyPage(TeskExplodeEffect& effect, const TeskPageContext& context,
                                  QWidget* parent)
        : TeskEffectPropertyPage(effect, context, TeskExplodeEffect::kPropertiesName,
                                 "::/Text/ExplodeEffectDialog.txt", parent),
          effect_(effect) {
        AddObjectSlot(0, "Explode Object Properties", "&Change...");
        const auto& items = TeskExplodeEffect::kStyleItems;
        style_ = TeskMakeIndexList({items[0], items[1], items[2], items[3]});
        spread_ = new TeskSliderField(-300, 300, "Reverse", "Outwards");
        spin_ = new TeskSliderField(0, 1000, "None", "Lots");
        swirl_ = new TeskSliderField(-1000, 1000, "Left", "Right");
        randomness_ = new TeskSliderField(0, 200, "None", "Lots");
        AddSetting("&Style:", style_);
        AddSetting("S&pread:", spread_);
        AddSetting("Sp&in:", spin_);
        AddSetting("S&wirl:", swirl_);
        AddSetting("&Randomness:", randomness_);
        AddGridControl(effect);
        AddLightingControl(effect);
        Start();
    }

  private:
    void LoadControls() override {
        style_->setCurrentIndex(effect_.GetStyleItem());
        spread_->SetValue(effect_.GetSpread());
        spin_->SetValue(effect_.GetSpin());
        swirl_->SetValue(effect_.GetSwirl());
        randomness_->SetValue(effect_.GetRandomness());
    }

    void ApplyStyle(TeskEditBatch& batch) {
        const int item = style_->currentIndex();
        if (item < 0 || item == effect_.GetStyleItem())
            return;
        // Items 2 and 3 implode, items 1 and 3 fly inwards. A stored code the
        // list shows the same way is not rewritten.
        const bool implode = item >= 2;
        const bool inwards = item % 2 == 1;
        if (implode != (effect_.GetExplodeType() == TeskExplodeEffect::kImplode)) {
            batch.Note(TeskExplodeEffect::kTypeName);
            effect_.SetExplodeType(
                implode ? TeskExplodeEffect::kImplode : TeskExplodeEffect::kExplode,
                batch.GetTransaction());
        }
        if (inwards != (effect_.GetInwards() != 0)) {
            batch.Note(TeskExplodeEffect::kInwardsName);
            effect_.SetInwards(inwards ? 1 : 0, batch.GetTransaction());
        }
    }

    void ApplyControls(TeskEditBatch& batch) override {
        TeskExplodeEffect& e = effect_;
        ApplyStyle(batch);
        batch.Set(e, &TeskExplodeEffect::SetSpread, spread_->GetValue(), e.GetSpread(),
                  TeskExplodeEffect::kSpreadName);
        batch.Set(e, &TeskExplodeEffect::SetSpin, spin_->GetValue(), e.GetSpin(),
                  TeskExplodeEffect::kSpinName);
        batch.Set(e, &TeskExplodeEffect::SetSwirl, swirl_->GetValue(), e.GetSwirl(),
                  TeskExplodeEffect::kSwirlName);
        batch.Set(e, &TeskExplodeEffect::SetRandomness, randomness_->GetValue(), e.GetRandomness(),
                  TeskExplodeEffect::kRandomnessName);
    }

    TeskExplodeEffect& effect_;
    QComboBox* style_;
    TeskSliderField* spread_;
    TeskSliderField* spin_;
    TeskSliderField* swirl_;
    TeskSliderField* randomness_;
};

}  // namespace

TeskPagePtr TeskMakePage(TeskExplodeEffect& effect, const TeskPageContext& context,
                         QWidget* parent) {
    return std::make_unique<TeskExplodeEffectPropertyPage>(effect, context, parent);
}
