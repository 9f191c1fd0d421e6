// Mesh triangles in twips and the perspective of the 3D effects.
#include "geometry/mesh_geometry.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "geometry/matrix_3d.h"
#include "geometry/perspective.h"
#include "platform/zo_random.h"

namespace {

using ZoGeometry::ZoDoublePoint;

TEST(MeshGeometryTest, RoundsTwipsToWholePixels) {
    // The remainder keeps the dividend's sign: −29 to 9 all go to 0.
    const std::pair<int32_t, int32_t> cases[] = {{9, 0},   {10, 20}, {29, 20},   {30, 40},
                                                 {-15, 0}, {-29, 0}, {-30, -20}, {-49, -20}};
    for (const auto& [twips, snapped] : cases)
        EXPECT_EQ(TeskRoundToPixel(twips), snapped) << twips;
}

TEST(MeshGeometryTest, ExpandsTrianglesAndLeavesDegenerateOnesAlone) {
    const TeskDoubleTriangle t{{{0, 0}, {1000, 0}, {1000, 1000}}};
    EXPECT_EQ(TeskExpandTriangle(t, 0.0), t);
    const TeskDoubleTriangle e = TeskExpandTriangle(t, 20.0);
    const double corner = 20.0 + 20.0 * std::sqrt(2.0);  // 48.28
    const TeskDoubleTriangle expected{{{-corner, -20}, {1020, -20}, {1020, 1000 + corner}}};
    for (int k = 0; k < 3; ++k) {
        EXPECT_NEAR(e[k].x, expected[k].x, 1e-9);
        EXPECT_NEAR(e[k].y, expected[k].y, 1e-9);
    }
    const TeskDoubleTriangle flat{{{0, 0}, {500, 0}, {1000, 0}}};
    EXPECT_EQ(TeskExpandTriangle(flat, 20.0), flat);
}

TEST(MeshGeometryTest, ExpandedEdgesRunParallelAtTheDistanceSeed1) {
    ZoMsvcRandom random(1);
    auto coordinate = [&] { return random.Next() * 10000.0 / ZoMsvcRandom::kMax - 5000.0; };
    for (int checked = 0; checked < 500;) {
        TeskDoubleTriangle t{{{coordinate(), coordinate()},
                              {coordinate(), coordinate()},
                              {coordinate(), coordinate()}}};
        const double twiceArea =
            (t[1].x - t[0].x) * (t[2].y - t[1].y) - (t[1].y - t[0].y) * (t[2].x - t[1].x);
        if (std::abs(twiceArea) < 2.0e6)  // no slivers
            continue;
        if (twiceArea < 0.0)
            std::swap(t[1], t[2]);  // clockwise, as meshes hand them out
        const double d = 1.0 + random.Next() % 40;
        const TeskDoubleTriangle e = TeskExpandTriangle(t, d);
        for (int k = 0; k < 3; ++k) {
            const ZoDoublePoint a = t[k], b = t[(k + 1) % 3];
            const double length = std::hypot(b.x - a.x, b.y - a.y);
            for (const ZoDoublePoint& moved : {e[k], e[(k + 1) % 3]})
                EXPECT_NEAR(ZoGeometry::ZoLineSide(a, b, moved) / length, d, 1e-6) << checked;
        }
        ++checked;
    }
}

TEST(MeshGeometryTest, MatricesTurnAndComposeInTheirOrder) {
    const double quarter = std::numbers::pi / 2.0;
    // Rows (1, 0, 0), (0, c, s), (0, −s, c): y goes to −z.
    const TeskPoint3D turned = TeskMatrix4::RotationX(quarter).Transform({0, 1, 0});
    EXPECT_NEAR(turned.z, -1.0, 1e-12);
    TeskMatrix4 m = TeskMatrix4::Translation(10, 0, 0);
    m.Apply(TeskMatrix4::RotationZ(quarter));  // the turn acts on the moved point
    EXPECT_NEAR(m.Transform({0, 0, 0}).y, -10.0, 1e-12);
    m(3, 2) = -0.5;  // w = 1 − z/2 divides the result
    EXPECT_NEAR(m.Transform({0, 0, 1}).y, -20.0, 1e-12);
    EXPECT_EQ(TeskNormalise({0, 0, 0}), (TeskPoint3D{0, 0, 0}));
}

TEST(MeshGeometryTest, ProjectsInPerspectiveFromTheCentre) {
    const ZoRect square{0, 0, 4000, 4000};  // the eye 8000 twips away
    const std::pair<TeskPoint3D, ZoPoint> cases[] = {
        {{0, 0, 0}, {2000, 2000}},          {{1000, 0, 0}, {3000, 2000}},
        {{1000, -500, 4000}, {4000, 1000}}, {{-999, 999, 1}, {1001, 2999}},
        {{10, 0, 9000}, {2640, 2000}},  // behind the eye: held at E/64, still finite
    };
    for (const auto& [point, expected] : cases)
        EXPECT_EQ(TeskProject(point, square), expected) << point.x << ", " << point.z;
    EXPECT_TRUE(TeskFacesViewer({{{0, 0}, {100, 0}, {100, 100}}}));
    EXPECT_FALSE(TeskFacesViewer({{{0, 0}, {100, 100}, {100, 0}}}));
    const std::vector<double> depths{5.0, -2.0, 5.0, 0.0};
    EXPECT_EQ(TeskBackToFront(depths), (std::vector<int32_t>{1, 3, 0, 2}));
}

}  // namespace
