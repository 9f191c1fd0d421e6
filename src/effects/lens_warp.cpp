#include "effects/lens_warp.h"

#include <algorithm>
#include <cmath>

namespace {

// Far beyond the page's ±100, and P = 10^(±20) still leaves the arithmetic
// finite; a stored power past it acts as the limit.
constexpr int32_t kPowerLimit = 1000;

// Drops the remainder of a division by 20, towards zero.
constexpr int32_t ToWholePixelTowardsZero(int32_t v) noexcept {
    return v - v % 20;
}

}  // namespace

TeskLens::TeskLens(int32_t radius, int32_t power) noexcept
    : radius_(radius),
      power_(std::pow(10.0, std::clamp(power, -kPowerLimit, kPowerLimit) * 0.02)) {}

double TeskLens::MovedShare(double share) const noexcept {
    // Power 0 (P = 1) divides zero by zero; the formula tends to no change.
    if (power_ == 1.0)
        return share;
    const double g = std::pow(power_, 1.0 - share);
    return 1.0 - (g - 1.0) / (power_ - 1.0);
}

ZoPoint TeskLens::Apply(ZoPoint rest, ZoPoint centre) const noexcept {
    const double dx = static_cast<double>(rest.x) - centre.x;
    const double dy = static_cast<double>(rest.y) - centre.y;
    const double r = std::hypot(dx, dy);
    if (r > radius_ || r == 0.0)
        return rest;
    const double scale = MovedShare(r / radius_) * radius_ / r;
    return {ToWholePixelTowardsZero(static_cast<int32_t>(dx * scale) + centre.x),
            ToWholePixelTowardsZero(static_cast<int32_t>(dy * scale) + centre.y)};
}

double TeskLensPathTime(int32_t pathAtEnd, int32_t repeat, int32_t frame,
                        int32_t frameCount) noexcept {
    if (frameCount <= 1)
        return 0.0;
    const auto travelled = static_cast<double>(int64_t{frame} * repeat) / (frameCount - 1);
    if (pathAtEnd != 1)
        return std::fmod(travelled, 1.0);
    const double t = 2.0 * travelled;
    const double within = std::fmod(t, 1.0);
    return static_cast<int64_t>(t) % 2 == 0 ? within : 1.0 - within;
}
