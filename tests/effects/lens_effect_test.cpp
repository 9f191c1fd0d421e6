// The lens's paths, its warp and where it goes.
#include "effects/lens_effect.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "effects/lens_warp.h"

namespace {

using Path = TeskAnimationPath;

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

}  // namespace
