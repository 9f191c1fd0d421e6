#pragma once
// Low-level tags. Each class writes exactly the SWF tag of the same name: the
// body goes into a buffer first, then the short or long header and the body
// go to the stream.
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "flash/byte_stream.h"
#include "flash/shape_records.h"
#include "flash/swf_records.h"
#include "platform/zo_rect.h"

namespace ZoFlash {

class ZoSWFColour;

/// Tag codes of the tags Vimbo writes.
enum class ZoFTagCode : uint16_t {
    kEnd = 0,
    kShowFrame = 1,
    kDefineShape = 2,
    kSetBackgroundColor = 9,
    kDefineFont = 10,
    kDefineText = 11,
    kDoAction = 12,
    kDefineBitsJPEG2 = 21,
    kDefineShape2 = 22,
    kPlaceObject2 = 26,
    kRemoveObject2 = 28,
    kDefineShape3 = 32,
    kDefineBitsJPEG3 = 35,
    kDefineBitsLossless2 = 36,
    kDefineBitsLossless = 20,
    kDefineSprite = 39,
    kFrameLabel = 43,
    kDefineFont2 = 48,
    kDefineButton2 = 34,
};

/// Writes a tag header and body: the short header holds lengths up to 62,
/// the long one is used beyond that or when `forceLong`.
void ZoWriteTag(ZoFFileStream& out, ZoFTagCode code, std::span<const uint8_t> body,
                bool forceLong = false);
/// The same into a byte buffer (a frame's tags, tags inside a DefineSprite).
void ZoWriteTag(ZoFByteBuffer& out, ZoFTagCode code, std::span<const uint8_t> body,
                bool forceLong = false);
/// Only the header, for a body of `length` bytes that follows it.
void ZoWriteTagHeader(ZoFByteBuffer& out, ZoFTagCode code, size_t length, bool forceLong = false);

/// Base of every tag.
class ZoFTag {
  public:
    virtual ~ZoFTag() = default;
    /// Writes header and body.
    virtual void Write(ZoFFileStream& out) const;
    /// True forces the long header even for short bodies.
    virtual bool ForceUseLongTagHeader() const { return false; }
    virtual ZoFTagCode GetCode() const = 0;
    /// Appends the tag body (everything after the header).
    virtual void WriteBody(ZoFByteBuffer& body) const = 0;
};

/// Base of character definitions.
class ZoFDefineTag : public ZoFTag {
  public:
    explicit ZoFDefineTag(int characterId = 0) : characterId_(characterId) {}
    int GetCharacterID() const noexcept { return characterId_; }
    void SetCharacterID(int id) noexcept { characterId_ = id; }

  private:
    int characterId_;
};

/// DefineShape3: bounds, fill and line style arrays (with alpha) and edges.
class ZoFDefineShapeTag : public ZoFDefineTag {
  public:
    ZoFDefineShapeTag(int characterId, const ZoRect& bounds, std::vector<ZoFFillStyle> fills,
                      std::vector<ZoFLineStyle> lines, ZoAutoPtr2<ZoFShape> shape);
    ZoFTagCode GetCode() const override { return ZoFTagCode::kDefineShape3; }
    void WriteBody(ZoFByteBuffer& body) const override;
    /// Twips.
    const ZoRect& GetBoundingRect() const noexcept { return bounds_; }

  private:
    ZoRect bounds_;
    std::vector<ZoFFillStyle> fills_;
    std::vector<ZoFLineStyle> lines_;
    ZoAutoPtr2<ZoFShape> shape_;
};

/// DefineText: a prepared body (built by ZoSWFText) with its bounds.
class ZoFDefineTextTag : public ZoFDefineTag {
  public:
    ZoFDefineTextTag(int characterId, const ZoRect& bounds, std::vector<uint8_t> records);
    ZoFTagCode GetCode() const override { return ZoFTagCode::kDefineText; }
    void WriteBody(ZoFByteBuffer& body) const override;
    /// Twips.
    const ZoRect& GetBoundingRect() const noexcept { return bounds_; }

