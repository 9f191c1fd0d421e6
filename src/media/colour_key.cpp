#include "media/colour_key.h"

#include <cstdlib>

bool TeskIsNearColour(uint8_t r, uint8_t g, uint8_t b, COLORREF key, int32_t tolerance) noexcept {
    return std::abs(r - ZoGetRed(key)) <= tolerance && std::abs(g - ZoGetGreen(key)) <= tolerance &&
           std::abs(b - ZoGetBlue(key)) <= tolerance;
}

void TeskApplyColourKey(std::span<uint8_t> rgba, COLORREF key, int32_t tolerance) noexcept {
    if (key == kZoNoColour)
        return;
    for (size_t i = 0; i + 3 < rgba.size(); i += 4)
        if (TeskIsNearColour(rgba[i], rgba[i + 1], rgba[i + 2], key, tolerance))
            rgba[i + 3] = 0;
}
