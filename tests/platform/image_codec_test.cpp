#include <gtest/gtest.h>

#include <png.h>
#include <zlib.h>
#include <algorithm>
#include <cstdlib>

#include "platform/image_codec.h"
#include "platform/image_test_files.h"
#include "platform/temp_folder.h"
#include "platform/zo_exception.h"

namespace {

using ImageTestFiles::Bytes;
using ImageTestFiles::CutLast;
using ImageTestFiles::DecodeCase;
using ImageTestFiles::DecodeTest;
using ImageTestFiles::EncodeGif;
using ImageTestFiles::EncodeJpeg;
using ImageTestFiles::EncodePng;
using ImageTestFiles::JpegSource;
using ImageTestFiles::Pixels;
using ImageTestFiles::PngSource;
using ImageTestFiles::RefusedCase;
using ImageTestFiles::RefusedTest;
using namespace ImageTestFiles::Rgba;

// Largest difference of any channel; lossy formats are compared within it.
int MaxDifference(const Bytes& a, const Bytes& b) {
    int worst = a.size() == b.size() ? 0 : 256;
    for (std::size_t i = 0; i < std::min(a.size(), b.size()); ++i) {
        worst = std::max(worst, std::abs(int{a[i]} - int{b[i]}));
    }
    return worst;
}

// A smooth test picture: channels run 0..255 over the surface, alpha is 255.
Bytes Gradient(int width, int height, int components) {
    Bytes samples;
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const int values[] = {x * 255 / (width - 1), y * 255 / (height - 1),
                                  (x + y) * 255 / (width + height - 2), 255};
            samples.insert(samples.end(), values, values + components);
        }
    }
    return samples;
}

// The one decoding test; the PNG, GIF and BMP cases instantiate it.
TEST_P(DecodeTest, GivesExpectedPicture) {
    const DecodeCase& c = GetParam();
    const ZoDecodedImage image = ZoImageCodec::Decode(c.file);
    EXPECT_EQ(image.format, ZoImageCodec::DetectFormat(c.file));
    EXPECT_EQ(image.width, c.expected.width);
    EXPECT_EQ(image.height, c.expected.height);
    EXPECT_EQ(image.rgba, c.expected.rgba);
    EXPECT_EQ(image.hasAlpha, c.expected.hasAlpha);
    EXPECT_EQ(image.transparentColour, c.expected.transparentColour);
    EXPECT_EQ(ZoImageCodec::PeekSize(c.file), (ZoSize{c.expected.width, c.expected.height}));
}

