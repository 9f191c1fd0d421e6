#pragma once
// One picture decoder fed arbitrary bytes: each format has an entry of its
// own, which passes on only data with that format's signature, so that the
// fuzzer spends its time inside one decoder. Besides memory errors, it stops
// on any broken promise of the interface: only ZoException may escape, and a
// decoded picture is within the limits and sized as its headers say.
#include <cstdlib>

#include "platform/image_codec.h"
#include "platform/zo_exception.h"

namespace decoder_fuzz {

inline void Require(bool condition) {
    if (!condition) {
        std::abort();
    }
}

inline void CheckPicture(const ZoDecodedImage& image, ZoImageFormat format,
                         std::optional<ZoSize> size) {
    Require(image.width > 0 && image.height > 0);
    Require(image.width <= kZoMaxImageSide && image.height <= kZoMaxImageSide);
    Require(int64_t{image.width} * image.height <= kZoMaxImagePixels);
    Require(image.rgba.size() == std::size_t(image.width) * std::size_t(image.height) * 4);
    Require(image.format == format);
    bool anyTranslucent = false;
    for (std::size_t i = 3; i < image.rgba.size(); i += 4) {
        anyTranslucent = anyTranslucent || image.rgba[i] != 0xFF;
    }
    Require(anyTranslucent == image.hasAlpha);
    // A GIF's first frame may widen its logical screen, so only the other
    // formats must agree with their headers exactly.
    Require(size.has_value());
    if (format != ZoImageFormat::Gif) {
        Require(*size == (ZoSize{image.width, image.height}));
    }
}

/// The body of a format's LLVMFuzzerTestOneInput.
inline int Run(ZoImageFormat format, const uint8_t* data, std::size_t size) {
    const std::span<const uint8_t> bytes(data, size);
    if (ZoImageCodec::DetectFormat(bytes) != format) {
        return -1;  // not this decoder's input: keep it out of the corpus
    }
    const std::optional<ZoSize> peeked = ZoImageCodec::PeekSize(bytes);
    try {
        CheckPicture(ZoImageCodec::Decode(bytes), format, peeked);
    } catch (const ZoException&) {
        // Refusing bad data with a message is the expected outcome.
    }
    return 0;
}

}  // namespace decoder_fuzz
