#include <QBoxLayout>
#include <QPushButton>

#include "app/edit_batch.h"
#include "app/pages/page_makers.h"
#include "app/pages/return_controls.h"
#include "effects/cross_fade_effect.h"

namespace {

class TeskCrossFadeEffectPropertyPage final : public TeskEffectPropertyPage {
  public:
    TeskCrossFadeEffectPropertyPage(TeskCrossFadeEffect& effect, const TeskPageContext& context,
                                    QWidget* parent)
        : TeskEffectPropertyPage(effect, context, TeskCrossFadeEffect::kPropertiesName,
                                 "::/Text/CrossFadeEffectDialog.txt", parent),
          effect_(effect) {
        AddObjectSlot(0, "Cross Fade Start Object Properties", "&Change...",
                      TeskCrossFadeEffect::kStartObjectName);
        AddObjectSlot(1, "Cross Fade End Object Properties", "C&hange...",
                      TeskCrossFadeEffect::kEndObjectName);
        auto* reverse = new QPushButton(QStringLiteral("&Reverse"));
        reverse->setToolTip(QStringLiteral("Swap the start and end objects"));
        ObjectRow()->insertWidget(1, reverse, 0, Qt::AlignVCenter);
        connect(reverse, &QPushButton::clicked, this, [this] {
            ChangeAtOnce(TeskCrossFadeEffect::kReverseName,
                         [this](ZoEditor::ZoEditTransaction* t) { effect_.Reverse(t); });
        });
        AddSetting(return_.GetCheckBox());
        AddSetting("Hold Time", return_.GetHoldField());
        Start();
    }

  private:
    void LoadControls() override {
        return_.Show(effect_.GetReturnToStart(), effect_.GetReturnHold());
    }

    void ApplyControls(TeskEditBatch& batch) override {
        TeskCrossFadeEffect& e = effect_;
        batch.Set(e, &TeskCrossFadeEffect::SetReturnToStart, return_.ShownReturn(),
                  e.GetReturnToStart(), TeskCrossFadeEffect::kReturnToStartName);
        batch.Set(e, &TeskCrossFadeEffect::SetReturnHold, return_.ShownHold(), e.GetReturnHold(),
                  TeskCrossFadeEffect::kReturnHoldName);
    }

    TeskCrossFadeEffect& effect_;
    TeskReturnControls return_;
};

}  // namespace

TeskPagePtr TeskMakePage(TeskCrossFadeEffect& effect, const TeskPageContext& context,
                         QWidget* parent) {
    return std::make_unique<TeskCrossFadeEffectPropertyPage>(effect, context, parent);
}
