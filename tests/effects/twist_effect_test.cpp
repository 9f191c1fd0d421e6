// The twist's surface: where its two styles leave the object flat or turned.
#include "effects/twist_effect.h"

#include <gtest/gtest.h>

#include <cmath>

#include "effects/twist_surface.h"

namespace {

const ZoRect kRect{0, 0, 4000, 2000};

void ExpectAt(const TeskTwistSurface& surface, ZoPoint rest, double progress, TeskPoint3D where) {
    const TeskSurfacePoint p = surface.At(rest, progress);
    EXPECT_NEAR(p.position.x, where.x, 1e-6) << rest.x << ", " << rest.y << " at " << progress;
    EXPECT_NEAR(p.position.y, where.y, 1e-6) << rest.x << ", " << rest.y << " at " << progress;
    EXPECT_NEAR(p.position.z, where.z, 1e-6) << rest.x << ", " << rest.y << " at " << progress;
}

TEST(TwistSurfaceTest, APulseStartsAndEndsWithTheObjectFlat) {
    const TeskTwistSurface pulse(35, TeskTwistEffect::kPulse, kRect);
    EXPECT_EQ(pulse.Progress(0, 24), 0.0);
    EXPECT_EQ(pulse.Progress(23, 24), 1.0);
    EXPECT_EQ(pulse.Progress(0, 1), 0.0);
    for (const double progress : {0.0, 1.0}) {
        for (const ZoPoint rest : {ZoPoint{0, 0}, ZoPoint{4000, 2000}, ZoPoint{1234, 1500}}) {
            ExpectAt(pulse, rest, progress, {rest.x - 2000.0, rest.y - 1000.0, 0.0});
            EXPECT_EQ(pulse.At(rest, progress).normal, (TeskPoint3D{0, 0, 1}));
        }
    }
    // The continuous twist never reaches a full turn.
    EXPECT_DOUBLE_EQ(TeskTwistSurface(0, TeskTwistEffect::kContinuous, kRect).Progress(23, 24),
                     23.0 / 24.0);
}

TEST(TwistSurfaceTest, AtFirstTheContinuousTwistMirrorsEndBAndLeavesEndA) {
    // Angle 0 runs the axis up the middle, from A at the bottom to B at the
    // top; 180 runs it down, so that the ends change places.
    struct Case {
        int32_t angle;
        ZoPoint unturned, mirrored;
        TeskPoint3D mirroredTo;
    };
    for (const Case& c : {Case{0, {500, 2000}, {500, 0}, {1500, -1000, 0}},
                          Case{180, {500, 0}, {500, 2000}, {1500, 1000, 0}},
                          Case{90, {0, 300}, {4000, 300}, {2000, 700, 0}}}) {
        SCOPED_TRACE(c.angle);
        const TeskTwistSurface twist(c.angle, TeskTwistEffect::kContinuous, kRect);
        ExpectAt(twist, c.unturned, 0.0, {c.unturned.x - 2000.0, c.unturned.y - 1000.0, 0.0});
        ExpectAt(twist, c.mirrored, 0.0, c.mirroredTo);
        // Half way along the axis the object is turned edge on: a point on
        // the border stands straight above or below the axis.
        const bool across = c.angle == 90;
        const TeskSurfacePoint edgeOn = twist.At({across ? 2000 : 0, across ? 0 : 1000}, 0.0);
        EXPECT_NEAR(edgeOn.position.x, 0.0, 1e-6);
        EXPECT_NEAR(edgeOn.position.y, 0.0, 1e-6);
        EXPECT_NEAR(std::abs(edgeOn.position.z), across ? 1000.0 : 2000.0, 1e-6);
    }
}

}  // namespace
