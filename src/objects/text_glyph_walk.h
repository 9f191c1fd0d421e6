#pragma once
// Walking laid-out text the way the text object draws it, shared by the
// whole-text output and the glyph outlines of mesh pieces so both put every
// character and bullet in the same place.
#include <functional>
#include <optional>
#include <vector>

#include "platform/zo_rect.h"
#include "text/text_layout.h"

/// Where an item's pen starts and what it draws besides its characters.
struct TeskItemStart {
    /// The baseline origin in twips, the page's top-left at the object
    /// rectangle's.
    ZoPoint pen;
    /// The square of the bullet in front of the item, for the first item of
    /// a bullet paragraph: a third of the line's height, in the indent.
    std::optional<ZoRect> bullet;
};

/// Calls `visit` for every item of `lines`, in order.
void TeskForEachItem(
    const std::vector<ZoTextLine>& lines, const ZoRect& objectRect,
    const std::function<void(const ZoTextItem& item, const TeskItemStart& start)>& visit);

/// Calls `glyph(character, advance)` for every character of `item` that
/// shows a glyph, in order, with its advance in twips as the layout measured
/// it. A tab only moves the pen (the layout starts the item at the tab stop)
/// and a paragraph mark draws nothing.
void TeskForEachGlyph(const ZoTextItem& item,
                      const std::function<void(char32_t character, int32_t advance)>& glyph);
