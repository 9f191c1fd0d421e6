#include <gtest/gtest.h>

#include <functional>

#include "text/code_page.h"
#include "text/rich_text.h"

namespace {

std::vector<ZoString> RunTexts(const ZoRichText& document) {
    std::vector<ZoString> texts;
    for (const auto& run : document.Runs()) {
        texts.push_back(run.text);
    }
    return texts;
}

void Bold(ZoTextFormat& format) {
    format.SetFlag(kZoTextBold, true);
}

}  // namespace

TEST(RichText, RunsStayNormalised) {
    struct Case {
        const char* name;
        std::function<void(ZoRichText&)> edit;
        std::vector<ZoString> runs;
    };
    const Case cases[] = {
        {"new document", [](ZoRichText&) {}, {"\n"}},
        {"split after every paragraph mark",
         [](ZoRichText& d) { d.InsertText(0, "a\nb\n\nc"); },
         {"a\n", "b\n", "\n", "c", "\n"}},
        {"split before every tab",
         [](ZoRichText& d) { d.InsertText(0, "a\t\tb\tc"); },
         {"a", "\t", "\tb", "\tc", "\n"}},
        {"final mark on its own after a paragraph",
         [](ZoRichText& d) { d.InsertText(0, "x\n"); },
         {"x\n", "\n"}},
        {"equal looks merge",
         [](ZoRichText& d) {
             d.InsertText(0, "abc");
             d.InsertText(1, "zz");
         },
         {"azzbc", "\n"}},
        {"different looks stay apart",
         [](ZoRichText& d) {
             d.InsertText(0, "abcd");
             d.ModifyFormat(1, 3, Bold);
         },
         {"a", "bc", "d", "\n"}},
        {"undoing a format merges again",
         [](ZoRichText& d) {
             d.InsertText(0, "abcd");
             d.ModifyFormat(1, 3, Bold);
             d.ModifyFormat(0, 5, [](ZoTextFormat& f) { f.SetFlag(kZoTextBold, false); });
         },
         {"abcd", "\n"}},
        {"deleting across runs",
         [](ZoRichText& d) {
             d.InsertText(0, "ab\ncd");
             d.DeleteText(1, 4);
         },
         {"ad", "\n"}},
        {"the final mark cannot be deleted",
         [](ZoRichText& d) {
             d.InsertText(0, "ab");
             d.DeleteText(0, 100);
         },
         {"\n"}},
        {"inserting past the end goes before the final mark",
         [](ZoRichText& d) { d.InsertText(50, "q"); },
         {"q", "\n"}},
    };
    for (const auto& c : cases) {
        ZoRichText document;
        c.edit(document);
        EXPECT_EQ(RunTexts(document), c.runs) << c.name;
    }
}

TEST(RichText, ParagraphFormatsReachOnlyTheParagraphsTouched) {
    ZoRichText document;
    document.InsertText(0, "one\ntwo\nthree");
    document.ModifyParagraphs(5, 6, [](ZoTextFormat& f) { f.SetLeftIndent(9); });
    EXPECT_EQ(document.FormatAt(0)->LeftIndent(), 0);
    EXPECT_EQ(document.FormatAt(4)->LeftIndent(), 9);
    EXPECT_EQ(document.FormatAt(7)->LeftIndent(), 9);
    EXPECT_EQ(document.FormatAt(8)->LeftIndent(), 0);
}

TEST(RichText, FormatsInheritWhatTheyDoNotDefine) {
    auto parent = std::make_shared<ZoTextFormat>(ZoTextFormat::DefaultStyle());
    ZoTextFormat child;
    child.parent = parent;
    EXPECT_EQ(child.FontName(), "Times New Roman");
    EXPECT_EQ(child.PointSize(), 12);
    EXPECT_TRUE(child.HasTransparentBack());
    EXPECT_FALSE(child.HasShadow());
    EXPECT_EQ(child.ShadowColour(), 0x969696u);
    child.SetPointSize(30);
    child.SetFlag(kZoTextItalic, true);
    parent->SetFlag(kZoTextBold, true);
    EXPECT_EQ(child.PointSize(), 30);
    EXPECT_TRUE(child.IsItalic());
    EXPECT_TRUE(child.IsBold());
    EXPECT_FALSE(child.SameAppearance(*parent));
    // Without a parent, an undefined attribute reads the format's own field.
    ZoTextFormat orphan;
    orphan.pointSize = 7;
    EXPECT_EQ(orphan.PointSize(), 7);
}

TEST(RichText, SelectionIsClampedAndOrdered) {
    ZoRichText document;
    document.InsertText(0, "hello");
    document.SetSelection(4, 1);
    EXPECT_EQ(document.SelectionStart(), 1u);
    EXPECT_EQ(document.SelectionEnd(), 4u);
    document.SetSelection(2, 99);
    EXPECT_EQ(document.SelectionEnd(), document.Length());
}

TEST(CodePage, Windows1252RoundTripsEveryByte) {
    for (int byte = 0; byte < 256; ++byte) {
        const char32_t character = ZoCp1252ToUnicode(static_cast<uint8_t>(byte));
        EXPECT_EQ(ZoUnicodeToCp1252(character), static_cast<uint8_t>(byte)) << byte;
    }
    EXPECT_EQ(ZoCp1252ToUnicode(0x80), U'\u20AC');
    EXPECT_EQ(ZoCp1252ToUnicode(0x92), U'\u2019');
    EXPECT_EQ(ZoUnicodeToCp1252(U'\u03A9'), std::nullopt);
}

TEST(CodePage, Utf8DecodingMakesProgressOnAnyInput) {
    struct Case {
        std::string_view bytes;
        std::u32string characters;
    };
    const Case cases[] = {
        {"a\xC3\xA9", U"a\u00E9"},
        {"\xE2\x82\xAC\xF0\x9F\x98\x80", U"\u20AC\U0001F600"},
        {"\xC3", U"\uFFFD"},                      // cut off
        {"\xC0\xAF", U"\uFFFD\uFFFD"},            // overlong
        {"\xED\xA0\x80", U"\uFFFD\uFFFD\uFFFD"},  // a surrogate
        {"\xFF"
         "a",
         U"\uFFFDa"},
    };
    for (const auto& c : cases) {
        std::u32string decoded;
        for (size_t i = 0; i < c.bytes.size();) {
            decoded += ZoNextUtf8(c.bytes, i);
        }
        EXPECT_EQ(decoded, c.characters);
        ZoString encoded;
        for (const char32_t character : decoded) {
            ZoAppendUtf8(encoded, character);
        }
        size_t offset = 0;
        for (const char32_t character : decoded) {
            EXPECT_EQ(ZoNextUtf8(encoded, offset), character);
        }
    }
}
