#include "publish/preview_builder.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <fstream>
#include <future>
#include <iterator>
#include <thread>

#include "media/swf_movie.h"
#include "platform/temp_directory.h"
#include "publish/cross_fade_document.h"
#include "publish/movie_compiler.h"
#include "support/swf_reader.h"

namespace {

using namespace std::chrono_literals;

// Waits (polling, as the editor does) until `done` holds or 20 s pass.
template <typename Condition>
bool Eventually(Condition done) {
    for (auto until = std::chrono::steady_clock::now() + 20s;
         std::chrono::steady_clock::now() < until; std::this_thread::sleep_for(5ms))
        if (done())
            return true;
    return false;
}

int32_t LastTag(const TeskPreviewBuilder& builder) {
    std::filesystem::path ignored;
    return builder.GetLastBuilt(ignored);
}

testing::AssertionResult IsValidMovie(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    const std::vector<uint8_t> bytes{std::istreambuf_iterator<char>(in), {}};
    const auto problems = SwfTest::ValidateSwf(bytes).problems;
    if (bytes.empty() || !problems.empty())
        return testing::AssertionFailure() << file << " is not a valid movie";
    return testing::AssertionSuccess();
}

// A compiler that counts its builds and holds the first one until released.
struct HeldCompiler {
    std::atomic<int> builds = 0;
    std::promise<void> entered, release;
    std::shared_future<void> released = release.get_future().share();

    TeskPreviewBuilder::Compiler Get() {
        return [this](const TeskFile& file) {
            if (builds++ == 0) {
                entered.set_value();
                released.wait();
            }
            return TeskBuildMovie(file);
        };
    }
};

struct Files {
    std::filesystem::path names[3] = {ZoMakeTempFileName(".swf"), ZoMakeTempFileName(".swf"),
                                      ZoMakeTempFileName(".swf")};
};

TEST(PreviewBuilder, QuickChangesWriteOnePreviewForTheLastUntilQuit) {
    CrossFadeDocument doc;
    HeldCompiler compiler;
    compiler.release.set_value();
    Files files;
    TeskPreviewBuilder builder(compiler.Get());
    EXPECT_FALSE(builder.IsRunning());
    for (int32_t tag = 0; tag < 3; ++tag)
        builder.Build(doc.file, files.names[tag], tag);
    builder.Start();
    ASSERT_TRUE(Eventually([&] { return LastTag(builder) == 2; }));
    EXPECT_EQ(compiler.builds, 1);
    EXPECT_FALSE(std::filesystem::exists(files.names[0]));
    EXPECT_FALSE(std::filesystem::exists(files.names[1]));
    EXPECT_TRUE(IsValidMovie(files.names[2]));
    EXPECT_EQ(builder.GetLastError(), "");
    builder.Quit();
    EXPECT_TRUE(Eventually([&] { return builder.HasEnded(); }));
    EXPECT_TRUE(builder.IsRunning());
}

TEST(PreviewBuilder, ABuildOvertakenByANewerRequestIsNotWritten) {
    CrossFadeDocument doc;
    HeldCompiler compiler;
    Files files;
    TeskPreviewBuilder builder(compiler.Get());
    builder.Start();
    builder.Build(doc.file, files.names[0], 0);
    compiler.entered.get_future().wait();
    doc.file.SetFrameRate(24, nullptr);
    builder.Build(doc.file, files.names[1], 1);
    compiler.release.set_value();
    ASSERT_TRUE(Eventually([&] { return LastTag(builder) == 1; }));
    EXPECT_EQ(compiler.builds, 2);
    EXPECT_FALSE(std::filesystem::exists(files.names[0]));
    ASSERT_TRUE(IsValidMovie(files.names[1]));
}

TEST(PreviewBuilder, ShuttingDownDuringABuildEndsTheWorkerWithoutWriting) {
    CrossFadeDocument doc;
    HeldCompiler compiler;
    Files files;
    std::thread releaser;
    {
        TeskPreviewBuilder builder(compiler.Get());
        builder.Start();
        builder.Build(doc.file, files.names[0], 0);
        compiler.entered.get_future().wait();
        // The build ends only after the destructor has asked the worker to quit.
        releaser = std::thread([&] {
            std::this_thread::sleep_for(100ms);
            compiler.release.set_value();
        });
    }
    releaser.join();
    EXPECT_FALSE(std::filesystem::exists(files.names[0]));
}

TEST(PreviewSession, PollingReportsEachFinishedPreviewOnce) {
    CrossFadeDocument doc;
    TeskPreviewSession session;
    for (int i = 0; i < 3; ++i)
        session.RequestPreview(doc.file);
    std::optional<std::filesystem::path> loaded;
    ASSERT_TRUE(Eventually([&] {
        if (auto file = session.PollPreview())
            loaded = file;
        return session.ShowsNewestRequest();
    }));
    ASSERT_TRUE(loaded);
    EXPECT_EQ(*loaded, session.PreviewFile());
    EXPECT_TRUE(IsValidMovie(*loaded));
    EXPECT_FALSE(session.PollPreview());
    session.RequestPreview(doc.file);
    EXPECT_FALSE(session.ShowsNewestRequest());
}

TEST(PreviewSession, FrameRateChangesContinueAtTheSameTime) {
    struct Case {
        int32_t frame, oldRate, newRate, newCount, expected;
    };
    const Case cases[] = {
        {12, 12, 24, 48, 24},  // 1000 ms
        {11, 12, 24, 48, 22},  // 916 ms
        {12, 12, 24, 20, 19},  // past the new end: its last frame
        {5, 0, 12, 24, 0},     // nothing shown before
    };
    for (const Case& c : cases)
        EXPECT_EQ(TeskContinuationFrame(c.frame, c.oldRate, c.newRate, c.newCount), c.expected)
            << c.frame << " at " << c.oldRate << " fps";
}

}  // namespace
