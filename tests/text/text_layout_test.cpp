#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <thread>

#include "text/code_page.h"
#include "text/rich_text.h"

namespace {

constexpr int32_t kPoints = 12;

// A document of `text` in Arial 12 points, laid out `width` pixels wide.
ZoRichText Document(std::string_view text, int32_t width,
                    const std::function<void(ZoTextFormat&)>& paragraph = nullptr) {
    ZoRichText document;
    document.InsertText(0, text);
    document.ModifyFormat(0, document.Length(), [](ZoTextFormat& f) {
        f.SetFontName("Arial");
        f.SetPointSize(kPoints);
    });
    if (paragraph) {
        document.ModifyParagraphs(0, document.Length(), paragraph);
    }
    document.SetPageSize(width, 400);
    return document;
}

std::shared_ptr<const ZoScaledFont> Arial(int32_t points) {
    ZoTextFormat format = ZoTextFormat::DefaultStyle();
    format.SetFontName("Arial");
    format.SetPointSize(points);
    return ZoChooseFont(format, ZoTextLayoutSettings{});
}

int32_t Width(std::string_view text, int32_t points = kPoints) {
    const auto font = Arial(points);
    int32_t width = 0;
    for (size_t i = 0; i < text.size();) {
        width += font->Advance(ZoNextUtf8(text, i));
    }
    return width;
}

ZoString LineText(const ZoTextLine& line) {
    ZoString text;
    for (const auto& item : line.items) {
        text += item.text;
    }
    return text;
}

std::vector<ZoString> LineTexts(ZoRichText& document) {
    std::vector<ZoString> texts;
    for (const auto& line : document.Lines()) {
        texts.push_back(LineText(line));
    }
    return texts;
}

int32_t RightEdge(const ZoTextLine& line) {
    return line.items.back().x + line.items.back().width;
}

}  // namespace

TEST(TextLayout, FontHeightFollowsPointsResolutionAndZoom) {
    struct Case {
        int32_t points;
        bool subscript;
        double zoom;
        int32_t pixels;
    };
    const Case cases[] = {
        {10, false, 1.0, 13},                       // 13.33 truncated
        {12, false, 1.0, 16}, {20, true, 1.0, 16},  // measured as 12 points
        {12, false, 2.0, 32}, {0, false, 1.0, 1},
    };
    for (const auto& c : cases) {
        ZoTextFormat format = ZoTextFormat::DefaultStyle();
        format.SetPointSize(c.points);
        format.SetFlag(kZoTextSubscript, c.subscript);
        ZoTextLayoutSettings settings;
        settings.zoom = c.zoom;
        EXPECT_EQ(ZoChooseFont(format, settings)->PixelSize(), c.pixels) << c.points;
    }
}

TEST(TextLayout, WrapsAtTheLastSpaceThatFits) {
    const std::string_view text = "The quick brown fox jumps over the lazy dog";
    struct Case {
        int32_t width;
        std::vector<ZoString> lines;
    };
    const Case cases[] = {
        // Less room than a space: the space that ends a line must take no width.
        {Width("The quick brown fox") + 2,
         {"The quick brown fox ", "jumps over the lazy ", "dog\n"}},
        {Width("The quick brown fox "), {"The quick brown fox ", "jumps over the lazy ", "dog\n"}},
        {Width("The quick brown fox") - 1,
         {"The quick brown ", "fox jumps over the ", "lazy dog\n"}},
        {1000, {"The quick brown fox jumps over the lazy dog\n"}},
    };
    for (const auto& c : cases) {
        ZoRichText document = Document(text, c.width);
        EXPECT_EQ(LineTexts(document), c.lines) << c.width;
        for (const auto& line : document.Lines()) {
            EXPECT_LE(RightEdge(line), c.width) << LineText(line);
        }
    }
}

TEST(TextLayout, LongWordsBreakInsideAtTheLastCharacterThatFits) {
    struct Case {
        std::string_view text;
        int32_t width;
        std::vector<ZoString> lines;
    };
    const Case cases[] = {
        {"mmmmmmmmmm", Width("mmmm") + 1, {"mmmm", "mmmm", "mm\n"}},
        {"ab abcdefghij", Width("ab abc") + 1, {"ab ", "abcdef", "ghij\n"}},
        // Not even one character fits: each line still takes one.
        {"WWW", 2, {"W", "W", "W\n"}},
        {"\xC3\xA9\xC3\xA9", 1, {"\xC3\xA9", "\xC3\xA9\n"}},
    };
    for (const auto& c : cases) {
        ZoRichText document = Document(c.text, c.width);
        EXPECT_EQ(LineTexts(document), c.lines) << c.text;
    }
}

TEST(TextLayout, BreaksAcrossRunsAtAnEarlierSpace) {
    ZoRichText document = Document("one twothree", Width("one twoth") + 1);
    document.ModifyFormat(4, 7, [](ZoTextFormat& f) { f.SetFlag(kZoTextBold, true); });
    EXPECT_EQ(LineTexts(document), (std::vector<ZoString>{"one ", "twothree\n"}));
}

