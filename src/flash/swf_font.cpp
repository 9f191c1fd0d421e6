#include "flash/swf_font.h"

#include "flash/shape_records.h"
#include "flash/swf_file.h"
#include "platform/zo_exception.h"

namespace ZoFlash {
namespace {

constexpr uint8_t kFlagWideOffsets = 0x08;
constexpr uint8_t kFlagAnsi = 0x10;
constexpr uint8_t kFlagItalic = 0x02;
constexpr uint8_t kFlagBold = 0x01;

// A glyph is a SHAPE with one fill style (index 1 on the left) and no lines.
void WriteGlyph(ZoFByteBuffer& out, const ZoSWFGlyph& glyph) {
    ZoFShape shape(1, 0);
    ZoPoint pen;
    bool first = true;
    for (const ZoSWFPathCommand& c : glyph.outline) {
        switch (c.kind) {
            case ZoSWFPathCommand::Kind::kMove: {
                ZoAutoPtr2<ZoFShapeRecord> record = std::make_unique<ZoFShapeStyleChangeRecord>(
                    first ? 1 : -1, -1, -1, true, c.to.x, c.to.y);
                shape.AddRecord(record);
                first = false;
                break;
            }
            case ZoSWFPathCommand::Kind::kLine:
                shape.AddLine(c.to.x - pen.x, c.to.y - pen.y);
                break;
            case ZoSWFPathCommand::Kind::kCurve:
                shape.AddCurve(c.control.x - pen.x, c.control.y - pen.y, c.to.x - c.control.x,
                               c.to.y - c.control.y);
                break;
        }
        pen = c.to;
    }
    shape.Write(out);
}

}  // namespace

ZoSWFFont::ZoSWFFont(const char* name, bool bold, bool italic)
    : name_(name ? name : ""), bold_(bold), italic_(italic) {}

ZoSWFFont::~ZoSWFFont() = default;

int ZoSWFFont::GetGlyphIndex(uint8_t code) const noexcept {
    if (!used_[code])
        return -1;
    int index = 0;
    for (int c = 0; c < code; ++c)
        index += used_[c] ? 1 : 0;
    return index;
}

void ZoSWFFont::Write(ZoSWFFile& file) {
    // Glyph shapes first, to learn the offsets.
    ZoFByteBuffer glyphs;
    std::vector<uint32_t> offsets;
    std::vector<uint8_t> codes;
    for (int code = 0; code < 256; ++code) {
        if (!used_[code])
            continue;
        offsets.push_back(static_cast<uint32_t>(glyphs.Size()));
        codes.push_back(static_cast<uint8_t>(code));
        ZoSWFGlyph glyph;
        if (source_ && !source_->GetGlyph(name_, bold_, italic_, static_cast<uint8_t>(code), glyph))
            glyph = {};
        WriteGlyph(glyphs, glyph);
    }
    const size_t tableSize = (offsets.size() + 1) * 2;
    const bool wide = tableSize + glyphs.Size() > 0xFFFF;
    const uint32_t tableBytes = static_cast<uint32_t>((offsets.size() + 1) * (wide ? 4 : 2));

    ZoFByteBuffer body;
    body.PutU16(static_cast<uint16_t>(ClaimCharacterID(file)));
    body.PutU8(static_cast<uint8_t>(kFlagAnsi | (wide ? kFlagWideOffsets : 0) |
                                    (italic_ ? kFlagItalic : 0) | (bold_ ? kFlagBold : 0)));
    body.PutU8(0);  // language code: none before version 6
    const ZoString name = name_.substr(0, 255);
    body.PutU8(static_cast<uint8_t>(name.size()));
    body.PutBytes(std::span(reinterpret_cast<const uint8_t*>(name.data()), name.size()));
    body.PutU16(static_cast<uint16_t>(offsets.size()));
    auto putOffset = [&](uint32_t v) {
        if (wide)
            body.PutU32(v);
        else
            body.PutU16(static_cast<uint16_t>(v));
    };
    for (uint32_t offset : offsets)
        putOffset(tableBytes + offset);
    putOffset(tableBytes + static_cast<uint32_t>(glyphs.Size()));  // code table
    body.PutBytes(glyphs.Bytes());
    body.PutBytes(codes);
    file.GetFile().WriteRawTag(ZoFTagCode::kDefineFont2, body.Bytes(), true);
}

}  // namespace ZoFlash
