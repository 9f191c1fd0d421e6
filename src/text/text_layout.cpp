#include "text/text_layout.h"

#include <algorithm>
#include <cmath>

#include "platform/font_catalog.h"
#include "text/code_page.h"

namespace {

// Measuring "without a limit" uses this extent.
constexpr int32_t kUnlimitedExtent = 30000;

bool EndsWith(const ZoString& text, char c) noexcept {
    return !text.empty() && text.back() == c;
}

bool StartsWith(const ZoString& text, char c) noexcept {
    return !text.empty() && text.front() == c;
}

int32_t TextWidth(const ZoScaledFont& font, std::string_view text) {
    int32_t width = 0;
    for (size_t i = 0; i < text.size();) {
        const char32_t c = ZoNextUtf8(text, i);
        if (c != '\n') {
            width += font.Advance(c);
        }
    }
    return width;
}

// Spaces that take a share of justification: all but a final space of the
// line's last item.
int32_t CountSpaces(const ZoTextItem& item, bool lastInLine) noexcept {
    auto count = static_cast<int32_t>(std::count(item.text.begin(), item.text.end(), ' '));
    if (lastInLine && EndsWith(item.text, ' ')) {
        --count;
    }
    return count;
}

// Fills the item's positions and width; returns how many bytes fit within
// `maxExtent`. A paragraph mark, and a final space of a line's last item,
// take no width.
size_t MeasureItem(ZoTextItem& item, int32_t maxExtent, bool lastInLine) {
    const ZoString& text = item.text;
    item.positions.assign(text.size(), 0);
    item.height = item.font->Height();
    size_t fit = 0;
    size_t i = 0;
    if (StartsWith(text, '\t')) {
        i = fit = 1;
    }
    const int32_t spaces = item.justifyExtra >= 1 ? CountSpaces(item, lastInLine) : 0;
    int32_t spaceIndex = 0;
    int32_t x = 0;
    while (i < text.size()) {
        const size_t begin = i;
        const char32_t c = ZoNextUtf8(text, i);
        const bool last = i == text.size();
        if (!(c == '\n' && last) && !(c == ' ' && last && lastInLine)) {
            x += item.font->Advance(c);
            if (c == ' ' && spaceIndex < spaces) {
                // Spread like a screen font's text justification: the first
                // (extra % spaces) spaces get one pixel more.
                x += item.justifyExtra / spaces + (spaceIndex < item.justifyExtra % spaces);
                ++spaceIndex;
            }
        }
        std::fill(item.positions.begin() + static_cast<ptrdiff_t>(begin),
                  item.positions.begin() + static_cast<ptrdiff_t>(i), x);
        if (fit == begin && x <= maxExtent) {
            fit = i;
        }
    }
    item.width = item.positions.empty() ? 0 : item.positions.back();
    return fit;
}

// Cuts `item` after byte `at`; the item keeps the head and the tail is
// returned (empty when nothing is left).
std::optional<ZoTextItem> SplitItem(ZoTextItem& item, size_t at) {
    if (at >= item.text.size()) {
        return std::nullopt;
    }
    ZoTextItem tail;
    tail.text = item.text.substr(at);
    tail.font = item.font;
    tail.format = item.format;
    item.text.resize(at);
    item.width = at == 0 ? 0 : item.positions[at - 1];
    item.positions.resize(at);
    return tail;
}

class LineBuilder {
  public:
    LineBuilder(std::vector<ZoTextItem> items, const ZoTextLayoutSettings& settings)
        : pending_(std::move(items)), settings_(settings) {}

