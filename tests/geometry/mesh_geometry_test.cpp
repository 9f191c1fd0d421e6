#include "geometry/mesh_geometry.h"

#include <gtest/gtest.h>

#include <cmath>

#include "platform/zo_random.h"

namespace {

using ZoGeometry::ZoDoublePoint;

// Distance of `p` from the line through a and b, positive on the side a
// clockwise triangle's outward normal points to.
double OutwardDistance(ZoDoublePoint a, ZoDoublePoint b, ZoDoublePoint p) {
    return ZoGeometry::ZoLineSide(a, b, p) / std::hypot(b.x - a.x, b.y - a.y);
}

// A clockwise triangle (y down) with corners in -5000..5000 and no sliver.
TeskDoubleTriangle RandomTriangle(ZoMsvcRandom& random) {
    for (;;) {
        auto coordinate = [&] { return random.Next() * 10000.0 / ZoMsvcRandom::kMax - 5000.0; };
        TeskDoubleTriangle t{{{coordinate(), coordinate()},
                              {coordinate(), coordinate()},
                              {coordinate(), coordinate()}}};
        const double twiceArea =
            (t[1].x - t[0].x) * (t[2].y - t[1].y) - (t[1].y - t[0].y) * (t[2].x - t[1].x);
        if (std::abs(twiceArea) < 2.0e6)
            continue;
        if (twiceArea < 0.0)
            std::swap(t[1], t[2]);
        return t;
    }
}

TEST(MeshGeometryTest, RoundsTwipsToWholePixels) {
    const std::pair<int32_t, int32_t> cases[] = {{9, 0},     {10, 20},    {29, 20}, {30, 40},
                                                 {-15, 0},   {-29, 0},    {0, 0},   {-30, -20},
                                                 {-49, -20}, {4010, 4020}};
    for (const auto& [twips, snapped] : cases)
        EXPECT_EQ(TeskRoundToPixel(twips), snapped) << twips;
    EXPECT_EQ(TeskRoundToPixel(ZoPoint{9, 30}), (ZoPoint{0, 40}));
}

TEST(MeshGeometryTest, MapsUnitPointsOntoTheRectangle) {
    const ZoRect rect{-100, 200, 300, 1000};
    EXPECT_EQ(TeskMapToRect({0.0, 0.0}, rect), (ZoDoublePoint{-100, 200}));
    EXPECT_EQ(TeskMapToRect({1.0, 1.0}, rect), (ZoDoublePoint{300, 1000}));
    EXPECT_EQ(TeskMapToRect({0.25, 0.5}, rect), (ZoDoublePoint{0, 600}));
}

TEST(MeshGeometryTest, ExpandsTheRightTriangleOfTheExample) {
    const TeskDoubleTriangle t{{{0, 0}, {1000, 0}, {1000, 1000}}};
    EXPECT_EQ(TeskExpandTriangle(t, 0.0), t);
    const TeskDoubleTriangle e = TeskExpandTriangle(t, 20.0);
    const double corner = 20.0 + 20.0 * std::sqrt(2.0);
    EXPECT_NEAR(e[0].x, -corner, 1e-9);
    EXPECT_NEAR(e[0].y, -20.0, 1e-9);
    EXPECT_NEAR(e[1].x, 1020.0, 1e-9);
    EXPECT_NEAR(e[1].y, -20.0, 1e-9);
    EXPECT_NEAR(e[2].x, 1020.0, 1e-9);
    EXPECT_NEAR(e[2].y, 1000.0 + corner, 1e-9);

    // No edge to push: unchanged rather than corners at infinity.
    const TeskDoubleTriangle flat{{{0, 0}, {500, 0}, {1000, 0}}};
    EXPECT_EQ(TeskExpandTriangle(flat, 20.0), flat);
    const TeskDoubleTriangle point{{{7, 7}, {7, 7}, {100, 0}}};
    EXPECT_EQ(TeskExpandTriangle(point, 20.0), point);
}

TEST(MeshGeometryTest, ExpandedEdgesRunParallelAtTheDistanceSeed1) {
    ZoMsvcRandom random(1);
    for (int i = 0; i < 500; ++i) {
        const TeskDoubleTriangle t = RandomTriangle(random);
        const double d = 1.0 + random.Next() % 40;
        const TeskDoubleTriangle e = TeskExpandTriangle(t, d);
        for (int k = 0; k < 3; ++k) {
            const ZoDoublePoint a = t[k];
            const ZoDoublePoint b = t[(k + 1) % 3];
            // Both ends of the moved edge lie d outside the original edge.
            EXPECT_NEAR(OutwardDistance(a, b, e[k]), d, 1e-6) << i;
            EXPECT_NEAR(OutwardDistance(a, b, e[(k + 1) % 3]), d, 1e-6) << i;
        }
    }
}

TEST(MeshGeometryTest, EdgeMapOfUnmovedAndShiftedTriangles) {
    const std::array<ZoPoint, 3> rest{{{0, 0}, {400, 0}, {400, 300}}};
    const auto same = TeskTriangleEdgeMap(rest, rest);
    ASSERT_TRUE(same);
    EXPECT_DOUBLE_EQ(same->m00, 1.0);
    EXPECT_DOUBLE_EQ(same->m01, 0.0);
    EXPECT_DOUBLE_EQ(same->m10, 0.0);
    EXPECT_DOUBLE_EQ(same->m11, 1.0);
    const auto shifted = TeskTriangleEdgeMap(rest, {{{200, 0}, {600, 0}, {600, 300}}});
    ASSERT_TRUE(shifted);
    EXPECT_DOUBLE_EQ(shifted->m00, 1.0);
    EXPECT_DOUBLE_EQ(shifted->m11, 1.0);
    EXPECT_FALSE(TeskTriangleEdgeMap({{{0, 0}, {100, 100}, {300, 300}}}, rest));
}

TEST(MeshGeometryTest, EdgeMapCarriesRestEdgesOntoMovedEdgesSeed7) {
    ZoMsvcRandom random(7);
    auto point = [&] { return ZoPoint{random.Next() - 16384, random.Next() - 16384}; };
    for (int i = 0; i < 1000; ++i) {
        const std::array<ZoPoint, 3> rest{point(), point(), point()};
        const std::array<ZoPoint, 3> moved{point(), point(), point()};
        const auto m = TeskTriangleEdgeMap(rest, moved);
        if (!m)
            continue;
        for (int k = 1; k < 3; ++k) {
            const double dx = rest[k].x - rest[0].x;
            const double dy = rest[k].y - rest[0].y;
            EXPECT_NEAR(m->m00 * dx + m->m01 * dy, moved[k].x - moved[0].x, 1e-6) << i;
            EXPECT_NEAR(m->m10 * dx + m->m11 * dy, moved[k].y - moved[0].y, 1e-6) << i;
        }
    }
}

}  // namespace
