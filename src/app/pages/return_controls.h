#pragma once
// "Return to start" and the hold at the turning point, which only counts on
// the way back: the cross fade and the morph both offer the pair.
#include <QCheckBox>
#include <cstdint>

#include "app/number_fields.h"

class TeskReturnControls {
  public:
    /// Holds of 0 ... 10 seconds.
    TeskReturnControls();

    QCheckBox* GetCheckBox() const noexcept { return returnToStart_; }
    TeskTimeField* GetHoldField() const noexcept { return hold_; }

    void Show(bool returnToStart, int32_t holdMs);
    bool ShownReturn() const;
    int32_t ShownHold() const;

  private:
    QCheckBox* returnToStart_;
    TeskTimeField* hold_;
};