  private:
    ZoRect bounds_;
    std::vector<uint8_t> records_;  // GlyphBits, AdvanceBits, TEXTRECORDs, end byte
};

/// Shared, immutable bitmap payload: cached encodings are copied into the tag
/// of each movie without copying the bytes.
using ZoFSharedBytes = std::shared_ptr<const std::vector<uint8_t>>;

/// DefineBitsJPEG2: plain JPEG data (SOI .. EOI).
class ZoFDefineBitsJPEG2Tag : public ZoFDefineTag {
  public:
    explicit ZoFDefineBitsJPEG2Tag(int characterId) : ZoFDefineTag(characterId) {}
    /// Throws ZoException unless the data starts with SOI and ends with EOI.
    void SetJPEG2Data(ZoFSharedBytes data);
    void SetJPEG2Data(const uint8_t* buffer, size_t size);
    const uint8_t* GetJPEG2Data() const noexcept;
    size_t GetJPEG2Size() const noexcept;
    const ZoFSharedBytes& GetJPEG2Bytes() const noexcept { return jpeg_; }
    ZoFTagCode GetCode() const override { return ZoFTagCode::kDefineBitsJPEG2; }
    bool ForceUseLongTagHeader() const override { return true; }
    void WriteBody(ZoFByteBuffer& body) const override;

  private:
    ZoFSharedBytes jpeg_;
};

/// DefineBitsJPEG3: JPEG data plus a zlib-compressed alpha plane.
class ZoFDefineBitsJPEG3Tag : public ZoFDefineTag {
  public:
    explicit ZoFDefineBitsJPEG3Tag(int characterId) : ZoFDefineTag(characterId) {}
    void SetJPEG3Data(ZoFSharedBytes data);
    const uint8_t* GetJPEG3Data() const noexcept;
    size_t GetJPEG3Size() const noexcept;
    const ZoFSharedBytes& GetJPEG3Bytes() const noexcept { return jpeg_; }
    /// `alpha` is already zlib-compressed, one byte per pixel.
    void SetAlphaData(ZoFSharedBytes alpha);
    const uint8_t* GetAlphaData() const noexcept;
    size_t GetAlphaSize() const noexcept;
    const ZoFSharedBytes& GetAlphaBytes() const noexcept { return alpha_; }
    ZoFTagCode GetCode() const override { return ZoFTagCode::kDefineBitsJPEG3; }
    bool ForceUseLongTagHeader() const override { return true; }
    void WriteBody(ZoFByteBuffer& body) const override;

  private:
    ZoFSharedBytes jpeg_, alpha_;
};

/// DefineBitsLossless: zlib-compressed pixels. Format 3 is 8-bit palette,
/// 4 is 15-bit RGB, 5 is 32-bit (A)RGB.
class ZoFDefineBitsLosslessTag : public ZoFDefineTag {
  public:
    enum class Format : uint8_t { kPalette8 = 3, kRgb15 = 4, kArgb32 = 5 };
    explicit ZoFDefineBitsLosslessTag(int characterId) : ZoFDefineTag(characterId) {}
    void SetLosslessFormat(Format format) noexcept { format_ = format; }
    Format GetLosslessFormat() const noexcept { return format_; }
    void SetLosslessWidth(int width);
    int GetLosslessWidth() const noexcept { return width_; }
    void SetLosslessHeight(int height);
    int GetLosslessHeight() const noexcept { return height_; }
    /// Entries in the colour table minus one (palette format only).
    void SetColourTableSize(int size) noexcept { colourTableSize_ = size; }
    int GetColourTableSize() const noexcept { return colourTableSize_; }
    /// Size of the compressed data.
    void SetImageDataSize(size_t size) noexcept { imageDataSize_ = size; }
    size_t GetImageDataSize() const noexcept { return imageDataSize_; }
    /// The zlib-compressed colour table and pixels.
    void SetLosslessImageData(ZoFSharedBytes data);
    const ZoFSharedBytes& GetLosslessImageData() const noexcept { return data_; }
    virtual bool HasAlpha() const noexcept { return false; }
    ZoFTagCode GetCode() const override { return ZoFTagCode::kDefineBitsLossless; }
    bool ForceUseLongTagHeader() const override { return true; }
    void WriteBody(ZoFByteBuffer& body) const override;

