#include <gtest/gtest.h>

#include <zlib.h>

#include "flash/swf_shape.h"
#include "media/colour_key.h"
#include "media/media_test_files.h"
#include "media/resource_manager.h"
#include "platform/image_codec.h"
#include "platform/image_test_files.h"
#include "support/movie_check.h"

namespace {

using MediaTestFiles::NewName;
using MediaTestFiles::WriteFile;
using ZoFlash::ZoSWFImage;

/// A one-frame movie of one shape per image, each filled with its bitmap.
SwfTest::WrittenMovie WriteMovieWith(const std::vector<ZoAutoInterface2<ZoSWFImage>>& images) {
    ZoFlash::ZoSWFMovie movie("", 100, 100, 12, ZoFlash::ZoSWFColour(0xFFFFFF, 255));
    auto* frame = movie.AddScene()->AddFrame();
    int depth = 1;
    for (const auto& image : images) {
        auto shape = ZoMakeCounted<ZoFlash::ZoSWFShape>();
        shape->SetClippedBitmapFill(image, 0, 0, 20, 20);
        shape->Rectangle({0, 0, 400, 400});
        frame->PlaceObject(shape, nullptr, depth++, {}, 0, -1, {});
    }
    return SwfTest::WriteAndValidate(movie);
}

ZoDecodedImage TwoByOne(COLORREF left, COLORREF right) {
    ZoDecodedImage picture;
    picture.width = 2;
    picture.height = 1;
    for (COLORREF c : {left, right})
        picture.rgba.insert(picture.rgba.end(), {ZoGetRed(c), ZoGetGreen(c), ZoGetBlue(c), 255});
    return picture;
}

TEST(ColourKey, OnlyPixelsWithinTheToleranceInEveryChannelGo) {
    struct Case {
        COLORREF pixel, key;
        int tolerance;
        bool keyed;
    } cases[] = {
        {0x102030, 0x102030, 0, true},   {0x102031, 0x102030, 0, false},
        {0x10203A, 0x102030, 10, true},  {0x10203B, 0x102030, 10, false},
        {0x1A2A3A, 0x102030, 10, true},  {0x062030, 0x102030, 10, true},
        {0xFFFFFF, 0x000000, 255, true}, {0x102030, kZoNoColour, 255, false},
    };
    for (const auto& c : cases) {
        std::vector<uint8_t> rgba{ZoGetRed(c.pixel), ZoGetGreen(c.pixel), ZoGetBlue(c.pixel), 200};
        TeskApplyColourKey(rgba, c.key, c.tolerance);
        EXPECT_EQ(rgba[3], c.keyed ? 0 : 200) << std::hex << c.pixel << " " << c.key;
    }
}

TEST(TeskSWFImage, LosslessBitmapsKeyOutTheTransparentColour) {
    auto picture = ZoMakeCounted<ZoReferenceImage>(TwoByOne(0x0000FF, 0x00FF00));
    auto image =
        ZoMakeCounted<TeskSWFImage>("pic.png", picture, ZoSWFImage::kOutputLossless, 0x0000FF, 0);
    const auto written = WriteMovieWith({image});
    ASSERT_EQ(written.Problems(), "");
    ASSERT_EQ(written.result.movie.bitmaps.size(), 1u);
    const auto& bitmap = written.result.movie.bitmaps.begin()->second;
    EXPECT_EQ(bitmap.code, 36);  // DefineBitsLossless2
    EXPECT_EQ(bitmap.width, 2);
    EXPECT_EQ(bitmap.height, 1);
    // Premultiplied ARGB: the keyed red pixel is all zero, green stays.
    EXPECT_EQ(bitmap.pixels, (std::vector<uint8_t>{0, 0, 0, 0, 255, 0, 255, 0}));
}

TEST(TeskSWFImage, JpegFilesKeepTheirOwnBytes) {
    const auto path = NewName(".jpg");
    const auto jpeg = MediaTestFiles::GreyJpeg(8, 8);
    WriteFile(path, jpeg);
    auto picture = ZoMakeCounted<ZoReferenceImage>(ZoImageCodec::Load(path));
    auto plain = ZoMakeCounted<TeskSWFImage>(path.string(), picture, ZoSWFImage::kOutputJPEG,
                                             kZoNoColour, 0);
    auto keyed =
        ZoMakeCounted<TeskSWFImage>(path.string(), picture, ZoSWFImage::kOutputJPEG, 0x808080, 8);
    const auto written = WriteMovieWith({plain, keyed});
    ASSERT_EQ(written.Problems(), "");
    ASSERT_EQ(written.result.movie.bitmaps.size(), 2u);
    const auto& first = written.result.movie.bitmaps.begin()->second;
    const auto& second = std::next(written.result.movie.bitmaps.begin())->second;
    EXPECT_EQ(first.code, 21);  // DefineBitsJPEG2
    EXPECT_EQ(first.jpeg, jpeg);
    EXPECT_EQ(second.code, 35);  // DefineBitsJPEG3
    EXPECT_EQ(second.jpeg, jpeg);
    std::vector<uint8_t> alpha(64, 0xAA);
    uLongf size = alpha.size();
    ASSERT_EQ(uncompress(alpha.data(), &size, second.alpha.data(), second.alpha.size()), Z_OK);
    EXPECT_EQ(size, 64u);
    EXPECT_EQ(alpha, std::vector<uint8_t>(64, 0));  // every grey pixel keyed out
}

TEST(TeskSWFImage, OnlyJpegsAPlayerCanShowKeepTheirBytes) {
    auto jpegOf = [](int components, bool progressive) {
        ImageTestFiles::JpegSource source{8, 8, components, progressive, {}};
        source.samples.assign(64 * components, 100);
        return ImageTestFiles::EncodeJpeg(source);
    };
    struct Case {
        const char* name;
        const char* extension;
        std::vector<uint8_t> bytes;
        ZoSWFImage::ImageOutputType expected;
    } cases[] = {
        {"colour", ".JPEG", jpegOf(3, false), ZoSWFImage::kOutputJPEG},
        {"grey", ".jpg", jpegOf(1, false), ZoSWFImage::kOutputJPEG},
        {"progressive", ".jpg", jpegOf(3, true), ZoSWFImage::kOutputLossless},
        {"CMYK", ".jpg", jpegOf(4, false), ZoSWFImage::kOutputLossless},
        {"PNG named .jpg", ".jpg", MediaTestFiles::SolidPng(2, 2, 0, 0),
         ZoSWFImage::kOutputLossless},
        {"JPEG named .png", ".png", jpegOf(3, false), ZoSWFImage::kOutputLossless},
        {"truncated", ".jpg", {0xFF, 0xD8, 0xFF, 0xE0, 0x00}, ZoSWFImage::kOutputLossless},
    };
    for (const auto& c : cases) {
        const auto path = NewName(c.extension);
        WriteFile(path, c.bytes);
        EXPECT_EQ(TeskImageOutputType(path.string()), c.expected) << c.name;
    }
    EXPECT_EQ(TeskImageOutputType(NewName(".jpg").string()), ZoSWFImage::kOutputLossless);
    EXPECT_EQ(TeskImageOutputType("<PreviewImage1>"), ZoSWFImage::kOutputLossless);
}

TEST(TeskSWFImage, MoviesShareOneEncodingButNumberTheirOwnCharacters) {
    auto picture = ZoMakeCounted<ZoReferenceImage>(&ZoBuiltInPicture("<PreviewImage1>"));
    auto cached = ZoMakeCounted<TeskSWFImage>("<PreviewImage1>", picture,
                                              ZoSWFImage::kOutputLossless, kZoNoColour, 0);
    EXPECT_EQ(cached->GetEncodedSize(), 0u);
    auto forFirst = cached->ShareForMovie();
    auto forSecond = cached->ShareForMovie();
    const auto first = WriteMovieWith({forFirst});
    ASSERT_EQ(first.Problems(), "");
    const size_t encoded = cached->GetEncodedSize();
    EXPECT_GT(encoded, 0u);
    // The second movie places another shape first, so its bitmap gets another id.
    auto other = ZoMakeCounted<TeskSWFImage>(
        "<PreviewImage2>", ZoMakeCounted<ZoReferenceImage>(&ZoBuiltInPicture("<PreviewImage2>")),
        ZoSWFImage::kOutputLossless, kZoNoColour, 0);
    const auto second = WriteMovieWith({other, forSecond});
    ASSERT_EQ(second.Problems(), "");
    EXPECT_EQ(cached->GetEncodedSize(), encoded);
    ASSERT_EQ(second.result.movie.bitmaps.size(), 2u);
    EXPECT_EQ(first.result.movie.bitmaps.begin()->second.pixels,
              std::next(second.result.movie.bitmaps.begin())->second.pixels);
}

}  // namespace
