// Our own reader of Windows and OS/2 bitmaps: 1, 4, 8, 16, 24 and 32 bits a
// pixel, bottom-up or top-down, uncompressed, bit fields, RLE8 and RLE4.
#include "platform/image_codec_internal.h"

#include "platform/zo_exception.h"
#include "platform/zo_string.h"

#include <algorithm>
#include <bit>

namespace ZoImageCodec::Detail {
namespace {

constexpr std::size_t kFileHeaderBytes = 14;
constexpr uint32_t kCoreHeaderBytes = 12;
constexpr uint32_t kInfoHeaderBytes = 40;

enum Compression : uint32_t {
    kRgb = 0,
    kRle8 = 1,
    kRle4 = 2,
    kBitFields = 3,
    kAlphaBitFields = 6,
};

[[noreturn]] void Corrupt(std::string_view reason) {
    ThrowCorrupt("BMP", reason);
}

uint32_t ReadU16(std::span<const uint8_t> bytes, std::size_t at) {
    if (at + 2 > bytes.size()) {
        Corrupt("header cut short");
    }
    return bytes[at] | uint32_t{bytes[at + 1]} << 8;
}

uint32_t ReadU32(std::span<const uint8_t> bytes, std::size_t at) {
    return ReadU16(bytes, at) | ReadU16(bytes, at + 2) << 16;
}

// One channel of a bit-field pixel: where it sits and how to widen it to 8
// bits. A zero mask reads as `absent`.
struct Channel {
    uint32_t mask = 0;
    int shift = 0;
    uint32_t maximum = 0;