    std::vector<ZoTextLine> Build() {
        std::vector<ZoTextLine> lines;
        int64_t y = 0;
        bool startsParagraph = true;
        const ZoTextFormat* paragraph = nullptr;
        while (next_ < pending_.size()) {
            if (startsParagraph) {
                paragraph = pending_[next_].format.get();
            }
            int32_t x0 = startsParagraph ? paragraph->FirstIndent() : paragraph->LeftIndent();
            if (paragraph->HasBullet()) {
                x0 += pending_[next_].font->Height();
            }
            const int32_t width = settings_.pageWidth - x0 - paragraph->RightIndent();
            ZoTextLine line = BreakLine(x0, width, *paragraph);
            FinishLine(line, x0, width, *paragraph);
            line.top = static_cast<int32_t>(std::clamp<int64_t>(y, INT32_MIN / 2, INT32_MAX / 2));
            const int64_t spacing = paragraph->LineSpacing();
            y += spacing > 0 ? spacing * line.Height() / 1024 : -spacing;
            startsParagraph = EndsWith(line.items.back().text, '\n');
            lines.push_back(std::move(line));
        }
        return lines;
    }

  private:
    ZoTextLine BreakLine(int32_t x0, int32_t width, const ZoTextFormat& paragraph) {
        const size_t first = next_;
        int32_t x = x0;
        for (size_t k = first; k < pending_.size(); ++k) {
            ZoTextItem& item = pending_[k];
            if (item.text.empty()) {
                item.x = x;
                continue;
            }
            item.x = StartsWith(item.text, '\t') ? PlaceTab(k, x, x0, width, paragraph) : x;
            const size_t fit = MeasureItem(item, x0 + width - item.x, false);
            if (fit < item.text.size()) {
                return Overflow(first, k, fit);
            }
            x = item.x + item.width;
            const bool fullLine = x == x0 + width;
            if (EndsWith(item.text, '\n') || fullLine) {
                const bool takeMark = !EndsWith(item.text, '\n') && k + 1 < pending_.size() &&
                                      StartsWith(pending_[k + 1].text, '\n');
                return Take(first, k + (takeMark ? 2 : 1));
            }
        }
        return Take(first, pending_.size());
    }

    // Moves pending items [first, end) into a line.
    ZoTextLine Take(size_t first, size_t end) {
        ZoTextLine line;
        line.items.assign(std::make_move_iterator(pending_.begin() + static_cast<ptrdiff_t>(first)),
                          std::make_move_iterator(pending_.begin() + static_cast<ptrdiff_t>(end)));
        next_ = end;
        return line;
    }

    // Ends the line after byte `at` of item `k`; the rest of that item waits
    // for the next line.
    ZoTextLine BreakAfter(size_t first, size_t k, size_t at) {
        if (at == 0) {
            return Take(first, k);
        }
        auto tail = SplitItem(pending_[k], at);
        // A paragraph mark right after the break has no width; it ends this
        // line rather than making an empty one.
        const bool takeMark =
            !tail && k + 1 < pending_.size() && StartsWith(pending_[k + 1].text, '\n');
        ZoTextLine line = Take(first, k + (takeMark ? 2 : 1));
        if (tail) {
            --next_;
            pending_[next_] = std::move(*tail);
        }
        return line;
    }

    ZoTextLine Overflow(size_t first, size_t k, size_t fit) {
        // The last space at or before the first byte that did not fit.
        const ZoString& text = pending_[k].text;
        const size_t space = text.rfind(' ', std::min(fit, text.size() - 1));
        if (space != ZoString::npos) {
            return BreakAfter(first, k, space + 1);
        }
        for (size_t j = k; j-- > first;) {
            const size_t earlier = pending_[j].text.rfind(' ');
            if (earlier != ZoString::npos) {
                return BreakAfter(first, j, earlier + 1);
            }
        }
        if (fit > 0) {
            return BreakAfter(first, k, fit);
        }
        if (k == first) {
            size_t firstCharacter = 0;
            ZoNextUtf8(text, firstCharacter);
            return BreakAfter(first, k, firstCharacter);
        }
        return Take(first, k);
    }

