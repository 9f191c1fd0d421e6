// The spiral's swirl corner by corner.
#include "effects/spiral_effect.h"

#include <gtest/gtest.h>

#include <cmath>

#include "effects/spiral_motion.h"

namespace {

// 4000 × 3000 twips: centre (2000, 1500), half diagonal 2500.
const ZoRect kRect{0, 0, 4000, 3000};
const ZoPoint kCentre{2000, 1500};

TEST(SpiralMotionTest, CornersFollowEachStyle) {
    struct Case {
        const char* what;
        int32_t style, speed;
        double progress;
        ZoPoint rest, expected;
    };
    using S = TeskSpiralEffect;
    const double turn = 50 * (2400.0 / 2500.0 * 1.5) / 50.0;  // 100 twips out at p = 0.25
    const Case cases[] = {
        {"rocking leaves the outer corners", S::kWashingMachine, 50, 0.25, {0, 0}, {0, 0}},
        {"rocking turns the middle most",
         S::kWashingMachine,
         50,
         0.25,
         {2100, 1500},
         {2000 + static_cast<int32_t>(100 * std::cos(turn)),
          1500 + static_cast<int32_t>(100 * std::sin(turn))}},
        {"speed 0 does not rock", S::kWashingMachine, 0, 0.25, {2100, 1500}, {2100, 1500}},
        {"screwed up at the end", S::kScrewUp, 50, 1.0, {0, 0}, kCentre},
        {"unscrewing starts collapsed", S::kUnScrewUp, 50, 0.0, {4000, 3000}, kCentre},
        {"unscrewing ends at rest", S::kUnScrewUp, 50, 1.0, {4000, 3000}, {4000, 3000}},
        // 2.5 turns in all: a quarter turn past 1 at half way, half as far out.
        {"spinning in", S::kSpinIn, 50, 0.5, {3000, 1500}, {2000, 2000}},
        {"speed 0 only shrinks", S::kSpinIn, 0, 0.5, {3000, 1500}, {2500, 1500}},
        {"spinning out starts collapsed", S::kSpinOut, 50, 0.0, {3000, 1500}, kCentre},
        {"the centre stays in every style", S::kSpinIn, 50, 0.5, kCentre, kCentre},
        {"unknown styles rock", 9, 0, 0.25, {2100, 1500}, {2100, 1500}},
    };
    for (const Case& c : cases) {
        const ZoPoint moved = TeskSpiralMotion(c.style, c.speed, kRect).At(c.rest, c.progress);
        EXPECT_NEAR(moved.x, c.expected.x, 1) << c.what;
        EXPECT_NEAR(moved.y, c.expected.y, 1) << c.what;
    }
}

}  // namespace
