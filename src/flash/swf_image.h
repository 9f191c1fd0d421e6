#pragma once
#include <cstdint>
#include <span>
#include <vector>

#include "flash/swf_entity.h"
#include "flash/swf_tags.h"
#include "platform/zo_string.h"

namespace ZoFlash {

/// Straight (not premultiplied) RGBA pixels, rows top to bottom, 4 bytes a
/// pixel, no padding.
struct ZoSWFRgbaBuffer {
    int width = 0;
    int height = 0;
    std::vector<uint8_t> rgba;
};

/// A bitmap character. The base class encodes an in-memory RGBA buffer as
/// a lossless bitmap; a subclass that loads picture files overrides
/// GetLosslessImageTag / GetJPEGImageTag (or Write) and uses the protected
/// encoding helpers.
class ZoSWFImage : public ZoSWFEntity {
  public:
    enum ImageOutputType { kOutputNone = 0, kOutputJPEG = 1, kOutputLossless = 2 };

    ZoSWFImage();
    ~ZoSWFImage() override;

    /// Writes one bitmap definition tag into `file`.
    virtual void Write(ZoSWFFile& file);

    /// An image read from the picture file at `path` (by a subclass).
    void SetFileImage(ImageOutputType type, const ZoString& path, unsigned long transparencyColour,
                      int tolerance);
    /// An image from pixels in memory; always written lossless.
    void SetBitmapBufferImage(ZoSWFRgbaBuffer buffer, unsigned long transparencyColour,
                              int tolerance);

    ImageOutputType GetOutputType() const noexcept { return outputType_; }
    /// Pixels; 0 x 0 until known.
    void GetSize(int& width, int& height) const noexcept;
    unsigned long GetTransparencyColour() const noexcept { return transparencyColour_; }
    int GetTransparencyTolerance() const noexcept { return tolerance_; }
    bool IsBitmapBufferImage() const noexcept { return isBuffer_; }
    const ZoString& GetFilePath() const noexcept { return path_; }

  protected:
    /// The JPEG encoding of the image (a ZoFDefineBitsJPEG2Tag or
    /// ZoFDefineBitsJPEG3Tag with id 0). The base has no JPEG source and
    /// throws ZoException.
    virtual ZoAutoPtr2<ZoFDefineTag> GetJPEGImageTag();
    /// The lossless encoding (id 0). The base encodes the bitmap buffer;
    /// throws ZoException when there is none.
    virtual ZoAutoPtr2<ZoFDefineBitsLosslessTag> GetLosslessImageTag();
    /// Fills in size and state; the base has nothing to load.
    virtual void LoadImageDetails() {}

    void SetImageDepth(int bitsPerPixel) noexcept { depth_ = bitsPerPixel; }
    int GetImageDepth() const noexcept { return depth_; }
    /// A subclass's own loading state (0 not loaded).
    void SetImageFileState(int state) noexcept { fileState_ = state; }
    int GetImageFileState() const noexcept { return fileState_; }
    void SetImageWidth(int width) noexcept { width_ = width; }
    void SetImageHeight(int height) noexcept { height_ = height; }
    /// Whether the decoded pixels carry alpha.
    void SetRGBAFormat(bool rgba) noexcept { rgbaFormat_ = rgba; }
    bool IsRGBAFormat() const noexcept { return rgbaFormat_; }

    /// DefineBitsLossless2 from straight-alpha RGBA pixels: premultiplied,
    /// reordered to ARGB and zlib-compressed. Throws ZoException when the
    /// buffer does not match width x height or a side is outside 1..65535.
    static ZoAutoPtr2<ZoFDefineBitsLossless2Tag> MakeLosslessTag(int characterId, int width,
                                                                 int height,
                                                                 std::span<const uint8_t> rgba);
    /// DefineBitsJPEG2 from plain JPEG bytes (SOI..EOI).
    static ZoAutoPtr2<ZoFDefineBitsJPEG2Tag> MakeJPEGTag(int characterId,
                                                         std::span<const uint8_t> jpeg);
    /// DefineBitsJPEG3 from plain JPEG bytes and one alpha byte per pixel
    /// (compressed here).
    static ZoAutoPtr2<ZoFDefineBitsJPEG3Tag> MakeJPEGAlphaTag(int characterId,
                                                              std::span<const uint8_t> jpeg,
                                                              std::span<const uint8_t> alpha);

  private:
    ImageOutputType outputType_ = kOutputNone;
    ZoString path_;
    unsigned long transparencyColour_ = 0xFFFFFFFFul;
    int tolerance_ = 0;
    bool isBuffer_ = false;
    ZoSWFRgbaBuffer buffer_;
    int width_ = 0, height_ = 0, depth_ = 0, fileState_ = 0;
    bool rgbaFormat_ = false;
};

}  // namespace ZoFlash
