#include <QBoxLayout>
#include <QCheckBox>
#include <QPushButton>

#include "app/edit_batch.h"
#include "app/number_fields.h"
#include "app/pages/page_makers.h"
#include "effects/cross_fade_effect.h"

namespace {

constexpr int32_t kMaxReturnHoldMs = 10000;

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
        returnToStart_ = new QCheckBox(QStringLiteral("&Return to start"));
        hold_ = new TeskTimeField(0, kMaxReturnHoldMs);
        AddSetting(returnToStart_);
        AddSetting("Hold Time", hold_);
        // The pause at full strength only exists on the way back.
        connect(returnToStart_, &QCheckBox::toggled, hold_, &QWidget::setEnabled);
        Start();
    }

  private:
    void LoadControls() override {
        returnToStart_->setChecked(effect_.GetReturnToStart());
        hold_->SetMilliseconds(effect_.GetReturnHold());
        hold_->setEnabled(effect_.GetReturnToStart());
    }

    void ApplyControls(TeskEditBatch& batch) override {
        TeskCrossFadeEffect& e = effect_;
        batch.Set(e, &TeskCrossFadeEffect::SetReturnToStart, returnToStart_->isChecked(),
                  e.GetReturnToStart(), TeskCrossFadeEffect::kReturnToStartName);
        batch.Set(e, &TeskCrossFadeEffect::SetReturnHold, hold_->GetMilliseconds(),
                  e.GetReturnHold(), TeskCrossFadeEffect::kReturnHoldName);
    }

    TeskCrossFadeEffect& effect_;
    QCheckBox* returnToStart_;
    TeskTimeField* hold_;
};

}  // namespace

TeskPagePtr TeskMakePage(TeskCrossFadeEffect& effect, const TeskPageContext& context,
                         QWidget* parent) {
    return std::make_unique<TeskCrossFadeEffectPropertyPage>(effect, context, parent);
}
