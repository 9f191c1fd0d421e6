#include "app/pages/return_controls.h"

namespace {

constexpr int32_t kMaxHoldMs = 10000;

}  // namespace

TeskReturnControls::TeskReturnControls()
    : returnToStart_(new QCheckBox(QStringLiteral("&Return to start"))),
      hold_(new TeskTimeField(0, kMaxHoldMs)) {
    QObject::connect(returnToStart_, &QCheckBox::toggled, hold_, &QWidget::setEnabled);
}

void TeskReturnControls::Show(bool returnToStart, int32_t holdMs) {
    returnToStart_->setChecked(returnToStart);
    hold_->SetMilliseconds(holdMs);
    hold_->setEnabled(returnToStart);
}

bool TeskReturnControls::ShownReturn() const {
    return returnToStart_->isChecked();
}

int32_t TeskReturnControls::ShownHold() const {
    return hold_->GetMilliseconds();
}
