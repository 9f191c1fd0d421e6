#pragma once
// The geometry of the test effect's experimental treatments, each a pure
// function of the rest corners and the time. Points are in twips relative to
// the centre c of the object rectangle, z towards the viewer. Sizes derive
// from the rectangle's half width and half height, so that a rectangle
// centred on the origin (a movie-clip offset) behaves like one at the origin.
#include <cstdint>

#include "effects/wave_surface.h"
#include "geometry/matrix_3d.h"
#include "objects/object.h"

/// The rectangle's integer centre and half sizes, as the test effect uses them.
struct TeskTestFrame {
    explicit TeskTestFrame(const ZoRect& rect) noexcept;

    ZoRect rect;
    double centreX, centreY;  // integer halving, as doubles
    double halfWidth, halfHeight;
};

/// "Explode": the matrix that spins triangle `index` about its own centroid
/// and sends it outwards from the middle and towards the viewer at time `t`.
TeskMatrix4 TeskTestExplodeMatrix(const TeskTestFrame& frame, const TeskTriangle& rest,
                                  int32_t index, double t) noexcept;

/// "Sphere": the object wrapped round a globe turning about the vertical
/// axis, once over the effect.
TeskSurfacePoint TeskTestSpherePoint(const TeskTestFrame& frame, ZoPoint rest, double t) noexcept;

/// "CurlUp": the object rolled up from its right edge onto a cylinder whose
/// radius shrinks as `t` grows; flat at t = 0.
TeskSurfacePoint TeskTestCurlPoint(const TeskTestFrame& frame, ZoPoint rest, double t) noexcept;

/// "Cube": the matrix that puts the object on face `face` (0..5) of a cube
/// seen from a corner, before the cube's spin.
TeskMatrix4 TeskTestCubeFace(const TeskTestFrame& frame, int32_t face) noexcept;

/// "AlphaBlend": the opacity (0..1) of the triangle `rest` at time `t`: the
/// object fades in from the centre outwards.
double TeskTestFadeAlpha(const TeskTestFrame& frame, const TeskTriangle& rest, double t) noexcept;
