#include "app/effect_bar.h"

#include <QDoubleSpinBox>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QMouseEvent>
#include <QPushButton>
#include <QSignalBlocker>
#include <algorithm>
#include <cmath>
#include <utility>

#include "app/effect_chooser.h"

namespace {

constexpr int32_t kMaxDurationMs = 10000;
constexpr int32_t kNegativeDurationMs = 100;
constexpr int32_t kMaxHoldMs = 99900;
/// The seconds a time field lets the user type, either way.
constexpr double kTypedLimitSeconds = 9999.99;

/// A time field in seconds whose spin buttons stay within 0 ... its
/// maximum, while typing may go beyond either end: the application of the
/// fields decides what a negative or too long time becomes. Steps taken
/// while an arrow (button or key) is held are reported once it is let go,
/// so holding it records one change.
class TimeField final : public QDoubleSpinBox {
  public:
    explicit TimeField(double maximumSeconds) : spinMaximum_(maximumSeconds) {
        setDecimals(2);
        setSingleStep(0.1);
        setRange(-kTypedLimitSeconds, kTypedLimitSeconds);
    }

    void stepBy(int steps) override {
        const double stepped = std::clamp(value() + steps * singleStep(), 0.0, spinMaximum_);
        if (held_) {
            const QSignalBlocker quiet(this);
            setValue(stepped);
            stepsWaiting_ = true;
        } else {
            setValue(stepped);
        }
        selectAll();
    }

  protected:
    StepEnabled stepEnabled() const override {
        StepEnabled enabled = StepNone;
        if (value() < spinMaximum_)
            enabled |= StepUpEnabled;
        if (value() > 0.0)
            enabled |= StepDownEnabled;
        return enabled;
    }

    void keyPressEvent(QKeyEvent* event) override {
        const int key = event->key();
        held_ = key == Qt::Key_Up || key == Qt::Key_Down || key == Qt::Key_PageUp ||
                key == Qt::Key_PageDown;
        QDoubleSpinBox::keyPressEvent(event);
    }
    void keyReleaseEvent(QKeyEvent* event) override {
        QDoubleSpinBox::keyReleaseEvent(event);
        if (!event->isAutoRepeat())
            LetGo();
    }
    void mousePressEvent(QMouseEvent* event) override {
        held_ = true;
        QDoubleSpinBox::mousePressEvent(event);
    }
    void mouseReleaseEvent(QMouseEvent* event) override {
        QDoubleSpinBox::mouseReleaseEvent(event);
        LetGo();
    }

  private:
    void LetGo() {
        held_ = false;
        if (std::exchange(stepsWaiting_, false))
            emit valueChanged(value());
    }

    double spinMaximum_;
    bool held_ = false;
    bool stepsWaiting_ = false;
};

int32_t ToMilliseconds(const QDoubleSpinBox* field) {
    return static_cast<int32_t>(std::lround(field->value() * 1000.0));
}

void ShowMilliseconds(QDoubleSpinBox* field, int32_t ms) {
    field->setValue(ms / 1000.0);
}

QLabel* MakeLabel(const char* text) {
    return new QLabel(QString::fromUtf8(text));
}

}  // namespace

TeskEffect::Timing TeskTimingFromFields(const TeskEffect::Timing& current, int32_t durationMs,
                                        int32_t startHoldMs, int32_t finishHoldMs) noexcept {
    TeskEffect::Timing timing = current;
    if (durationMs < 0)
        durationMs = kNegativeDurationMs;
    timing.startTime = 0;
    timing.endTime = std::min(durationMs, kMaxDurationMs);
    timing.startHold = std::clamp(startHoldMs, 0, kMaxHoldMs);
    timing.finishHold = std::clamp(finishHoldMs, 0, kMaxHoldMs);
    return timing;
}

TeskEffectBar::TeskEffectBar(TeskFile& document, QWidget* parent) : QWidget(parent) {
    name_ = new QLabel;
    name_->setObjectName(QStringLiteral("effectName"));
    QFont large = name_->font();
    large.setPointSizeF(large.pointSizeF() * 1.6);
    large.setBold(true);
    name_->setFont(large);

    chooser_ = new TeskEffectChooserCombo(document);
    duration_ = AddTimeField("duration", kMaxDurationMs / 1000.0);
    startHold_ = AddTimeField("startHold", kMaxHoldMs / 1000.0);
    finishHold_ = AddTimeField("finishHold", kMaxHoldMs / 1000.0);
    auto* help = new QPushButton(QStringLiteral("Effect Help"));
    help->setObjectName(QStringLiteral("effectHelp"));

    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(8, 4, 8, 4);
    grid->addWidget(name_, 0, 0, 2, 1);
    grid->setColumnStretch(0, 1);
    grid->addWidget(chooser_, 0, 1, 1, 3);
    grid->addWidget(help, 0, 4, 1, 4);
    grid->addWidget(MakeLabel("Duration:"), 1, 1);
    grid->addWidget(duration_, 1, 2);
    grid->addWidget(MakeLabel("secs"), 1, 3);
    grid->addWidget(MakeLabel("Hold First/Last Frame:"), 1, 4);
    grid->addWidget(startHold_, 1, 5);
    grid->addWidget(finishHold_, 1, 6);
    grid->addWidget(MakeLabel("secs"), 1, 7);

    connect(chooser_, &QComboBox::activated, this, &TeskEffectBar::effectChosen);
    connect(help, &QPushButton::clicked, this, &TeskEffectBar::helpRequested);
}

QDoubleSpinBox* TeskEffectBar::AddTimeField(const char* name, double maximumSeconds) {
    auto* field = new TimeField(maximumSeconds);
    field->setObjectName(QString::fromUtf8(name));
    // Typing changes nothing until the field is left or confirmed, so one
    // edit becomes one undo step.
    field->setKeyboardTracking(false);
    connect(field, &QDoubleSpinBox::valueChanged, this, &TeskEffectBar::timingEdited);
    return field;
}

void TeskEffectBar::ShowEffect(const TeskEffect& effect) {
    const TeskEffectInfo& info = effect.GetInfo();
    name_->setText(QString::fromStdString(info.name));
    const QSignalBlocker blockChooser(chooser_);
    int index = -1;
    for (int i = 0; i < TeskEffect::GetCount(); ++i) {
        if (TeskEffect::GetInfo(i).guid == info.guid)
            index = i;
    }
    // A type kept for old projects but not offered shows its name instead.
    chooser_->setPlaceholderText(QString::fromStdString(info.name));
    chooser_->setCurrentIndex(index);

    const TeskEffect::Timing& timing = effect.GetTiming();
    const QSignalBlocker blockDuration(duration_);
    const QSignalBlocker blockStart(startHold_);
    const QSignalBlocker blockFinish(finishHold_);
    ShowMilliseconds(duration_, timing.GetLength());
    ShowMilliseconds(startHold_, timing.startHold);
    ShowMilliseconds(finishHold_, timing.finishHold);
}

TeskEffect::Timing TeskEffectBar::GetTiming(const TeskEffect::Timing& current) const {
    return TeskTimingFromFields(current, ToMilliseconds(duration_), ToMilliseconds(startHold_),
                                ToMilliseconds(finishHold_));
}
