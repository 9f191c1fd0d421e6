#include "effects/test_effect_geometry.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "platform/zo_units.h"

namespace {

constexpr double kPi = std::numbers::pi;

TeskPoint2D Centroid(const TeskTriangle& t) noexcept {
    return {(t[0].x + t[1].x + t[2].x) / 3.0, (t[0].y + t[1].y + t[2].y) / 3.0};
}

TeskPoint3D Scaled(const TeskPoint3D& p, double s) noexcept {
    return {p.x * s, p.y * s, p.z * s};
}

}  // namespace

TeskTestFrame::TeskTestFrame(const ZoRect& r) noexcept
    : rect(r),
      centreX((r.left + r.right) / 2),
      centreY((r.top + r.bottom) / 2),
      halfWidth(centreX - r.left),
      halfHeight(centreY - r.top) {}

TeskMatrix4 TeskTestExplodeMatrix(const TeskTestFrame& frame, const TeskTriangle& rest,
                                  int32_t index, double t) noexcept {
    const TeskPoint2D g = Centroid(rest);
    const double dx = g.x - frame.centreX, dy = g.y - frame.centreY;
    const double away = std::hypot(dx, dy);
    const double push = away > 0.0 ? 0.8 * frame.halfWidth * t / away : 0.0;
    TeskMatrix4 m = TeskMatrix4::Translation(-g.x, -g.y, 0.0);
    m.Apply(TeskMatrix4::RotationZ(index * t * 0.4));
    m.Apply(index % 2 != 0 ? TeskMatrix4::RotationX(t * 6.0) : TeskMatrix4::RotationY(t * 6.0));
    m.Apply(TeskMatrix4::Translation(dx + dx * push, dy + dy * push, frame.halfWidth * t));
    return m;
}

TeskSurfacePoint TeskTestSpherePoint(const TeskTestFrame& frame, ZoPoint rest, double t) noexcept {
    const ZoRect& r = frame.rect;
    // An empty rectangle's points all lie on its first meridian and equator.
    const double width = std::max(r.Width(), 1), height = std::max(r.Height(), 1);
    const double longitude = ((rest.x - r.left) / width + t) * 2.0 * kPi;
    const double latitude = ((rest.y - r.top) / height - 0.5) * kPi * 0.6;
    const TeskPoint3D normal =
        TeskNormalise({std::cos(latitude) * std::sin(longitude), std::sin(latitude),
                       std::cos(longitude) * std::cos(latitude)});
    const double radius = 0.95 * std::min(frame.halfWidth, frame.halfHeight);
    return {Scaled(normal, radius), normal};
}

TeskSurfacePoint TeskTestCurlPoint(const TeskTestFrame& frame, ZoPoint rest, double t) noexcept {
    const double y = rest.y - frame.centreY;
    if (t == 0.0)
        return {{rest.x - frame.centreX, y, 0.0}, {0.0, 0.0, 1.0}};
    const double radius = frame.halfWidth * 0.25 / t;
    const double right = frame.rect.right;
    const double angle = radius > 0.0 ? (right - rest.x) / radius : 0.0;
    return {
        {right - frame.centreX - std::sin(angle) * radius, y, radius - std::cos(angle) * radius},
        {std::sin(angle), 0.0, std::cos(angle)}};
}

TeskMatrix4 TeskTestCubeFace(const TeskTestFrame& frame, int32_t face) noexcept {
    const double s = 0.8 * std::min(frame.halfWidth, frame.halfHeight);
    TeskMatrix4 m = TeskMatrix4::Translation(-frame.centreX, -frame.centreY, 0.0);
    if (frame.halfWidth > 0.0 && frame.halfHeight > 0.0)
        m.Apply(TeskMatrix4::Scale(s / frame.halfWidth, s / frame.halfHeight, 1.0));
    const double quarter = kPi / 2.0;
    switch (face) {
        case 0:
            m.Apply(TeskMatrix4::Translation(0.0, 0.0, s));
            break;
        case 1:
            m.Apply(TeskMatrix4::RotationX(kPi)).Apply(TeskMatrix4::Translation(0.0, 0.0, -s));
            break;
        case 2:
            m.Apply(TeskMatrix4::RotationX(quarter)).Apply(TeskMatrix4::Translation(0.0, s, 0.0));
            break;
        case 3:
            m.Apply(TeskMatrix4::RotationX(-quarter)).Apply(TeskMatrix4::Translation(0.0, -s, 0.0));
            break;
        case 4:
            m.Apply(TeskMatrix4::RotationY(quarter)).Apply(TeskMatrix4::Translation(-s, 0.0, 0.0));
            break;
        default:
            m.Apply(TeskMatrix4::RotationY(-quarter)).Apply(TeskMatrix4::Translation(s, 0.0, 0.0));
            break;
    }
    // Seen from a corner: a cube's body diagonal tilted towards the viewer.
    m.Apply(TeskMatrix4::RotationZ(45.0 * kZoDegreesToRadians));
    return m.Apply(TeskMatrix4::RotationX(35.264389682754654 * kZoDegreesToRadians));
}

double TeskTestFadeAlpha(const TeskTestFrame& frame, const TeskTriangle& rest, double t) noexcept {
    const int64_t w = frame.rect.Width(), h = frame.rect.Height();
    const double reach = std::sqrt(static_cast<double>(w * w + h * h)) / 2.0;
    if (reach <= 0.0)
        return std::clamp(t, 0.0, 1.0);
    const TeskPoint2D g = Centroid(rest);
    const double d = std::hypot(g.x - frame.centreX, g.y - frame.centreY);
    // Below zero the player shows nothing anyway.
    return std::clamp(t - d / reach, 0.0, 1.0);
}
