#include "geometry/mesh_geometry.h"

#include <cmath>

using ZoGeometry::ZoDoublePoint;

namespace {

// The edge p→q moved `distance` along its outward normal, as a point and a
// direction. For a clockwise triangle (y down), (dy, −dx)/L points outwards.
struct Line {
    ZoDoublePoint point;
    ZoDoublePoint direction;
};

std::optional<Line> MovedEdge(ZoDoublePoint p, ZoDoublePoint q, double distance) noexcept {
    const double dx = q.x - p.x;
    const double dy = q.y - p.y;
    const double length = std::sqrt(dx * dx + dy * dy);
    if (length == 0.0)
        return std::nullopt;
    return Line{{p.x + distance * dy / length, p.y - distance * dx / length}, {dx, dy}};
}

std::optional<ZoDoublePoint> Intersection(const Line& a, const Line& b) noexcept {
    const double denominator = a.direction.x * b.direction.y - a.direction.y * b.direction.x;
    if (denominator == 0.0)
        return std::nullopt;
    const double gx = b.point.x - a.point.x;
    const double gy = b.point.y - a.point.y;
    const double t = (gx * b.direction.y - gy * b.direction.x) / denominator;
    return ZoDoublePoint{a.point.x + t * a.direction.x, a.point.y + t * a.direction.y};
}

}  // namespace

TeskDoubleTriangle TeskExpandTriangle(const TeskDoubleTriangle& triangle,
                                      double distance) noexcept {
    if (distance == 0.0)
        return triangle;
    const auto& [a, b, c] = triangle;
    const auto ab = MovedEdge(a, b, distance);
    const auto bc = MovedEdge(b, c, distance);
    const auto ca = MovedEdge(c, a, distance);
    if (!ab || !bc || !ca)
        return triangle;
    const auto newA = Intersection(*ca, *ab);
    const auto newB = Intersection(*ab, *bc);
    const auto newC = Intersection(*bc, *ca);
    if (!newA || !newB || !newC)
        return triangle;
    return {*newA, *newB, *newC};
}

std::optional<TeskEdgeMap> TeskTriangleEdgeMap(const std::array<ZoPoint, 3>& rest,
                                               const std::array<ZoPoint, 3>& moved) noexcept {
    const auto difference = [](ZoPoint p, ZoPoint q) {
        return ZoDoublePoint{static_cast<double>(p.x) - q.x, static_cast<double>(p.y) - q.y};
    };
    const ZoDoublePoint a = difference(rest[1], rest[0]);
    const ZoDoublePoint b = difference(rest[2], rest[0]);
    const ZoDoublePoint c = difference(moved[1], moved[0]);
    const ZoDoublePoint e = difference(moved[2], moved[0]);
    const double det = a.x * b.y - a.y * b.x;
    if (det == 0.0)
        return std::nullopt;
    return TeskEdgeMap{(b.y * c.x - a.y * e.x) / det, (a.x * e.x - b.x * c.x) / det,
                       (b.y * c.y - a.y * e.y) / det, (a.x * e.y - b.x * c.y) / det};
}
