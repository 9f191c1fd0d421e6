#pragma once
// Walking laid-out text the way the text object draws it, shared by the
// whole-text output and the glyph outlines of mesh pieces so both put every
// character in the same place.
#include <functional>

#include "platform/zo_rect.h"
#include "text/text_layout.h"

/// Where `item`'s pen starts in twips: its baseline origin, with the page's
/// top-left corner at `objectRect`'s.
ZoPoint TeskItemPen(const ZoTextItem& item, const ZoRect& objectRect) noexcept;

/// Calls `glyph(character, advance)` for every character of `item` that
/// shows a glyph, in order, with its advance in twips as the layout measured
/// it. A tab only moves the pen (the layout starts the item at the tab stop)
/// and a paragraph mark draws nothing.
void TeskForEachGlyph(const ZoTextItem& item,
                      const std::function<void(char32_t character, int32_t advance)>& glyph);
