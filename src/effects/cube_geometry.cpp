#include "effects/cube_geometry.h"

#include <algorithm>
#include <numbers>

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
