#include "platform/image_codec.h"

#include "platform/image_codec_internal.h"
#include "platform/zo_exception.h"
#include "platform/zo_string.h"

#include <algorithm>
#include <cstring>
#include <fstream>

namespace ZoImageCodec {
namespace {

bool StartsWith(std::span<const uint8_t> bytes, std::string_view signature) noexcept {
    return bytes.size() >= signature.size() &&
           std::memcmp(bytes.data(), signature.data(), signature.size()) == 0;
}

ZoString PathText(const std::filesystem::path& path) {
    return reinterpret_cast<const char*>(path.u8string().c_str());
}

// Enough for every signature DetectFormat looks at.
constexpr std::size_t kSignatureBytes = 8;

std::vector<uint8_t> ReadFilePrefix(const std::filesystem::path& path, std::size_t count) {
    std::ifstream in(path, std::ios::binary);
    std::vector<uint8_t> bytes(count);
    in.read(reinterpret_cast<char*>(bytes.data()), static_cast<std::streamsize>(count));
    bytes.resize(static_cast<std::size_t>(std::max<std::streamsize>(in.gcount(), 0)));
    return bytes;
}

struct FormatCodec {
    ZoImageFormat format;
    ZoDecodedImage (*decode)(std::span<const uint8_t>);
    std::optional<ZoSize> (*peek)(std::span<const uint8_t>) noexcept;
};

constexpr FormatCodec kCodecs[] = {
    {ZoImageFormat::Png, Detail::DecodePng, Detail::PeekPngSize},
    {ZoImageFormat::Jpeg, Detail::DecodeJpeg, Detail::PeekJpegSize},
    {ZoImageFormat::Gif, Detail::DecodeGif, Detail::PeekGifSize},
    {ZoImageFormat::Bmp, Detail::DecodeBmp, Detail::PeekBmpSize},
};

const FormatCodec* CodecFor(ZoImageFormat format) noexcept {
    for (const FormatCodec& codec : kCodecs) {
        if (codec.format == format) {
            return &codec;
        }
    }
    return nullptr;
}

}  // namespace

ZoImageFormat DetectFormat(std::span<const uint8_t> bytes) noexcept {
    if (StartsWith(bytes, "\x89PNG\r\n\x1a\n")) {
        return ZoImageFormat::Png;
    }
    if (StartsWith(bytes, "\xff\xd8\xff")) {
        return ZoImageFormat::Jpeg;
    }
    if (StartsWith(bytes, "GIF87a") || StartsWith(bytes, "GIF89a")) {
        return ZoImageFormat::Gif;
    }
    if (StartsWith(bytes, "BM")) {
        return ZoImageFormat::Bmp;
    }
    return ZoImageFormat::Unknown;
}

ZoDecodedImage Decode(std::span<const uint8_t> bytes) {
    if (const FormatCodec* codec = CodecFor(DetectFormat(bytes))) {
        return codec->decode(bytes);
    }
    throw ZoException("The file is not a picture in a supported format (PNG, JPEG, GIF or BMP).");
}

std::vector<uint8_t> ReadFileBytes(const std::filesystem::path& path) {
    std::error_code error;
    // A folder opens as a stream on some systems and claims an absurd size.
    const bool isFile = std::filesystem::is_regular_file(path, error);
    std::ifstream in(path, std::ios::binary | std::ios::ate);
    if (!isFile || !in) {
        throw ZoException(ZoFormat("The file '%s' cannot be opened.", PathText(path).c_str()));
    }
    const std::streamoff size = in.tellg();
    if (size < 0 || size > kZoMaxImageFileBytes) {
        throw ZoException(
            ZoFormat("The file '%s' is too large to be a picture.", PathText(path).c_str()));
    }
    std::vector<uint8_t> bytes(static_cast<std::size_t>(size));
    in.seekg(0);
    if (!in.read(reinterpret_cast<char*>(bytes.data()), size)) {
        throw ZoException(ZoFormat("The file '%s' cannot be read.", PathText(path).c_str()));
    }
    return bytes;
}

ZoDecodedImage Load(const std::filesystem::path& path) {
    const std::vector<uint8_t> bytes = ReadFileBytes(path);
    try {
        return Decode(bytes);
    } catch (const ZoException& e) {
        throw ZoException(ZoFormat("'%s': %s", PathText(path).c_str(), e.what()));
    }
}

std::optional<ZoSize> PeekSize(std::span<const uint8_t> bytes) noexcept {
    const FormatCodec* codec = CodecFor(DetectFormat(bytes));
    return codec != nullptr ? codec->peek(bytes) : std::nullopt;
}

std::optional<ZoSize> PeekFileSize(const std::filesystem::path& path) noexcept {
    try {
        // JPEG headers can sit behind large metadata segments, so a JPEG is
        // read whole; the other formats say their size within a few bytes.
        if (DetectFileFormat(path) == ZoImageFormat::Jpeg) {
            return PeekSize(ReadFileBytes(path));
        }
        constexpr std::size_t kHeaderBytes = 256;
        return PeekSize(ReadFilePrefix(path, kHeaderBytes));
    } catch (const std::exception&) {
        return std::nullopt;
    }
}

ZoImageFormat DetectFileFormat(const std::filesystem::path& path) noexcept {
    try {
        return DetectFormat(ReadFilePrefix(path, kSignatureBytes));
    } catch (const std::exception&) {
        return ZoImageFormat::Unknown;
    }
}

namespace Detail {

void ThrowCorrupt(std::string_view format, std::string_view reason) {
    ZoString message = ZoFormat("The %.*s picture is corrupt or truncated",
                                static_cast<int>(format.size()), format.data());
    if (!reason.empty()) {
        message += " (" + ZoString(reason) + ")";
    }
    throw ZoException(message + ".");
}

bool IsAcceptableSize(int64_t width, int64_t height) noexcept {
    return width > 0 && height > 0 && width <= kZoMaxImageSide && height <= kZoMaxImageSide &&
           width * height <= kZoMaxImagePixels;
}

void CheckSize(int64_t width, int64_t height) {
    if (width <= 0 || height <= 0) {
        throw ZoException("The picture has no pixels.");
    }
    if (!IsAcceptableSize(width, height)) {
        throw ZoException(
            ZoFormat("The picture is too large (%lld x %lld pixels; at most %d "
                     "pixels a side and %lld million pixels in all).",
                     static_cast<long long>(width), static_cast<long long>(height), kZoMaxImageSide,
                     static_cast<long long>(kZoMaxImagePixels / 1000000)));
    }
}

ZoDecodedImage MakeImage(int64_t width, int64_t height, ZoImageFormat format) {
    CheckSize(width, height);
    ZoDecodedImage image;
    image.width = static_cast<int32_t>(width);
    image.height = static_cast<int32_t>(height);
    image.format = format;
    image.rgba.resize(static_cast<std::size_t>(width * height * 4));
    return image;
}

void UpdateHasAlpha(ZoDecodedImage& image) noexcept {
    image.hasAlpha = false;
    for (std::size_t i = 3; i < image.rgba.size(); i += 4) {
        if (image.rgba[i] != 0xFF) {
            image.hasAlpha = true;
            return;
        }
    }
}

}  // namespace Detail
}  // namespace ZoImageCodec