INSTANTIATE_TEST_SUITE_P(
    Png, DecodeTest,
    ::testing::Values(
        DecodeCase{"Rgb8",
                   EncodePng({2, 1, PNG_COLOR_TYPE_RGB, 8, {10, 20, 30, 40, 50, 60}}),
                   {2, 1, {10, 20, 30, 255, 40, 50, 60, 255}}},
        DecodeCase{"Rgba8",
                   EncodePng({2, 1, PNG_COLOR_TYPE_RGBA, 8, {1, 2, 3, 0, 4, 5, 6, 128}}),
                   {2, 1, {1, 2, 3, 0, 4, 5, 6, 128}, true}},
        DecodeCase{"Rgba8AllOpaqueHasNoAlpha",
                   EncodePng({1, 1, PNG_COLOR_TYPE_RGBA, 8, {7, 8, 9, 255}}),
                   {1, 1, {7, 8, 9, 255}}},
        DecodeCase{"Grey2Packed",
                   EncodePng({4, 1, PNG_COLOR_TYPE_GRAY, 2, {0x1B}}),
                   {4, 1, {0, 0, 0, 255, 85, 85, 85, 255, 170, 170, 170, 255, 255, 255, 255, 255}}},
        DecodeCase{"GreyAlpha8",
                   EncodePng({1, 1, PNG_COLOR_TYPE_GRAY_ALPHA, 8, {200, 100}}),
                   {1, 1, {200, 200, 200, 100}, true}},
        DecodeCase{"Grey16",
                   EncodePng({2, 1, PNG_COLOR_TYPE_GRAY, 16, {0x12, 0x34, 0xFF, 0xFF}}),
                   {2, 1, {0x12, 0x12, 0x12, 255, 255, 255, 255, 255}}},
        DecodeCase{
            "Rgba16KeepsStraightColourUnderPartialAlpha",
            EncodePng(
                {1, 1, PNG_COLOR_TYPE_RGBA, 16, {0x80, 0x80, 0x40, 0x40, 0x20, 0x20, 0x80, 0x80}}),
            {1, 1, {128, 64, 32, 128}, true}},
        DecodeCase{
            "Palette1WithTransparentEntry",
            EncodePng({3, 1, PNG_COLOR_TYPE_PALETTE, 1, {0x40}, {9, 9, 9, 255, 255, 255}, {0}}),
            {3, 1, {9, 9, 9, 0, 255, 255, 255, 255, 9, 9, 9, 0}, true}},
        DecodeCase{
            "RgbWithKeyColour",
            EncodePng({2, 1, PNG_COLOR_TYPE_RGB, 8, {10, 20, 30, 1, 2, 3}, {}, {10, 20, 30}}),
            {2, 1, {10, 20, 30, 0, 1, 2, 3, 255}, true}},
        // 9 x 9 puts pixels into every one of the seven Adam7 passes.
        DecodeCase{"Interlaced",
                   EncodePng({9, 9, PNG_COLOR_TYPE_RGBA, 8, Gradient(9, 9, 4), {}, {}, true}),
                   {9, 9, Gradient(9, 9, 4)}}),
    [](const auto& info) { return info.param.name; });

struct JpegCase {
    const char* name;
    int components;
    bool progressive;
    bool baseline;  // what a Flash player can show from the file's own bytes
};

class JpegDecodeTest : public ::testing::TestWithParam<JpegCase> {};

TEST_P(JpegDecodeTest, MatchesWithinLossyTolerance) {
    const JpegCase& c = GetParam();
    const int width = 24;
    const int height = 16;
    // The expected RGBA picture, and the samples each kind of file stores for it.
    Bytes expected = Gradient(width, height, 4);
    JpegSource source{width, height, c.components, c.progressive, {}};
    for (std::size_t i = 0; i < expected.size(); i += 4) {
        if (c.components == 1) {
            std::fill_n(&expected[i + 1], 2, expected[i]);
        }
        // Adobe CMYK is stored inverted (255 means no ink); with no black ink
        // the colour is the C, M and Y values themselves.
        const uint8_t cmyk[] = {expected[i], expected[i + 1], expected[i + 2], 255};
        source.samples.insert(source.samples.end(), cmyk, cmyk + c.components);
    }
    const Bytes file = EncodeJpeg(source);
    const ZoDecodedImage image = ZoImageCodec::Decode(file);
    EXPECT_EQ(image.format, ZoImageFormat::Jpeg);
    EXPECT_EQ(image.width, width);
    EXPECT_EQ(image.height, height);
    EXPECT_FALSE(image.hasAlpha);
    EXPECT_LE(MaxDifference(image.rgba, expected), 12);
    EXPECT_EQ(ZoImageCodec::IsBaselineJpeg(file), c.baseline);
    EXPECT_FALSE(ZoImageCodec::IsBaselineJpeg(Bytes(file.begin(), file.begin() + 4)));
}

INSTANTIATE_TEST_SUITE_P(Kinds, JpegDecodeTest,
                         ::testing::Values(JpegCase{"Baseline", 3, false, true},
                                           JpegCase{"Progressive", 3, true, false},
                                           JpegCase{"Grey", 1, false, true},
                                           JpegCase{"AdobeCmyk", 4, false, false}),
                         [](const auto& info) { return info.param.name; });

// Red, green, blue and white.
const Bytes kFourColours = {255, 0, 0, 0, 255, 0, 0, 0, 255, 255, 255, 255};

