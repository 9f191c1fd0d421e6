#pragma once
// Units that are easy to mix up get their own types. Times are milliseconds,
// SWF geometry is in twips (20 to the pixel), angles are stored in degrees.
#include <chrono>
#include <cstdint>

using ZoMilliseconds = std::chrono::duration<int32_t, std::milli>;

inline constexpr int32_t kZoTwipsPerPixel = 20;
inline constexpr double kZoDegreesToRadians = 0.017453292519943295;

constexpr int32_t ZoPixelsToTwips(int32_t pixels) noexcept {
    return pixels * kZoTwipsPerPixel;
}

/// Frames an effect of `duration` lasts at `frameRate`: truncated, so 1950 ms
/// at 12 fps is 23 frames.
constexpr int32_t ZoEffectFrames(ZoMilliseconds duration, int32_t frameRate) noexcept {
    return duration.count() * frameRate / 1000;
}

/// Frames a hold of `hold` adds at `frameRate`: rounded to the nearest frame,
/// halves up, so 42 ms at 12 fps is 1 frame and 40 ms is none.
constexpr int32_t ZoHoldFrames(ZoMilliseconds hold, int32_t frameRate) noexcept {
    return (hold.count() * frameRate + 500) / 1000;
}
