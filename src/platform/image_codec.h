#pragma once
// Picture decoding for image objects: PNG, JPEG, GIF and BMP files become one
// plain RGBA picture, whatever their pixel format was.
#include "platform/zo_colour.h"
#include "platform/zo_rect.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

/// The picture file formats Vimbo reads.
enum class ZoImageFormat { Unknown, Png, Jpeg, Gif, Bmp };

/// A decoded picture: straight (not premultiplied) RGBA, 8 bits a channel,
/// rows top-down with no padding between them (stride = width * 4).
struct ZoDecodedImage {
    int32_t width = 0;
    int32_t height = 0;
    std::vector<uint8_t> rgba;
    /// At least one pixel is not fully opaque (an alpha channel that only says
    /// "opaque" counts as none, so the user's transparent colour still applies).
    bool hasAlpha = false;
    /// The colour the file itself marks transparent (a GIF's transparent
    /// palette entry), or kZoNoColour. Such pixels keep this colour and stay
    /// opaque in `rgba`: the colour is keyed out later, with the object's
    /// tolerance, like a colour the user picked.
    COLORREF transparentColour = kZoNoColour;
    ZoImageFormat format = ZoImageFormat::Unknown;

    /// The colour of pixel (x, y), without alpha; (x, y) must lie inside.
    COLORREF PixelColour(int32_t x, int32_t y) const noexcept;
    /// The alpha of pixel (x, y); (x, y) must lie inside.
    uint8_t PixelAlpha(int32_t x, int32_t y) const noexcept;
};

/// Limits that keep hostile files (huge declared sizes, decompression bombs)
/// from exhausting memory. Flash players refuse bitmaps with a side over
/// 16384 pixels, so a larger picture could never show in a movie anyway.
inline constexpr int32_t kZoMaxImageSide = 16384;
inline constexpr int64_t kZoMaxImagePixels = 64LL * 1024 * 1024;
inline constexpr int64_t kZoMaxImageFileBytes = 512LL * 1024 * 1024;

/// Every function here may run on several threads at once: the preview
/// builder decodes on its worker while the user-interface thread draws.
namespace ZoImageCodec {

/// The format announced by the first bytes (the signature), or Unknown.
ZoImageFormat DetectFormat(std::span<const uint8_t> bytes) noexcept;

/// Decodes a whole picture file held in memory (only the first frame of an
/// animated GIF). Throws ZoException with one message fit to show when the
/// data is unsupported, corrupt, truncated or too large.
ZoDecodedImage Decode(std::span<const uint8_t> bytes);

/// Reads and decodes the file at `path`; throws ZoException as Decode does,
/// and when the file cannot be read. Messages name the file.
ZoDecodedImage Load(const std::filesystem::path& path);

/// The picture's pixel size read from its headers without decoding the
/// pixels, or nullopt when the data is not a picture Decode would accept the
/// headers of (a truncated body still yields a size).
std::optional<ZoSize> PeekSize(std::span<const uint8_t> bytes) noexcept;

/// PeekSize of the file at `path`; nullopt when it cannot be read.
std::optional<ZoSize> PeekFileSize(const std::filesystem::path& path) noexcept;

/// The file's format from its first bytes (not its extension); Unknown when
/// it cannot be read. A JPEG's own bytes go into the SWF as they are.
ZoImageFormat DetectFileFormat(const std::filesystem::path& path) noexcept;

/// Whether the file at `path` holds JPEG data.
inline bool IsJpegFile(const std::filesystem::path& path) noexcept {
    return DetectFileFormat(path) == ZoImageFormat::Jpeg;
}

/// Whether JPEG data is sequential Huffman-coded (not progressive or
/// arithmetic-coded) with grey or YCbCr components: the kind every Flash
/// Player shows from a DefineBitsJPEG2 tag. Other JPEGs (progressive, CMYK)
/// are better embedded decoded, as lossless pictures.
bool IsBaselineJpeg(std::span<const uint8_t> bytes) noexcept;

/// Reads a whole file into memory (refusing files over kZoMaxImageFileBytes);
/// throws ZoException naming the file.
std::vector<uint8_t> ReadFileBytes(const std::filesystem::path& path);

}  // namespace ZoImageCodec

/// The built-in picture of a name beginning with "<": "<PreviewImage2>" is
/// resource 144, every other such name resource 143 (both 182 x 202, opaque).
/// Decoded once and shared; the reference stays valid for the program's life.
const ZoDecodedImage& ZoBuiltInPicture(std::string_view name);

/// The raw file bytes of the built-in picture of `name` (a PNG), for callers
/// that want the file form.
std::string_view ZoBuiltInPictureFile(std::string_view name) noexcept;
