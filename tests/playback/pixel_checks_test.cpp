#include <gtest/gtest.h>

#include <fstream>

#include "playback/pixel_checks.h"

namespace playback {
namespace {

PngImage Checker() {
    PngImage image(4, 3, {10, 20, 30, 255});
    image.Set(1, 1, {200, 100, 0, 255});
    image.Set(3, 2, {0, 0, 0, 0});
    return image;
}

TEST(PixelChecks, ColoursAtHonoursTolerancePerChannel) {
    struct Case {
        SamplePoint point;
        int tolerance;
        bool passes;
    };
    const Case cases[] = {
        {{1, 1, {200, 100, 0}}, 0, true},   {{1, 1, {203, 100, 0}}, 3, true},
        {{1, 1, {204, 100, 0}}, 3, false},  {{1, 1, {200, 96, 0}}, 3, false},
        {{0, 0, {10, 20, 34}}, 3, false},   {{3, 2, {0, 0, 0}}, 0, true},  // alpha is not compared
        {{4, 0, {10, 20, 30}}, 255, false}, {{0, -1, {10, 20, 30}}, 255, false},
    };
    const PngImage image = Checker();
    for (const Case& c : cases) {
        EXPECT_EQ(static_cast<bool>(ColoursAt(image, {&c.point, 1}, c.tolerance)), c.passes)
            << c.point.x << "," << c.point.y << " tolerance " << c.tolerance;
    }
}

TEST(PixelChecks, ColoursAtListsEveryMiss) {
    const SamplePoint points[] = {{0, 0, {0, 0, 0}}, {1, 1, {200, 100, 0}}, {9, 9, {0, 0, 0}}};
    const testing::AssertionResult result = ColoursAt(Checker(), points, 2);
    ASSERT_FALSE(result);
    const std::string message = result.message();
    EXPECT_NE(message.find("(0, 0) is (10, 20, 30), expected (0, 0, 0)"), std::string::npos)
        << message;
    EXPECT_NE(message.find("(9, 9) lies outside the 4x3 frame"), std::string::npos) << message;
    EXPECT_EQ(message.find("(1, 1)"), std::string::npos) << message;
}

TEST(PixelChecks, CompareFramesCountsPixelsBeyondTolerance) {
    PngImage actual = Checker();
    actual.Set(2, 0, {10, 25, 30, 255});  // 5 off in green
    actual.Set(0, 2, {10, 20, 90, 255});  // 60 off in blue
    const FrameDifference loose = CompareFrames(actual, Checker(), 5);
    EXPECT_EQ(loose.differing, 1);
    EXPECT_EQ(loose.largest, 60);
    EXPECT_EQ(loose.firstX, 0);
    EXPECT_EQ(loose.firstY, 2);
    const FrameDifference strict = CompareFrames(actual, Checker(), 4);
    EXPECT_EQ(strict.differing, 2);
    EXPECT_EQ(strict.firstX, 2);
    EXPECT_EQ(strict.firstY, 0);
    EXPECT_EQ(CompareFrames(Checker(), Checker(), 0).differing, 0);
}

TEST(PixelChecks, FramesMatchAllowsAGivenNumberOfDifferingPixels) {
    PngImage actual = Checker();
    actual.Set(2, 0, {0, 0, 0, 255});
    actual.Set(2, 1, {0, 0, 0, 255});
    EXPECT_TRUE(FramesMatch(actual, Checker(), 0, 2));
    const testing::AssertionResult one = FramesMatch(actual, Checker(), 0, 1);
    ASSERT_FALSE(one);
    EXPECT_NE(std::string(one.message()).find("2 pixels differ by more than 0 (allowed 1)"),
              std::string::npos)
        << one.message();
    const testing::AssertionResult size = FramesMatch(PngImage(4, 4), Checker(), 255, 100);
    ASSERT_FALSE(size);
    EXPECT_NE(std::string(size.message()).find("frame is 4x4, expected 4x3"), std::string::npos);
}

TEST(PixelChecks, ReadPngRejectsWhatIsNotAPng) {
    const std::filesystem::path file =
        std::filesystem::temp_directory_path() / "vimbo_playback_not_a.png";
    std::ofstream(file) << "GIF89a, not a PNG";
    EXPECT_THROW(ReadPng(file), std::runtime_error);
    std::filesystem::remove(file);
    EXPECT_THROW(ReadPng(file), std::runtime_error);
}

}  // namespace
}  // namespace playback
