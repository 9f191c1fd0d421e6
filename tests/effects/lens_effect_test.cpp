// The lens's paths, its warp and where it goes.
#include "effects/lens_effect.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "effects/lens_warp.h"

namespace {

using Path = TeskAnimationPath;

bool Near(TeskPoint2D a, TeskPoint2D b, double tolerance = 1e-9) {
    return std::abs(a.x - b.x) <= tolerance && std::abs(a.y - b.y) <= tolerance;
}

TEST(AnimationPathTest, PresetsStartAndEndWhereTheyShould) {
    struct Case {
        int32_t preset;
        int32_t nodes;
        TeskPoint2D start, middle, end;
    };
    const Case cases[] = {
        {0, 2, {0, 0.5}, {0.5, 0.5}, {1, 0.5}},
        {5, 2, {1, 1}, {0.5, 0.5}, {0, 0}},
        // Half way round a circle from its top is its bottom.
        {8, 13, {0.5, 0.2}, {0.5, 0.8}, {0.5, 0.2}},
        {9, 13, {0.5, 0.2}, {0.5, 0.8}, {0.5, 0.2}},
        {10, 5, {0.2, 0.2}, {0.8, 0.8}, {0.2, 0.2}},
        {12, 15, {0.4, 0.2}, {0.6, 0.2}, {0.4, 0.2}},
        {14, 7, {0, 1}, {0.5, 0.2}, {1, 1}},
        {15, 4, {0, 0.5}, {0.5, 0.5}, {1, 0.5}},
    };
    for (const Case& c : cases) {
        const Path path = Path::Preset(c.preset);
        SCOPED_TRACE(c.preset);
        EXPECT_EQ(path.GetNodeCount(), c.nodes);
        ASSERT_EQ(path.GetKeyCount(), 2);
        EXPECT_EQ(path.GetKey(1).node, c.nodes - 1);
        EXPECT_TRUE(Near(path.Evaluate(0.0), c.start));
        EXPECT_TRUE(Near(path.Evaluate(0.5), c.middle, 0.01));
        EXPECT_TRUE(Near(path.Evaluate(1.0), c.end));
    }
    // A clockwise circle passes its right-hand side first.
    EXPECT_GT(Path::Preset(8).Evaluate(0.25).x, 0.79);
    EXPECT_LT(Path::Preset(9).Evaluate(0.25).x, 0.21);
}

TEST(AnimationPathTest, EditsKeepKeysOnTheirNodesAndArcsJoinUp) {
    Path path;
    path.AppendArc({0, 0}, {1, 1}, {0, 1}, true);
    EXPECT_EQ(path.GetNodeCount(), 4);
    path.InsertKey(0, 0, 0.0);
    path.InsertKey(1, 3, 1.0);
    path.AppendArc({1, 1}, {2, 0}, {2, 1}, true);
    EXPECT_EQ(path.GetNodeCount(), 7);
    EXPECT_EQ(path.GetKey(1).node, 6);
    path.InsertNode(1, Path::kLine, {5, 5});
    EXPECT_EQ(path.GetKey(0).node, 0);
    EXPECT_EQ(path.GetKey(1).node, 7);
    path.RemoveNode(1);
    EXPECT_EQ(path.GetKey(1).node, 6);
    EXPECT_FALSE(path.IsPrepared());
    path.Prepare();
    // Two quarter circles of radius 1.
    EXPECT_NEAR(path.GetKey(0).span, std::numbers::pi, 0.01 * std::numbers::pi);
    EXPECT_NE(path, Path::Preset(0));
    EXPECT_EQ(Path::Preset(3), Path::Preset(3));
}

TEST(LensWarpTest, CornersMoveAsTheLensPowerSays) {
    struct Case {
        int32_t power;
        double share, moved;
    };
    for (const Case& c : {Case{30, 0.5, 0.6661},
                          {30, 0.25, 0.3900},
                          {-30, 0.5, 0.3339},
                          {-30, 0.75, 0.6100},
                          {0, 0.4, 0.4},
                          {30, 1.0, 1.0}}) {
        EXPECT_NEAR(TeskLens(4000, c.power).MovedShare(c.share), c.moved, 5e-5) << c.power;
    }
    // A stored power far past the page's range still gives a finite lens.
    EXPECT_NEAR(TeskLens(4000, 2000000000).MovedShare(0.5), 1.0, 1e-6);
    const TeskLens lens(4000, 30);
    const ZoPoint centre{1000, 1000};
    EXPECT_EQ(lens.Apply({1000, 1000}, centre), centre);
    EXPECT_EQ(lens.Apply({5001, 1000}, centre), (ZoPoint{5001, 1000}));
    EXPECT_EQ(lens.Apply({5000, 1000}, centre), (ZoPoint{5000, 1000}));    // the rim
    EXPECT_EQ(lens.Apply({-1000, 1000}, centre), (ZoPoint{-1660, 1000}));  // snapped towards 0
    EXPECT_EQ(lens.Apply({1000, 3000}, centre), (ZoPoint{1000, 3660}));
}

TEST(LensWarpTest, PathTimeResetsOrReturnsAtTheEnd) {
    using E = TeskLensEffect;
    EXPECT_DOUBLE_EQ(TeskLensPathTime(E::kReturnToBeginning, 1, 12, 25), 1.0);
    EXPECT_DOUBLE_EQ(TeskLensPathTime(E::kReturnToBeginning, 1, 18, 25), 0.5);
    EXPECT_DOUBLE_EQ(TeskLensPathTime(E::kReturnToBeginning, 1, 24, 25), 0.0);
    EXPECT_DOUBLE_EQ(TeskLensPathTime(E::kResetToBeginning, 1, 12, 25), 0.5);
    EXPECT_DOUBLE_EQ(TeskLensPathTime(E::kResetToBeginning, 1, 24, 25), 0.0);
    EXPECT_DOUBLE_EQ(TeskLensPathTime(E::kResetToBeginning, 2, 6, 25), 0.5);
    EXPECT_DOUBLE_EQ(TeskLensPathTime(E::kResetToBeginning, 1, 0, 1), 0.0);
}

TEST(LensEffectTest, TheDefaultLensCrossesFromTheMiddleOfTheLeftEdge) {
    TeskLensEffect lens;
    const ZoRect rect{0, 0, 4000, 2000};
    EXPECT_EQ(lens.LensCentre(rect, 0, 25), (ZoPoint{0, 1000}));
    EXPECT_EQ(lens.LensCentre(rect, 12, 25), (ZoPoint{2000, 1000}));
    EXPECT_EQ(lens.LensCentre(rect, 24, 25), (ZoPoint{0, 1000}));
    lens.SetPathAtEnd(TeskLensEffect::kReturnToBeginning, nullptr);
    EXPECT_EQ(lens.LensCentre(rect, 12, 25), (ZoPoint{4000, 1000}));
}

}  // namespace
