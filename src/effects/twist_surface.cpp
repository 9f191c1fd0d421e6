#include "effects/twist_surface.h"

#include <cmath>
#include <numbers>

#include "effects/twist_effect.h"

TeskTwistSurface::TeskTwistSurface(double degrees, int32_t style, const ZoRect& rect) noexcept
    : axis_(degrees, rect), style_(style) {}

double TeskTwistSurface::Progress(int32_t frame, int32_t frameCount) const noexcept {
    if (style_ != TeskTwistEffect::kPulse)
        return frameCount > 0 ? static_cast<double>(frame) / frameCount : 0.0;
    return frameCount > 1 ? static_cast<double>(frame) / (frameCount - 1) : 0.0;
}

TeskSurfacePoint TeskTwistSurface::At(ZoPoint rest, double progress) const noexcept {
    constexpr double pi = std::numbers::pi;
    const TeskAxisFoot f = axis_.FootOf(rest);
    const ZoPoint centre = axis_.Centre();
    double turn = 0.0;
    if (style_ == TeskTwistEffect::kPulse) {
        turn = 3.0 * pi * progress - pi * f.along;
        // Outside the one turn of the pulse the object lies flat.
        if (turn < 0.0 || turn > 2.0 * pi)
            return {{static_cast<double>(rest.x - centre.x), static_cast<double>(rest.y - centre.y),
                     0.0},
                    {0.0, 0.0, 1.0}};
    } else {
        turn = 2.0 * pi * progress - pi * f.along;
    }
    // The surface tilts with the turn and, across the axis, with the rate at
    // which the turn grows along it; then the normal is turned in the screen
    // plane to the axis direction.
    const double length = axis_.Length();
    const TeskPoint3D m{std::sin(turn), length > 0.0 ? pi * f.distance / length : 0.0,
                        std::cos(turn)};
    const double s = axis_.Sin(), c = axis_.Cos();
    const TeskPoint3D normal = TeskNormalise({c * m.x - s * m.y, s * m.x + c * m.y, m.z});
    return {{f.foot.x + f.offset.x * std::cos(turn) - centre.x,
             f.foot.y + f.offset.y * std::cos(turn) - centre.y, f.distance * std::sin(turn)},
            normal};
}
