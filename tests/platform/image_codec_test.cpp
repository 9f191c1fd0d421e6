#include <gtest/gtest.h>

#include <png.h>
#include <zlib.h>
#include <algorithm>
#include <cstdlib>
#include <fstream>

#include "platform/image_codec.h"
#include "platform/image_test_files.h"
#include "platform/temp_directory.h"
#include "platform/zo_exception.h"

namespace {

using ImageTestFiles::Bytes;
using ImageTestFiles::DecodeCase;
using ImageTestFiles::DecodeTest;
using ImageTestFiles::Expected;
using ImageTestFiles::GifSource;
using ImageTestFiles::JpegSource;
using ImageTestFiles::PngSource;

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
        DecodeCase{
            "Rgb8",
            ImageTestFiles::EncodePng({2, 1, PNG_COLOR_TYPE_RGB, 8, {10, 20, 30, 40, 50, 60}}),
            {2, 1, {10, 20, 30, 255, 40, 50, 60, 255}}},
        DecodeCase{
            "Rgba8",
            ImageTestFiles::EncodePng({2, 1, PNG_COLOR_TYPE_RGBA, 8, {1, 2, 3, 0, 4, 5, 6, 128}}),
            {2, 1, {1, 2, 3, 0, 4, 5, 6, 128}, true}},
        DecodeCase{"Rgba8AllOpaqueHasNoAlpha",
                   ImageTestFiles::EncodePng({1, 1, PNG_COLOR_TYPE_RGBA, 8, {7, 8, 9, 255}}),
                   {1, 1, {7, 8, 9, 255}}},
        DecodeCase{"Grey8",
                   ImageTestFiles::EncodePng({3, 1, PNG_COLOR_TYPE_GRAY, 8, {0, 128, 255}}),
                   {3, 1, {0, 0, 0, 255, 128, 128, 128, 255, 255, 255, 255, 255}}},
        DecodeCase{"Grey2Packed",
                   ImageTestFiles::EncodePng({4, 1, PNG_COLOR_TYPE_GRAY, 2, {0x1B}}),
                   {4, 1, {0, 0, 0, 255, 85, 85, 85, 255, 170, 170, 170, 255, 255, 255, 255, 255}}},
        DecodeCase{"GreyAlpha8",
                   ImageTestFiles::EncodePng({1, 1, PNG_COLOR_TYPE_GRAY_ALPHA, 8, {200, 100}}),
                   {1, 1, {200, 200, 200, 100}, true}},
        DecodeCase{
            "Grey16",
            ImageTestFiles::EncodePng({2, 1, PNG_COLOR_TYPE_GRAY, 16, {0x12, 0x34, 0xFF, 0xFF}}),
            {2, 1, {0x12, 0x12, 0x12, 255, 255, 255, 255, 255}}},
        DecodeCase{"Rgb16",
                   ImageTestFiles::EncodePng(
                       {1, 1, PNG_COLOR_TYPE_RGB, 16, {0xFF, 0xFF, 0x80, 0x80, 0, 0}}),
                   {1, 1, {255, 128, 0, 255}}},
        DecodeCase{
            "Rgba16KeepsStraightColourUnderPartialAlpha",
            ImageTestFiles::EncodePng(
                {1, 1, PNG_COLOR_TYPE_RGBA, 16, {0x80, 0x80, 0x40, 0x40, 0x20, 0x20, 0x80, 0x80}}),
            {1, 1, {128, 64, 32, 128}, true}},
        DecodeCase{"Palette8",
                   ImageTestFiles::EncodePng(
                       {2, 1, PNG_COLOR_TYPE_PALETTE, 8, {1, 0}, {255, 0, 0, 0, 0, 255}}),
                   {2, 1, {0, 0, 255, 255, 255, 0, 0, 255}}},
        DecodeCase{"Palette1WithTransparentEntry",
                   ImageTestFiles::EncodePng(
                       {3, 1, PNG_COLOR_TYPE_PALETTE, 1, {0x40}, {9, 9, 9, 255, 255, 255}, {0}}),
                   {3, 1, {9, 9, 9, 0, 255, 255, 255, 255, 9, 9, 9, 0}, true}},
        DecodeCase{"RgbWithKeyColour",
                   ImageTestFiles::EncodePng(
                       {2, 1, PNG_COLOR_TYPE_RGB, 8, {10, 20, 30, 1, 2, 3}, {}, {10, 20, 30}}),
                   {2, 1, {10, 20, 30, 0, 1, 2, 3, 255}, true}}),
    [](const auto& info) { return info.param.name; });

