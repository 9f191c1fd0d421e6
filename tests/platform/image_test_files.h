#pragma once
// Tiny picture files made in memory with the libraries' own encoders (and by
// hand for BMP), so the decoder tests never depend on downloaded samples.
#include <gtest/gtest.h>

#include "platform/image_codec.h"

#include <cstdint>
#include <initializer_list>
#include <ostream>
#include <vector>

namespace ImageTestFiles {

using Bytes = std::vector<uint8_t>;

/// A PNG of raw samples as libpng takes them (rows packed per bit depth,
/// 16-bit samples big-endian). `palette` is RGB triples for colour type 3;
/// `transparency` is the tRNS chunk's content: alpha per palette entry, or
/// the key sample(s) for grey and RGB.
struct PngSource {
    int width = 0;
    int height = 0;
    int colourType = 0;  // PNG_COLOR_TYPE_*
    int bitDepth = 8;
    Bytes samples{};
    Bytes palette{};
    std::vector<uint16_t> transparency{};
    bool interlaced = false;
};
Bytes EncodePng(const PngSource& source);

/// A JPEG of 8-bit samples with 1 (grey), 3 (RGB) or 4 (CMYK, stored the
/// Adobe way) components.
struct JpegSource {
    int width = 0;
    int height = 0;
    int components = 3;
    bool progressive = false;
    Bytes samples{};
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

/// `bytes` without its last `count` bytes.
inline Bytes CutLast(Bytes bytes, std::size_t count) {
    // erase, not resize: GCC's -O3 flow analysis sees resize's grow path and warns.
    bytes.erase(bytes.end() - static_cast<std::ptrdiff_t>(count), bytes.end());
    return bytes;
}

/// Opaque red, green, blue, white and black, and see-through, as RGBA pixels.
namespace Rgba {
inline constexpr uint8_t R[] = {255, 0, 0, 255};
inline constexpr uint8_t G[] = {0, 255, 0, 255};
inline constexpr uint8_t B[] = {0, 0, 255, 255};
inline constexpr uint8_t W[] = {255, 255, 255, 255};
inline constexpr uint8_t K[] = {0, 0, 0, 255};
inline constexpr uint8_t Clear[] = {0, 0, 0, 0};
}  // namespace Rgba

/// The RGBA bytes of `pixels`, in order.
inline Bytes Pixels(std::initializer_list<const uint8_t*> pixels) {
    Bytes rgba;
    for (const uint8_t* p : pixels) {
        rgba.insert(rgba.end(), p, p + 4);
    }
    return rgba;
}

/// What a decoded picture should be.
struct Expected {
    int32_t width = 0;
    int32_t height = 0;
    Bytes rgba{};
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

/// A file Decode must refuse, and a piece of the message it must give.
struct RefusedCase {
    const char* name;
    Bytes file;
    const char* message;
};

inline void PrintTo(const RefusedCase& c, std::ostream* out) {
    *out << c.name;
}

/// Each format's refused files instantiate this one test (in image_codec_test).
class RefusedTest : public ::testing::TestWithParam<RefusedCase> {};

}  // namespace ImageTestFiles
