#include "flash/swf_text.h"

#include <algorithm>
#include <cmath>

#include "flash/swf_file.h"
#include "platform/zo_exception.h"

namespace ZoFlash {
namespace {

constexpr size_t kMaxGlyphsPerRecord = 255;

int16_t TextOffset(int value) {
    if (value < -32768 || value > 32767)
        throw ZoException(ZoFormat("The text position %d twips is out of range.", value));
    return static_cast<int16_t>(value);
}

}  // namespace

ZoSWFText::ZoSWFText() = default;
ZoSWFText::~ZoSWFText() = default;

void ZoSWFText::SetFont(ZoAutoInterface2<ZoSWFFont> font, int height, bool underline,
                        const ZoSWFColour& colour, const ZoSWFColour& underlineColour, int x,
                        int y) {
    if (!font)
        throw ZoException("A text run needs a font.");
    if (height < 0 || height > 0xFFFF)
        throw ZoException(ZoFormat("The text height %d twips is out of range.", height));
    EndUnderline();
    runs_.push_back({std::move(font), height, colour, x, y, {}});
    underline_ = underline;
    underlineColour_ = underlineColour;
    underlineStart_ = penX_ = x;
}

void ZoSWFText::MovePosition(int x, int y) {
    if (runs_.empty())
        throw ZoException("A text position needs a font first.");
    EndUnderline();
    Run next = runs_.back();
    next.x = x;
    next.y = y;
    next.glyphs.clear();
    runs_.push_back(std::move(next));
    underlineStart_ = penX_ = x;
}

void ZoSWFText::AddCharacter(char c, int advance) {
    if (runs_.empty())
        throw ZoException("A text character needs a font first.");
    const uint8_t code = static_cast<uint8_t>(c);
    runs_.back().font->UseCharacter(code);
    runs_.back().glyphs.push_back({code, advance});
    penX_ += advance;
}

void ZoSWFText::EndUnderline() {
    if (!underline_ || runs_.empty() || penX_ == underlineStart_)
        return;
    // Below the baseline by an eighth of the height, a sixteenth thick.
    const Run& run = runs_.back();
    const int top = run.y + run.height / 8;
    const int thickness = std::max(run.height / 16, 20);
    ZoSWFShape& shape = Decoration();
    shape.ResetStyles();
    shape.SetSolidFill(underlineColour_);
    shape.Rectangle(
        {std::min(underlineStart_, penX_), top, std::max(underlineStart_, penX_), top + thickness});
    underlineStart_ = penX_;
}

ZoSWFShape& ZoSWFText::Decoration() {
    if (!decoration_)
        decoration_ = ZoMakeCounted<ZoSWFShape>();
    return *decoration_;
}

void ZoSWFText::DrawBullet(const ZoRect& rect, const ZoSWFColour& colour) {
    // A circle from eight quadratic arcs of 45 degrees.
    const double cx = (rect.left + rect.right) / 2.0, cy = (rect.top + rect.bottom) / 2.0;
    const double rx = rect.Width() / 2.0, ry = rect.Height() / 2.0;
    const double step = std::acos(-1.0) / 4, reach = 1 / std::cos(step / 2);
    auto at = [&](double angle, double scale) {
        return ZoPoint{static_cast<int>(std::lround(cx + std::cos(angle) * rx * scale)),
                       static_cast<int>(std::lround(cy + std::sin(angle) * ry * scale))};
    };
    ZoSWFShape& shape = Decoration();
    shape.ResetStyles();
    shape.SetSolidFill(colour);
    shape.MoveTo(at(0, 1));
    for (int i = 0; i < 8; ++i)
        shape.CurveTo(at((i + 0.5) * step, reach), at((i + 1) * step, 1));
}

ZoAutoInterface2<ZoSWFShape> ZoSWFText::GetDecorationShape() {
    EndUnderline();
    return decoration_;
}

void ZoSWFText::Write(ZoSWFFile& file) {
    int glyphBits = 1, advanceBits = 1;
    for (const Run& run : runs_) {
        file.Define(*run.font);
        for (const Glyph& g : run.glyphs) {
            const int index = run.font->GetGlyphIndex(g.code);
            glyphBits = std::max(glyphBits, ZoUnsignedBits(static_cast<uint32_t>(index)));
            advanceBits = std::max(advanceBits, ZoSignedBits(g.advance));
        }
    }
    ZoFByteBuffer records;
    records.PutU8(static_cast<uint8_t>(glyphBits));
    records.PutU8(static_cast<uint8_t>(advanceBits));
    for (const Run& run : runs_) {
        int x = run.x;
        for (size_t start = 0; start == 0 || start < run.glyphs.size();
             start += kMaxGlyphsPerRecord) {
            const size_t count = std::min(kMaxGlyphsPerRecord, run.glyphs.size() - start);
            records.PutU8(0x8F);  // text record with font, colour, x and y
            records.PutU16(static_cast<uint16_t>(run.font->GetCharacterID()));
            ZoWriteRgba(records, run.colour.ToRecord(), ZoFColourForm::kRgb);
            records.PutU16(static_cast<uint16_t>(TextOffset(x)));
            records.PutU16(static_cast<uint16_t>(TextOffset(run.y)));
            records.PutU16(static_cast<uint16_t>(run.height));
            records.PutU8(static_cast<uint8_t>(count));
            ZoFBitWriter bits(records);
            for (size_t i = start; i < start + count; ++i) {
                const Glyph& g = run.glyphs[i];
                bits.PutUnsigned(static_cast<uint32_t>(run.font->GetGlyphIndex(g.code)), glyphBits);
                bits.PutSigned(g.advance, advanceBits);
                x += g.advance;
            }
        }
    }
    records.PutU8(0);
    ZoFDefineTextTag tag(ClaimCharacterID(file), rect_,
                         {records.Bytes().begin(), records.Bytes().end()});
    file.AddDefinitionTag(&tag);
}

void ZoSWFText::InitialiseForRewriting() {
    ZoSWFObject::InitialiseForRewriting();
    for (const Run& run : runs_)
        run.font->InitialiseForRewriting();
}

}  // namespace ZoFlash
