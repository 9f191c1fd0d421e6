#include "objects/text_glyph_walk.h"

#include "platform/zo_units.h"
#include "text/code_page.h"

ZoPoint TeskItemPen(const ZoTextItem& item, const ZoRect& objectRect) noexcept {
    const ZoPoint origin = item.Origin();
    return {ZoPixelsToTwips(origin.x) + objectRect.left,
            ZoPixelsToTwips(origin.y) + objectRect.top};
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
