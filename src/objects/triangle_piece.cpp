#include "objects/triangle_piece.h"

#include "flash/swf_shape.h"
#include "geometry/triangle_clip.h"

namespace {

ZoGeometry::ZoDoublePoint ToDouble(ZoPoint p) {
    return {static_cast<double>(p.x), static_cast<double>(p.y)};
}

}  // namespace

std::vector<ZoPoint> TeskClipTriangle(const ZoRect& rect, const TeskTriangle& triangle) {
    // A rectangle without area has degenerate edges that cannot cut.
    if (rect.IsEmpty())
        return {};
    const auto polygon = ZoGeometry::ZoClipTriangleToRect(
        ToDouble(triangle[0]), ToDouble(triangle[1]), ToDouble(triangle[2]), rect);
    // Fewer than three vertices: the triangle only touches the rectangle.
    if (polygon.size() < 3)
        return {};
    std::vector<ZoPoint> vertices;
    vertices.reserve(polygon.size());
    for (const auto& p : polygon)
        vertices.push_back({static_cast<int32_t>(p.x), static_cast<int32_t>(p.y)});
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
