#include <gtest/gtest.h>

#include <zlib.h>

#include "flash/swf_shape.h"
#include "media/media_test_files.h"
#include "media/swf_image.h"
#include "platform/image_test_files.h"
#include "platform/temp_folder.h"
#include "support/movie_check.h"

namespace {

using ZoFlash::ZoSWFImage;

using SwfImageTest = TempFolderTest;

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

TEST_F(SwfImageTest, LosslessBitmapsKeyOutTheTransparentColour) {
    ZoDecodedImage picture;
    picture.width = 2;
    picture.height = 1;
    picture.rgba = {255, 0, 0, 255, 0, 255, 0, 255};
    auto image = ZoMakeCounted<TeskSWFImage>("pic.png", ZoMakeCounted<ZoReferenceImage>(picture),
                                             ZoSWFImage::kOutputLossless, 0x0000FF, 0);
    const auto written = WriteMovieWith({image});
    ASSERT_EQ(written.Problems(), "");
    const auto& bitmap = written.result.movie.bitmaps.at(image->GetCharacterID());
    EXPECT_EQ(bitmap.code, 36);  // DefineBitsLossless2
    // Premultiplied ARGB: the keyed red pixel is all zero, green stays.
    EXPECT_EQ(bitmap.pixels, (std::vector<uint8_t>{0, 0, 0, 0, 255, 0, 255, 0}));
}

TEST_F(SwfImageTest, JpegFilesKeepTheirOwnBytes) {
    const auto path = folder_ / "grey.jpg";
    const auto jpeg = MediaTestFiles::GreyJpeg(8, 8);
    Write(path, jpeg);
    auto picture = ZoMakeCounted<ZoReferenceImage>(ZoImageCodec::Load(path));
    auto plain = ZoMakeCounted<TeskSWFImage>(path.string(), picture, ZoSWFImage::kOutputJPEG,
                                             kZoNoColour, 0);
    auto keyed =
        ZoMakeCounted<TeskSWFImage>(path.string(), picture, ZoSWFImage::kOutputJPEG, 0x808080, 8);
    const auto written = WriteMovieWith({plain, keyed});
    ASSERT_EQ(written.Problems(), "");
    const auto& first = written.result.movie.bitmaps.at(plain->GetCharacterID());
    const auto& second = written.result.movie.bitmaps.at(keyed->GetCharacterID());
    EXPECT_EQ(first.code, 21);  // DefineBitsJPEG2
    EXPECT_EQ(first.jpeg, jpeg);
    EXPECT_EQ(second.code, 35);  // DefineBitsJPEG3, every grey pixel keyed out
    EXPECT_EQ(second.jpeg, jpeg);
    std::vector<uint8_t> alpha(64, 0xAA);
    uLongf size = alpha.size();
    ASSERT_EQ(uncompress(alpha.data(), &size, second.alpha.data(), second.alpha.size()), Z_OK);
    EXPECT_EQ(alpha, std::vector<uint8_t>(64, 0));
}

TEST_F(SwfImageTest, OnlyJpegsAPlayerCanShowKeepTheirBytes) {
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
        {"PNG named .jpg", ".jpg", MediaTestFiles::SolidPng(2, 2, 0), ZoSWFImage::kOutputLossless},
        {"JPEG named .png", ".png", jpegOf(3, false), ZoSWFImage::kOutputLossless},
        {"truncated", ".jpg", {0xFF, 0xD8, 0xFF, 0xE0, 0x00}, ZoSWFImage::kOutputLossless},
    };
    for (const auto& c : cases) {
        const auto path = folder_ / (std::string(c.name) + c.extension);
        Write(path, c.bytes);
        EXPECT_EQ(TeskImageOutputType(path.string()), c.expected) << c.name;
    }
    EXPECT_EQ(TeskImageOutputType("<PreviewImage1>"), ZoSWFImage::kOutputLossless);
}

TEST_F(SwfImageTest, MoviesShareOneEncodingButNumberTheirOwnCharacters) {
    auto builtIn = [](const char* name) {
        return ZoMakeCounted<TeskSWFImage>(name,
                                           ZoMakeCounted<ZoReferenceImage>(&ZoBuiltInPicture(name)),
                                           ZoSWFImage::kOutputLossless, kZoNoColour, 0);
    };
    auto cached = builtIn("<PreviewImage1>");
    auto forFirst = cached->ShareForMovie(), forSecond = cached->ShareForMovie();
    const auto first = WriteMovieWith({forFirst});
    const size_t encoded = cached->GetEncodedSize();
    EXPECT_GT(encoded, 0u);
    // Another bitmap comes first in the second movie, so ids differ.
    const auto second = WriteMovieWith({builtIn("<PreviewImage2>"), forSecond});
    ASSERT_EQ(first.Problems() + second.Problems(), "");
    EXPECT_EQ(cached->GetEncodedSize(), encoded);
    EXPECT_NE(forFirst->GetCharacterID(), forSecond->GetCharacterID());
    EXPECT_EQ(first.result.movie.bitmaps.at(forFirst->GetCharacterID()).pixels,
              second.result.movie.bitmaps.at(forSecond->GetCharacterID()).pixels);
}

}  // namespace
