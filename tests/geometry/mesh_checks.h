#pragma once
// Checks every triangulation must pass: clockwise triangles that tile the
// unit square exactly.
#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <tuple>
#include <utility>

#include "geometry/triangulation.h"

namespace vimbo_test {

inline std::tuple<TeskPoint2D, TeskPoint2D, TeskPoint2D> Triangle(const TeskTriangulation& mesh,
                                                                  int32_t index, int32_t set) {
    TeskPoint2D a, b, c;
    mesh.GetTriangle(index, set, a, b, c);
    return {a, b, c};
}

/// Every triangle of `set` runs clockwise, the areas add up to the unit
/// square, every inner edge is shared by exactly two triangles running it in
/// opposite directions, and every other edge lies on the square's border.
/// Together these mean the triangles cover the square once, without gaps.
inline ::testing::AssertionResult TilesUnitSquare(const TeskTriangulation& mesh, int32_t set) {
    using Edge = std::pair<std::pair<double, double>, std::pair<double, double>>;
    std::map<Edge, int> edges;
    double area = 0.0;
    for (int32_t i = 0; i < mesh.GetTriangleCount(); ++i) {
        const auto [a, b, c] = Triangle(mesh, i, set);
        const double winding = TeskWinding(a, b, c);
        if (!(winding > 0.0))
            return ::testing::AssertionFailure() << "triangle " << i << " winds " << winding;
        area += winding / 2.0;
        for (const auto& [p, q] : {std::pair{a, b}, std::pair{b, c}, std::pair{c, a}}) {
            const std::pair from{p.x, p.y};
            const std::pair to{q.x, q.y};
            const auto reverse = edges.find({to, from});
            if (reverse != edges.end() && --reverse->second == 0)
                edges.erase(reverse);
            else if (reverse == edges.end())
                ++edges[{from, to}];
        }
    }
    if (std::abs(area - 1.0) > 1e-12)
        return ::testing::AssertionFailure() << "areas add up to " << area;
    for (const auto& [edge, count] : edges) {
        const auto [from, to] = edge;
        const bool vertical = from.first == to.first && (from.first == 0.0 || from.first == 1.0);
        const bool horizontal =
            from.second == to.second && (from.second == 0.0 || from.second == 1.0);
        if (count != 1 || !(vertical || horizontal))
            return ::testing::AssertionFailure()
                   << "unshared edge (" << from.first << ", " << from.second << ") to (" << to.first
                   << ", " << to.second << ") off the border";
    }
    return ::testing::AssertionSuccess();
}

}  // namespace vimbo_test
