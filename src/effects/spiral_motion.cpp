#include "effects/spiral_motion.h"

#include <cmath>
#include <numbers>

#include "effects/spiral_effect.h"

namespace {

constexpr double kTurn = 2.0 * std::numbers::pi;

}  // namespace

TeskSpiralMotion::TeskSpiralMotion(int32_t style, int32_t speed, const ZoRect& rect) noexcept
    : style_(style),
      speed_(speed),
      centreX_((rect.left + rect.right) / 2),
      centreY_((rect.top + rect.bottom) / 2) {
    // 64 bits: the squares of a large movie's sides overflow 32.
    const int64_t w = rect.Width(), h = rect.Height();
    halfDiagonal_ = std::sqrt(static_cast<double>(w * w + h * h)) / 2.0;
}

double TeskSpiralMotion::Progress(int32_t frame, int32_t frameCount) const noexcept {
    const bool spiralling =
        style_ >= TeskSpiralEffect::kScrewUp && style_ <= TeskSpiralEffect::kSpinOut;
    if (!spiralling)
        return frameCount > 0 ? static_cast<double>(frame) / frameCount : 0.0;
    return frameCount > 1 ? static_cast<double>(frame) / (frameCount - 1) : 0.0;
}

TeskSpiralMotion::Swirl TeskSpiralMotion::SwirlAt(double r, double p) const noexcept {
    const double h = halfDiagonal_;
    switch (style_) {
        case TeskSpiralEffect::kUnScrewUp:
            p = 1.0 - p;
            [[fallthrough]];
        case TeskSpiralEffect::kScrewUp: {
            // Outer points set off later; each spirals all the way in.
            const double start = 0.05 * r / h;
            if (p < start)
                return {};
            const double q = (p - start) / (1.0 - start);
            const double turns = speed_ * 0.05 * (1.0 - 0.75 * r / h);
            return {kTurn * turns * q, 1.0 - q};
        }
        case TeskSpiralEffect::kSpinOut:
            p = 1.0 - p;
            [[fallthrough]];
        case TeskSpiralEffect::kSpinIn:
            return {kTurn * speed_ * 0.05 * p, 1.0 - p};
        default:
            // Rocks once to and fro, the middle most, the corners not at all.
            return {speed_ * ((h - r) / h * 1.5 * std::sin(kTurn * p)) / 50.0, 1.0};
    }
}

ZoPoint TeskSpiralMotion::At(ZoPoint rest, double progress) const noexcept {
    const double dx = rest.x - centreX_, dy = rest.y - centreY_;
    const double r = std::hypot(dx, dy);
    if (r == 0.0 || halfDiagonal_ == 0.0)
        return rest;
    const Swirl swirl = SwirlAt(r, progress);
    // Turning the offset itself, rather than its angle from atan2, leaves a
    // point that does not move exactly where it was.
    const double c = std::cos(swirl.turn) * swirl.scale, s = std::sin(swirl.turn) * swirl.scale;
    return {static_cast<int32_t>(dx * c - dy * s + centreX_),
            static_cast<int32_t>(dx * s + dy * c + centreY_)};
}
