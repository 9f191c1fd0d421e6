#include "effects/rotate_3d_motion.h"

#include <cmath>
#include <numbers>

TeskRotate3DMotion::TeskRotate3DMotion(int32_t degrees, const ZoRect& rect) noexcept
    : axis_(degrees, rect) {}

double TeskRotate3DMotion::TurnAt(int32_t frame, int32_t frameCount) noexcept {
    return frameCount > 0 ? 2.0 * std::numbers::pi * frame / frameCount : 0.0;
}

TeskPoint3D TeskRotate3DMotion::Normal(double turn) const noexcept {
    // The screen normal tipped over towards the axis's clockwise side.
    const double s = std::sin(turn);
    return {s * axis_.Sin(), -s * axis_.Cos(), std::cos(turn)};
}

TeskPoint3D TeskRotate3DMotion::At(ZoPoint rest, double turn) const noexcept {
    const TeskAxisFoot f = axis_.FootOf(rest);
    const ZoPoint centre = axis_.Centre();
    const double c = std::cos(turn);
    return {f.foot.x + f.offset.x * c - centre.x, f.foot.y + f.offset.y * c - centre.y,
            f.distance * std::sin(turn)};
}
