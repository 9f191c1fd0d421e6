#include "media/image_resource.h"

#include <limits>

#include "media/image_path.h"
#include "platform/zo_exception.h"

bool TeskImageResource::IsBuiltIn() const noexcept {
    return TeskIsBuiltInImageName(GetKey().GetName());
}

ZoAutoInterface2<ZoReferenceImage> TeskImageResource::GetImage() {
    std::lock_guard lock(lock_);
    return GetImageLocked();
}

ZoAutoInterface2<ZoReferenceImage> TeskImageResource::GetImageLocked() {
    if (image_)
        // A file that went missing stays unavailable until the change check
        // sees it again, even though its picture is still in memory.
        return IsBuiltIn() || stamp_.IsFound() ? image_ : nullptr;
    // Every piece of a wave asks for its picture: a file that failed is
    // decoded again only once it has changed.
    if (!loadError_.empty() && ZoFileStamp::Of(GetKey().GetName()) == stamp_)
        return nullptr;
    return LoadLocked();
}

ZoAutoInterface2<ZoReferenceImage> TeskImageResource::LoadLocked() {
    const ZoString& name = GetKey().GetName();
    if (IsBuiltIn()) {
        image_ = ZoMakeCounted<ZoReferenceImage>(&ZoBuiltInPicture(name));
        return image_;
    }
    try {
        image_ = ZoMakeCounted<ZoReferenceImage>(
            ZoImageCodec::Decode(ZoImageCodec::ReadFileBytes(name)));
        loadError_.clear();
    } catch (const ZoException& error) {
        image_.Reset();
        loadError_ = error.what();
    }
    stamp_ = ZoFileStamp::Of(name);
    if (!stamp_.IsFound())
        return nullptr;
    return image_;
}

ZoString TeskImageResource::GetLoadError() {
    std::lock_guard lock(lock_);
    return loadError_;
}

ZoAutoInterface2<TeskSWFImage> TeskImageResource::GetSWFImage(
    ZoFlash::ZoSWFImage::ImageOutputType type, COLORREF colour, int32_t tolerance) {
    std::lock_guard lock(lock_);
    for (const auto& image : swfImages_)
        if (image->GetOutputType() == type && image->GetTransparencyColour() == colour &&
            image->GetTransparencyTolerance() == tolerance)
            return image;
    const auto picture = GetImageLocked();
    if (!picture)
        return nullptr;
    swfImages_.push_back(
        ZoMakeCounted<TeskSWFImage>(GetKey().GetName(), picture, type, colour, tolerance));
    return swfImages_.back();
}

int32_t TeskImageResource::GetMemorySize() {
    std::lock_guard lock(lock_);
    size_t size = image_ ? image_->GetMemorySize() : 0;
    for (const auto& image : swfImages_)
        size += image->GetEncodedSize();
    return static_cast<int32_t>(std::min<size_t>(size, std::numeric_limits<int32_t>::max()));
}

bool TeskImageResource::CheckForChange() {
    std::lock_guard lock(lock_);
    // Nothing loaded yet, so nothing can be out of date.
    if (IsBuiltIn() || stamp_.state == ZoFileStamp::State::kUnknown)
        return false;
    const ZoFileStamp now = ZoFileStamp::Of(GetKey().GetName());
    if (now == stamp_)
        return false;
    stamp_ = now;
    image_.Reset();
    loadError_.clear();
    swfImages_.clear();
    return true;
}
