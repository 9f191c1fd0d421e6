#pragma once
// Strong types for the numeric encodings SWF records use, so that a pixel
// count, a twip count and a fixed-point factor can never be swapped by
// accident. Every conversion from double rounds to nearest (halves away from
// zero): truncating would open hairline seams between mesh triangles.
#include <cstdint>

namespace ZoFlash {

/// A length in twips (1/20 pixel).
struct Twips {
    int32_t value = 0;
    friend bool operator==(Twips, Twips) = default;
};

/// An 8.8 fixed-point number (frame rate).
struct Fixed8 {
    int16_t raw = 0;
    friend bool operator==(Fixed8, Fixed8) = default;
};

/// A 16.16 fixed-point number (matrix scale and rotate terms).
struct Fixed16 {
    int32_t raw = 0;
    friend bool operator==(Fixed16, Fixed16) = default;
};

/// Largest magnitude a signed bit field of SWF records can hold (31 bits).
inline constexpr int64_t kZoSWFMaxSignedField = (int64_t{1} << 30) - 1;

/// Rounds to nearest, halves away from zero; throws ZoException with `what`
/// in the message when |value| exceeds `limit`.
int64_t ZoRoundChecked(double value, double limit, const char* what);
/// Rounds `twips` to the nearest twip; throws ZoException when the value lies
/// beyond what a SWF coordinate field can hold.
Twips ZoToTwips(double twips);
/// Checks an integer twip value against the SWF coordinate range.
Twips ZoCheckedTwips(int64_t twips);
/// `value` as 16.16, rounded; throws ZoException when out of range.
Fixed16 ZoToFixed16(double value);
/// `value` as 8.8, rounded; throws ZoException when out of range.
Fixed8 ZoToFixed8(double value);

constexpr double ZoFromFixed16(Fixed16 f) noexcept {
    return f.raw / 65536.0;
}
constexpr double ZoFromFixed8(Fixed8 f) noexcept {
    return f.raw / 256.0;
}

}  // namespace ZoFlash