TEST(TextLayout, PositionsAreCumulativePerByte) {
    ZoRichText document = Document("a\xC3\xA9z", 500);
    const ZoTextItem& item = document.Lines().front().items.front();
    const auto font = Arial(kPoints);
    const int32_t a = font->Advance('a');
    const int32_t e = a + font->Advance(U'\u00E9');
    EXPECT_EQ(item.positions, (std::vector<int32_t>{a, e, e, e + font->Advance('z')}));
}

TEST(TextLayout, HorizontalAlignment) {
    const int32_t first = Width("Alpha beta gamma");
    const int32_t last = Width("delta epsilon");
    const int32_t width = first + 4;
    struct Case {
        ZoTextAlignment alignment;
        int32_t firstLeft, firstRight, lastLeft, lastRight;
    };
    const Case cases[] = {
        {ZoTextAlignment::Left, 0, first, 0, last},
        {ZoTextAlignment::Right, width - first, width, width - last, width},
        {ZoTextAlignment::Centre, 2, 2 + first, (width - last) / 2, (width - last) / 2 + last},
        // A justified paragraph's last line stays left aligned.
        {ZoTextAlignment::Justify, 0, width, 0, last},
    };
    for (const auto& c : cases) {
        ZoRichText document = Document("Alpha beta gamma delta epsilon", width,
                                       [&](ZoTextFormat& f) { f.SetAlignment(c.alignment); });
        const auto& lines = document.Lines();
        ASSERT_EQ(lines.size(), 2u);
        const int32_t edges[] = {lines[0].items[0].x, RightEdge(lines[0]), lines[1].items[0].x,
                                 RightEdge(lines[1])};
        EXPECT_THAT(edges,
                    ::testing::ElementsAre(c.firstLeft, c.firstRight, c.lastLeft, c.lastRight))
            << static_cast<int>(c.alignment);
        if (c.alignment == ZoTextAlignment::Justify) {
            // The spaces share the 4 free pixels, so "beta" moves by 2.
            EXPECT_EQ(lines[0].items[0].positions[5], Width("Alpha ") + 2);
        }
    }
}

TEST(TextLayout, TabStops) {
    struct Case {
        std::string_view text;
        std::vector<ZoTabStop> tabs;
        int32_t expectedX;
        int32_t firstIndent = 0;
    };
    const int32_t wide = Width("WWWWWWWWWWWW");  // beyond 150
    const Case cases[] = {
        // Without stops, the next multiple of 30 after the text so far.
        {"a\tb", {}, (Width("a") + 30) / 30 * 30},
        {"ab ab ab\tb", {}, (Width("ab ab ab") + 30) / 30 * 30},
        // Counted from the margin, not the indent: from 45 to 60.
        {"x\ty", {}, 60, 45 - Width("x")},
        {"a\tb", {{100, ZoTabKind::Left}}, 100},
        {"a\t12345", {{200, ZoTabKind::Right}}, 200 - Width("12345")},
        {"WWWWWWWWWWWW\t12345", {{200, ZoTabKind::Right}}, wide},
        {"a\t12345", {{200, ZoTabKind::Centre}}, 200 - Width("12345") / 2},
        {"a\t12.75", {{200, ZoTabKind::Decimal}}, 200 - Width("12.")},
        {"a\t12", {{200, ZoTabKind::Decimal}}, 200 - Width("12")},
        // A stop beyond the line acts as a left stop where the text is.
        {"a\tb", {{900, ZoTabKind::Left}}, Width("a")},
    };
    for (const auto& c : cases) {
        ZoRichText document = Document(c.text, 500, [&](ZoTextFormat& f) {
            f.SetTabs(c.tabs);
            f.SetFirstIndent(c.firstIndent);
        });
        const auto& items = document.Lines().front().items;
        ASSERT_EQ(items.size(), 3u) << c.text;  // before, from the tab, the final mark
        EXPECT_EQ(items[1].x, c.expectedX) << c.text;
        EXPECT_EQ(items[1].positions[0], 0) << c.text;
    }
}

TEST(TextLayout, IndentsAndBullets) {
    const std::string_view text = "one two three four five six";
    ZoRichText document = Document(text, Width("one two") + 30, [](ZoTextFormat& f) {
        f.SetFirstIndent(10);
        f.SetLeftIndent(20);
        f.SetRightIndent(5);
    });
    const auto& lines = document.Lines();
    ASSERT_GE(lines.size(), 2u);
    EXPECT_EQ(lines[0].items[0].x, 10);
    EXPECT_EQ(lines[1].items[0].x, 20);

    ZoRichText bulleted = Document("item", 300, [](ZoTextFormat& f) {
        f.SetFlag(kZoTextBullet, true);
        f.SetFirstIndent(4);
    });
    EXPECT_EQ(bulleted.Lines()[0].items[0].x, 4 + Arial(kPoints)->Height());
}

