#include "flash/swf_image.h"

#include <zlib.h>

#include "flash/swf_file.h"
#include "platform/zo_exception.h"

namespace ZoFlash {
namespace {

std::vector<uint8_t> Compress(std::span<const uint8_t> data) {
    uLongf size = compressBound(static_cast<uLong>(data.size()));
    std::vector<uint8_t> out(size);
    if (compress2(out.data(), &size, data.data(), static_cast<uLong>(data.size()),
                  Z_BEST_COMPRESSION) != Z_OK)
        throw ZoException("Compressing bitmap data failed.");
    out.resize(size);
    return out;
}

uint8_t Premultiply(uint8_t channel, uint8_t alpha) noexcept {
    return static_cast<uint8_t>((channel * alpha + 127) / 255);
}

}  // namespace

ZoSWFImage::ZoSWFImage() = default;
ZoSWFImage::~ZoSWFImage() = default;

void ZoSWFImage::Write(ZoSWFFile& file) {
    ZoAutoPtr2<ZoFDefineTag> tag;
    if (GetOutputType() == kOutputJPEG)
        tag = GetJPEGImageTag();
    else
        tag = GetLosslessImageTag();
    tag->SetCharacterID(ClaimCharacterID(file));
    file.AddDefinitionTag(tag.get());
}

void ZoSWFImage::SetFileImage(ImageOutputType type, const ZoString& path,
                              unsigned long transparencyColour, int tolerance) {
    outputType_ = type;
    path_ = path;
    transparencyColour_ = transparencyColour;
    tolerance_ = tolerance;
    isBuffer_ = false;
    buffer_ = {};
}

void ZoSWFImage::SetBitmapBufferImage(ZoSWFRgbaBuffer buffer, unsigned long transparencyColour,
                                      int tolerance) {
    if (buffer.width < 1 || buffer.height < 1 ||
        buffer.rgba.size() != static_cast<size_t>(buffer.width) * buffer.height * 4)
        throw ZoException("A bitmap buffer's pixels do not match its size.");
    outputType_ = kOutputLossless;
    path_.clear();
    transparencyColour_ = transparencyColour;
    tolerance_ = tolerance;
    isBuffer_ = true;
    width_ = buffer.width;
    height_ = buffer.height;
    depth_ = 32;
    rgbaFormat_ = true;
    buffer_ = std::move(buffer);
}

void ZoSWFImage::GetSize(int& width, int& height) const noexcept {
    width = width_;
    height = height_;
}

ZoAutoPtr2<ZoFDefineTag> ZoSWFImage::GetJPEGImageTag() {
    throw ZoException("This image has no JPEG data.");
}

ZoAutoPtr2<ZoFDefineBitsLosslessTag> ZoSWFImage::GetLosslessImageTag() {
    if (!isBuffer_)
        throw ZoException("The image '" + path_ + "' has no decoded pixels.");
    return MakeLosslessTag(0, buffer_.width, buffer_.height, buffer_.rgba);
}

ZoAutoPtr2<ZoFDefineBitsLossless2Tag> ZoSWFImage::MakeLosslessTag(int characterId, int width,
                                                                  int height,
                                                                  std::span<const uint8_t> rgba) {
    auto tag = std::make_unique<ZoFDefineBitsLossless2Tag>(characterId);
    tag->SetLosslessWidth(width);
    tag->SetLosslessHeight(height);
    if (rgba.size() != static_cast<size_t>(width) * height * 4)
        throw ZoException("A bitmap's pixels do not match its size.");
    // 32-bit rows need no padding; the format stores premultiplied ARGB.
    std::vector<uint8_t> argb(rgba.size());
    for (size_t i = 0; i < rgba.size(); i += 4) {
        const uint8_t a = rgba[i + 3];
        argb[i] = a;
        argb[i + 1] = Premultiply(rgba[i], a);
        argb[i + 2] = Premultiply(rgba[i + 1], a);
        argb[i + 3] = Premultiply(rgba[i + 2], a);
    }
    tag->SetLosslessFormat(ZoFDefineBitsLosslessTag::Format::kArgb32);
    tag->SetLosslessImageData(std::make_shared<const std::vector<uint8_t>>(Compress(argb)));
    return tag;
}

ZoAutoPtr2<ZoFDefineBitsJPEG2Tag> ZoSWFImage::MakeJPEGTag(int characterId,
                                                          std::span<const uint8_t> jpeg) {
    auto tag = std::make_unique<ZoFDefineBitsJPEG2Tag>(characterId);
    tag->SetJPEG2Data(jpeg.data(), jpeg.size());
    return tag;
}

ZoAutoPtr2<ZoFDefineBitsJPEG3Tag> ZoSWFImage::MakeJPEGAlphaTag(int characterId,
                                                               std::span<const uint8_t> jpeg,
                                                               std::span<const uint8_t> alpha) {
    auto tag = std::make_unique<ZoFDefineBitsJPEG3Tag>(characterId);
    tag->SetJPEG3Data(std::make_shared<const std::vector<uint8_t>>(jpeg.begin(), jpeg.end()));
    tag->SetAlphaData(std::make_shared<const std::vector<uint8_t>>(Compress(alpha)));
    return tag;
}

}  // namespace ZoFlash
