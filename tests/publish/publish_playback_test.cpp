// Published cross fades in a real player: the fade's colours frame by frame,
// the clipping mask that must hide nothing inside the movie, and the
// invisible link button.
#include <gtest/gtest.h>

#include <cmath>

#include "playback/pixel_checks.h"
#include "playback/playback_movie.h"
#include "publish/cross_fade_document.h"
#include "publish/movie_compiler.h"

namespace {

constexpr const char* kUrl = "https://example.com/after-the-fade";
constexpr int kFrames = 24;  // 2000 ms at 12 frames per second
constexpr int kMiddle = 12;
constexpr int kTolerance = 4;

void WriteFade(const std::filesystem::path& file) {
    CrossFadeDocument doc;
    TeskWriteMovie(doc.file, file);
}

void WriteClippedFadeWithLink(const std::filesystem::path& file) {
    CrossFadeDocument doc;
    doc.file.SetClipToMovieSize(true, nullptr);
    doc.file.SetLinkEnabled(true, nullptr);
    doc.file.SetLinkURL(kUrl, nullptr);
    TeskWriteMovie(doc.file, file);
}

const playback::PlaybackMovie kFade("cross_fade", {0, kMiddle, kFrames - 1}, WriteFade);
const playback::PlaybackMovie kClipped("clipped_linked_fade", {0, kMiddle},
                                       WriteClippedFadeWithLink, {{kMiddle, 60, 80}});

// The red-to-blue mix the fade shows in `frame`.
playback::Rgb FadeColour(int frame) {
    const double alpha = TeskCrossFadeAlpha(frame, kFrames, false);
    const auto channel = [&](int from, int to) {
        return static_cast<uint8_t>(std::lround(from + (to - from) * alpha));
    };
    return {channel(255, 0), 0, channel(0, 255)};
}

TEST(PublishPlayback, CrossFadeRunsFromTheStartObjectToTheEndObject) {
    for (int frame : {0, kMiddle, kFrames - 1}) {
        // Corners and centre of the 182 x 202 movie.
        const playback::SamplePoint points[] = {
            {2, 2, FadeColour(frame)}, {179, 199, FadeColour(frame)}, {91, 101, FadeColour(frame)}};
        EXPECT_TRUE(playback::ColoursAt(kFade.Frame(frame), points, kTolerance)) << frame;
    }
    EXPECT_EQ(FadeColour(0).b, 0);
    EXPECT_EQ(FadeColour(kFrames - 1).r, 0);
}

TEST(PublishPlayback, ClippingMaskAndLinkButtonDrawNothing) {
    for (int frame : {0, kMiddle}) {
        EXPECT_TRUE(playback::FramesMatch(kClipped.Frame(frame), kFade.Frame(frame), 0, 0))
            << frame;
    }
}

TEST(PublishPlayback, ClickingTheMovieOpensTheLink) {
    EXPECT_EQ(kClipped.OpenedUrls(), std::vector<std::string>{kUrl});
    EXPECT_TRUE(kFade.OpenedUrls().empty());
}

}  // namespace