INSTANTIATE_TEST_SUITE_P(
    Gif, DecodeTest,
    ::testing::Values(
        DecodeCase{"Plain",
                   EncodeGif({2, 2, 0, 0, 2, 2, false, -1, kFourColours, {0, 1, 2, 3}}),
                   {2, 2, Pixels({R, G, B, W})}},
        DecodeCase{"TransparentIndexKeepsItsColourOpaque",
                   EncodeGif({2, 1, 0, 0, 2, 1, false, 1, kFourColours, {1, 3}}),
                   {2, 1, Pixels({G, W}), false, 0x0000FF00}},
        DecodeCase{"Interlaced",
                   EncodeGif({1, 5, 0, 0, 1, 5, true, -1, kFourColours, {0, 1, 2, 3, 0}}),
                   {1, 5, Pixels({R, G, B, W, R})}},
        DecodeCase{"UncoveredScreenIsSeeThrough",
                   EncodeGif({3, 2, 1, 1, 1, 1, false, -1, kFourColours, {2}}),
                   {3, 2, Pixels({Clear, Clear, Clear, Clear, B, Clear}), true}},
        DecodeCase{"UncoveredScreenTakesTransparentColour",
                   EncodeGif({2, 1, 1, 0, 1, 1, false, 3, kFourColours, {0}}),
                   {2, 1, Pixels({W, R}), false, 0x00FFFFFF}},
        DecodeCase{"FrameBeyondScreenWidensPicture",
                   EncodeGif({1, 1, 1, 0, 1, 1, false, -1, kFourColours, {1}}),
                   {2, 1, Pixels({Clear, G}), true}}),
    [](const auto& info) { return info.param.name; });

// One small valid file of each format, for the failure tests.
Bytes SmallPng() {
    return EncodePng({8, 8, PNG_COLOR_TYPE_RGB, 8, Gradient(8, 8, 3)});
}
Bytes SmallJpeg(int side = 8, bool progressive = false) {
    return EncodeJpeg({side, side, 3, progressive, Gradient(side, side, 3)});
}
Bytes SmallGif() {
    return EncodeGif({4, 4, 0, 0, 4, 4, false, -1, kFourColours, Bytes(16, 2)});
}

Bytes Cut(Bytes bytes, std::size_t keep) {
    bytes.resize(std::min(keep, bytes.size()));
    return bytes;
}

Bytes FlipByte(Bytes bytes, std::size_t at) {
    bytes[at] ^= 0x5A;
    return bytes;
}

void PutBigEndian32(Bytes& bytes, std::size_t at, uint32_t value) {
    for (int i = 0; i < 4; ++i) {
        bytes[at + i] = static_cast<uint8_t>(value >> (24 - 8 * i));
    }
}

// A valid PNG whose header claims another size (the CRC is made to match).
Bytes PngClaiming(uint32_t width, uint32_t height) {
    Bytes png = SmallPng();
    PutBigEndian32(png, 16, width);
    PutBigEndian32(png, 20, height);
    PutBigEndian32(png, 29, static_cast<uint32_t>(crc32(0, png.data() + 12, 17)));
    return png;
}

// A valid JPEG whose frame header claims another size.
Bytes JpegClaiming(uint16_t width, uint16_t height) {
    Bytes jpeg = SmallJpeg();
    const uint8_t sof0[] = {0xFF, 0xC0};
    const auto at = std::search(jpeg.begin(), jpeg.end(), sof0, sof0 + 2) - jpeg.begin();
    jpeg[at + 5] = static_cast<uint8_t>(height >> 8);
    jpeg[at + 6] = static_cast<uint8_t>(height);
    jpeg[at + 7] = static_cast<uint8_t>(width >> 8);
    jpeg[at + 8] = static_cast<uint8_t>(width);
    return jpeg;
}

Bytes GifClaiming(uint16_t width, uint16_t height) {
    Bytes gif = SmallGif();
    gif[6] = static_cast<uint8_t>(width);
    gif[7] = static_cast<uint8_t>(width >> 8);
    gif[8] = static_cast<uint8_t>(height);
    gif[9] = static_cast<uint8_t>(height >> 8);
    return gif;
}

