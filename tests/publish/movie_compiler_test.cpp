#include "publish/movie_compiler.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

#include "document/file.h"
#include "effects/cross_fade_effect.h"
#include "flash/byte_stream.h"
#include "media/swf_movie.h"
#include "objects/solid_object.h"
#include "platform/temp_directory.h"
#include "platform/zo_exception.h"
#include "publish/cross_fade_document.h"
#include "support/swf_reader.h"

namespace {

SwfTest::Validation Compile(const TeskFile& file) {
    ZoFlash::ZoFMemorySink sink;
    TeskBuildMovie(file)->WriteMovie(sink);
    SwfTest::Validation result = SwfTest::ValidateSwf(sink.Bytes());
    for (const auto& problem : result.problems)
        ADD_FAILURE() << problem;
    return result;
}

TEST(MovieCompiler, HeaderValuesAndFrameZeroOfADefaultCrossFade) {
    CrossFadeDocument doc;
    const SwfTest::Movie movie = Compile(doc.file).movie;
    EXPECT_EQ(movie.version, 5);
    EXPECT_EQ(movie.frameCount, 24);
    EXPECT_EQ(movie.frameSize.xMax, 3640);
    EXPECT_EQ(movie.frameSize.yMax, 4040);
    EXPECT_EQ(movie.frameRate, 12 << 8);
    ASSERT_TRUE(movie.background);
    EXPECT_EQ(movie.background->r, 255);
    const auto& frame0 = movie.timeline.frames.at(0);
    ASSERT_EQ(frame0.actions.size(), 1u);
    EXPECT_EQ(frame0.actions[0].url, "FSCommand:showmenu");
    EXPECT_EQ(frame0.actions[0].target, "false");
    // Only the effect's own two depths: no mask, no button, no movie-wide objects.
    for (const auto& frame : movie.timeline.frames) {
        ASSERT_EQ(frame.displayList.size(), 2u);
        EXPECT_TRUE(frame.displayList.count(100) && frame.displayList.count(101));
    }
    for (size_t i = 1; i < movie.timeline.frames.size(); ++i) {
        EXPECT_TRUE(movie.timeline.frames[i].actions.empty()) << i;  // no Stop anywhere
    }
}

TEST(MovieCompiler, HoldsBecomeCopiesOfTheFirstAndLastFrames) {
    struct Case {
        int frameRate, startHold, finishHold, expectedStart, expectedFinish;
    };
    for (const Case& c : {Case{12, 1000, 0, 12, 0}, Case{12, 40, 42, 0, 1},
                          Case{12, 125, 1000, 2, 12}, Case{10, 500, 0, 5, 0}}) {
        CrossFadeDocument doc;
        doc.file.SetFrameRate(c.frameRate, nullptr);
        auto timing = doc.fade->GetTiming();
        timing.startHold = c.startHold;
        timing.finishHold = c.finishHold;
        doc.fade->SetTiming(timing, nullptr);
        const auto frames = Compile(doc.file).movie.timeline.frames;
        const int effectFrames = 2 * c.frameRate;
        ASSERT_EQ(static_cast<int>(frames.size()),
                  effectFrames + c.expectedStart + c.expectedFinish);
        const auto alphaAt = [&](size_t i) { return frames[i].displayList.at(101).cxform.mult[3]; };
        for (int i = 1; i <= c.expectedStart; ++i)
            EXPECT_EQ(alphaAt(i), alphaAt(0)) << i;
        EXPECT_GT(alphaAt(c.expectedStart + 1), alphaAt(0));  // the effect's second frame
        for (size_t i = frames.size() - c.expectedFinish; i < frames.size(); ++i) {
            EXPECT_EQ(alphaAt(i), 256) << i;
        }
    }
}

TEST(MovieCompiler, AnEffectWithoutFramesStillHoldsOneEmptyFrame) {
    CrossFadeDocument doc;
    doc.fade->SetEffectTime(0, nullptr);
    auto timing = doc.fade->GetTiming();
    timing.finishHold = 1000;
    doc.fade->SetTiming(timing, nullptr);
    const auto frames = Compile(doc.file).movie.timeline.frames;
    ASSERT_EQ(frames.size(), 13u);
    for (const auto& frame : frames)
        EXPECT_TRUE(frame.displayList.empty());
}

TEST(MovieCompiler, MovieWidePieces) {
    struct Case {
        bool disableRightClick, clip, linkEnabled;
        const char* url;
        bool menuAction, mask, button;
    };
    for (const Case& c : {Case{false, false, false, "http://a.example/", false, false, false},
                          Case{true, true, true, "", true, true, false},
                          Case{false, false, true, "http://a.example/", false, false, true},
                          Case{false, true, true, "http://a.example/", false, true, true}}) {
        CrossFadeDocument doc;
        doc.file.SetDisableRightClick(c.disableRightClick, nullptr);
        doc.file.SetClipToMovieSize(c.clip, nullptr);
        doc.file.SetLinkEnabled(c.linkEnabled, nullptr);
        doc.file.SetLinkURL(c.url, nullptr);
        doc.file.SetLinkTarget("_top", nullptr);
        const SwfTest::Movie movie = Compile(doc.file).movie;
        const auto& frame0 = movie.timeline.frames.at(0);
        EXPECT_EQ(!frame0.actions.empty(), c.menuAction);
        EXPECT_EQ(frame0.displayList.count(1) == 1, c.mask);
        if (c.mask) {
            EXPECT_EQ(frame0.displayList.at(1).clipDepth, 10000);
        }
        EXPECT_EQ(frame0.displayList.count(10001) == 1, c.button);
        if (!c.button)
            continue;
        const SwfTest::Button& button = movie.buttons.at(frame0.displayList.at(10001).characterId);
        ASSERT_EQ(button.records.size(), 1u);
        EXPECT_EQ(button.records[0].states, 8);  // hit area only: invisible
        ASSERT_EQ(button.conditions.size(), 1u);
        EXPECT_EQ(button.conditions[0].conditions, 8);
        ASSERT_EQ(button.conditions[0].actions.size(), 1u);
        EXPECT_EQ(button.conditions[0].actions[0].url, c.url);
        EXPECT_EQ(button.conditions[0].actions[0].target, "_top");
        // Movie-wide pieces stay for the whole movie.
        EXPECT_EQ(movie.timeline.frames.back().displayList.count(10001), 1u);
    }
}

TEST(MovieCompiler, ForegroundAndBackgroundFrameTheEffect) {
    CrossFadeDocument doc;
    ZoAutoPtr<TeskObject> front = std::make_unique<TeskSolidObject>(0x00FF00);
    ZoAutoPtr<TeskObject> back = std::make_unique<TeskSolidObject>(0x123456);
    doc.file.SetForegroundObject(front, nullptr);
    doc.file.SetBackgroundObject(back, nullptr);
    const SwfTest::Movie movie = Compile(doc.file).movie;
    for (const auto& frame : movie.timeline.frames) {
        EXPECT_EQ(frame.displayList.begin()->first, 2);
        EXPECT_EQ(frame.displayList.rbegin()->first, 10000);
    }
    const auto& shape = movie.shapes.at(movie.timeline.frames[0].displayList.at(2).characterId);
    ASSERT_FALSE(shape.fills.empty());
    EXPECT_EQ(shape.fills[0].colour.r, 0x56);
    EXPECT_EQ(shape.fills[0].colour.b, 0x12);
}

TEST(MovieCompiler, OutputIsByteIdenticalAndWrittenAtomically) {
    CrossFadeDocument doc;
    const auto path = ZoMakeTempFileName(".swf");
    TeskWriteMovie(doc.file, path);
    std::ifstream in(path, std::ios::binary);
    const std::vector<uint8_t> first{std::istreambuf_iterator<char>(in), {}};
    ZoFlash::ZoFMemorySink again;
    TeskBuildMovie(doc.file)->WriteMovie(again);
    EXPECT_EQ(first, again.Bytes());
    // A failed compile keeps the old file: a frame rate SWF cannot hold throws.
    doc.file.SetFrameRate(0, nullptr);
    EXPECT_THROW(TeskWriteMovie(doc.file, path), ZoException);
    doc.file.Compile(path.c_str());  // reports nothing
    std::ifstream still(path, std::ios::binary);
    EXPECT_EQ(first, (std::vector<uint8_t>{std::istreambuf_iterator<char>(still), {}}));
}

}  // namespace
