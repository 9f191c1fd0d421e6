#pragma once
#include <vector>

#include "geometry/poly_shape.h"
#include "platform/zo_rect.h"

namespace ZoGeometry {

/// The intersection of the triangle (p0, p1, p2), clockwise on screen, with
/// `rect`: a convex polygon of 0 to 7 vertices in outline order, empty when
/// they do not overlap. The rectangle's edges cut the triangle in the order
/// top, right, bottom, left, so the vertices come out the same way every time.
std::vector<ZoDoublePoint> ZoClipTriangleToRect(ZoDoublePoint p0, ZoDoublePoint p1,
                                                ZoDoublePoint p2, const ZoRect& rect);

}  // namespace ZoGeometry