    explicit Channel(uint32_t m) : mask(m) {
        if (mask != 0) {
            shift = std::countr_zero(mask);
            maximum = mask >> shift;
        }
    }
    uint8_t Read(uint32_t pixel, uint8_t absent) const noexcept {
        if (mask == 0) {
            return absent;
        }
        const uint32_t value = (pixel & mask) >> shift;
        if (maximum == 0xFF) {
            return static_cast<uint8_t>(value);  // the common 8-bit channel needs no scaling
        }
        return static_cast<uint8_t>((uint64_t{value} * 255 + maximum / 2) / maximum);
    }
};

struct BmpHeader {
    int64_t width = 0;
    int64_t height = 0;  // positive; topDown says which way rows run
    bool topDown = false;
    uint32_t bitsPerPixel = 0;
    uint32_t compression = kRgb;
    uint32_t pixelOffset = 0;
    uint32_t masks[4] = {};        // red, green, blue, alpha
    std::vector<uint8_t> palette;  // RGBA entries
};

void ReadMasks(std::span<const uint8_t> bytes, uint32_t headerSize, BmpHeader& header) {
    const std::size_t at = kFileHeaderBytes + kInfoHeaderBytes;
    // Masks live inside the longer headers, or follow the 40-byte one.
    const bool alphaIncluded = header.compression == kAlphaBitFields || headerSize >= 56;
    const int count = alphaIncluded ? 4 : 3;
    for (int i = 0; i < count; ++i) {
        header.masks[i] = ReadU32(bytes, at + 4 * i);
    }
}

void DefaultMasks(BmpHeader& header) {
    if (header.bitsPerPixel == 16) {
        header.masks[0] = 0x7C00;  // 5-5-5, the format of plain 16-bit files
        header.masks[1] = 0x03E0;
        header.masks[2] = 0x001F;
    } else {
        // The fourth byte of plain 32-bit pixels is reserved and often
        // garbage, so it never means alpha.
        header.masks[0] = 0xFF0000;
        header.masks[1] = 0x00FF00;
        header.masks[2] = 0x0000FF;
    }
}

void ReadPalette(std::span<const uint8_t> bytes, std::size_t at, uint32_t declared,
                 std::size_t entryBytes, BmpHeader& header) {
    const uint32_t full = 1u << header.bitsPerPixel;
    const uint32_t count = declared == 0 || declared > full ? full : declared;
    header.palette.assign(std::size_t{full} * 4, 0);
    for (uint32_t i = 0; i < count; ++i) {
        const std::size_t entry = at + i * entryBytes;
        if (entry + 3 > bytes.size()) {
            Corrupt("palette cut short");
        }
        header.palette[i * 4] = bytes[entry + 2];
        header.palette[i * 4 + 1] = bytes[entry + 1];
        header.palette[i * 4 + 2] = bytes[entry];
        header.palette[i * 4 + 3] = 0xFF;
    }
    // Indices past the declared entries show opaque black.
    for (uint32_t i = count; i < full; ++i) {
        header.palette[i * 4 + 3] = 0xFF;
    }
}

bool IsSupported(const BmpHeader& header) {
    switch (header.compression) {
        case kRgb:
            return header.bitsPerPixel == 1 || header.bitsPerPixel == 4 ||
                   header.bitsPerPixel == 8 || header.bitsPerPixel == 16 ||
                   header.bitsPerPixel == 24 || header.bitsPerPixel == 32;
        case kRle8:
            return header.bitsPerPixel == 8;
        case kRle4:
            return header.bitsPerPixel == 4;
        case kBitFields:
        case kAlphaBitFields:
            return header.bitsPerPixel == 16 || header.bitsPerPixel == 32;
        default:
            return false;
    }
}

BmpHeader ReadHeader(std::span<const uint8_t> bytes) {
    BmpHeader header;
    header.pixelOffset = ReadU32(bytes, 10);
    const uint32_t headerSize = ReadU32(bytes, kFileHeaderBytes);
    const std::size_t fields = kFileHeaderBytes + 4;
    uint32_t declaredColours = 0;
    if (headerSize == kCoreHeaderBytes) {
        header.width = ReadU16(bytes, fields);
        header.height = ReadU16(bytes, fields + 2);
        header.bitsPerPixel = ReadU16(bytes, fields + 6);
    } else if (headerSize >= kInfoHeaderBytes) {
        header.width = static_cast<int32_t>(ReadU32(bytes, fields));
        const auto height = static_cast<int32_t>(ReadU32(bytes, fields + 4));
        header.topDown = height < 0;
        header.height = header.topDown ? -int64_t{height} : height;
        header.bitsPerPixel = ReadU16(bytes, fields + 10);
        header.compression = ReadU32(bytes, fields + 12);
        declaredColours = ReadU32(bytes, fields + 28);
    } else {
        Corrupt("unknown header");
    }
    if (!IsSupported(header)) {
        throw ZoException(
            ZoFormat("BMP pictures of %u bits a pixel with compression %u are "
                     "not supported.",
                     header.bitsPerPixel, header.compression));
    }
    CheckSize(header.width, header.height);
    if (header.bitsPerPixel <= 8) {
        const bool core = headerSize == kCoreHeaderBytes;
        ReadPalette(bytes, kFileHeaderBytes + headerSize, declaredColours, core ? 3 : 4, header);
    } else if (header.compression == kRgb) {
        DefaultMasks(header);
    } else {
        ReadMasks(bytes, headerSize, header);
    }
    return header;
}

// Where row y (top-down) starts in the picture.
uint8_t* TargetRow(ZoDecodedImage& image, const BmpHeader& header, int64_t fileRow) {
    const int64_t y = header.topDown ? fileRow : header.height - 1 - fileRow;
    return image.rgba.data() + y * image.width * 4;
}

void PutPaletteColour(const BmpHeader& header, uint32_t index, uint8_t* pixel) noexcept {
    std::copy_n(&header.palette[index * 4], 4, pixel);
}

void ReadIndexedRow(const BmpHeader& header, const uint8_t* source, int64_t width,
                    uint8_t* row) noexcept {
    const uint32_t bits = header.bitsPerPixel;
    const uint32_t mask = (1u << bits) - 1;
    for (int64_t x = 0; x < width; ++x) {
        const int64_t bit = x * bits;
        const uint32_t shift = 8 - bits - static_cast<uint32_t>(bit % 8);
        PutPaletteColour(header, (source[bit / 8] >> shift) & mask, row + x * 4);
    }
}

void ReadDirectRow(const BmpHeader& header, const Channel (&channels)[4], const uint8_t* source,
                   int64_t width, uint8_t* row) noexcept {
    const uint32_t bytesPerPixel = header.bitsPerPixel / 8;
    for (int64_t x = 0; x < width; ++x, source += bytesPerPixel, row += 4) {
        uint32_t pixel = 0;
        for (uint32_t i = 0; i < bytesPerPixel; ++i) {
            pixel |= uint32_t{source[i]} << (8 * i);
        }
        for (int c = 0; c < 3; ++c) {
            row[c] = channels[c].Read(pixel, 0);
        }
        row[3] = channels[3].Read(pixel, 0xFF);
    }
}

int64_t RowStride(const BmpHeader& header) noexcept {
    return (header.width * header.bitsPerPixel + 31) / 32 * 4;
}

// Checked before the picture is allocated, so a short file claiming a huge
// size costs nothing.
void CheckPixelDataSize(std::span<const uint8_t> bytes, const BmpHeader& header) {
    // The last row need not carry its padding.
    const int64_t needed =
        RowStride(header) * (header.height - 1) + (header.width * header.bitsPerPixel + 7) / 8;
    if (header.pixelOffset > bytes.size() ||
        static_cast<int64_t>(bytes.size() - header.pixelOffset) < needed) {
        Corrupt("pixel data cut short");
    }
}

void ReadUncompressed(std::span<const uint8_t> bytes, const BmpHeader& header,
                      ZoDecodedImage& image) {
    const int64_t stride = RowStride(header);
    const Channel channels[4] = {Channel(header.masks[0]), Channel(header.masks[1]),
                                 Channel(header.masks[2]), Channel(header.masks[3])};
    for (int64_t fileRow = 0; fileRow < header.height; ++fileRow) {
        const uint8_t* source = bytes.data() + header.pixelOffset + fileRow * stride;
        uint8_t* row = TargetRow(image, header, fileRow);
        if (header.bitsPerPixel <= 8) {
            ReadIndexedRow(header, source, header.width, row);
        } else {
            ReadDirectRow(header, channels, source, header.width, row);
        }
    }
}

// Run-length data: pixels the runs skip over stay transparent, as browsers
// show them.
class RleDecoder {
  public:
    RleDecoder(std::span<const uint8_t> bytes, const BmpHeader& header, ZoDecodedImage& image)
        : bytes_(bytes), header_(header), image_(image), at_(header.pixelOffset) {}

