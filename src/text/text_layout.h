#pragma once
// Turns rich-text runs into positioned lines: fonts, measuring, word wrap in
// the page width, tab stops, bullets, alignment and justification, sub- and
// superscript offsets, line spacing and vertical placement. Everything is in
// pixels at the document's logical resolution.
#include <cstdint>
#include <memory>
#include <vector>

#include "platform/font_face.h"
#include "platform/zo_rect.h"
#include "text/text_format.h"

/// A stretch of text in one font. The document's text is a chain of runs
/// (see ZoRichText for the invariants they keep).
struct ZoTextRun {
    ZoString text;  ///< UTF-8
    std::shared_ptr<const ZoTextFormat> format;
};

enum class ZoVerticalAlignment : int32_t { Top = 0, Bottom = 1, Centre = 2, Justify = 3 };

struct ZoTextLayoutSettings {
    int32_t logPixels = 96;
    int32_t pageWidth = 0;
    int32_t pageHeight = 0;
    int32_t defaultTabWidth = 30;
    double zoom = 1.0;
    ZoVerticalAlignment verticalAlignment = ZoVerticalAlignment::Top;
};

/// A piece of one run within one line.
struct ZoTextItem {
    ZoString text;  ///< UTF-8; may end with "\n"; a tab is only ever its first byte
    int32_t x = 0;  ///< top-left corner
    int32_t y = 0;
    int32_t width = 0;
    int32_t height = 0;
    int32_t justifyExtra = 0;  ///< pixels spread over the item's spaces
    /// Ascent and descent, shifted for sub- and superscript.
    int32_t ascent = 0;
    int32_t descent = 0;
    std::shared_ptr<const ZoScaledFont> font;
    /// One entry per byte: the x, relative to the item, where the following
    /// character starts. Every byte of a multi-byte character holds the same
    /// value, the end of that character.
    std::vector<int32_t> positions;
    std::shared_ptr<const ZoTextFormat> format;

    /// The baseline start: x, and the top plus the font's ascent (lower for
    /// subscript, higher for superscript).
    ZoPoint Origin() const noexcept;
};

struct ZoTextLine {
    int32_t top = 0;
    int32_t ascent = 0;
    int32_t descent = 0;
    std::vector<ZoTextItem> items;

    int32_t Height() const noexcept { return ascent + descent; }
};

/// The font an item of `format` is measured with at `settings`' resolution
/// and zoom; sub- and superscript use 60 % of the point size.
std::shared_ptr<const ZoScaledFont> ZoChooseFont(const ZoTextFormat& format,
                                                 const ZoTextLayoutSettings& settings);

/// Lays out `runs` (which end with a paragraph mark) in the page.
std::vector<ZoTextLine> ZoLayOutText(const std::vector<ZoTextRun>& runs,
                                     const ZoTextLayoutSettings& settings);

/// The laid-out size: the largest right edge of any line and the bottom of the
/// last line.
ZoSize ZoLaidOutSize(const std::vector<ZoTextLine>& lines) noexcept;