namespace {

std::size_t PixelOffset(const ZoDecodedImage& image, int32_t x, int32_t y) noexcept {
    return (static_cast<std::size_t>(y) * static_cast<std::size_t>(image.width) +
            static_cast<std::size_t>(x)) *
           4;
}

constexpr std::string_view kSecondPreviewName = "<PreviewImage2>";

}  // namespace

COLORREF ZoDecodedImage::PixelColour(int32_t x, int32_t y) const noexcept {
    const uint8_t* pixel = &rgba[PixelOffset(*this, x, y)];
    return ZoRGB(pixel[0], pixel[1], pixel[2]);
}

uint8_t ZoDecodedImage::PixelAlpha(int32_t x, int32_t y) const noexcept {
    return rgba[PixelOffset(*this, x, y) + 3];
}

// The built-in pictures, compiled in from resources/ by vimbo_embed.
extern const std::string_view kZoPreviewImage1Png;
extern const std::string_view kZoPreviewImage2Png;

std::string_view ZoBuiltInPictureFile(std::string_view name) noexcept {
    return name == kSecondPreviewName ? kZoPreviewImage2Png : kZoPreviewImage1Png;
}

const ZoDecodedImage& ZoBuiltInPicture(std::string_view name) {
    const auto decode = [](std::string_view file) {
        return ZoImageCodec::Decode(
            std::span(reinterpret_cast<const uint8_t*>(file.data()), file.size()));
    };
    // Function-local statics: decoded on first use, once, even when the
    // preview thread and the user-interface thread ask together.
    if (name == kSecondPreviewName) {
        static const ZoDecodedImage picture2 = decode(kZoPreviewImage2Png);
        return picture2;
    }
    static const ZoDecodedImage picture1 = decode(kZoPreviewImage1Png);
    return picture1;
}
