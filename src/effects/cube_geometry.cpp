#include "effects/cube_geometry.h"

#include <algorithm>
#include <numbers>

#include "geometry/perspective.h"
#include "platform/zo_units.h"

namespace {

constexpr double Degrees(double degrees) noexcept {
    return degrees * kZoDegreesToRadians;
}

// The turn of a face's object for its `objectDirection`; unknown codes leave
// it upright.
double DirectionAngle(int32_t direction) noexcept {
    static constexpr double kDegrees[] = {0.0, 180.0, 90.0, 270.0};
    return direction >= 0 && direction < 4 ? Degrees(kDegrees[direction]) : 0.0;
}

// Folds the square lying in the screen plane onto face `face` of the cube.
void FoldOntoFace(TeskMatrix4& m, int32_t face, double size) {
    switch (face) {
        case TeskCubeEffect::kTop:
            m.Apply(TeskMatrix4::RotationX(Degrees(-90)))
                .Apply(TeskMatrix4::Translation(0, -size, 0));
            break;
        case TeskCubeEffect::kBottom:
            m.Apply(TeskMatrix4::RotationZ(Degrees(-90)))
                .Apply(TeskMatrix4::RotationX(Degrees(90)))
                .Apply(TeskMatrix4::Translation(0, size, 0));
            break;
        case TeskCubeEffect::kLeft:
            m.Apply(TeskMatrix4::RotationZ(Degrees(90)))
                .Apply(TeskMatrix4::RotationY(Degrees(90)))
                .Apply(TeskMatrix4::Translation(-size, 0, 0));
            break;
        case TeskCubeEffect::kRight:
            m.Apply(TeskMatrix4::RotationY(Degrees(-90)))
                .Apply(TeskMatrix4::Translation(size, 0, 0));
            break;
        case TeskCubeEffect::kFront:
            m.Apply(TeskMatrix4::Translation(0, 0, size));
            break;
        default:  // kBack
            m.Apply(TeskMatrix4::RotationZ(Degrees(-90)))
                .Apply(TeskMatrix4::RotationX(Degrees(180)))
                .Apply(TeskMatrix4::Translation(0, 0, -size));
            break;
    }
}

}  // namespace

double TeskCubeSize(const ZoRect& rect) noexcept {
    return std::min(rect.Width() / 2, rect.Height() / 2) * 0.8;
}

TeskMatrix4 TeskCubeFaceMatrix(const TeskCubeEffect::CubeState& state, int32_t face,
                               const ZoRect& rect) noexcept {
    const int32_t halfWidth = rect.Width() / 2;
    const int32_t halfHeight = rect.Height() / 2;
    const double size = TeskCubeSize(rect);
    // An empty rectangle has nothing to squeeze: it collapses onto the centre.
    const double sx = halfWidth > 0 ? size / halfWidth : 0.0;
    const double sy = halfHeight > 0 ? size / halfHeight : 0.0;
    const double scale = state.scaleSize / 100.0;
    TeskMatrix4 m = TeskMatrix4::Translation(-((rect.left + rect.right) / 2),
                                             -((rect.top + rect.bottom) / 2), 0);
    m.Apply(TeskMatrix4::Scale(sx, sy, 1.0))
        .Apply(TeskMatrix4::RotationZ(DirectionAngle(state.faces[face].objectDirection)));
    FoldOntoFace(m, face, size);
    m.Apply(TeskMatrix4::Scale(scale, scale, scale))
        .Apply(TeskMatrix4::RotationX(Degrees(state.rotateX)))
        .Apply(TeskMatrix4::RotationZ(Degrees(state.rotateZ)));
    return m;
}

TeskMatrix4 TeskOverlappingCubeFace(const TeskMatrix4& faceMatrix, const ZoRect& rect, double scale,
                                    double overlap) noexcept {
    const double size = TeskCubeSize(rect);
    if (!(size > 0.0 && scale > 0.0 && overlap > 0.0))
        return faceMatrix;
    const double cx = (rect.left + rect.right) / 2, cy = (rect.top + rect.bottom) / 2;
    const TeskPoint3D centre = faceMatrix.Transform({cx, cy, 0.0});
    const TeskPoint3D eye{0.0, 0.0, TeskEyeDistance(rect)};
    const auto facesEye = [&](const TeskPoint3D& outwards, const TeskPoint3D& on) {
        return TeskDot(outwards, eye - on) > 0.0;
    };
    if (!facesEye(faceMatrix.Transform({cx, cy, 1.0}) - centre, centre))
        return faceMatrix;
    // How far the side through (x, y) grows, in half sides: on a cube the
    // face beyond an edge looks the way from this face's centre to the edge.
    const double beyond = std::min(overlap / scale, size / 8.0) / size;
    const auto growth = [&](double x, double y) {
        const TeskPoint3D edge = faceMatrix.Transform({x, y, 0.0});
        return facesEye(edge - centre, edge) ? beyond : 0.0;
    };
    const double halfWidth = rect.Width() / 2, halfHeight = rect.Height() / 2;
    const double left = rect.left - halfWidth * growth(rect.left, cy);
    const double right = rect.right + halfWidth * growth(rect.right, cy);
    const double top = rect.top - halfHeight * growth(cx, rect.top);
    const double bottom = rect.bottom + halfHeight * growth(cx, rect.bottom);
    TeskMatrix4 m = TeskMatrix4::Translation(-rect.left, -rect.top, 0.0);
    m.Apply(TeskMatrix4::Scale((right - left) / rect.Width(), (bottom - top) / rect.Height(), 1.0))
        .Apply(TeskMatrix4::Translation(left, top, 0.0))
        .Apply(faceMatrix);
    return m;
}

TeskMatrix4 TeskCubeSpin(const TeskCubeEffect::CubeState& state, int32_t frame,
                         int32_t frameCount) noexcept {
    // A turn a shade short of 2π, as the cube has always spun.
    constexpr double kTurn = 6.283185307;
    const double turn = frameCount > 0 ? frame * kTurn / frameCount : 0.0;
    TeskMatrix4 spin = TeskMatrix4::RotationZ(Degrees(state.rotateAxis));
    spin.Apply(TeskMatrix4::RotationY(turn))
        .Apply(TeskMatrix4::RotationZ(Degrees(-state.rotateAxis)));
    return spin;
}
