// PNG through libpng's simplified API, which handles every colour type, bit
// depth, tRNS chunk and interlacing, and does its own setjmp error handling.
#include "platform/image_codec_internal.h"

#include <png.h>

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

}  // namespace

ZoDecodedImage DecodePng(std::span<const uint8_t> bytes) {
    PngImage png;
    if (!png.BeginRead(bytes)) {
        ThrowCorrupt("PNG", png.image.message);
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
