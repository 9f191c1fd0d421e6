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

/// An unsigned 8.8 fixed-point number (frame rate).
struct Fixed8 {
    uint16_t raw = 0;
    friend bool operator==(Fixed8, Fixed8) = default;
};

/// A 16.16 fixed-point number (matrix scale and rotate terms).
struct Fixed16 {
    int32_t raw = 0;
    friend bool operator==(Fixed16, Fixed16) = default;
};

/// Largest magnitude a signed bit field of SWF records can hold (31 bits).
inline constexpr int64_t kZoSWFMaxSignedField = (int64_t{1} << 30) - 1;

/// Rounding a 16.16 matrix term moves a point at most 2^-17 of its distance
/// from the origin: within this many twips, half a twip at most.
inline constexpr int32_t kZoHalfTwipExtent = 1 << 16;

/// Throws the ZoException for a `what` value out of range.
[[noreturn]] void ZoThrowOutOfRange(const char* what, double value);

/// Rounds to nearest, halves away from zero; throws ZoException with `what`
/// in the message when |value| exceeds `limit` (or is not a number). Inline
/// and without library calls: every placement rounds fourteen terms.
inline int64_t ZoRoundChecked(double value, double limit, const char* what) {
    if (!(value <= limit && value >= -limit))
        ZoThrowOutOfRange(what, value);
    auto whole = static_cast<int64_t>(value);
    const double fraction = value - static_cast<double>(whole);  // exact below 2^52
    if (fraction >= 0.5)
        ++whole;
    else if (fraction <= -0.5)
        --whole;
    return whole;
}

/// Checks an integer twip value against the SWF coordinate range.
inline Twips ZoCheckedTwips(int64_t twips) {
    if (twips > kZoSWFMaxSignedField || twips < -kZoSWFMaxSignedField)
        ZoThrowOutOfRange("coordinate", static_cast<double>(twips));
    return Twips{static_cast<int32_t>(twips)};
}

/// Rounds `twips` to the nearest twip; throws ZoException when the value lies
/// beyond what a SWF coordinate field can hold.
inline Twips ZoToTwips(double twips) {
    return ZoCheckedTwips(
        ZoRoundChecked(twips, static_cast<double>(kZoSWFMaxSignedField), "coordinate"));
}

/// `value` as 16.16, rounded; throws ZoException when out of range.
inline Fixed16 ZoToFixed16(double value) {
    return Fixed16{static_cast<int32_t>(
        ZoRoundChecked(value * 65536.0, static_cast<double>(kZoSWFMaxSignedField), "matrix"))};
}

/// `value` as unsigned 8.8, rounded; throws ZoException when negative or
/// 256 and above.
inline Fixed8 ZoToFixed8(double value) {
    if (value < 0)
        ZoThrowOutOfRange("fixed-point", value);
    return Fixed8{static_cast<uint16_t>(ZoRoundChecked(value * 256.0, 65535.0, "fixed-point"))};
}

constexpr double ZoFromFixed16(Fixed16 f) noexcept {
    return f.raw / 65536.0;
}
constexpr double ZoFromFixed8(Fixed8 f) noexcept {
    return f.raw / 256.0;
}

}  // namespace ZoFlash
