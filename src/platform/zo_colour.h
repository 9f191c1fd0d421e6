#pragma once
// Colours are Windows COLORREF values, 0x00BBGGRR with red in the low byte.
#include <cstdint>

using COLORREF = uint32_t;

/// "No colour" where a colour is optional.
inline constexpr COLORREF kZoNoColour = 0xFFFFFFFFu;

constexpr COLORREF ZoRGB(uint8_t r, uint8_t g, uint8_t b) noexcept {
    return static_cast<COLORREF>(r) | static_cast<COLORREF>(g) << 8 |
           static_cast<COLORREF>(b) << 16;
}
constexpr uint8_t ZoGetRed(COLORREF c) noexcept {
    return static_cast<uint8_t>(c);
}
constexpr uint8_t ZoGetGreen(COLORREF c) noexcept {
    return static_cast<uint8_t>(c >> 8);
}
constexpr uint8_t ZoGetBlue(COLORREF c) noexcept {
    return static_cast<uint8_t>(c >> 16);
}
