#include <gtest/gtest.h>

#include "platform/zo_units.h"

namespace {

using std::chrono::milliseconds;

TEST(FrameArithmetic, EffectFramesTruncate) {
    struct Case {
        int ms, fps, frames;
    };
    for (const Case& c : {Case{2000, 12, 24}, Case{1950, 12, 23}, Case{83, 12, 0}, Case{84, 12, 1},
                          Case{10000, 120, 1200}, Case{0, 12, 0}, Case{999, 1, 0}}) {
        EXPECT_EQ(ZoEffectFrames(ZoMilliseconds(c.ms), c.fps), c.frames) << c.ms << " ms";
    }
}

TEST(FrameArithmetic, HoldFramesRoundHalvesUp) {
    struct Case {
        int ms, fps, frames;
    };
    // 41.66.. ms is exactly half a frame at 12 fps: 41 stays below, 42 rounds up.
    for (const Case& c :
         {Case{1000, 12, 12}, Case{40, 12, 0}, Case{41, 12, 0}, Case{42, 12, 1}, Case{125, 12, 2},
          Case{500, 10, 5}, Case{50, 10, 1}, Case{49, 10, 0}, Case{99900, 120, 11988}}) {
        EXPECT_EQ(ZoHoldFrames(ZoMilliseconds(c.ms), c.fps), c.frames) << c.ms << " ms";
    }
}

}  // namespace
