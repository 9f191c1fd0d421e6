#include <gtest/gtest.h>

#include "text/rich_text.h"

namespace {

ZoString Rtf(ZoRichText& document) {
    ZoString rtf;
    EXPECT_TRUE(document.GetRTF(rtf));
    return rtf;
}

// What follows the header and the two tables.
ZoString Body(const ZoString& rtf) {
    return rtf.substr(rtf.find("}\n\\plain") + 2);
}

}  // namespace

TEST(RtfWriter, FontsListedHighestNumberFirstAndColoursInIndexOrder) {
    ZoRichText document;
    document.InsertText(0, "Hi there");
    // The final paragraph mark is formatted too: it is written with its own
    // character format and no text.
    document.ModifyFormat(3, 9, [](ZoTextFormat& f) {
        f.SetFontName("Arial");
        f.SetColour(ZoRGB(255, 0, 0));
        f.SetFlag(kZoTextBold, true);
    });
    EXPECT_EQ(Rtf(document),
              "{\\rtf1\\ansi\\deff0\n{\\fonttbl{\\f1 Arial;}{\\f0 Times New Roman;}}\n"
              "{\\colortbl\\red0\\green0\\blue0;\\red255\\green0\\blue0;}\n"
              "\\plain\\f0\\fs24 \\pard\\ql\\sl288\\li0\\ri0\\fi0 Hi "
              "\\plain\\b\\cf1\\f1\\fs24 there\\plain\\b\\cf1\\f1\\fs24 }");
}

TEST(RtfWriter, CharacterAttributesInTheirFixedOrder) {
    ZoRichText document;
    document.InsertText(0, "x");
    document.ModifyFormat(0, 2, [](ZoTextFormat& f) {
        f.SetFlag(kZoTextItalic, true);
        f.SetFlag(kZoTextUnderline, true);
        f.SetFlag(kZoTextSubscript, true);
        f.SetBackColour(ZoRGB(0, 0, 255), false);
        f.SetShadow(ZoRGB(0, 255, 0), true);
        f.SetPointSize(20);
        f.SetIds({7, -3});
    });
    const ZoString rtf = Rtf(document);
    EXPECT_NE(rtf.find("{\\colortbl\\red0\\green0\\blue0;\\red0\\green0\\blue255;"
                       "\\red0\\green255\\blue0;}"),
              ZoString::npos);
    EXPECT_NE(rtf.find("\\plain\\i\\ul\\cb1\\shad2\\f0\\fs40\\dn10\\id7\\id-3 "), ZoString::npos);

    ZoString withoutIds;
    document.SelectAll();
    document.WriteRTF(withoutIds, true);
    EXPECT_EQ(withoutIds.find("\\id"), ZoString::npos);
}

TEST(RtfWriter, ParagraphFormatAtEveryParagraphStartOnly) {
    ZoRichText document;
    document.InsertText(0, "a\tb\nc");
    document.ModifyParagraphs(0, 1, [](ZoTextFormat& f) {
        f.SetAlignment(ZoTextAlignment::Centre);
        f.SetLineSpacing(-16);
        f.SetLeftIndent(10);
        f.SetRightIndent(20);
        f.SetFirstIndent(-5);
        f.SetTabs({{100, ZoTabKind::Left}, {200, ZoTabKind::Right}, {300, ZoTabKind::Decimal}});
        f.SetFlag(kZoTextBullet, true);
    });
    document.ModifyParagraphs(4, 5, [](ZoTextFormat& f) {
        f.SetAlignment(ZoTextAlignment::Justify);
        f.SetLineSpacing(2048);
    });
    const ZoString body = Body(Rtf(document));
    EXPECT_EQ(body,
              "\\plain\\f0\\fs24 \\pard\\qc\\sl-240\\li150\\ri300\\fi-74"
              "\\tx1500\\tqr\\tx3000\\tqdec\\tx4500\\bullet a"
              "\\plain\\f0\\fs24 \tb\\par"
              "\\plain\\f0\\fs24 \\pard\\qj\\sl576\\li0\\ri0\\fi0 c"
              "\\plain\\f0\\fs24 }");
}

TEST(RtfWriter, EscapesAndCodePage) {
    struct Case {
        const char* text;
        const char* written;
    };
    const Case cases[] = {
        {"a\\b{c}", "a\\\\b\\{c\\}"}, {"caf\xC3\xA9", "caf\xE9"},
        {"\xE2\x82\xAC", "\x80"},     {"\xCE\xA9", "\\u937?"},
        {"\xEF\xBF\xBD", "\\u-3?"},   {"\xF0\x9F\x98\x80", "\\u-10179?\\u-8704?"},
    };
    for (const auto& c : cases) {
        ZoRichText document;
        document.InsertText(0, c.text);
        const ZoString rtf = Rtf(document);
        const ZoString expected = ZoString("\\fi0 ") + c.written + "\\plain";
        EXPECT_NE(rtf.find(expected), ZoString::npos) << c.text << " gave " << rtf;
    }
}

TEST(RtfWriter, SelectionClipsTheRuns) {
    ZoRichText document;
    document.InsertText(0, "one two three");
    document.ModifyFormat(4, 7, [](ZoTextFormat& f) { f.SetFlag(kZoTextBold, true); });
    document.SetSelection(2, 9);
    ZoString rtf;
    document.WriteRTF(rtf, false);
    EXPECT_EQ(Body(rtf),
              "\\plain\\f0\\fs24 \\pard\\ql\\sl288\\li0\\ri0\\fi0 e "
              "\\plain\\b\\f0\\fs24 two\\plain\\f0\\fs24  t}");
}
