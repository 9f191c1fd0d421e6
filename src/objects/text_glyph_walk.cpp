#include "objects/text_glyph_walk.h"

#include "platform/zo_units.h"
#include "text/code_page.h"

namespace {

ZoPoint ItemPen(const ZoTextItem& item, const ZoRect& objectRect) noexcept {
    const ZoPoint origin = item.Origin();
    return {ZoPixelsToTwips(origin.x) + objectRect.left,
            ZoPixelsToTwips(origin.y) + objectRect.top};
}

// The layout indents a bullet paragraph by its line height; the bullet sits
// in that indent.
ZoRect BulletSquare(const ZoTextLine& line, ZoPoint pen) noexcept {
    const int32_t height = ZoPixelsToTwips(line.Height());
    const int32_t left = pen.x - 2 * height / 3;
    const int32_t top = pen.y - ZoPixelsToTwips(line.ascent) + height / 3;
    return {left, top, left + height / 3, top + height / 3};
}

}  // namespace

void TeskForEachItem(
    const std::vector<ZoTextLine>& lines, const ZoRect& objectRect,
    const std::function<void(const ZoTextItem& item, const TeskItemStart& start)>& visit) {
    bool paragraphStarts = true;
    for (const ZoTextLine& line : lines) {
        for (const ZoTextItem& item : line.items) {
            TeskItemStart start{ItemPen(item, objectRect), std::nullopt};
            if (paragraphStarts && item.format->HasBullet()) {
                start.bullet = BulletSquare(line, start.pen);
                paragraphStarts = false;
            }
            visit(item, start);
            if (!item.text.empty() && item.text.back() == '\n')
                paragraphStarts = true;
        }
    }
}

void TeskForEachGlyph(const ZoTextItem& item,
                      const std::function<void(char32_t character, int32_t advance)>& glyph) {
    const ZoString& text = item.text;
    int32_t previous = 0;
    for (size_t offset = 0; offset < text.size();) {
        const char32_t character = ZoNextUtf8(text, offset);
        const int32_t position = item.positions[offset - 1];
        if (character != '\t' && character != '\n')
            glyph(character, ZoPixelsToTwips(position - previous));
        previous = position;
    }
}
