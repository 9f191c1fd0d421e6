#include "playback/pixel_checks.h"

#include <algorithm>
#include <cstdlib>
#include <system_error>

namespace playback {

namespace {

int Distance(int a, int b) noexcept {
    return std::abs(a - b);
}

std::string Describe(Rgba colour) {
    return "(" + std::to_string(colour.r) + ", " + std::to_string(colour.g) + ", " +
           std::to_string(colour.b) + ")";
}

std::string Describe(Rgb colour) {
    return Describe(Rgba{colour.r, colour.g, colour.b, 255});
}

}  // namespace

int ChannelDistance(Rgba actual, Rgb expected) noexcept {
    return std::max({Distance(actual.r, expected.r), Distance(actual.g, expected.g),
                     Distance(actual.b, expected.b)});
}

testing::AssertionResult ColoursAt(const PngImage& frame, std::span<const SamplePoint> points,
                                   int tolerance) {
    std::string misses;
    for (const SamplePoint& point : points) {
        const std::string where =
            "(" + std::to_string(point.x) + ", " + std::to_string(point.y) + ")";
        if (!frame.Contains(point.x, point.y)) {
            misses += "\n  " + where + " lies outside the " + std::to_string(frame.Width()) + "x" +
                      std::to_string(frame.Height()) + " frame";
            continue;
        }
        const Rgba actual = frame.At(point.x, point.y);
        if (ChannelDistance(actual, point.expected) > tolerance) {
            misses += "\n  " + where + " is " + Describe(actual) + ", expected " +
                      Describe(point.expected);
        }
    }
    if (misses.empty()) {
        return testing::AssertionSuccess();
    }
    return testing::AssertionFailure()
           << "colours differ by more than " << tolerance << ":" << misses;
}

FrameDifference CompareFrames(const PngImage& actual, const PngImage& expected, int tolerance) {
    FrameDifference difference;
    const int height = std::min(actual.Height(), expected.Height());
    const int width = std::min(actual.Width(), expected.Width());
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const Rgba want = expected.At(x, y);
            const int distance = ChannelDistance(actual.At(x, y), Rgb{want.r, want.g, want.b});
            difference.largest = std::max(difference.largest, distance);
            if (distance <= tolerance) {
                continue;
            }
            if (difference.differing++ == 0) {
                difference.firstX = x;
                difference.firstY = y;
            }
        }
    }
    return difference;
}

testing::AssertionResult FramesMatch(const PngImage& actual, const PngImage& expected,
                                     int tolerance, int allowedDiffering) {
    if (actual.Width() != expected.Width() || actual.Height() != expected.Height()) {
        return testing::AssertionFailure()
               << "frame is " << actual.Width() << "x" << actual.Height() << ", expected "
               << expected.Width() << "x" << expected.Height();
    }
    const FrameDifference difference = CompareFrames(actual, expected, tolerance);
    if (difference.differing <= allowedDiffering) {
        return testing::AssertionSuccess();
    }
    const Rgba got = actual.At(difference.firstX, difference.firstY);
    const Rgba want = expected.At(difference.firstX, difference.firstY);
    return testing::AssertionFailure()
           << difference.differing << " pixels differ by more than " << tolerance << " (allowed "
           << allowedDiffering << "), largest difference " << difference.largest << "; first at ("
           << difference.firstX << ", " << difference.firstY << "): " << Describe(got)
           << ", expected " << Describe(want);
}

testing::AssertionResult MatchesStoredFrame(const std::filesystem::path& captured,
                                            const std::filesystem::path& stored, int tolerance,
                                            int allowedDiffering) {
    if (std::getenv("VIMBO_UPDATE_PLAYBACK") != nullptr) {
        std::error_code error;
        std::filesystem::create_directories(stored.parent_path(), error);
        std::filesystem::copy_file(captured, stored,
                                   std::filesystem::copy_options::overwrite_existing, error);
        if (error) {
            return testing::AssertionFailure()
                   << "cannot store " << stored << ": " << error.message();
        }
    }
    if (!std::filesystem::exists(stored)) {
        return testing::AssertionFailure()
               << "no stored frame " << stored
               << "; run once with VIMBO_UPDATE_PLAYBACK=1 to store the captured one";
    }
    return FramesMatch(ReadPng(captured), ReadPng(stored), tolerance, allowedDiffering)
           << " (captured " << captured << ", stored " << stored << ")";
}

}  // namespace playback