TEST(TextLayout, LineSpacingAdvancesTheNextLine) {
    const int32_t height = Arial(kPoints)->Height();
    struct Case {
        int32_t spacing;
        int32_t secondTop;
    };
    const Case cases[] = {
        {1024, height}, {2048, 2 * height}, {1536, 1536 * height / 1024}, {-30, 30}};
    for (const auto& c : cases) {
        ZoRichText document =
            Document("a\nb", 300, [&](ZoTextFormat& f) { f.SetLineSpacing(c.spacing); });
        ASSERT_EQ(document.Lines().size(), 2u);
        EXPECT_EQ(document.Lines()[1].top, c.secondTop) << c.spacing;
    }
}

TEST(TextLayout, VerticalAlignment) {
    // 14-point Arial lines are 20 pixels high.
    ASSERT_EQ(Arial(14)->Height(), 20);
    struct Case {
        ZoVerticalAlignment alignment;
        std::vector<int32_t> tops;
    };
    const Case cases[] = {
        {ZoVerticalAlignment::Top, {0, 20, 40}},
        {ZoVerticalAlignment::Bottom, {40, 60, 80}},
        {ZoVerticalAlignment::Centre, {20, 40, 60}},
        {ZoVerticalAlignment::Justify, {0, 40, 80}},
    };
    for (const auto& c : cases) {
        ZoRichText document = Document("a\nb\nc", 300);
        document.ModifyFormat(0, document.Length(), [](ZoTextFormat& f) { f.SetPointSize(14); });
        document.SetPageSize(300, 100);
        document.SetVerticalAlignment(c.alignment);
        std::vector<int32_t> tops;
        for (const auto& line : document.Lines()) {
            tops.push_back(line.top);
            for (const auto& item : line.items) {
                EXPECT_EQ(item.y, line.top + line.ascent - item.ascent);
            }
        }
        EXPECT_EQ(tops, c.tops) << static_cast<int>(c.alignment);
    }
}

TEST(TextLayout, SubscriptIsLoweredAndSuperscriptRaised) {
    ZoRichText document = Document("aXbYc", 300);
    document.ModifyFormat(1, 2, [](ZoTextFormat& f) {
        f.SetFlag(kZoTextSubscript, true);
        f.SetPointSize(20);
    });
    document.ModifyFormat(3, 4, [](ZoTextFormat& f) {
        f.SetFlag(kZoTextSuperscript, true);
        f.SetPointSize(20);
    });
    const auto& items = document.Lines().front().items;
    ASSERT_EQ(items.size(), 6u);                       // the last is the final paragraph mark
    const int32_t scriptHeight = Arial(12)->Height();  // 20 points at 60 %
    const int32_t baseline = items[0].Origin().y;
    EXPECT_EQ(items[1].Origin().y - baseline, scriptHeight * 30 / 100);
    EXPECT_EQ(baseline - items[3].Origin().y, scriptHeight * 70 / 100);
    EXPECT_EQ(items[1].font->PixelSize(), 16);
}

TEST(TextLayout, LayoutFollowsChangesAndReportsItsSize) {
    ZoRichText document = Document("one two", Width("one two") + 5);
    EXPECT_EQ(document.Lines().size(), 1u);
    int32_t width = 0;
    int32_t height = 0;
    document.GetTextSize(width, height);
    EXPECT_EQ(width, Width("one two"));
    EXPECT_EQ(height, Arial(kPoints)->Height());

    document.SetPageSize(Width("one"), 400);
    EXPECT_EQ(LineTexts(document), (std::vector<ZoString>{"one ", "two\n"}));
    document.InsertText(0, "zero ");
    EXPECT_EQ(LineTexts(document).front(), "zero ");
}

TEST(TextLayout, TwoThreadsLayOutAtOnceAsOneDoes) {
    auto layOut = [] {
        ZoRichText document = Document("Pack my box with five dozen liquor jugs.\tx", 150);
        document.ModifyFormat(5, 12, [](ZoTextFormat& f) {
            f.SetFontName("Courier New");
            f.SetPointSize(19);
        });
        std::vector<int32_t> geometry;
        for (const auto& line : document.Lines()) {
            geometry.push_back(line.top);
            for (const auto& item : line.items) {
                geometry.insert(geometry.end(), {item.x, item.y, item.width});
            }
        }
        return geometry;
    };
    // The threads go first, so that they meet the uncached glyph advances.
    std::vector<int32_t> results[2];
    {
        std::jthread first([&] { results[0] = layOut(); });
        std::jthread second([&] { results[1] = layOut(); });
    }
    const std::vector<int32_t> expected = layOut();
    EXPECT_EQ(results[0], expected);
    EXPECT_EQ(results[1], expected);
}