TEST(PngDecode, InterlacedMatchesProgressiveRows) {
    // 9 x 9 puts pixels into every one of the seven Adam7 passes.
    PngSource source{9, 9, PNG_COLOR_TYPE_RGBA, 8, Gradient(9, 9, 4)};
    source.interlaced = true;
    const ZoDecodedImage interlaced = ZoImageCodec::Decode(ImageTestFiles::EncodePng(source));
    EXPECT_EQ(interlaced.rgba, source.samples);
    source.interlaced = false;
    EXPECT_EQ(ZoImageCodec::Decode(ImageTestFiles::EncodePng(source)).rgba, interlaced.rgba);
}

struct JpegCase {
    const char* name;
    int components;
    bool progressive;
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
    const ZoDecodedImage image = ZoImageCodec::Decode(ImageTestFiles::EncodeJpeg(source));
    EXPECT_EQ(image.format, ZoImageFormat::Jpeg);
    EXPECT_EQ(image.width, width);
    EXPECT_EQ(image.height, height);
    EXPECT_FALSE(image.hasAlpha);
    EXPECT_LE(MaxDifference(image.rgba, expected), 12);
}

INSTANTIATE_TEST_SUITE_P(Kinds, JpegDecodeTest,
                         ::testing::Values(JpegCase{"Baseline", 3, false},
                                           JpegCase{"Progressive", 3, true},
                                           JpegCase{"Grey", 1, false},
                                           JpegCase{"AdobeCmyk", 4, false}),
                         [](const auto& info) { return info.param.name; });

TEST(JpegKind, OnlySequentialGreyOrYCbCrCountsAsBaseline) {
    const struct {
        int components;
        bool progressive;
        bool baseline;
    } cases[] = {{3, false, true}, {1, false, true}, {3, true, false}, {4, false, false}};
    for (const auto& c : cases) {
        const Bytes jpeg = ImageTestFiles::EncodeJpeg(
            {8, 8, c.components, c.progressive, Bytes(std::size_t(64 * c.components), 90)});
        EXPECT_EQ(ZoImageCodec::IsBaselineJpeg(jpeg), c.baseline)
            << c.components << " components, progressive " << c.progressive;
        EXPECT_FALSE(ZoImageCodec::IsBaselineJpeg(Bytes(jpeg.begin(), jpeg.begin() + 4)));
    }
    EXPECT_FALSE(ZoImageCodec::IsBaselineJpeg(
        ImageTestFiles::EncodePng({1, 1, PNG_COLOR_TYPE_GRAY, 8, {0}})));
}

// Red, green, blue and white.
const Bytes kFourColours = {255, 0, 0, 0, 255, 0, 0, 0, 255, 255, 255, 255};

