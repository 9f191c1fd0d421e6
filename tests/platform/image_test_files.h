#pragma once
// Tiny picture files made in memory with the libraries' own encoders (and by
// hand for BMP), so the decoder tests never depend on downloaded samples.
#include <gtest/gtest.h>

#include "platform/image_codec.h"

#include <cstdint>
#include <ostream>
#include <utility>
#include <vector>

namespace ImageTestFiles {

using Bytes = std::vector<uint8_t>;

/// A PNG of raw samples as libpng takes them (rows packed per bit depth,
/// 16-bit samples big-endian). `palette` is RGB triples for colour type 3;
/// `transparency` is the tRNS chunk's content: alpha per palette entry, or
/// the key sample(s) for grey and RGB.
struct PngSource {
    PngSource(int w, int h, int type, int depth, Bytes data, Bytes colours = {},
              std::vector<uint16_t> alpha = {})
        : width(w),
          height(h),
          colourType(type),
          bitDepth(depth),
          samples(std::move(data)),
          palette(std::move(colours)),
          transparency(std::move(alpha)) {}
    int width = 0;
    int height = 0;
    int colourType = 0;  // PNG_COLOR_TYPE_*
    int bitDepth = 8;
    bool interlaced = false;
    Bytes samples;
    Bytes palette;
    std::vector<uint16_t> transparency;
};
Bytes EncodePng(const PngSource& source);

/// A JPEG of 8-bit samples with 1 (grey), 3 (RGB) or 4 (CMYK, stored the
/// Adobe way) components.
struct JpegSource {
    int width = 0;
    int height = 0;
    int components = 3;
    bool progressive = false;
    Bytes samples;
};
Bytes EncodeJpeg(const JpegSource& source);

/// A GIF whose first (and only) frame sits at (left, top) on the screen.
struct GifSource {
    int screenWidth = 0;
    int screenHeight = 0;
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;
    bool interlaced = false;
    int transparentIndex = -1;
    Bytes palette;  // RGB triples, a power of two of them
    Bytes indices;  // width * height, top-down
};
Bytes EncodeGif(const GifSource& source);

/// What a decoded picture should be.
struct Expected {
    Expected(int32_t w, int32_t h, Bytes pixels, bool alpha = false,
             COLORREF transparent = kZoNoColour)
        : width(w),
          height(h),
          rgba(std::move(pixels)),
          hasAlpha(alpha),
          transparentColour(transparent) {}
    int32_t width;
    int32_t height;
    Bytes rgba;
    bool hasAlpha = false;
    COLORREF transparentColour = kZoNoColour;
};

/// A file and the picture it must decode to.
struct DecodeCase {
    const char* name;
    Bytes file;
    Expected expected;
};

/// Failures name the case rather than dumping its bytes.
inline void PrintTo(const DecodeCase& c, std::ostream* out) {
    *out << c.name;
}

/// Decodes each case's file and checks every field of the picture and the
/// size PeekSize reads from the headers (the test lives in image_codec_test).
class DecodeTest : public ::testing::TestWithParam<DecodeCase> {};

}  // namespace ImageTestFiles
