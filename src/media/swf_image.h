#pragma once
// A picture as an SWF bitmap character. JPEG files go into the movie with
// their own bytes; everything else is written lossless with alpha.
#include <memory>
#include <mutex>

#include "flash/swf_image.h"
#include "media/reference_image.h"

/// JPEG output for files with a JPEG name whose data a player can show as it
/// is; lossless for everything else (built-in pictures included).
ZoFlash::ZoSWFImage::ImageOutputType TeskImageOutputType(const ZoString& path);

/// One picture with one transparent colour and tolerance, encoded at most
/// once however many movies use it.
class TeskSWFImage : public ZoFlash::ZoSWFImage {
  public:
    /// `path` is the full path or built-in name; `colour` is keyed out with
    /// `tolerance` (kZoNoColour keys nothing).
    TeskSWFImage(const ZoString& path, ZoAutoInterface2<ZoReferenceImage> picture,
                 ImageOutputType type, COLORREF colour, int32_t tolerance);

    /// A new entity for one more movie, sharing this one's encodings. Each
    /// movie numbers its characters itself, and two movies may be written on
    /// two threads at once, so movies never share the entity.
    ZoAutoInterface2<TeskSWFImage> ShareForMovie() const;

    /// Defines the bitmap in `file`, encoding it first if no movie has yet.
    void Write(ZoFlash::ZoSWFFile& file) override;

    /// Bytes of the cached encodings (0 before the first Write).
    size_t GetEncodedSize() const;

  protected:
    ZoAutoPtr2<ZoFlash::ZoFDefineTag> GetJPEGImageTag() override;
    ZoAutoPtr2<ZoFlash::ZoFDefineBitsLosslessTag> GetLosslessImageTag() override;
    void LoadImageDetails() override;

  private:
    /// The encodings shared by every movie's entity of this picture.
    struct Encodings {
        mutable std::mutex lock;
        ZoAutoPtr2<ZoFlash::ZoFDefineBitsLosslessTag> lossless;
        ZoAutoPtr2<ZoFlash::ZoFDefineBitsJPEG2Tag> jpeg;
        ZoAutoPtr2<ZoFlash::ZoFDefineBitsJPEG3Tag> jpegWithAlpha;
    };

    /// The RGBA pixels with the transparent colour keyed out.
    std::vector<uint8_t> KeyedPixels() const;
    /// This movie's tag for `characterId`, copied from the cached encoding.
    ZoAutoPtr2<ZoFlash::ZoFDefineTag> CopyCachedTag(int characterId);

    ZoAutoInterface2<ZoReferenceImage> picture_;
    std::shared_ptr<Encodings> encodings_;
};