    // Where an item that starts with a tab begins, given the line so far.
    int32_t PlaceTab(size_t k, int32_t x, int32_t x0, int32_t width,
                     const ZoTextFormat& paragraph) {
        ZoTextItem& item = pending_[k];
        const ZoTextAlignment alignment = paragraph.Alignment();
        if (alignment == ZoTextAlignment::Right || alignment == ZoTextAlignment::Centre) {
            item.text.front() = ' ';
            return x;
        }
        ZoTabStop stop{x, ZoTabKind::Left};
        const auto& tabs = paragraph.Tabs();
        if (tabs.empty()) {
            const int32_t every = std::max(settings_.defaultTabWidth, 1);
            stop.position = (x + every) / every * every;
        } else {
            const auto found = std::find_if(tabs.begin(), tabs.end(),
                                            [x](const ZoTabStop& tab) { return tab.position > x; });
            stop = found == tabs.end() ? ZoTabStop{x, ZoTabKind::Left} : *found;
        }
        if (stop.position > x0 + width) {
            stop = {x, ZoTabKind::Left};
        }
        switch (stop.kind) {
            case ZoTabKind::Left:
                return stop.position;
            case ZoTabKind::Centre:
                return std::max(x, stop.position - FollowingWidth(k, false) / 2);
            case ZoTabKind::Right:
            case ZoTabKind::Decimal:
                return std::max(x,
                                stop.position - FollowingWidth(k, stop.kind == ZoTabKind::Decimal));
        }
        return stop.position;
    }

    // The width of the text after the tab that starts item `k`, up to the
    // next tab or the end of the paragraph (for a decimal stop, up to and
    // including the first ".").
    int32_t FollowingWidth(size_t k, bool toDecimalPoint) const {
        int32_t width = 0;
        for (size_t j = k; j < pending_.size(); ++j) {
            const ZoTextItem& item = pending_[j];
            if (j > k && StartsWith(item.text, '\t')) {
                break;
            }
            std::string_view text(item.text);
            if (j == k) {
                text.remove_prefix(1);
            }
            const size_t point = toDecimalPoint ? text.find('.') : std::string_view::npos;
            width += TextWidth(*item.font, text.substr(0, point == text.npos ? point : point + 1));
            if (point != std::string_view::npos || EndsWith(item.text, '\n')) {
                break;
            }
        }
        return width;
    }

    void FinishLine(ZoTextLine& line, int32_t x0, int32_t width, const ZoTextFormat& paragraph) {
        int32_t total = 0;
        int32_t spaces = 0;
        for (size_t i = 0; i < line.items.size(); ++i) {
            ZoTextItem& item = line.items[i];
            const bool last = i + 1 == line.items.size();
            MeasureItem(item, kUnlimitedExtent, last);
            ShiftForScript(item);
            line.ascent = std::max(line.ascent, item.ascent);
            line.descent = std::max(line.descent, item.descent);
            total += item.width;
            spaces += CountSpaces(item, last);
        }
        const bool endsParagraph = EndsWith(line.items.back().text, '\n');
        switch (paragraph.Alignment()) {
            case ZoTextAlignment::Left:
                break;
            case ZoTextAlignment::Right:
                PlaceInRow(line, x0 + (width - total));
                break;
            case ZoTextAlignment::Centre:
                PlaceInRow(line, x0 + (width - total) / 2);
                break;
            case ZoTextAlignment::Justify:
                if (!endsParagraph) {
                    Justify(line, x0, std::max(0, width - total), spaces);
                }
                break;
        }
    }

    static void ShiftForScript(ZoTextItem& item) {
        const int32_t height = item.font->Height();
        item.ascent = item.font->Ascent();
        item.descent = item.font->Descent();
        if (item.format->IsSubscript()) {
            item.ascent -= height * 30 / 100;
            item.descent += height * 30 / 100;
        } else if (item.format->IsSuperscript()) {
            item.ascent += height * 70 / 100;
            item.descent -= height * 70 / 100;
        }
    }

    static void PlaceInRow(ZoTextLine& line, int32_t x) {
        for (auto& item : line.items) {
            item.x = x;
            x += item.width;
        }
    }

