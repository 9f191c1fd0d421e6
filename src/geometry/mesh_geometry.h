#pragma once
// Geometry of mesh triangles in twips (y down). A mesh triangle's shape is
// drawn once at its rest place, slightly enlarged to hide the hairline gaps
// that anti-aliasing leaves between abutting triangles; every frame then
// places it with the affine map that carries its rest corners onto its moved
// corners.
#include <array>
#include <cstdint>
#include <optional>

#include "geometry/point_2d.h"
#include "geometry/poly_shape.h"
#include "platform/zo_rect.h"

/// Three corners in double precision.
using TeskDoubleTriangle = std::array<ZoGeometry::ZoDoublePoint, 3>;

/// The unit point `unit` on `rect`: left + width·u, top + height·v.
constexpr ZoGeometry::ZoDoublePoint TeskMapToRect(const TeskPoint2D& unit,
                                                  const ZoRect& rect) noexcept {
    return {rect.left + (rect.right - rect.left) * unit.x,
            rect.top + (rect.bottom - rect.top) * unit.y};
}

/// The triangle, clockwise on screen, with every edge pushed `distance` outwards
/// along its normal; each corner is where its two moved edges meet. A
/// degenerate triangle (an edge of zero length, or two parallel edges) comes
/// back unchanged, as does any triangle for a distance of 0.
TeskDoubleTriangle TeskExpandTriangle(const TeskDoubleTriangle& triangle, double distance) noexcept;

/// `v` twips snapped to a whole pixel (20 twips): non-negative values go to
/// the nearest multiple of 20, halves upwards; the remainder keeps the sign of
/// the dividend, so everything from −29 to 9 goes to 0.
constexpr int32_t TeskRoundToPixel(int32_t v) noexcept {
    return (v + 10) - ((v + 10) % 20);
}
constexpr ZoPoint TeskRoundToPixel(ZoPoint p) noexcept {
    return {TeskRoundToPixel(p.x), TeskRoundToPixel(p.y)};
}

/// The linear part M of the affine map p ↦ Q0 + M·(p − P0) that carries the
/// triangle P onto Q corner by corner.
struct TeskEdgeMap {
    double m00 = 1.0, m01 = 0.0;
    double m10 = 0.0, m11 = 1.0;
};

/// M for the rest corners `rest` and the moved corners `moved`; none when the
/// rest triangle has no area, since no map then exists.
std::optional<TeskEdgeMap> TeskTriangleEdgeMap(const std::array<ZoPoint, 3>& rest,
                                               const std::array<ZoPoint, 3>& moved) noexcept;
