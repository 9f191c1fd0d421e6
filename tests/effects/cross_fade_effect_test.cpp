#include <gtest/gtest.h>

#include <cmath>

#include "effects/cross_fade_effect.h"
#include "flash/swf_sequence.h"
#include "media/swf_movie.h"
#include "objects/solid_object.h"
#include "support/movie_check.h"

namespace {

TEST(TeskCrossFadeAlpha, RisesOverTheFramesOrUpAndBackWithReturn) {
    struct Case {
        int32_t frame, frames;
        bool returnToStart;
        double alpha;
    };
    for (const Case& c : {
             Case{0, 24, false, 0.0},
             Case{1, 24, false, 1.0 / 23},
             Case{23, 24, false, 1.0},
             Case{11, 24, true, 1.0},
             Case{12, 24, true, 1.0},
             Case{13, 24, true, 10.0 / 11},
             Case{23, 24, true, 0.0},
             Case{11, 25, true, 11.0 / 12},
             Case{12, 25, true, 1.0},
             Case{0, 1, false, 0.0},
             Case{0, 2, true, 0.0},  // nothing to fade over
             Case{1, 2, true, 0.0},
             Case{1, 3, true, 1.0},
         }) {
        EXPECT_DOUBLE_EQ(TeskCrossFadeAlpha(c.frame, c.frames, c.returnToStart), c.alpha)
            << "frame " << c.frame << " of " << c.frames << (c.returnToStart ? " with return" : "");
    }
}

/// A 100 x 50 movie at 12 frames per second with a red-to-blue cross fade.
struct FadeMovie {
    explicit FadeMovie(int32_t lengthMs, bool returnToStart = false, int32_t returnHold = 0) {
        movie.SetWidth(100);
        movie.SetHeight(50);
        movie.SetFrameRate(12);
        ZoAutoPtr<TeskObject> red = std::make_unique<TeskSolidObject>(0x0000FF);
        ZoAutoPtr<TeskObject> blue = std::make_unique<TeskSolidObject>(0xFF0000);
        fade.SetStartObject(red, nullptr);
        fade.SetEndObject(blue, nullptr);
        fade.SetEffectTime(lengthMs, nullptr);
        fade.SetReturnToStart(returnToStart, nullptr);
        fade.SetReturnHold(returnHold, nullptr);
    }
    /// Compiles and reads the file back; each frame's end-object alpha
    /// factor (x256), or -1 where the end object is absent.
    std::vector<int> CompileAlphas() {
        written = SwfTest::WriteAndValidate(movie);
        EXPECT_TRUE(written.result.problems.empty()) << written.Problems();
        std::vector<int> alphas;
        for (const SwfTest::Frame& frame : written.result.movie.timeline.frames) {
            auto end = frame.displayList.find(TeskCrossFadeEffect::kEndDepth);
            alphas.push_back(end == frame.displayList.end() ? -1 : end->second.cxform.mult[3]);
        }
        return alphas;
    }

    TeskSWFMovie movie;
    TeskCrossFadeEffect fade;
    SwfTest::WrittenMovie written;
};

int Alpha256(double alpha) {
    return static_cast<int>(std::lround(alpha * 256));
}

// Without a return the end object fades in over the frames; with one it
// fades back out, the middle frame repeated for the hold.
TEST(TeskCrossFadeEffect, FramesFollowTheAlphaAndTheHoldRepeatsTheMiddleFrame) {
    struct Case {
        int32_t lengthMs;
        bool returnToStart;
        int32_t returnHold, framesBefore;
        int expectedFrames, middle;
    };
    for (const Case& c : {Case{2000, false, 0, 0, 24, 12}, Case{2000, true, 1000, 0, 36, 12},
                          Case{2000, true, 1000, 5, 41, 17},
                          Case{2000, true, 1040, 0, 36, 12},  // the hold truncates
                          Case{2084, true, 0, 0, 25, 12}}) {
        SCOPED_TRACE(testing::Message() << c.lengthMs << " ms, hold " << c.returnHold << ", after "
                                        << c.framesBefore << " frames");
        FadeMovie m(c.lengthMs, c.returnToStart, c.returnHold);
        m.movie.AddScene();
        for (int i = 0; i < c.framesBefore; ++i)
            m.movie.GetScene(0)->AddFrame();
        m.fade.Compile(m.movie, true);
        const std::vector<int> alphas = m.CompileAlphas();
        ASSERT_EQ(static_cast<int>(alphas.size()), c.expectedFrames);
        const int n = c.lengthMs * 12 / 1000;
        const int hold = c.returnHold * 12 / 1000;
        for (int i = 0; i < c.framesBefore; ++i)
            EXPECT_EQ(alphas[i], -1);
        for (int i = 0; i < n; ++i) {
            // Effect frame i sits after the hold copies once it is past the middle.
            const int at = c.framesBefore + i + (i > n / 2 ? hold : 0);
            EXPECT_EQ(alphas[at], Alpha256(TeskCrossFadeAlpha(i, n, c.returnToStart)))
                << "effect frame " << i;
        }
        for (int k = 1; k <= hold; ++k)
            EXPECT_EQ(alphas[c.middle + k], 256) << "hold copy " << k;
        const auto& first = m.written.result.movie.timeline.frames[c.framesBefore].displayList;
        ASSERT_EQ(first.count(TeskCrossFadeEffect::kStartDepth), 1u);
        EXPECT_FALSE(first.at(TeskCrossFadeEffect::kStartDepth).cxform.hasMult);
        EXPECT_EQ(first.at(TeskCrossFadeEffect::kStartDepth).matrix.translateX, 0);
    }
}

TEST(TeskCrossFadeEffect, NoFramesAndEmptySlotsPlaceNothingMissing) {
    FadeMovie none(50, true, 1000);  // under one frame at 12 fps
    none.fade.CompileAlone(none.movie);
    EXPECT_EQ(none.movie.GetScene(0)->TotalFrames(), 0);

    FadeMovie empty(500);
    ZoAutoPtr<TeskObject> nothing;
    empty.fade.SetEndObject(nothing, nullptr);
    empty.fade.CompileAlone(empty.movie);
    const std::vector<int> alphas = empty.CompileAlphas();
    EXPECT_EQ(alphas, std::vector<int>(6, -1));
    EXPECT_EQ(empty.written.result.movie.timeline.frames[5].displayList.size(), 1u);
}

}  // namespace
