#include "effects/screen_axis.h"

#include <cmath>

#include "platform/zo_units.h"

TeskScreenAxis::TeskScreenAxis(double degrees, const ZoRect& rect) noexcept {
    const double angle = degrees * kZoDegreesToRadians;
    sin_ = std::sin(angle);
    cos_ = std::cos(angle);
    // Half the rectangle's extent along the axis, so that the ends lie on the
    // rectangle's outline (or beyond it, where the axis leaves by a corner).
    halfLength_ = (rect.Width() * std::abs(sin_) + rect.Height() * std::abs(cos_)) / 2.0;
    centre_ = {(rect.left + rect.right) / 2, (rect.top + rect.bottom) / 2};
    const TeskPoint2D c{static_cast<double>(centre_.x), static_cast<double>(centre_.y)};
    const TeskPoint2D towardsB{halfLength_ * sin_, -halfLength_ * cos_};
    a_ = c - towardsB;
    b_ = c + towardsB;
}

TeskAxisFoot TeskScreenAxis::FootOf(ZoPoint point) const noexcept {
    const TeskPoint2D q{static_cast<double>(point.x), static_cast<double>(point.y)};
    const TeskPoint2D axis = b_ - a_;
    const double lengthSquared = axis.x * axis.x + axis.y * axis.y;
    TeskAxisFoot result;
    if (lengthSquared > 0.0) {
        const TeskPoint2D fromA = q - a_;
        result.along = (fromA.x * axis.x + fromA.y * axis.y) / lengthSquared;
    }
    result.foot = a_ + axis * result.along;
    result.offset = q - result.foot;
    result.distance = std::hypot(result.offset.x, result.offset.y);
    if (TeskCross(axis, q - b_) > 0.0)
        result.distance = -result.distance;
    return result;
}
