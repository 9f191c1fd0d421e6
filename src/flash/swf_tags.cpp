#include "flash/swf_tags.h"

#include <cstring>

#include "flash/swf_colour.h"
#include "platform/zo_exception.h"

namespace ZoFlash {
namespace {

constexpr uint32_t kShortLengthLimit = 0x3F;

template <typename Out>
void WriteTagHeaderTo(Out& out, ZoFTagCode code, size_t length, bool forceLong) {
    if (length > 0x7FFFFFFFu)
        throw ZoException("An SWF tag is larger than 2 GB.");
    const uint16_t codeBits = static_cast<uint16_t>(static_cast<uint16_t>(code) << 6);
    if (!forceLong && length < kShortLengthLimit) {
        out.PutU16(static_cast<uint16_t>(codeBits | length));
    } else {
        out.PutU16(static_cast<uint16_t>(codeBits | kShortLengthLimit));
        out.PutU32(static_cast<uint32_t>(length));
    }
}

template <typename Out>
void WriteTagTo(Out& out, ZoFTagCode code, std::span<const uint8_t> body, bool forceLong) {
    WriteTagHeaderTo(out, code, body.size(), forceLong);
    out.PutBytes(body);
}

ZoFRectRecord RectRecord(const ZoRect& r) {
    return {ZoCheckedTwips(r.left), ZoCheckedTwips(r.right), ZoCheckedTwips(r.top),
            ZoCheckedTwips(r.bottom)};
}

uint16_t CheckedId(int id) {
    if (id < 0 || id > 0xFFFF)
        throw ZoException("An SWF character id is out of range.");
    return static_cast<uint16_t>(id);
}

ZoFSharedBytes CopyBytes(const uint8_t* buffer, size_t size) {
    return std::make_shared<const std::vector<uint8_t>>(buffer, buffer + size);
}

const uint8_t* DataOf(const ZoFSharedBytes& bytes) noexcept {
    return bytes ? bytes->data() : nullptr;
}

size_t SizeOf(const ZoFSharedBytes& bytes) noexcept {
    return bytes ? bytes->size() : 0;
}

void CheckJPEG(const ZoFSharedBytes& jpeg) {
    const size_t n = SizeOf(jpeg);
    const uint8_t* d = DataOf(jpeg);
    if (n < 4 || d[0] != 0xFF || d[1] != 0xD8 || d[n - 2] != 0xFF || d[n - 1] != 0xD9)
        throw ZoException("JPEG data must run from the SOI to the EOI marker.");
}

}  // namespace

void ZoWriteTag(ZoFFileStream& out, ZoFTagCode code, std::span<const uint8_t> body,
                bool forceLong) {
    WriteTagTo(out, code, body, forceLong);
}

void ZoWriteTag(ZoFByteBuffer& out, ZoFTagCode code, std::span<const uint8_t> body,
                bool forceLong) {
    WriteTagTo(out, code, body, forceLong);
}

void ZoWriteTagHeader(ZoFByteBuffer& out, ZoFTagCode code, size_t length, bool forceLong) {
    WriteTagHeaderTo(out, code, length, forceLong);
}

void ZoFTag::Write(ZoFFileStream& out) const {
    ZoFByteBuffer body;
    WriteBody(body);
    ZoWriteTag(out, GetCode(), body.Bytes(), ForceUseLongTagHeader());
}

ZoFDefineShapeTag::ZoFDefineShapeTag(int characterId, const ZoRect& bounds,
                                     std::vector<ZoFFillStyle> fills,
                                     std::vector<ZoFLineStyle> lines, ZoAutoPtr2<ZoFShape> shape)
    : ZoFDefineTag(characterId),
      bounds_(bounds),
      fills_(std::move(fills)),
      lines_(std::move(lines)),
      shape_(std::move(shape)) {}

void ZoFDefineShapeTag::WriteBody(ZoFByteBuffer& body) const {
    body.PutU16(CheckedId(GetCharacterID()));
    ZoWriteRect(body, RectRecord(bounds_));
    ZoWriteFillStyles(body, fills_, ZoFColourForm::kRgba);
    ZoWriteLineStyles(body, lines_, ZoFColourForm::kRgba);
    shape_->Write(body);
}

ZoFDefineTextTag::ZoFDefineTextTag(int characterId, const ZoRect& bounds,
                                   std::vector<uint8_t> records)
    : ZoFDefineTag(characterId), bounds_(bounds), records_(std::move(records)) {}

void ZoFDefineTextTag::WriteBody(ZoFByteBuffer& body) const {
    body.PutU16(CheckedId(GetCharacterID()));
    ZoWriteRect(body, RectRecord(bounds_));
    ZoWriteMatrix(body, ZoFMatrixRecord{});
    body.PutBytes(records_);
}

void ZoFDefineBitsJPEG2Tag::SetJPEG2Data(ZoFSharedBytes data) {
    CheckJPEG(data);
    jpeg_ = std::move(data);
}

void ZoFDefineBitsJPEG2Tag::SetJPEG2Data(const uint8_t* buffer, size_t size) {
    SetJPEG2Data(CopyBytes(buffer, size));
}

const uint8_t* ZoFDefineBitsJPEG2Tag::GetJPEG2Data() const noexcept {
    return DataOf(jpeg_);
}

size_t ZoFDefineBitsJPEG2Tag::GetJPEG2Size() const noexcept {
    return SizeOf(jpeg_);
}

void ZoFDefineBitsJPEG2Tag::WriteBody(ZoFByteBuffer& body) const {
    CheckJPEG(jpeg_);
    body.PutU16(CheckedId(GetCharacterID()));
    body.PutBytes(*jpeg_);
}

void ZoFDefineBitsJPEG3Tag::SetJPEG3Data(ZoFSharedBytes data) {
    CheckJPEG(data);
    jpeg_ = std::move(data);
}

const uint8_t* ZoFDefineBitsJPEG3Tag::GetJPEG3Data() const noexcept {
    return DataOf(jpeg_);
}

size_t ZoFDefineBitsJPEG3Tag::GetJPEG3Size() const noexcept {
    return SizeOf(jpeg_);
}

void ZoFDefineBitsJPEG3Tag::SetAlphaData(ZoFSharedBytes alpha) {
    alpha_ = std::move(alpha);
}

const uint8_t* ZoFDefineBitsJPEG3Tag::GetAlphaData() const noexcept {
    return DataOf(alpha_);
}

size_t ZoFDefineBitsJPEG3Tag::GetAlphaSize() const noexcept {
    return SizeOf(alpha_);
}

void ZoFDefineBitsJPEG3Tag::WriteBody(ZoFByteBuffer& body) const {
    CheckJPEG(jpeg_);
    body.PutU16(CheckedId(GetCharacterID()));
    body.PutU32(static_cast<uint32_t>(jpeg_->size()));
    body.PutBytes(*jpeg_);
    if (alpha_)
        body.PutBytes(*alpha_);
}

void ZoFDefineBitsLosslessTag::SetLosslessWidth(int width) {
    if (width < 1 || width > 0xFFFF)
        throw ZoException("A bitmap's width must lie between 1 and 65535 pixels.");
    width_ = width;
}

void ZoFDefineBitsLosslessTag::SetLosslessHeight(int height) {
    if (height < 1 || height > 0xFFFF)
        throw ZoException("A bitmap's height must lie between 1 and 65535 pixels.");
    height_ = height;
}

void ZoFDefineBitsLosslessTag::SetLosslessImageData(ZoFSharedBytes data) {
    imageDataSize_ = SizeOf(data);
    data_ = std::move(data);
}

void ZoFDefineBitsLosslessTag::WriteBody(ZoFByteBuffer& body) const {
    if (!data_ || width_ == 0 || height_ == 0)
        throw ZoException("A lossless bitmap has no pixels.");
    body.PutU16(CheckedId(GetCharacterID()));
    body.PutU8(static_cast<uint8_t>(format_));
    body.PutU16(static_cast<uint16_t>(width_));
    body.PutU16(static_cast<uint16_t>(height_));
    if (format_ == Format::kPalette8)
        body.PutU8(static_cast<uint8_t>(colourTableSize_));
    body.PutBytes(*data_);
}

ZoFSetBackgroundColorTag::ZoFSetBackgroundColorTag(const ZoSWFColour& colour)
    : colour_(colour.ToRecord()) {}

void ZoFSetBackgroundColorTag::WriteBody(ZoFByteBuffer& body) const {
    ZoWriteRgba(body, colour_, ZoFColourForm::kRgb);
}

size_t ZoPlaceObject2BodySize(const ZoFPlaceObject2Record& r) noexcept {
    return 3 + (r.hasCharacter ? 2 : 0) + r.matrix.size() + r.cxform.size() + (r.hasRatio ? 2 : 0) +
           (r.name ? std::strlen(r.name) + 1 : 0) + (r.hasClipDepth ? 2 : 0);
}

void ZoWritePlaceObject2Body(ZoFByteBuffer& body, const ZoFPlaceObject2Record& r) {
    const uint8_t flags = static_cast<uint8_t>(
        (r.move ? 0x01 : 0) | (r.hasCharacter ? 0x02 : 0) | (r.matrix.empty() ? 0 : 0x04) |
        (r.cxform.empty() ? 0 : 0x08) | (r.hasRatio ? 0x10 : 0) | (r.name ? 0x20 : 0) |
        (r.hasClipDepth ? 0x40 : 0));
    body.PutU8(flags);
    body.PutU16(r.depth);
    if (r.hasCharacter)
        body.PutU16(r.characterId);
    body.PutBytes(r.matrix);
    body.PutBytes(r.cxform);
    if (r.hasRatio)
        body.PutU16(r.ratio);
    if (r.name)
        body.PutString(r.name);
    if (r.hasClipDepth)
        body.PutU16(r.clipDepth);
}

ZoFPlaceObject2Tag::ZoFPlaceObject2Tag(int depth, int characterId)
    : depth_(static_cast<uint16_t>(depth)), characterId_(CheckedId(characterId)) {
    if (depth < 1 || depth > 0xFFFF)
        throw ZoException("A placement depth must lie between 1 and 65535.");
}

void ZoFPlaceObject2Tag::WriteBody(ZoFByteBuffer& body) const {
    ZoFByteBuffer matrix;
    ZoWriteMatrix(matrix, matrix_);
    ZoFPlaceObject2Record r;
    r.depth = depth_;
    r.hasCharacter = true;
    r.characterId = characterId_;
    r.matrix = matrix.Bytes();
    ZoWritePlaceObject2Body(body, r);
}

ZoFRemoveObject2Tag::ZoFRemoveObject2Tag(int depth) : depth_(static_cast<uint16_t>(depth)) {
    if (depth < 1 || depth > 0xFFFF)
        throw ZoException("A placement depth must lie between 1 and 65535.");
}

void ZoFRemoveObject2Tag::WriteBody(ZoFByteBuffer& body) const {
    body.PutU16(depth_);
}

}  // namespace ZoFlash
