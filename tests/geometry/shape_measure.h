#pragma once
// Measures of poly shapes that the tests compare before and after a cut.
#include <cmath>

#include "geometry/poly_shape.h"

namespace vimbo_test {

using ZoGeometry::ZoDoublePoint;
using ZoGeometry::ZoPolyContour;
using ZoGeometry::ZoPolyPointKind;
using ZoGeometry::ZoPolyShape;

inline double Cross(ZoDoublePoint p, ZoDoublePoint q) {
    return p.x * q.y - p.y * q.x;
}

/// The signed area, positive for contours clockwise on screen
/// (y down). A quadratic segment adds its chord plus two thirds of the
/// triangle its control point spans with the chord.
inline double SignedArea(const ZoPolyContour& contour) {
    double twice = 0.0;
    const size_t n = contour.size();
    ZoDoublePoint from = contour.empty() ? ZoDoublePoint{} : contour[0].point;
    for (size_t i = 1; i <= n; ++i) {
        const ZoDoublePoint to = contour[i % n].point;
        if (i < n && contour[i].kind == ZoPolyPointKind::kQuadraticControl)
            continue;
        twice += Cross(from, to);
        if (i < n && contour[i].kind == ZoPolyPointKind::kQuadratic) {
            const ZoDoublePoint c = contour[i - 1].point;
            twice +=
                2.0 / 3.0 * Cross({c.x - from.x, c.y - from.y}, {to.x - from.x, to.y - from.y});
        }
        from = to;
    }
    return twice / 2.0;
}

inline double SignedArea(const ZoPolyShape& shape) {
    double area = 0.0;
    for (const ZoPolyContour& contour : shape.Contours())
        area += SignedArea(contour);
    return area;
}

/// Nonzero winding of `p` in a shape of straight segments only.
inline int Winding(const ZoPolyShape& shape, ZoDoublePoint p) {
    int winding = 0;
    for (const ZoPolyContour& contour : shape.Contours()) {
        for (size_t i = 0; i < contour.size(); ++i) {
            const ZoDoublePoint a = contour[i].point;
            const ZoDoublePoint b = contour[(i + 1) % contour.size()].point;
            const double side = Cross({b.x - a.x, b.y - a.y}, {p.x - a.x, p.y - a.y});
            if (a.y <= p.y && b.y > p.y && side > 0.0)
                ++winding;
            else if (b.y <= p.y && a.y > p.y && side < 0.0)
                --winding;
        }
    }
    return winding;
}

}  // namespace vimbo_test