INSTANTIATE_TEST_SUITE_P(
    Gif, DecodeTest,
    ::testing::Values(
        DecodeCase{
            "Plain",
            ImageTestFiles::EncodeGif({2, 2, 0, 0, 2, 2, false, -1, kFourColours, {0, 1, 2, 3}}),
            {2, 2, {255, 0, 0, 255, 0, 255, 0, 255, 0, 0, 255, 255, 255, 255, 255, 255}}},
        DecodeCase{"TransparentIndexKeepsItsColourOpaque",
                   ImageTestFiles::EncodeGif({2, 1, 0, 0, 2, 1, false, 1, kFourColours, {1, 3}}),
                   {2, 1, {0, 255, 0, 255, 255, 255, 255, 255}, false, 0x0000FF00}},
        DecodeCase{
            "Interlaced",
            ImageTestFiles::EncodeGif({1, 5, 0, 0, 1, 5, true, -1, kFourColours, {0, 1, 2, 3, 0}}),
            {1, 5, {255, 0,   0,   255, 0,   255, 0,   255, 0, 0,
                    255, 255, 255, 255, 255, 255, 255, 0,   0, 255}}},
        DecodeCase{"UncoveredScreenIsSeeThrough",
                   ImageTestFiles::EncodeGif({3, 2, 1, 1, 1, 1, false, -1, kFourColours, {2}}),
                   {3,
                    2,
                    {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 255, 255, 0, 0, 0, 0},
                    true}},
        DecodeCase{"UncoveredScreenTakesTransparentColour",
                   ImageTestFiles::EncodeGif({2, 1, 1, 0, 1, 1, false, 3, kFourColours, {0}}),
                   {2, 1, {255, 255, 255, 255, 255, 0, 0, 255}, false, 0x00FFFFFF}},
        DecodeCase{"FrameBeyondScreenWidensPicture",
                   ImageTestFiles::EncodeGif({1, 1, 1, 0, 1, 1, false, -1, kFourColours, {1}}),
                   {2, 1, {0, 0, 0, 0, 0, 255, 0, 255}, true}}),
    [](const auto& info) { return info.param.name; });

// One small valid file of each format, for the failure tests.
Bytes SmallPng() {
    return ImageTestFiles::EncodePng({8, 8, PNG_COLOR_TYPE_RGB, 8, Gradient(8, 8, 3)});
}
Bytes SmallJpeg() {
    return ImageTestFiles::EncodeJpeg({8, 8, 3, false, Gradient(8, 8, 3)});
}
Bytes SmallProgressiveJpeg() {
    return ImageTestFiles::EncodeJpeg({16, 16, 3, true, Gradient(16, 16, 3)});
}
Bytes SmallGif() {
    return ImageTestFiles::EncodeGif({4, 4, 0, 0, 4, 4, false, -1, kFourColours, Bytes(16, 2)});
}

Bytes Cut(Bytes bytes, std::size_t keep) {
    bytes.resize(std::min(keep, bytes.size()));
    return bytes;
}

struct BadCase {
    const char* name;
    Bytes bytes;
};

class CorruptDataTest : public ::testing::TestWithParam<BadCase> {};

TEST_P(CorruptDataTest, ThrowsZoException) {
    EXPECT_THROW(ZoImageCodec::Decode(GetParam().bytes), ZoException);
}

Bytes FlipByte(Bytes bytes, std::size_t at) {
    bytes[at] ^= 0x5A;
    return bytes;
}

INSTANTIATE_TEST_SUITE_P(
    Files, CorruptDataTest,
    ::testing::Values(BadCase{"Empty", {}}, BadCase{"Text", {'h', 'e', 'l', 'l', 'o'}},
                      BadCase{"PngSignatureOnly", Cut(SmallPng(), 8)},
                      BadCase{"PngCutInHeader", Cut(SmallPng(), 20)},
                      BadCase{"PngCutInData", Cut(SmallPng(), SmallPng().size() / 2)},
                      BadCase{"PngCutInLastChecksum", Cut(SmallPng(), SmallPng().size() - 14)},
                      BadCase{"PngDamagedData", FlipByte(SmallPng(), SmallPng().size() - 20)},
                      BadCase{"JpegMarkerOnly", Cut(SmallJpeg(), 3)},
                      BadCase{"JpegCutInHeader", Cut(SmallJpeg(), 100)},
                      BadCase{"JpegCutInData", Cut(SmallJpeg(), SmallJpeg().size() - 40)},
                      BadCase{"ProgressiveJpegCutInData",
                              Cut(SmallProgressiveJpeg(), SmallProgressiveJpeg().size() - 40)},
                      BadCase{"GifSignatureOnly", Cut(SmallGif(), 6)},
                      BadCase{"GifCutBeforeImage", Cut(SmallGif(), 13 + 12)},
                      BadCase{"GifCutInData", Cut(SmallGif(), SmallGif().size() - 6)},
                      // Found by fuzzing: giflib has no message for this one.
                      BadCase{"GifOddControlBlockAndNoImage",
                              {'G',  'I',  'F',  '8',  '9',  'a',  5,    0,    6,    0,
                               0x91, 0,    0,    0xFF, 0,    0xF2, 0,    0xFF, 0,    0,
                               0,    0xFF, 0xFF, 0xFF, 0xFF, 0x21, 0xF9, 7,    0x44, 0x64,
                               0x22, 3,    0x1C, 0x37, 0x0A, 0,    0x3B}}),
    [](const auto& info) { return info.param.name; });

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

