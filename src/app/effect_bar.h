#pragma once
// The strip above the property and preview areas: the effect's name, the
// effect chooser, its duration and hold times in seconds, and its help.
#include <QWidget>

#include "effects/effect.h"

class QDoubleSpinBox;
class QLabel;
class TeskEffectChooserCombo;
class TeskFile;

/// The timing the time fields stand for, in milliseconds: the effect starts
/// at 0, a negative duration becomes 100 ms and a longer one 10000 ms, each
/// hold stays within 0 ... 99900 ms. Other fields are kept from `current`.
TeskEffect::Timing TeskTimingFromFields(const TeskEffect::Timing& current, int32_t durationMs,
                                        int32_t startHoldMs, int32_t finishHoldMs) noexcept;

class TeskEffectBar final : public QWidget {
    Q_OBJECT
  public:
    /// The chooser builds its samples in `document`.
    explicit TeskEffectBar(TeskFile& document, QWidget* parent = nullptr);

    /// Shows `effect`'s type and timing without reporting any edit.
    void ShowEffect(const TeskEffect& effect);
    /// The timing the fields hold, based on `current`.
    TeskEffect::Timing GetTiming(const TeskEffect::Timing& current) const;

  signals:
    /// A time field was edited (left, confirmed or stepped).
    void timingEdited();
    /// The user picked the effect type at this registry index.
    void effectChosen(int registryIndex);
    void helpRequested();

  private:
    QDoubleSpinBox* AddTimeField(const char* name, double maximumSeconds);

    QLabel* name_;
    TeskEffectChooserCombo* chooser_;
    QDoubleSpinBox* duration_;
    QDoubleSpinBox* startHold_;
    QDoubleSpinBox* finishHold_;
};
