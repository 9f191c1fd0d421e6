#pragma once
// Keying out one colour: pixels near the transparent colour become fully
// transparent, so a picture's flat backdrop disappears in the movie.
#include <cstdint>
#include <span>

#include "platform/zo_colour.h"

/// True when (r, g, b) lies within `tolerance` of `key` in every channel.
bool TeskIsNearColour(uint8_t r, uint8_t g, uint8_t b, COLORREF key, int32_t tolerance) noexcept;

/// Sets alpha 0 on every RGBA pixel near `key`; kZoNoColour keys nothing.
void TeskApplyColourKey(std::span<uint8_t> rgba, COLORREF key, int32_t tolerance) noexcept;