// The one refusal test; each format's bad files instantiate it.
TEST_P(RefusedTest, ThrowsWithItsReason) {
    const RefusedCase& c = GetParam();
    try {
        ZoImageCodec::Decode(c.file);
        FAIL() << "decoded a bad file";
    } catch (const ZoException& e) {
        EXPECT_NE(std::string(e.what()).find(c.message), std::string::npos) << e.what();
    }
    // A hostile size must not get past the header reader either.
    if (std::string_view(c.message) == "too large") {
        EXPECT_EQ(ZoImageCodec::PeekSize(c.file), std::nullopt);
    }
}

constexpr const char* kCorrupt = "corrupt or truncated";

INSTANTIATE_TEST_SUITE_P(
    Files, RefusedTest,
    ::testing::Values(
        RefusedCase{"Empty", {}, "not a picture"},
        RefusedCase{"Text", {'h', 'e', 'l', 'l', 'o'}, "not a picture"},
        RefusedCase{"PngSignatureOnly", Cut(SmallPng(), 8), kCorrupt},
        RefusedCase{"PngCutInHeader", Cut(SmallPng(), 20), kCorrupt},
        RefusedCase{"PngCutInData", Cut(SmallPng(), SmallPng().size() / 2), kCorrupt},
        RefusedCase{"PngCutInLastChecksum", CutLast(SmallPng(), 14), kCorrupt},
        RefusedCase{"PngDamagedData", FlipByte(SmallPng(), SmallPng().size() - 20), kCorrupt},
        // Too little data to inflate to the claimed size: refused before allocating.
        RefusedCase{"PngForgedSizeIsCutShort", PngClaiming(8000, 8000), "cut short"},
        RefusedCase{"JpegMarkerOnly", Cut(SmallJpeg(), 3), kCorrupt},
        RefusedCase{"JpegCutInHeader", Cut(SmallJpeg(), 100), kCorrupt},
        RefusedCase{"JpegCutInData", CutLast(SmallJpeg(), 40), kCorrupt},
        RefusedCase{"ProgressiveJpegCutInData", CutLast(SmallJpeg(16, true), 40), kCorrupt},
        RefusedCase{"GifSignatureOnly", Cut(SmallGif(), 6), kCorrupt},
        RefusedCase{"GifCutBeforeImage", Cut(SmallGif(), 13 + 12), kCorrupt},
        RefusedCase{"GifCutInData", CutLast(SmallGif(), 6), kCorrupt},
        // Found by fuzzing: giflib has no message for this one.
        RefusedCase{"GifOddControlBlockAndNoImage",
                    {'G',  'I', 'F',  '8',  '9',  'a', 5,    0,    6,    0,    0x91, 0,    0,
                     0xFF, 0,   0xF2, 0,    0xFF, 0,   0,    0,    0xFF, 0xFF, 0xFF, 0xFF, 0x21,
                     0xF9, 7,   0x44, 0x64, 0x22, 3,   0x1C, 0x37, 0x0A, 0,    0x3B},
                    kCorrupt},
        RefusedCase{"PngTooWide", PngClaiming(70000, 1), "too large"},
        RefusedCase{"PngJustTooWide", PngClaiming(16385, 1), "too large"},
        RefusedCase{"JpegJustTooTall", JpegClaiming(1, 16385), "too large"},
        RefusedCase{"PngTooManyPixels", PngClaiming(40000, 40000), "too large"},
        RefusedCase{"JpegTooManyPixels", JpegClaiming(60000, 60000), "too large"},
        RefusedCase{"GifTooManyPixels", GifClaiming(65535, 65535), "too large"}),
    [](const auto& info) { return info.param.name; });

TEST(PngDecode, ARealFileCompressedAsFarAsDeflateGoesStillDecodes) {
    PngSource blank{2000, 1000, PNG_COLOR_TYPE_GRAY, 8, Bytes(2000 * 1000, 0), {}, {255}};
    const Bytes file = EncodePng(blank);
    EXPECT_GT(blank.samples.size() / file.size(), 500u);
    EXPECT_EQ(ZoImageCodec::Decode(file).width, 2000);
}