TEST(PngDecode, DataTooShortForTheClaimedSizeIsRefusedBeforeAllocating) {
    try {
        ZoImageCodec::Decode(PngClaiming(8000, 8000));
        FAIL() << "decoded a forged PNG";
    } catch (const ZoException& e) {
        EXPECT_NE(std::string(e.what()).find("cut short"), std::string::npos) << e.what();
    }
    // A real file compressed about as far as deflate goes still decodes.
    PngSource blank{2000, 1000, PNG_COLOR_TYPE_GRAY, 8, Bytes(2000 * 1000, 0)};
    blank.transparency = {255};
    const Bytes file = ImageTestFiles::EncodePng(blank);
    EXPECT_GT(blank.samples.size() / file.size(), 500u);
    EXPECT_EQ(ZoImageCodec::Decode(file).width, 2000);
}

class HostileSizeTest : public ::testing::TestWithParam<BadCase> {};

TEST_P(HostileSizeTest, IsRefusedBeforeDecoding) {
    try {
        ZoImageCodec::Decode(GetParam().bytes);
        FAIL() << "decoded a picture of a hostile size";
    } catch (const ZoException& e) {
        EXPECT_NE(std::string(e.what()).find("too large"), std::string::npos) << e.what();
    }
    EXPECT_EQ(ZoImageCodec::PeekSize(GetParam().bytes), std::nullopt);
}

INSTANTIATE_TEST_SUITE_P(Files, HostileSizeTest,
                         ::testing::Values(BadCase{"PngTooWide", PngClaiming(70000, 1)},
                                           BadCase{"PngJustTooWide", PngClaiming(16385, 1)},
                                           BadCase{"JpegJustTooTall", JpegClaiming(1, 16385)},
                                           BadCase{"PngTooManyPixels", PngClaiming(40000, 40000)},
                                           BadCase{"JpegTooManyPixels", JpegClaiming(60000, 60000)},
                                           BadCase{"GifTooManyPixels", GifClaiming(65535, 65535)}),
                         [](const auto& info) { return info.param.name; });

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
}

class ImageFileTest : public ::testing::Test {
  protected:
    void SetUp() override {
        folder_ = ZoMakeTempFileName("");
        std::filesystem::create_directories(folder_);
    }
    void TearDown() override { std::filesystem::remove_all(folder_); }

    std::filesystem::path Write(const char* name, const Bytes& bytes) {
        const std::filesystem::path path = folder_ / name;
        std::ofstream(path, std::ios::binary)
            .write(reinterpret_cast<const char*>(bytes.data()),
                   static_cast<std::streamsize>(bytes.size()));
        return path;
    }

    std::filesystem::path folder_;
};

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
    EXPECT_EQ(ZoImageCodec::PeekSize(std::span(
                  reinterpret_cast<const uint8_t*>(ZoBuiltInPictureFile("<PreviewImage2>").data()),
                  ZoBuiltInPictureFile("<PreviewImage2>").size())),
              (ZoSize{182, 202}));
}

}  // namespace
