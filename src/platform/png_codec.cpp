// PNG through libpng's simplified API, which handles every colour type, bit
// depth, tRNS chunk and interlacing, and does its own setjmp error handling.
#include "platform/image_codec_internal.h"

#include <png.h>

#include <algorithm>
#include <cstring>

namespace ZoImageCodec::Detail {
namespace {

// Frees libpng's read state however the decode ends.
struct PngImage {
    png_image image{};
    PngImage() { image.version = PNG_IMAGE_VERSION; }
    ~PngImage() { png_image_free(&image); }
    PngImage(const PngImage&) = delete;
    PngImage& operator=(const PngImage&) = delete;

    bool BeginRead(std::span<const uint8_t> bytes) noexcept {
        return png_image_begin_read_from_memory(&image, bytes.data(), bytes.size()) != 0;
    }
};

// Deflate never expands data more than 1032 times (a 258-byte match in two
// bits), so image data that would have to inflate further is cut short or
// forged. Checking this before allocating keeps a tiny file that claims a
// huge picture from costing memory.
constexpr int64_t kMaxDeflateRatio = 1032;

uint32_t ReadBigEndian32(std::span<const uint8_t> bytes, std::size_t at) noexcept {
    return uint32_t{bytes[at]} << 24 | uint32_t{bytes[at + 1]} << 16 |
           uint32_t{bytes[at + 2]} << 8 | bytes[at + 3];
}

// The length of all IDAT chunks present, from the chunk headers alone.
int64_t ImageDataBytes(std::span<const uint8_t> bytes) noexcept {
    constexpr std::size_t kSignatureBytes = 8;
    constexpr std::size_t kChunkOverhead = 12;  // length, type and CRC
    int64_t total = 0;
    for (std::size_t at = kSignatureBytes; at + 8 <= bytes.size();) {
        const uint64_t length = ReadBigEndian32(bytes, at);
        const char* type = reinterpret_cast<const char*>(&bytes[at + 4]);
        if (std::memcmp(type, "IDAT", 4) == 0) {
            total += static_cast<int64_t>(std::min<uint64_t>(length, bytes.size() - at - 8));
        } else if (std::memcmp(type, "IEND", 4) == 0) {
            break;
        }
        if (length > bytes.size() - at - 8) {
            break;
        }
        at += kChunkOverhead + length;
    }
    return total;
}

// What the image data inflates to at the least: one filter byte and the
// packed samples per row (interlacing only adds filter bytes). Read from the
// header, which libpng has already checked.
int64_t FilteredBytes(const png_image& image, std::span<const uint8_t> bytes) noexcept {
    const int64_t depth = bytes[24];
    const uint8_t colourType = bytes[25];
    const int64_t channels = colourType == PNG_COLOR_TYPE_RGB          ? 3
                             : colourType == PNG_COLOR_TYPE_GRAY_ALPHA ? 2
                             : colourType == PNG_COLOR_TYPE_RGB_ALPHA  ? 4
                                                                       : 1;
    return int64_t{image.height} * (1 + (int64_t{image.width} * depth * channels + 7) / 8);
}

}  // namespace

ZoDecodedImage DecodePng(std::span<const uint8_t> bytes) {
    PngImage png;
    if (!png.BeginRead(bytes)) {
        ThrowCorrupt("PNG", png.image.message);
    }
    CheckSize(png.image.width, png.image.height);
    if (FilteredBytes(png.image, bytes) > kMaxDeflateRatio * ImageDataBytes(bytes)) {
        ThrowCorrupt("PNG", "image data cut short");
    }
    ZoDecodedImage image = MakeImage(png.image.width, png.image.height, ZoImageFormat::Png);
    png.image.format = PNG_FORMAT_RGBA;
    // Without this libpng takes 16-bit samples as linear light and would
    // brighten them on the way to 8-bit sRGB; files mean them as sRGB.
    png.image.flags |= PNG_IMAGE_FLAG_16BIT_sRGB;
    if (!png_image_finish_read(&png.image, nullptr, image.rgba.data(), 0, nullptr)) {
        ThrowCorrupt("PNG", png.image.message);
    }
    UpdateHasAlpha(image);
    return image;
}

std::optional<ZoSize> PeekPngSize(std::span<const uint8_t> bytes) noexcept {
    PngImage png;
    if (!png.BeginRead(bytes) || !IsAcceptableSize(png.image.width, png.image.height)) {
        return std::nullopt;
    }
    return ZoSize{static_cast<int32_t>(png.image.width), static_cast<int32_t>(png.image.height)};
}

}  // namespace ZoImageCodec::Detail
