#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <span>

#include "playback/png_image.h"

namespace playback {

/// A colour without alpha; the player's canvas is always opaque.
struct Rgb {
    std::uint8_t r = 0;
    std::uint8_t g = 0;
    std::uint8_t b = 0;
};

/// A point where a frame must show a colour. Pick points a few pixels inside
/// shapes: edges are anti-aliased over about one pixel.
struct SamplePoint {
    int x = 0;
    int y = 0;
    Rgb expected;
};

/// The largest difference of one channel between two colours.
int ChannelDistance(Rgba actual, Rgb expected) noexcept;

/// Passes when every point lies inside the frame and every channel is within
/// `tolerance` of the expected colour; the message lists every miss.
testing::AssertionResult ColoursAt(const PngImage& frame, std::span<const SamplePoint> points,
                                   int tolerance);

/// How two pictures of the same size differ.
struct FrameDifference {
    int differing = 0;  ///< pixels where some channel differs by more than the tolerance
    int largest = 0;    ///< largest channel difference anywhere
    int firstX = -1;    ///< first differing pixel in reading order, or -1
    int firstY = -1;
};

/// Compares colour channels pixel by pixel; alpha is ignored. The pictures
/// must have the same size.
FrameDifference CompareFrames(const PngImage& actual, const PngImage& expected, int tolerance);

/// Passes when the sizes agree and at most `allowedDiffering` pixels differ by
/// more than `tolerance` in some channel.
testing::AssertionResult FramesMatch(const PngImage& actual, const PngImage& expected,
                                     int tolerance, int allowedDiffering);

/// Compares a captured frame with a stored PNG. With VIMBO_UPDATE_PLAYBACK set
/// in the environment it first stores the captured file there instead, which
/// is how reference frames are made (look at them before committing).
testing::AssertionResult MatchesStoredFrame(const std::filesystem::path& captured,
                                            const std::filesystem::path& stored, int tolerance,
                                            int allowedDiffering);

}  // namespace playback
