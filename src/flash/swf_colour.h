#pragma once
#include <cstdint>

#include "flash/swf_records.h"
#include "platform/zo_colour.h"

namespace ZoFlash {

/// An RGBA colour, each channel 0..255.
class ZoSWFColour {
  public:
    /// Opaque black.
    constexpr ZoSWFColour() noexcept = default;
    /// From a COLORREF (0x00BBGGRR) and an alpha.
    constexpr ZoSWFColour(unsigned long colourref, unsigned char alpha) noexcept
        : red_(ZoGetRed(static_cast<COLORREF>(colourref))),
          green_(ZoGetGreen(static_cast<COLORREF>(colourref))),
          blue_(ZoGetBlue(static_cast<COLORREF>(colourref))),
          alpha_(alpha) {}
    constexpr ZoSWFColour(unsigned char r, unsigned char g, unsigned char b,
                          unsigned char a) noexcept
        : red_(r), green_(g), blue_(b), alpha_(a) {}

    constexpr COLORREF GetCOLORREF() const noexcept { return ZoRGB(red_, green_, blue_); }
    constexpr uint8_t GetRed() const noexcept { return red_; }
    constexpr uint8_t GetGreen() const noexcept { return green_; }
    constexpr uint8_t GetBlue() const noexcept { return blue_; }
    constexpr uint8_t GetAlpha() const noexcept { return alpha_; }
    constexpr ZoFRgbaRecord ToRecord() const noexcept { return {red_, green_, blue_, alpha_}; }
    friend constexpr bool operator==(const ZoSWFColour&, const ZoSWFColour&) = default;

  private:
    uint8_t red_ = 0, green_ = 0, blue_ = 0, alpha_ = 255;
};

}  // namespace ZoFlash
