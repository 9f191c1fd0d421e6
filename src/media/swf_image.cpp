#include "media/swf_image.h"

#include <zlib.h>

#include <algorithm>
#include <filesystem>

#include "flash/swf_file.h"
#include "media/colour_key.h"
#include "media/image_path.h"
#include "media/jpeg_header.h"
#include "media/resource_manager.h"
#include "media/swf_resource_manager.h"
#include "platform/zo_exception.h"

using ZoFlash::ZoFDefineBitsJPEG2Tag;
using ZoFlash::ZoFDefineBitsJPEG3Tag;
using ZoFlash::ZoFDefineBitsLossless2Tag;
using ZoFlash::ZoFDefineBitsLosslessTag;
using ZoFlash::ZoFDefineTag;
using ZoFlash::ZoFSharedBytes;

namespace {

bool HasJpegExtension(const ZoString& path) {
    const ZoString extension = ZoToLowerAscii(std::filesystem::path(path).extension().string());
    return extension == ".jpg" || extension == ".jpeg" || extension == ".jpe" ||
           extension == ".jfif";
}

/// The file's JPEG stream without anything trailing its last EOI marker
/// (cameras and editors sometimes append data the player would choke on).
ZoFSharedBytes ReadJpegStream(const ZoString& path) {
    std::vector<uint8_t> bytes = ZoImageCodec::ReadFileBytes(path);
    for (size_t end = bytes.size(); end >= 2; --end)
        if (bytes[end - 2] == 0xFF && bytes[end - 1] == 0xD9) {
            bytes.resize(end);
            break;
        }
    return std::make_shared<const std::vector<uint8_t>>(std::move(bytes));
}

ZoFSharedBytes Compress(const std::vector<uint8_t>& plain) {
    uLongf size = compressBound(static_cast<uLong>(plain.size()));
    std::vector<uint8_t> packed(size);
    if (compress2(packed.data(), &size, plain.data(), static_cast<uLong>(plain.size()),
                  Z_BEST_COMPRESSION) != Z_OK)
        throw ZoException("The picture's transparency could not be compressed.");
    packed.resize(size);
    return std::make_shared<const std::vector<uint8_t>>(std::move(packed));
}

template <typename Tag>
ZoAutoPtr2<Tag> CopyLossless(const ZoFDefineBitsLosslessTag& cached, int characterId) {
    auto tag = std::make_unique<Tag>(characterId);
    tag->SetLosslessFormat(cached.GetLosslessFormat());
    tag->SetLosslessWidth(cached.GetLosslessWidth());
    tag->SetLosslessHeight(cached.GetLosslessHeight());
    tag->SetColourTableSize(cached.GetColourTableSize());
    tag->SetImageDataSize(cached.GetImageDataSize());
    tag->SetLosslessImageData(cached.GetLosslessImageData());
    return tag;
}

}  // namespace

ZoFlash::ZoSWFImage::ImageOutputType TeskImageOutputType(const ZoString& path) {
    if (TeskIsBuiltInImageName(path) || !HasJpegExtension(path))
        return ZoFlash::ZoSWFImage::kOutputLossless;
    return TeskIsPlayableJpegFile(path) ? ZoFlash::ZoSWFImage::kOutputJPEG
                                        : ZoFlash::ZoSWFImage::kOutputLossless;
}

TeskSWFImage::TeskSWFImage(const ZoString& path, ZoAutoInterface2<ZoReferenceImage> picture,
                           ImageOutputType type, COLORREF colour, int32_t tolerance)
    : picture_(std::move(picture)), encodings_(std::make_shared<Encodings>()) {
    SetFileImage(type, path, colour, tolerance);
    LoadImageDetails();
}

ZoAutoInterface2<TeskSWFImage> TeskSWFImage::ShareForMovie() const {
    auto image = ZoMakeCounted<TeskSWFImage>(GetFilePath(), picture_, GetOutputType(),
                                             GetTransparencyColour(), GetTransparencyTolerance());
    image->encodings_ = encodings_;
    return image;
}

void TeskSWFImage::LoadImageDetails() {
    SetImageWidth(picture_->GetWidth());
    SetImageHeight(picture_->GetHeight());
    SetImageDepth(picture_->HasAlpha() ? 32 : 24);
    SetRGBAFormat(picture_->HasAlpha() || GetTransparencyColour() != kZoNoColour);
    SetImageFileState(1);
}

std::vector<uint8_t> TeskSWFImage::KeyedPixels() const {
    std::vector<uint8_t> rgba = picture_->Picture().rgba;
    TeskApplyColourKey(rgba, static_cast<COLORREF>(GetTransparencyColour()),
                       GetTransparencyTolerance());
    return rgba;
}

