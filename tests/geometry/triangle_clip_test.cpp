#include "geometry/triangle_clip.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

using ZoGeometry::ZoClipTriangleToRect;
using ZoGeometry::ZoDoublePoint;

double PolygonArea(const std::vector<ZoDoublePoint>& polygon) {
    double twice = 0.0;
    for (size_t i = 0; i < polygon.size(); ++i) {
        const ZoDoublePoint p = polygon[i];
        const ZoDoublePoint q = polygon[(i + 1) % polygon.size()];
        twice += p.x * q.y - p.y * q.x;
    }
    return twice / 2.0;
}

TEST(TriangleClipTest, IntersectsTrianglesWithTheRectangle) {
    const ZoRect rect{0, 0, 100, 100};
    struct Case {
        const char* name;
        ZoDoublePoint p0, p1, p2;
        size_t vertices;
        double area;
    };
    const Case cases[] = {
        {"inside", {10, 10}, {90, 10}, {90, 90}, 3, 3200},  // comes back unchanged
        {"corner outside", {50, 50}, {150, 50}, {50, 150}, 4, 2500},
        {"around the rectangle", {-200, -10}, {300, -10}, {50, 500}, 4, 10000},
        {"over every edge", {-30, 20}, {130, -40}, {60, 160}, 7, 0},
        {"outside", {200, 0}, {300, 0}, {300, 100}, 0, 0},
        {"edge on the rectangle's edge", {0, 0}, {100, 0}, {0, 100}, 3, 5000},
        {"touching from outside", {100, 0}, {200, 0}, {200, 100}, 0, 0},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const auto polygon = ZoClipTriangleToRect(c.p0, c.p1, c.p2, rect);
        EXPECT_EQ(polygon.size(), c.vertices);
        for (const ZoDoublePoint& p : polygon) {
            EXPECT_TRUE(p.x >= 0 && p.x <= 100 && p.y >= 0 && p.y <= 100) << p.x << ", " << p.y;
        }
        if (c.area > 0.0) {
            EXPECT_NEAR(PolygonArea(polygon), c.area, 1e-9);
        }
    }
}

}  // namespace
