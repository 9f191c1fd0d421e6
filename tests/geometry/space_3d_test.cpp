#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <vector>

#include "geometry/matrix_3d.h"
#include "geometry/perspective.h"

namespace {

constexpr double kQuarter = std::numbers::pi / 2.0;

void ExpectNear(const TeskPoint3D& actual, const TeskPoint3D& expected) {
    EXPECT_NEAR(actual.x, expected.x, 1e-9);
    EXPECT_NEAR(actual.y, expected.y, 1e-9);
    EXPECT_NEAR(actual.z, expected.z, 1e-9);
}

TEST(Space3DTest, VectorOperations) {
    EXPECT_EQ(TeskCross({1, 0, 0}, {0, 1, 0}), (TeskPoint3D{0, 0, 1}));
    EXPECT_EQ(TeskCross({0, 1, 0}, {1, 0, 0}), (TeskPoint3D{0, 0, -1}));
    EXPECT_EQ(TeskDot({1, 2, 3}, {4, -5, 6}), 12.0);
    EXPECT_EQ(TeskLength({2, 3, 6}), 7.0);
    ExpectNear(TeskNormalise({0, 3, 4}), {0, 0.6, 0.8});
    EXPECT_EQ(TeskNormalise({0, 0, 0}), (TeskPoint3D{0, 0, 0}));
}

TEST(Space3DTest, RotationsTurnTheAxesAsTheirRowsSay) {
    // Rows (1, 0, 0), (0, c, s), (0, −s, c) with θ = 90°: y goes to −z.
    ExpectNear(TeskMatrix4::RotationX(kQuarter).Transform({0, 1, 0}), {0, 0, -1});
    ExpectNear(TeskMatrix4::RotationY(kQuarter).Transform({1, 0, 0}), {0, 0, 1});
    ExpectNear(TeskMatrix4::RotationZ(kQuarter).Transform({1, 0, 0}), {0, -1, 0});
    ExpectNear(TeskMatrix4::Scale(2, 3, 4).Transform({1, 1, 1}), {2, 3, 4});
    const TeskPoint2D turned = TeskMatrix3::Rotation(kQuarter).Transform({1, 0});
    EXPECT_NEAR(turned.x, 0.0, 1e-12);
    EXPECT_NEAR(turned.y, -1.0, 1e-12);
}

TEST(Space3DTest, AppliedMatricesActAfterTheFirst) {
    // Translate, then turn: the turn carries the translated point.
    TeskMatrix4 m = TeskMatrix4::Translation(10, 0, 0);
    m.Apply(TeskMatrix4::RotationZ(kQuarter));
    ExpectNear(m.Transform({0, 0, 0}), {0, -10, 0});
    TeskMatrix4 n = TeskMatrix4::RotationZ(kQuarter);
    n.Apply(TeskMatrix4::Translation(10, 0, 0));
    ExpectNear(n.Transform({0, 0, 0}), {10, 0, 0});

    TeskMatrix3 p = TeskMatrix3::Scale(2, 2);
    p.Apply(TeskMatrix3::Translation(5, -5));
    const TeskPoint2D moved = p.Transform({1, 1});
    EXPECT_EQ(moved.x, 7.0);
    EXPECT_EQ(moved.y, -3.0);
}

TEST(Space3DTest, TransformDividesByTheProjectiveRow) {
    TeskMatrix4 m;
    m(3, 2) = -0.5;  // w = 1 − z/2
    ExpectNear(m.Transform({4, 2, 1}), {8, 4, 2});
    TeskMatrix3 h;
    h(2, 2) = 2.0;
    EXPECT_EQ(h.Transform({4, 6}).x, 2.0);
}

TEST(Space3DTest, ProjectsInPerspectiveFromTheCentre) {
    const ZoRect square{0, 0, 4000, 4000};
    EXPECT_EQ(TeskEyeDistance(square), 8000.0);
    EXPECT_EQ(TeskEyeDistance({0, 0, 3640, 4040}), 8080.0);
    struct Case {
        TeskPoint3D p;
        ZoPoint expected;
    };
    const Case cases[] = {
        {{0, 0, 0}, {2000, 2000}},          {{1000, 0, 0}, {3000, 2000}},
        {{1000, -500, 4000}, {4000, 1000}},  // halfway to the eye: twice as far out
        {{-1000, 0, -8000}, {1500, 2000}},   // as far behind the screen: half
        {{-999, 999, 1}, {1001, 2999}},      // truncated towards zero both ways
    };
    for (const Case& c : cases) {
        EXPECT_EQ(TeskProject(c.p, square), c.expected) << c.p.x << ", " << c.p.y << ", " << c.p.z;
    }
    // At or behind the eye a point stays finite, on its own side.
    EXPECT_EQ(TeskProject({10, 0, 8000}, square), (ZoPoint{2640, 2000}));
    EXPECT_EQ(TeskProject({10, 0, 9000}, square), (ZoPoint{2640, 2000}));
    EXPECT_EQ(TeskProject({10, 10, 10}, {5, 5, 5, 5}), (ZoPoint{5, 5}));
}

TEST(Space3DTest, FacingFollowsTheOnScreenWinding) {
    EXPECT_TRUE(TeskFacesViewer({{{0, 0}, {100, 0}, {100, 100}}}));
    EXPECT_FALSE(TeskFacesViewer({{{0, 0}, {100, 100}, {100, 0}}}));
    EXPECT_FALSE(TeskFacesViewer({{{0, 0}, {50, 50}, {100, 100}}}));
    // Large enough to overflow 32-bit products.
    EXPECT_TRUE(TeskFacesViewer({{{-100000, -100000}, {100000, -100000}, {100000, 100000}}}));
}

TEST(Space3DTest, BackToFrontDrawsTheFarthestFirst) {
    const std::vector<double> depths{5.0, -2.0, 5.0, 0.0, -2.0};
    EXPECT_EQ(TeskBackToFront(depths), (std::vector<int32_t>{1, 4, 3, 0, 2}));
    EXPECT_TRUE(TeskBackToFront({}).empty());
}

}  // namespace