    void Run() {
        for (;;) {
            const uint8_t count = Next();
            const uint8_t value = Next();
            if (count > 0) {
                for (int i = 0; i < count; ++i) {
                    Put(Nibble(value, i));
                }
            } else if (value == 0) {
                x_ = 0;
                ++fileRow_;
            } else if (value == 1) {
                return;
            } else if (value == 2) {
                x_ += Next();
                fileRow_ += Next();
            } else {
                ReadLiteral(value);
            }
        }
    }

  private:
    bool IsRle4() const noexcept { return header_.compression == kRle4; }

    uint8_t Next() {
        if (at_ >= bytes_.size()) {
            Corrupt("run-length data cut short");
        }
        return bytes_[at_++];
    }

    uint32_t Nibble(uint8_t value, int i) const noexcept {
        if (!IsRle4()) {
            return value;
        }
        return i % 2 == 0 ? value >> 4 : value & 0x0F;
    }

    void ReadLiteral(int count) {
        const int sourceBytes = IsRle4() ? (count + 1) / 2 : count;
        uint8_t value = 0;
        for (int i = 0; i < count; ++i) {
            if (!IsRle4() || i % 2 == 0) {
                value = Next();
            }
            Put(Nibble(value, i));
        }
        if (sourceBytes % 2 != 0) {
            Next();  // literal runs are padded to whole 16-bit words
        }
    }

    // Pixels outside the picture are dropped: hostile runs cannot write past it.
    void Put(uint32_t index) {
        if (x_ < header_.width && fileRow_ < header_.height) {
            PutPaletteColour(header_, index, TargetRow(image_, header_, fileRow_) + x_ * 4);
        }
        ++x_;
    }

    std::span<const uint8_t> bytes_;
    const BmpHeader& header_;
    ZoDecodedImage& image_;
    std::size_t at_;
    int64_t x_ = 0;
    int64_t fileRow_ = 0;
};

}  // namespace

ZoDecodedImage DecodeBmp(std::span<const uint8_t> bytes) {
    const BmpHeader header = ReadHeader(bytes);
    const bool runLength = header.compression == kRle8 || header.compression == kRle4;
    if (!runLength) {
        CheckPixelDataSize(bytes, header);
    }
    ZoDecodedImage image = MakeImage(header.width, header.height, ZoImageFormat::Bmp);
    if (runLength) {
        RleDecoder(bytes, header, image).Run();
    } else {
        ReadUncompressed(bytes, header, image);
    }
    UpdateHasAlpha(image);
    return image;
}

std::optional<ZoSize> PeekBmpSize(std::span<const uint8_t> bytes) noexcept {
    try {
        const BmpHeader header = ReadHeader(bytes);
        return ZoSize{static_cast<int32_t>(header.width), static_cast<int32_t>(header.height)};
    } catch (const std::exception&) {
        return std::nullopt;
    }
}

}  // namespace ZoImageCodec::Detail
