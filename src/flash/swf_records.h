#pragma once
// SWF records as plain structs with their encoded field values, one writer
// function per record. Conversions from the caller's doubles happen once, when
// a record is built, so that comparing two records compares what the file
// will hold.
#include <cstdint>
#include <span>
#include <vector>

#include "flash/bit_writer.h"
#include "flash/fixed_point.h"

namespace ZoFlash {

/// RECT: edges in twips.
struct ZoFRectRecord {
    Twips xMin, xMax, yMin, yMax;
    friend bool operator==(const ZoFRectRecord&, const ZoFRectRecord&) = default;
};

/// RGBA (RGB when written without alpha).
struct ZoFRgbaRecord {
    uint8_t red = 0, green = 0, blue = 0, alpha = 255;
    friend bool operator==(const ZoFRgbaRecord&, const ZoFRgbaRecord&) = default;
};

/// MATRIX: x' = scaleX·x + rotateSkew1·y + translateX,
///         y' = rotateSkew0·x + scaleY·y + translateY.
struct ZoFMatrixRecord {
    bool hasScale = false;
    bool hasRotate = false;
    Fixed16 scaleX{65536}, scaleY{65536};
    Fixed16 rotateSkew0, rotateSkew1;
    Twips translateX, translateY;
    bool IsIdentity() const noexcept;
    friend bool operator==(const ZoFMatrixRecord&, const ZoFMatrixRecord&) = default;
};

/// CXFORMWITHALPHA: multiply terms are factor·256, add terms colour units.
struct ZoFCxformRecord {
    bool hasMult = false;
    int16_t redMult = 256, greenMult = 256, blueMult = 256, alphaMult = 256;
    bool hasAdd = false;
    int16_t redAdd = 0, greenAdd = 0, blueAdd = 0, alphaAdd = 0;
    bool IsIdentity() const noexcept { return !hasMult && !hasAdd; }
    friend bool operator==(const ZoFCxformRecord&, const ZoFCxformRecord&) = default;
};

/// One gradient stop.
struct ZoFGradientRecord {
    uint8_t ratio = 0;
    ZoFRgbaRecord colour;
    friend bool operator==(const ZoFGradientRecord&, const ZoFGradientRecord&) = default;
};

/// FILLSTYLE.
struct ZoFFillStyle {
    enum class Type : uint8_t {
        kSolid = 0x00,
        kLinearGradient = 0x10,
        kRadialGradient = 0x12,
        kRepeatingBitmap = 0x40,
        kClippedBitmap = 0x41,
    };
    Type type = Type::kSolid;
    ZoFRgbaRecord colour;                     // solid
    ZoFMatrixRecord matrix;                   // gradient or bitmap
    std::vector<ZoFGradientRecord> gradient;  // 1..8 stops
    uint16_t bitmapId = 0;                    // bitmap
    friend bool operator==(const ZoFFillStyle&, const ZoFFillStyle&) = default;
};

/// LINESTYLE.
struct ZoFLineStyle {
    uint16_t width = 0;  // twips
    ZoFRgbaRecord colour;
    friend bool operator==(const ZoFLineStyle&, const ZoFLineStyle&) = default;
};

/// Which colour form a record is written in: DefineShape3 and
/// PlaceObject2's colour transform carry alpha, DefineShape/DefineText RGB.
enum class ZoFColourForm { kRgb, kRgba };

void ZoWriteRect(ZoFByteBuffer& out, const ZoFRectRecord& rect);
void ZoWriteRgba(ZoFByteBuffer& out, const ZoFRgbaRecord& colour, ZoFColourForm form);
void ZoWriteMatrix(ZoFByteBuffer& out, const ZoFMatrixRecord& matrix);
void ZoWriteCxformWithAlpha(ZoFByteBuffer& out, const ZoFCxformRecord& cxform);
/// Reads back a MATRIX at the start of `bytes`. Throws ZoException when the
/// record runs beyond them.
ZoFMatrixRecord ZoReadMatrix(std::span<const uint8_t> bytes);
/// Reads back a CXFORMWITHALPHA at the start of `bytes`; throws as above.
ZoFCxformRecord ZoReadCxformWithAlpha(std::span<const uint8_t> bytes);
/// The bytes of a CXFORMWITHALPHA record, told by its first byte (the two
/// flags and the width of every term).
constexpr size_t ZoCxformWithAlphaSize(uint8_t firstByte) noexcept {
    const int terms = (firstByte >> 7) * 4 + (firstByte >> 6 & 1) * 4;
    return static_cast<size_t>(6 + terms * (firstByte >> 2 & 0x0F) + 7) / 8;
}
/// FILLSTYLEARRAY (count byte, 0xFF + u16 beyond 254).
void ZoWriteFillStyles(ZoFByteBuffer& out, const std::vector<ZoFFillStyle>& styles,
                       ZoFColourForm form);
/// LINESTYLEARRAY.
void ZoWriteLineStyles(ZoFByteBuffer& out, const std::vector<ZoFLineStyle>& styles,
                       ZoFColourForm form);

}  // namespace ZoFlash
