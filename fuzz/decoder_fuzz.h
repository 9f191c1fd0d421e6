// Feeds arbitrary bytes to the picture decoders. Besides memory errors, it
// stops on any broken promise of the interface: only ZoException may escape,
// and a decoded picture is within the limits and sized as its headers say.
#include <cstdlib>

#include "platform/image_codec.h"
#include "platform/zo_exception.h"

namespace {

void Require(bool condition) {
    if (!condition) {
        std::abort();
    }
}

void CheckPicture(const ZoDecodedImage& image, std::span<const uint8_t> bytes) {
    Require(image.width > 0 && image.height > 0);
    Require(image.width <= kZoMaxImageSide && image.height <= kZoMaxImageSide);
    Require(int64_t{image.width} * image.height <= kZoMaxImagePixels);
    Require(image.rgba.size() == std::size_t(image.width) * std::size_t(image.height) * 4);
    Require(image.format == ZoImageCodec::DetectFormat(bytes));
    bool anyTranslucent = false;
    for (std::size_t i = 3; i < image.rgba.size(); i += 4) {
        anyTranslucent = anyTranslucent || image.rgba[i] != 0xFF;
    }
    Require(anyTranslucent == image.hasAlpha);
    // A GIF's first frame may widen its logical screen, so only the other
    // formats must agree with their headers exactly.
    const std::optional<ZoSize> size = ZoImageCodec::PeekSize(bytes);
    Require(size.has_value());
    if (image.format != ZoImageFormat::Gif) {
        Require(*size == (ZoSize{image.width, image.height}));
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
    const std::span<const uint8_t> bytes(data, size);
    ZoImageCodec::PeekSize(bytes);
    try {
        CheckPicture(ZoImageCodec::Decode(bytes), bytes);
    } catch (const ZoException&) {
        // Refusing bad data with a message is the expected outcome.
    }
    return 0;
}
