#pragma once
// Shared by the per-format decoders behind ZoImageCodec; not for other layers.
#include "platform/image_codec.h"

#include <string_view>

namespace ZoImageCodec::Detail {

ZoDecodedImage DecodePng(std::span<const uint8_t> bytes);
ZoDecodedImage DecodeJpeg(std::span<const uint8_t> bytes);
ZoDecodedImage DecodeGif(std::span<const uint8_t> bytes);
ZoDecodedImage DecodeBmp(std::span<const uint8_t> bytes);

std::optional<ZoSize> PeekPngSize(std::span<const uint8_t> bytes) noexcept;
std::optional<ZoSize> PeekJpegSize(std::span<const uint8_t> bytes) noexcept;
std::optional<ZoSize> PeekGifSize(std::span<const uint8_t> bytes) noexcept;
std::optional<ZoSize> PeekBmpSize(std::span<const uint8_t> bytes) noexcept;

/// Throws the "corrupt picture" ZoException for `format` ("PNG", ...), with the
/// decoder's own reason when it gave one.
[[noreturn]] void ThrowCorrupt(std::string_view format, std::string_view reason);

/// Whether a declared size is one we will allocate for.
bool IsAcceptableSize(int64_t width, int64_t height) noexcept;

/// Throws unless IsAcceptableSize; call before allocating any pixels.
void CheckSize(int64_t width, int64_t height);

/// A picture of the given size with every byte zero, after CheckSize.
ZoDecodedImage MakeImage(int64_t width, int64_t height, ZoImageFormat format);

/// Sets hasAlpha from the pixels.
void UpdateHasAlpha(ZoDecodedImage& image) noexcept;

}  // namespace ZoImageCodec::Detail
