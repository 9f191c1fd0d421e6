// BMP files are written here byte by byte, in every layout the reader takes.
#include <gtest/gtest.h>

#include "platform/image_codec.h"
#include "platform/image_test_files.h"

namespace {

using ImageTestFiles::Bytes;
using ImageTestFiles::CutLast;
using ImageTestFiles::DecodeCase;
using ImageTestFiles::DecodeTest;
using ImageTestFiles::Pixels;
using namespace ImageTestFiles::Rgba;
using ImageTestFiles::RefusedCase;
using ImageTestFiles::RefusedTest;

void Put16(Bytes& out, uint32_t value) {
    out.push_back(static_cast<uint8_t>(value));
    out.push_back(static_cast<uint8_t>(value >> 8));
}

void Put32(Bytes& out, uint32_t value) {
    Put16(out, value & 0xFFFF);
    Put16(out, value >> 16);
}

struct Masks {
    uint32_t red, green, blue, alpha;
};

// headerSize 12 is the OS/2 core header, 40 the Windows one, 56/108/124 the
// longer ones that carry their masks inside. `masks` follow a 40-byte header
// for compressions 3 (three of them) and 6 (four).
Bytes MakeBmp(uint32_t headerSize, int32_t width, int32_t height, uint32_t bits,
              uint32_t compression, const Bytes& palette, uint32_t declaredColours,
              std::optional<Masks> masks, const Bytes& pixels) {
    Bytes info;
    Put32(info, headerSize);
    if (headerSize == 12) {
        Put16(info, static_cast<uint32_t>(width));
        Put16(info, static_cast<uint32_t>(height));
        Put16(info, 1);
        Put16(info, bits);
    } else {
        Put32(info, static_cast<uint32_t>(width));
        Put32(info, static_cast<uint32_t>(height));
        Put16(info, 1);
        Put16(info, bits);
        Put32(info, compression);
        Put32(info, static_cast<uint32_t>(pixels.size()));
        Put32(info, 2835);
        Put32(info, 2835);
        Put32(info, declaredColours);
        Put32(info, 0);
    }
    if (masks) {
        Put32(info, masks->red);
        Put32(info, masks->green);
        Put32(info, masks->blue);
        if (headerSize > 40 || compression == 6) {
            Put32(info, masks->alpha);
        }
    }
    info.resize(std::max<std::size_t>(info.size(), headerSize), 0);
    Bytes file = {'B', 'M'};
    const auto offset = static_cast<uint32_t>(14 + info.size() + palette.size());
    Put32(file, static_cast<uint32_t>(offset + pixels.size()));
    Put32(file, 0);
    Put32(file, offset);
    file.insert(file.end(), info.begin(), info.end());
    file.insert(file.end(), palette.begin(), palette.end());
    file.insert(file.end(), pixels.begin(), pixels.end());
    return file;
}

Bytes Plain(int32_t width, int32_t height, uint32_t bits, const Bytes& palette,
            const Bytes& pixels) {
    return MakeBmp(40, width, height, bits, 0, palette, 0, std::nullopt, pixels);
}

// Palette entries are stored blue, green, red, reserved.
const Bytes kBlackWhite = {0, 0, 0, 0, 255, 255, 255, 0};
const Bytes kRedGreenBlue = {0, 0, 255, 0, 0, 255, 0, 0, 255, 0, 0, 0};

INSTANTIATE_TEST_SUITE_P(
    Bmp, DecodeTest,
    ::testing::Values(
        // Top row red, green; bottom row blue, white. Rows pad to 4 bytes.
        DecodeCase{
            "Rgb24BottomUp",
            Plain(2, 2, 24, {}, {255, 0, 0, 255, 255, 255, 0, 0, 0, 0, 255, 0, 255, 0, 0, 0}),
            {2, 2, Pixels({R, G, B, W})}},
        DecodeCase{
            "Rgb24TopDown",
            Plain(2, -2, 24, {}, {0, 0, 255, 0, 255, 0, 0, 0, 255, 0, 0, 255, 255, 255, 0, 0}),
            {2, 2, Pixels({R, G, B, W})}},
        DecodeCase{"Palette1",
                   Plain(3, 2, 1, kBlackWhite, {0x40, 0, 0, 0, 0xA0, 0, 0, 0}),
                   {3, 2, Pixels({W, K, W, K, W, K})}},
        DecodeCase{"Palette4ShortTable",
                   MakeBmp(40, 3, 1, 4, 0, kRedGreenBlue, 3, std::nullopt, {0x20, 0x10, 0, 0}),
                   {3, 1, Pixels({B, R, G})}},
        DecodeCase{"Palette8IndexPastTableIsBlack",
                   MakeBmp(40, 2, 1, 8, 0, kRedGreenBlue, 1, std::nullopt, {0, 5, 0, 0}),
                   {2, 1, Pixels({R, K})}},
        DecodeCase{"Rgb16Is555",
                   Plain(2, 1, 16, {}, {0x00, 0x7C, 0x10, 0x42}),
                   {2, 1, {255, 0, 0, 255, 132, 132, 132, 255}}},
        DecodeCase{"BitFields565",
                   MakeBmp(40, 2, 1, 16, 3, {}, 0, Masks{0xF800, 0x07E0, 0x001F, 0},
                           {0xE0, 0x07, 0x1F, 0xF8}),
                   {2, 1, {0, 255, 0, 255, 255, 0, 255, 255}}},
        DecodeCase{"Rgb32IgnoresReservedByte",
                   Plain(1, 1, 32, {}, {10, 20, 30, 0}),
                   {1, 1, {30, 20, 10, 255}}},
        DecodeCase{
            "V5HeaderWithAlphaMask",
            MakeBmp(124, 1, 1, 32, 3, {}, 0, Masks{0x00FF0000, 0x0000FF00, 0x000000FF, 0xFF000000},
                    {10, 20, 30, 128}),
            {1, 1, {30, 20, 10, 128}, true}},
        DecodeCase{"AlphaBitFieldsAfterShortHeader",
                   MakeBmp(40, 1, 1, 32, 6, {}, 0,
                           Masks{0x000000FF, 0x0000FF00, 0x00FF0000, 0xFF000000}, {10, 20, 30, 0}),
                   {1, 1, {10, 20, 30, 0}, true}},
        DecodeCase{"CoreHeader24",
                   MakeBmp(12, 1, 1, 24, 0, {}, 0, std::nullopt, {1, 2, 3, 0}),
                   {1, 1, {3, 2, 1, 255}}},
        DecodeCase{
            "CoreHeaderPaletteOfTriples",
            MakeBmp(12, 2, 1, 1, 0, {0, 0, 255, 255, 0, 0}, 0, std::nullopt, {0x40, 0, 0, 0}),
            {2, 1, Pixels({R, B})}},
        // Bottom row: a run of four of entry 1; top row: a literal of three,
        // padded to a word, then the end before the fourth pixel.
        DecodeCase{"Rle8",
                   MakeBmp(40, 4, 2, 8, 1, kRedGreenBlue, 3, std::nullopt,
                           {4, 1, 0, 0, 0, 3, 0, 2, 0, 0, 0, 1}),
                   {2 * 2, 2, Pixels({R, B, R, Clear, G, G, G, G}), true}},
        // Bottom row: a run of four alternating entries and a literal of
        // three; top row: moved one pixel right by a delta, then one pixel.
        DecodeCase{
            "Rle4WithDelta",
            MakeBmp(40, 7, 2, 4, 2, kRedGreenBlue, 3, std::nullopt,
                    {4, 0x12, 0, 3, 0x20, 0x10, 0, 0, 0, 2, 1, 0, 1, 0x00, 0, 1}),
            {7, 2, Pixels({Clear, R, Clear, Clear, Clear, Clear, Clear, G, B, G, B, B, R, G}),
             true}}),
    [](const auto& info) { return info.param.name; });

INSTANTIATE_TEST_SUITE_P(
    Bmp, RefusedTest,
    ::testing::Values(
        RefusedCase{"HeaderCut", {'B', 'M', 0, 0, 0, 0, 0, 0, 0, 0, 54, 0, 0, 0, 40}, "corrupt"},
        RefusedCase{"PixelsCut", CutLast(Plain(2, 2, 24, {}, Bytes(16, 7)), 3), "corrupt"},
        // No declared count means a full table of 256 entries is due.
        RefusedCase{"PaletteCut", Plain(1, 1, 8, kRedGreenBlue, {}), "corrupt"},
        RefusedCase{"RunsWithoutEnd",
                    MakeBmp(40, 4, 1, 8, 1, kRedGreenBlue, 3, std::nullopt, {4, 1}), "corrupt"},
        RefusedCase{"TwoBitsAPixel", Plain(4, 1, 2, kBlackWhite, {0, 0, 0, 0}), "not supported"},
        RefusedCase{"EmbeddedJpeg", MakeBmp(40, 1, 1, 24, 4, {}, 0, std::nullopt, {0, 0, 0, 0}),
                    "not supported"},
        RefusedCase{"UnknownHeader", MakeBmp(20, 1, 1, 24, 0, {}, 0, std::nullopt, {}), "corrupt"},
        RefusedCase{"NoPixels", Plain(0, 1, 24, {}, {}), "no pixels"},
        RefusedCase{"TooWide", Plain(70000, 1, 24, {}, {}), "too large"},
        RefusedCase{"TooManyPixels", Plain(30000, 30000, 24, {}, {}), "too large"},
        RefusedCase{"MostNegativeHeight", Plain(1, INT32_MIN, 24, {}, {}), "too large"}),
    [](const auto& info) { return info.param.name; });

}  // namespace
