#include "flash/swf_records.h"

#include <algorithm>
#include <bit>
#include <initializer_list>

#include "platform/zo_exception.h"

namespace ZoFlash {
namespace {

int SignedBitsOf(std::initializer_list<int32_t> values) noexcept {
    // The widest value decides, and its magnitude bits are those of all the
    // magnitudes together (see ZoSignedBits).
    uint32_t magnitudes = 0;
    bool nonZero = false;
    for (int32_t v : values) {
        magnitudes |= v < 0 ? ~static_cast<uint32_t>(v) : static_cast<uint32_t>(v);
        nonZero = nonZero || v != 0;
    }
    return nonZero ? std::bit_width(magnitudes) + 1 : 0;
}

/// Reads bit fields back, most significant bit first; for records the
/// writer keeps encoded.
class BitReader {
  public:
    explicit BitReader(std::span<const uint8_t> bytes) noexcept : bytes_(bytes) {}
    uint32_t Unsigned(int bits) {
        uint32_t value = 0;
        for (int i = 0; i < bits; ++i, ++position_) {
            if (position_ / 8 >= bytes_.size())
                throw ZoException("An SWF record runs beyond its bytes.");
            value = value << 1 | (bytes_[position_ / 8] >> (7 - position_ % 8) & 1);
        }
        return value;
    }
    int32_t Signed(int bits) {
        const uint32_t value = Unsigned(bits);
        if (bits == 0 || !(value >> (bits - 1) & 1))
            return static_cast<int32_t>(value);
        return static_cast<int32_t>(value | ~((uint64_t{1} << bits) - 1));
    }
    bool Flag() { return Unsigned(1) != 0; }