  private:
    Format format_ = Format::kArgb32;
    int width_ = 0, height_ = 0, colourTableSize_ = 0;
    size_t imageDataSize_ = 0;
    ZoFSharedBytes data_;
};

/// DefineBitsLossless2: as above with premultiplied alpha.
class ZoFDefineBitsLossless2Tag : public ZoFDefineBitsLosslessTag {
  public:
    using ZoFDefineBitsLosslessTag::ZoFDefineBitsLosslessTag;
    bool HasAlpha() const noexcept override { return true; }
    ZoFTagCode GetCode() const override { return ZoFTagCode::kDefineBitsLossless2; }
};

/// SetBackgroundColor.
class ZoFSetBackgroundColorTag : public ZoFTag {
  public:
    explicit ZoFSetBackgroundColorTag(const ZoSWFColour& colour);
    ZoFTagCode GetCode() const override { return ZoFTagCode::kSetBackgroundColor; }
    void WriteBody(ZoFByteBuffer& body) const override;

  private:
    ZoFRgbaRecord colour_;
};

/// PlaceObject2 fields, the matrix and colour transform as their encoded
/// records; absent fields (empty records among them) are left out.
struct ZoFPlaceObject2Record {
    bool move = false;
    uint16_t depth = 1;
    bool hasCharacter = false;
    uint16_t characterId = 0;
    std::span<const uint8_t> matrix;  // MATRIX
    std::span<const uint8_t> cxform;  // CXFORMWITHALPHA
    bool hasRatio = false;
    uint16_t ratio = 0;
    const char* name = nullptr;  // null: no name
    bool hasClipDepth = false;
    uint16_t clipDepth = 0;
};

/// The bytes ZoWritePlaceObject2Body appends.
size_t ZoPlaceObject2BodySize(const ZoFPlaceObject2Record& record) noexcept;
/// Appends a PlaceObject2 body.
void ZoWritePlaceObject2Body(ZoFByteBuffer& body, const ZoFPlaceObject2Record& record);

/// PlaceObject2 of a new character with a matrix.
class ZoFPlaceObject2Tag : public ZoFTag {
  public:
    ZoFPlaceObject2Tag(int depth, int characterId);
    /// The placement matrix, to be modified by the caller.
    ZoFMatrixRecord& GetTransformation() noexcept { return matrix_; }
    ZoFTagCode GetCode() const override { return ZoFTagCode::kPlaceObject2; }
    void WriteBody(ZoFByteBuffer& body) const override;

  private:
    uint16_t depth_;
    uint16_t characterId_;
    ZoFMatrixRecord matrix_;
};

/// RemoveObject2.
class ZoFRemoveObject2Tag : public ZoFTag {
  public:
    explicit ZoFRemoveObject2Tag(int depth);
    ZoFTagCode GetCode() const override { return ZoFTagCode::kRemoveObject2; }
    void WriteBody(ZoFByteBuffer& body) const override;

  private:
    uint16_t depth_;
};

/// ShowFrame.
class ZoFShowFrameTag : public ZoFTag {
  public:
    ZoFShowFrameTag() = default;
    ZoFTagCode GetCode() const override { return ZoFTagCode::kShowFrame; }
    void WriteBody(ZoFByteBuffer&) const override {}
};

/// End.
class ZoFEndTag : public ZoFTag {
  public:
    ZoFEndTag() = default;
    ZoFTagCode GetCode() const override { return ZoFTagCode::kEnd; }
    void WriteBody(ZoFByteBuffer&) const override {}
};

}  // namespace ZoFlash
