#include "app/delayed_apply.h"

TeskDelayedApply::TeskDelayedApply(std::function<void()> apply, QObject* parent)
    : QObject(parent), apply_(std::move(apply)) {
    timer_.setSingleShot(true);
    timer_.setInterval(kDefaultDelayMs);
    connect(&timer_, &QTimer::timeout, this, [this] { apply_(); });
}

void TeskDelayedApply::Flush() {
    if (!timer_.isActive())
        return;
    timer_.stop();
    apply_();
}