ZoAutoPtr2<ZoFDefineBitsLosslessTag> TeskSWFImage::GetLosslessImageTag() {
    return MakeLosslessTag(0, picture_->GetWidth(), picture_->GetHeight(), KeyedPixels());
}

ZoAutoPtr2<ZoFDefineTag> TeskSWFImage::GetJPEGImageTag() {
    ZoFSharedBytes jpeg = ReadJpegStream(GetFilePath());
    if (GetTransparencyColour() == kZoNoColour && !picture_->HasAlpha()) {
        auto tag = std::make_unique<ZoFDefineBitsJPEG2Tag>(0);
        tag->SetJPEG2Data(std::move(jpeg));
        return tag;
    }
    // A keyed-out colour needs an alpha plane beside the untouched JPEG data.
    const std::vector<uint8_t> rgba = KeyedPixels();
    std::vector<uint8_t> alpha(rgba.size() / 4);
    for (size_t i = 0; i < alpha.size(); ++i)
        alpha[i] = rgba[i * 4 + 3];
    auto tag = std::make_unique<ZoFDefineBitsJPEG3Tag>(0);
    tag->SetJPEG3Data(std::move(jpeg));
    tag->SetAlphaData(Compress(alpha));
    return tag;
}

ZoAutoPtr2<ZoFDefineTag> TeskSWFImage::CopyCachedTag(int characterId) {
    std::lock_guard lock(encodings_->lock);
    if (GetOutputType() != kOutputJPEG) {
        if (!encodings_->lossless)
            encodings_->lossless = GetLosslessImageTag();
        return CopyLossless<ZoFDefineBitsLossless2Tag>(*encodings_->lossless, characterId);
    }
    if (!encodings_->jpeg && !encodings_->jpegWithAlpha) {
        ZoAutoPtr2<ZoFDefineTag> encoded = GetJPEGImageTag();
        if (auto* withAlpha = dynamic_cast<ZoFDefineBitsJPEG3Tag*>(encoded.get())) {
            encoded.release();
            encodings_->jpegWithAlpha.reset(withAlpha);
        } else {
            encodings_->jpeg.reset(static_cast<ZoFDefineBitsJPEG2Tag*>(encoded.release()));
        }
    }
    if (encodings_->jpegWithAlpha) {
        auto tag = std::make_unique<ZoFDefineBitsJPEG3Tag>(characterId);
        tag->SetJPEG3Data(encodings_->jpegWithAlpha->GetJPEG3Bytes());
        tag->SetAlphaData(encodings_->jpegWithAlpha->GetAlphaBytes());
        return tag;
    }
    auto tag = std::make_unique<ZoFDefineBitsJPEG2Tag>(characterId);
    tag->SetJPEG2Data(encodings_->jpeg->GetJPEG2Bytes());
    return tag;
}

void TeskSWFImage::Write(ZoFlash::ZoSWFFile& file) {
    LoadImageDetails();
    // Encode before taking an id, so a picture that cannot be encoded leaves
    // the file's numbering untouched.
    ZoAutoPtr2<ZoFDefineTag> tag = CopyCachedTag(0);
    tag->SetCharacterID(ClaimCharacterID(file));
    file.AddDefinitionTag(tag.get());
}

size_t TeskSWFImage::GetEncodedSize() const {
    std::lock_guard lock(encodings_->lock);
    size_t size = 0;
    if (encodings_->lossless && encodings_->lossless->GetLosslessImageData())
        size += encodings_->lossless->GetLosslessImageData()->size();
    if (encodings_->jpeg)
        size += encodings_->jpeg->GetJPEG2Size();
    if (encodings_->jpegWithAlpha)
        size +=
            encodings_->jpegWithAlpha->GetJPEG3Size() + encodings_->jpegWithAlpha->GetAlphaSize();
    return size;
}

ZoAutoInterface2<ZoFlash::ZoSWFImage> TeskSWFResourceManager::GetImage(
    const ZoString& name, unsigned long transparencyColour, int tolerance) {
    const ZoFlash::ZoSWFImage::ImageOutputType type = TeskImageOutputType(name);
    for (const auto& image : images_)
        if (image->GetOutputType() == type && image->GetFilePath() == name &&
            image->GetTransparencyColour() == transparencyColour &&
            image->GetTransparencyTolerance() == tolerance)
            return image;
    const auto resource = TeskGetResourceManager().GetImageResource(ZoResourceKey(name));
    const auto shared =
        resource->GetSWFImage(type, static_cast<COLORREF>(transparencyColour), tolerance);
    if (!shared)
        return nullptr;
    images_.push_back(shared->ShareForMovie());
    images_.back()->InitialiseForRewriting();
    return images_.back();
}
