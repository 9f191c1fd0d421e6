#include "geometry/triangle_clip.h"

namespace ZoGeometry {

std::vector<ZoDoublePoint> ZoClipTriangleToRect(ZoDoublePoint p0, ZoDoublePoint p1,
                                                ZoDoublePoint p2, const ZoRect& rect) {
    ZoPolyShape shape;
    const int32_t contour = shape.AddContour();
    shape.AddPoint(contour, ZoPolyPointKind::kMove, p0);
    shape.AddPoint(contour, ZoPolyPointKind::kLinear, p1);
    shape.AddPoint(contour, ZoPolyPointKind::kLinear, p2);

    const ZoDoublePoint topLeft{double(rect.left), double(rect.top)};
    const ZoDoublePoint topRight{double(rect.right), double(rect.top)};
    const ZoDoublePoint bottomRight{double(rect.right), double(rect.bottom)};
    const ZoDoublePoint bottomLeft{double(rect.left), double(rect.bottom)};
    shape.Cut(topLeft, topRight);
    shape.Cut(topRight, bottomRight);
    shape.Cut(bottomRight, bottomLeft);
    shape.Cut(bottomLeft, topLeft);

    std::vector<ZoDoublePoint> polygon;
    if (shape.ContourCount() == 0)
        return polygon;
    for (const ZoPolyPoint& record : shape.Contour(0))
        polygon.push_back(record.point);
    return polygon;
}

}  // namespace ZoGeometry