  private:
    std::span<const uint8_t> bytes_;
    size_t position_ = 0;
};

void PutStyleCount(ZoFByteBuffer& out, size_t count) {
    if (count > 0xFFFF)
        throw ZoException("A shape has more than 65535 fill or line styles.");
    if (count < 0xFF) {
        out.PutU8(static_cast<uint8_t>(count));
        return;
    }
    out.PutU8(0xFF);
    out.PutU16(static_cast<uint16_t>(count));
}

void WriteGradient(ZoFByteBuffer& out, const std::vector<ZoFGradientRecord>& stops,
                   ZoFColourForm form) {
    if (stops.empty() || stops.size() > 8)
        throw ZoException("A gradient needs 1 to 8 colour stops.");
    out.PutU8(static_cast<uint8_t>(stops.size()));
    for (const ZoFGradientRecord& stop : stops) {
        out.PutU8(stop.ratio);
        ZoWriteRgba(out, stop.colour, form);
    }
}

void WriteFillStyle(ZoFByteBuffer& out, const ZoFFillStyle& style, ZoFColourForm form) {
    out.PutU8(static_cast<uint8_t>(style.type));
    switch (style.type) {
        case ZoFFillStyle::Type::kSolid:
            ZoWriteRgba(out, style.colour, form);
            break;
        case ZoFFillStyle::Type::kLinearGradient:
        case ZoFFillStyle::Type::kRadialGradient:
            ZoWriteMatrix(out, style.matrix);
            WriteGradient(out, style.gradient, form);
            break;
        case ZoFFillStyle::Type::kRepeatingBitmap:
        case ZoFFillStyle::Type::kClippedBitmap:
            out.PutU16(style.bitmapId);
            ZoWriteMatrix(out, style.matrix);
            break;
    }
}

}  // namespace

bool ZoFMatrixRecord::IsIdentity() const noexcept {
    return *this == ZoFMatrixRecord{};
}

void ZoWriteRect(ZoFByteBuffer& out, const ZoFRectRecord& rect) {
    const int bits =
        SignedBitsOf({rect.xMin.value, rect.xMax.value, rect.yMin.value, rect.yMax.value});
    ZoFBitWriter w(out);
    w.PutUnsigned(bits, 5);
    w.PutSigned(rect.xMin.value, bits);
    w.PutSigned(rect.xMax.value, bits);
    w.PutSigned(rect.yMin.value, bits);
    w.PutSigned(rect.yMax.value, bits);
}

void ZoWriteRgba(ZoFByteBuffer& out, const ZoFRgbaRecord& colour, ZoFColourForm form) {
    out.PutU8(colour.red);
    out.PutU8(colour.green);
    out.PutU8(colour.blue);
    if (form == ZoFColourForm::kRgba)
        out.PutU8(colour.alpha);
}

void ZoWriteMatrix(ZoFByteBuffer& out, const ZoFMatrixRecord& m) {
    // Each pair of terms shares one 5-bit width field.
    ZoFBitWriter w(out);
    auto pair = [&w](int32_t a, int32_t b) {
        const int bits = SignedBitsOf({a, b});
        w.PutUnsigned(bits, 5);
        w.PutSigned(a, bits);
        w.PutSigned(b, bits);
    };
    w.PutFlag(m.hasScale);
    if (m.hasScale)
        pair(m.scaleX.raw, m.scaleY.raw);
    w.PutFlag(m.hasRotate);
    if (m.hasRotate)
        pair(m.rotateSkew0.raw, m.rotateSkew1.raw);
    pair(m.translateX.value, m.translateY.value);
}

void ZoWriteCxformWithAlpha(ZoFByteBuffer& out, const ZoFCxformRecord& c) {
    int bits = 0;
    if (c.hasMult)
        bits = SignedBitsOf({c.redMult, c.greenMult, c.blueMult, c.alphaMult});
    if (c.hasAdd)
        bits = std::max(bits, SignedBitsOf({c.redAdd, c.greenAdd, c.blueAdd, c.alphaAdd}));
    ZoFBitWriter w(out);
    w.PutFlag(c.hasAdd);
    w.PutFlag(c.hasMult);
    w.PutUnsigned(bits, 4);
    if (c.hasMult)
        for (int16_t v : {c.redMult, c.greenMult, c.blueMult, c.alphaMult})
            w.PutSigned(v, bits);
    if (c.hasAdd)
        for (int16_t v : {c.redAdd, c.greenAdd, c.blueAdd, c.alphaAdd})
            w.PutSigned(v, bits);
}

ZoFMatrixRecord ZoReadMatrix(std::span<const uint8_t> bytes) {
    BitReader r(bytes);
    ZoFMatrixRecord m;
    auto pair = [&r](int32_t& a, int32_t& b) {
        const int bits = static_cast<int>(r.Unsigned(5));
        a = r.Signed(bits);
        b = r.Signed(bits);
    };
    m.hasScale = r.Flag();
    if (m.hasScale)
        pair(m.scaleX.raw, m.scaleY.raw);
    m.hasRotate = r.Flag();
    if (m.hasRotate)
        pair(m.rotateSkew0.raw, m.rotateSkew1.raw);
    pair(m.translateX.value, m.translateY.value);
    return m;
}

ZoFCxformRecord ZoReadCxformWithAlpha(std::span<const uint8_t> bytes) {
    BitReader r(bytes);
    ZoFCxformRecord c;
    c.hasAdd = r.Flag();
    c.hasMult = r.Flag();
    const int bits = static_cast<int>(r.Unsigned(4));
    auto terms = [&r, bits](std::initializer_list<int16_t*> fields) {
        for (int16_t* field : fields)
            *field = static_cast<int16_t>(r.Signed(bits));
    };
    if (c.hasMult)
        terms({&c.redMult, &c.greenMult, &c.blueMult, &c.alphaMult});
    if (c.hasAdd)
        terms({&c.redAdd, &c.greenAdd, &c.blueAdd, &c.alphaAdd});
    return c;
}

void ZoWriteFillStyles(ZoFByteBuffer& out, const std::vector<ZoFFillStyle>& styles,
                       ZoFColourForm form) {
    PutStyleCount(out, styles.size());
    for (const ZoFFillStyle& style : styles)
        WriteFillStyle(out, style, form);
}

void ZoWriteLineStyles(ZoFByteBuffer& out, const std::vector<ZoFLineStyle>& styles,
                       ZoFColourForm form) {
    PutStyleCount(out, styles.size());
    for (const ZoFLineStyle& style : styles) {
        out.PutU16(style.width);
        ZoWriteRgba(out, style.colour, form);
    }
}

}  // namespace ZoFlash
