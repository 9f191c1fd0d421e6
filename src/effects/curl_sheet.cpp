#include "effects/curl_sheet.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "effects/curl_up_effect.h"
#include "platform/zo_units.h"

TeskCurlSheet::TeskCurlSheet(int32_t direction, int32_t radius, uint32_t style, const ZoRect& rect,
                             double progress) noexcept
    : style_(style) {
    const double w = rect.Width(), h = rect.Height();
    const double theta = direction * kZoDegreesToRadians;
    const double s = std::sin(theta), c = std::cos(theta);
    // From the centre to the rectangle's farthest corner along the travel
    // direction m = (sin θ, −cos θ).
    const double reach = w / 2.0 * std::abs(s) + h / 2.0 * std::abs(c);
    radius_ = std::max(rect.Width(), rect.Height()) * radius / 100.0;
    centre_ = {(rect.left + rect.right) / 2, (rect.top + rect.bottom) / 2};
    const double travel = (2.0 * reach + std::numbers::pi * radius_) * progress - reach;
    a_ = {centre_.x + s * travel, centre_.y - c * travel};
    // The line's second point lies half a diagonal along it.
    const double halfDiagonal = std::sqrt(w * w + h * h) / 2.0;
    b_ = a_ - TeskPoint2D{c, s} * halfDiagonal;
}

double TeskCurlSheet::Progress(uint32_t style, int32_t frame, int32_t frameCount) noexcept {
    const double t = frameCount > 1 ? static_cast<double>(frame) / (frameCount - 1) : 0.0;
    return (style & TeskCurlUpEffect::kForwards) ? t : 1.0 - t;
}

TeskSurfacePoint TeskCurlSheet::At(ZoPoint rest) const noexcept {
    const TeskPoint2D p{static_cast<double>(rest.x), static_cast<double>(rest.y)};
    const TeskPoint2D line = b_ - a_;
    // Not reached yet: ahead of the line, the sheet lies flat.
    if (TeskCross(line, p - b_) > 0.0 || line == TeskPoint2D{})
        return {{p.x - centre_.x, p.y - centre_.y, 0.0}, {0.0, 0.0, 1.0}};
    const TeskPoint2D fromA = p - a_;
    const double along =
        (fromA.x * line.x + fromA.y * line.y) / (line.x * line.x + line.y * line.y);
    const TeskPoint2D foot = a_ + line * along;
    const TeskPoint2D behind = p - foot;
    const double distance = std::hypot(behind.x, behind.y);
    const TeskPoint2D away = distance > 0.0 ? behind * (1.0 / distance) : TeskPoint2D{};
    TeskSurfacePoint point = Curl(foot, away, distance);
    if (style_ & TeskCurlUpEffect::kUnderneath) {
        point.position.z = -point.position.z;
        point.normal.x = -point.normal.x;
        point.normal.y = -point.normal.y;
    }
    return point;
}

TeskSurfacePoint TeskCurlSheet::Curl(const TeskPoint2D& foot, const TeskPoint2D& away,
                                     double distance) const noexcept {
    const double r = radius_;
    const bool rollUp = (style_ & TeskCurlUpEffect::kCurlStyleMask) == TeskCurlUpEffect::kRollUp;
    // A curl without radius folds the sheet straight over, as a torn-away
    // sheet does beyond half a turn.
    if (r <= 0.0 || (!rollUp && distance > std::numbers::pi * r)) {
        const double over = distance - std::numbers::pi * r;
        return {{foot.x - away.x * over - centre_.x, foot.y - away.y * over - centre_.y, 2.0 * r},
                {0.0, 0.0, -1.0}};
    }
    const double alpha = distance / r;
    // The roll's radius shrinks by a fifth of r per radian (and beyond five
    // radians turns inside out); the tear-away curl keeps r.
    const double bend = rollUp ? r - r * 0.2 * alpha : r;
    const double sin = std::sin(alpha), cos = std::cos(alpha);
    return {{away.x * bend * sin + foot.x - centre_.x, away.y * bend * sin + foot.y - centre_.y,
             (1.0 - cos) * bend},
            {-away.x * sin, -away.y * sin, cos}};
}