    // Hands the free space out over the spaces item by item, rounding each
    // share so that the last space ends exactly at the right margin.
    static void Justify(ZoTextLine& line, int32_t x0, int32_t extra, int32_t spaces) {
        int32_t x = x0;
        for (size_t i = 0; i < line.items.size(); ++i) {
            ZoTextItem& item = line.items[i];
            const bool last = i + 1 == line.items.size();
            const int32_t own = CountSpaces(item, last);
            const int32_t share =
                spaces == 0 ? 0
                            : static_cast<int32_t>((spaces / 2 + int64_t{own} * extra) / spaces);
            extra -= share;
            spaces -= own;
            item.justifyExtra += share;
            MeasureItem(item, kUnlimitedExtent, last);
            item.x = x;
            x += item.width;
        }
    }

    std::vector<ZoTextItem> pending_;
    size_t next_ = 0;
    const ZoTextLayoutSettings& settings_;
};

void PlaceVertically(std::vector<ZoTextLine>& lines, const ZoTextLayoutSettings& settings) {
    if (lines.empty()) {
        return;
    }
    const int32_t pageHeight = settings.pageHeight;
    const int32_t firstTop = lines.front().top;
    const int32_t used = lines.back().top + lines.back().Height() - firstTop;
    switch (settings.verticalAlignment) {
        case ZoVerticalAlignment::Top:
            break;
        case ZoVerticalAlignment::Bottom:
        case ZoVerticalAlignment::Centre: {
            const int32_t free = pageHeight - used;
            const int32_t shift =
                (settings.verticalAlignment == ZoVerticalAlignment::Bottom ? free : free / 2) -
                firstTop;
            for (auto& line : lines) {
                line.top += shift;
            }
            break;
        }
        case ZoVerticalAlignment::Justify: {
            int32_t free = pageHeight;
            for (const auto& line : lines) {
                free -= line.Height();
            }
            int32_t top = 0;
            auto gaps = static_cast<int32_t>(lines.size()) - 1;
            for (auto& line : lines) {
                line.top = top;
                top += line.Height();
                if (gaps > 0) {
                    const int32_t share = free / gaps;
                    free -= share;
                    top += share;
                    --gaps;
                }
            }
            break;
        }
    }
    for (auto& line : lines) {
        for (auto& item : line.items) {
            item.y = line.top + line.ascent - item.ascent;
        }
    }
}

}  // namespace

ZoPoint ZoTextItem::Origin() const noexcept {
    return {x, y + (font ? font->Ascent() : 0)};
}

std::shared_ptr<const ZoScaledFont> ZoChooseFont(const ZoTextFormat& format,
                                                 const ZoTextLayoutSettings& settings) {
    int32_t points = format.PointSize();
    if (format.IsSubscript() || format.IsSuperscript()) {
        points = points * 6 / 10;
    }
    const double height = -(points * settings.logPixels * settings.zoom / 72.0);
    const auto pixels = static_cast<int32_t>(std::clamp(std::trunc(-height), 1.0, 16384.0));
    return ZoFindFontFace(format.FontName(), format.IsBold(), format.IsItalic())
        ->AtPixelSize(pixels);
}

std::vector<ZoTextLine> ZoLayOutText(const std::vector<ZoTextRun>& runs,
                                     const ZoTextLayoutSettings& settings) {
    std::vector<ZoTextItem> items;
    items.reserve(runs.size());
    for (const auto& run : runs) {
        ZoTextItem item;
        item.text = run.text;
        item.format = run.format;
        item.font = ZoChooseFont(*run.format, settings);
        items.push_back(std::move(item));
    }
    std::vector<ZoTextLine> lines = LineBuilder(std::move(items), settings).Build();
    PlaceVertically(lines, settings);
    return lines;
}

ZoSize ZoLaidOutSize(const std::vector<ZoTextLine>& lines) noexcept {
    ZoSize size;
    for (const auto& line : lines) {
        if (!line.items.empty()) {
            const ZoTextItem& last = line.items.back();
            size.cx = std::max(size.cx, last.x + last.width);
        }
    }
    if (!lines.empty()) {
        size.cy = lines.back().top + lines.back().Height();
    }
    return size;
}
