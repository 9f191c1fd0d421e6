#include "objects/system_glyph_source.h"

#include <cmath>

#include "platform/font_catalog.h"
#include "text/code_page.h"

namespace {

using ZoFlash::ZoSWFPathCommand;

// SWF glyphs live in a 1024-unit em square with y growing downwards.
constexpr double kSwfEmUnits = 1024.0;

class EmScaler {
  public:
    explicit EmScaler(const ZoFontFace& face) : scale_(kSwfEmUnits / face.UnitsPerEm()) {}
    ZoPoint operator()(ZoGlyphPoint p) const noexcept {
        return {static_cast<int32_t>(std::lround(p.x * scale_)),
                static_cast<int32_t>(std::lround(-p.y * scale_))};
    }
    int32_t Length(int32_t units) const noexcept {
        return static_cast<int32_t>(std::lround(units * scale_));
    }

  private:
    double scale_;
};

// Font outlines close their contours implicitly; SWF fills need the
// closing edge written.
void CloseContour(std::vector<ZoSWFPathCommand>& outline, ZoPoint start) {
    if (!outline.empty() && outline.back().to != start)
        outline.push_back({ZoSWFPathCommand::Kind::kLine, {}, start});
}

}  // namespace

std::shared_ptr<TeskSystemGlyphSource> TeskSystemGlyphSource::Shared() {
    static const auto shared = std::make_shared<TeskSystemGlyphSource>();
    return shared;
}

bool TeskSystemGlyphSource::GetGlyph(const ZoString& face, bool bold, bool italic, uint8_t code,
                                     ZoFlash::ZoSWFGlyph& glyph) {
    const auto fontFace = ZoFindFontFace(face, bold, italic);
    const char32_t character = ZoCp1252ToUnicode(code);
    if (!fontFace->HasGlyph(character))
        return false;
    const EmScaler toEm(*fontFace);
    glyph.outline.clear();
    ZoPoint start;
    for (const ZoGlyphSegment& segment : fontFace->Outline(character)) {
        switch (segment.kind) {
            case ZoGlyphSegmentKind::Move:
                CloseContour(glyph.outline, start);
                start = toEm(segment.end);
                glyph.outline.push_back({ZoSWFPathCommand::Kind::kMove, {}, start});
                break;
            case ZoGlyphSegmentKind::Line:
                glyph.outline.push_back({ZoSWFPathCommand::Kind::kLine, {}, toEm(segment.end)});
                break;
            case ZoGlyphSegmentKind::Quadratic:
                glyph.outline.push_back(
                    {ZoSWFPathCommand::Kind::kCurve, toEm(segment.control), toEm(segment.end)});
                break;
        }
    }
    CloseContour(glyph.outline, start);
    glyph.advance = toEm.Length(fontFace->AdvanceUnits(character));
    return true;
}