TEST(ImageCodec, DetectsFormatsAndPeeksSizesWithoutDecoding) {
    const struct {
        Bytes bytes;
        ZoImageFormat format;
        std::optional<ZoSize> size;
    } cases[] = {
        {SmallPng(), ZoImageFormat::Png, ZoSize{8, 8}},
        {SmallJpeg(), ZoImageFormat::Jpeg, ZoSize{8, 8}},
        {SmallGif(), ZoImageFormat::Gif, ZoSize{4, 4}},
        {PngClaiming(300, 200), ZoImageFormat::Png, ZoSize{300, 200}},
        {JpegClaiming(640, 480), ZoImageFormat::Jpeg, ZoSize{640, 480}},
        {{'B', 'M', 0}, ZoImageFormat::Bmp, std::nullopt},
        {{'G', 'I', 'F', '8', '9'}, ZoImageFormat::Unknown, std::nullopt},
        {{0xFF, 0xD8}, ZoImageFormat::Unknown, std::nullopt},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(ZoImageCodec::DetectFormat(c.bytes), c.format);
        EXPECT_EQ(ZoImageCodec::PeekSize(c.bytes), c.size);
    }
    EXPECT_FALSE(ZoImageCodec::IsBaselineJpeg(SmallPng()));
}

using ImageFileTest = TempFolderTest;

TEST_F(ImageFileTest, LoadsByContentNotByExtension) {
    const auto jpeg = Write("photo.png", SmallJpeg());
    const auto png = Write("drawing.jpg", SmallPng());
    EXPECT_TRUE(ZoImageCodec::IsJpegFile(jpeg));
    EXPECT_FALSE(ZoImageCodec::IsJpegFile(png));
    EXPECT_EQ(ZoImageCodec::Load(png).rgba, ZoImageCodec::Decode(SmallPng()).rgba);
    EXPECT_EQ(ZoImageCodec::Load(jpeg).format, ZoImageFormat::Jpeg);
    EXPECT_EQ(ZoImageCodec::PeekFileSize(png), (ZoSize{8, 8}));
    EXPECT_EQ(ZoImageCodec::PeekFileSize(jpeg), (ZoSize{8, 8}));
}

TEST_F(ImageFileTest, FailuresNameTheFile) {
    const auto missing = folder_ / "missing.png";
    const auto broken = Write("broken.gif", Cut(SmallGif(), 20));
    for (const auto& path : {missing, broken, folder_}) {
        try {
            ZoImageCodec::Load(path);
            FAIL() << path;
        } catch (const ZoException& e) {
            const std::string message = e.what();
            EXPECT_NE(message.find(path.string()), std::string::npos) << message;
            EXPECT_EQ(message.find("too large"), std::string::npos) << message;
        }
    }
    EXPECT_FALSE(ZoImageCodec::IsJpegFile(missing));
    EXPECT_EQ(ZoImageCodec::PeekFileSize(missing), std::nullopt);
}

TEST(BuiltInPicture, NamesChooseBetweenTwoOpaquePictures) {
    const ZoDecodedImage& first = ZoBuiltInPicture("<PreviewImage1>");
    const ZoDecodedImage& second = ZoBuiltInPicture("<PreviewImage2>");
    for (const ZoDecodedImage* picture : {&first, &second}) {
        EXPECT_EQ(picture->width, 182);
        EXPECT_EQ(picture->height, 202);
        EXPECT_FALSE(picture->hasAlpha);
        EXPECT_EQ(picture->transparentColour, kZoNoColour);
    }
    EXPECT_NE(first.rgba, second.rgba);
    EXPECT_EQ(&ZoBuiltInPicture("<Anything else>"), &first);
    const std::string_view file = ZoBuiltInPictureFile("<PreviewImage2>");
    EXPECT_EQ(ZoImageCodec::PeekSize(
                  std::span(reinterpret_cast<const uint8_t*>(file.data()), file.size())),
              (ZoSize{182, 202}));
}

}  // namespace
