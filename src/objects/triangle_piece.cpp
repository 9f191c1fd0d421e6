#include "objects/triangle_piece.h"

#include <array>

#include "flash/swf_shape.h"
#include "geometry/poly_shape.h"

using ZoGeometry::ZoDoublePoint;
using ZoGeometry::ZoPolyPointKind;

std::vector<ZoPoint> TeskClipTriangle(const ZoRect& rect, const TeskTriangle& triangle) {
    if (rect.IsEmpty())
        return {};
    ZoGeometry::ZoPolyShape polygon;
    const int32_t contour = polygon.AddContour();
    polygon.AddPoint(contour, ZoPolyPointKind::kMove,
                     {static_cast<double>(triangle[0].x), static_cast<double>(triangle[0].y)});
    for (size_t i = 1; i < triangle.size(); ++i)
        polygon.AddPoint(contour, ZoPolyPointKind::kLinear,
                         {static_cast<double>(triangle[i].x), static_cast<double>(triangle[i].y)});

    // Clockwise on screen, so each cut keeps the rectangle's side.
    const ZoDoublePoint topLeft{double(rect.left), double(rect.top)};
    const ZoDoublePoint topRight{double(rect.right), double(rect.top)};
    const ZoDoublePoint bottomRight{double(rect.right), double(rect.bottom)};
    const ZoDoublePoint bottomLeft{double(rect.left), double(rect.bottom)};
    const std::array<std::array<ZoDoublePoint, 2>, 4> edges{{{topLeft, topRight},
                                                             {topRight, bottomRight},
                                                             {bottomRight, bottomLeft},
                                                             {bottomLeft, topLeft}}};
    for (const auto& edge : edges)
        polygon.Cut(edge[0], edge[1]);

    std::vector<ZoPoint> vertices;
    for (const auto& piece : polygon.Contours()) {
        if (piece.size() < 3)
            continue;  // a triangle that only touches the rectangle covers nothing
        for (const auto& record : piece)
            vertices.push_back(
                {static_cast<int32_t>(record.point.x), static_cast<int32_t>(record.point.y)});
    }
    return vertices;
}

void TeskOutlineTrianglePiece(ZoFlash::ZoSWFShape& shape, const ZoRect& rect,
                              const TeskTriangle& triangle) {
    const std::vector<ZoPoint> vertices = TeskClipTriangle(rect, triangle);
    if (vertices.empty())
        return;
    shape.MoveTo(vertices.front());
    for (size_t i = 1; i < vertices.size(); ++i)
        shape.LineTo(vertices[i]);
    shape.LineTo(vertices.front());
}
