#include <gtest/gtest.h>

#include <functional>

#include <cstring>

#include "text/rich_text.h"
#include "text/rtf_reader.h"

namespace {

ZoRichText Read(std::string_view rtf) {
    ZoRichText document;
    EXPECT_TRUE(document.SetRTF(rtf)) << rtf;
    return document;
}

// The run holding the first occurrence of `needle`.
const ZoTextFormat& FormatOf(const ZoRichText& document, std::string_view needle) {
    const size_t at = document.Text().find(needle);
    EXPECT_NE(at, ZoString::npos) << needle;
    return *document.FormatAt(at == ZoString::npos ? 0 : at);
}

ZoRichText RichDocument() {
    ZoRichText document;
    document.InsertText(0, "Title line\nplain {braces} \\ and caf\xC3\xA9 \xCE\xA9\n\tA\tB\nlast");
    document.ModifyFormat(0, 5, [](ZoTextFormat& f) {
        f.SetFlag(kZoTextBold, true);
        f.SetPointSize(24);
        f.SetFontName("Arial");
        f.SetColour(ZoRGB(200, 10, 30));
    });
    document.ModifyFormat(17, 25, [](ZoTextFormat& f) {
        f.SetFlag(kZoTextItalic, true);
        f.SetFlag(kZoTextUnderline, true);
        f.SetFontName("Odd {Face}; \\ \xC3\xA9");
        f.SetBackColour(ZoRGB(1, 2, 3), false);
        f.SetShadow(ZoRGB(9, 8, 7), true);
        f.SetIds({4, 5});
    });
    document.ModifyFormat(27, 28, [](ZoTextFormat& f) { f.SetFlag(kZoTextSuperscript, true); });
    document.ModifyParagraphs(0, 1, [](ZoTextFormat& f) {
        f.SetAlignment(ZoTextAlignment::Centre);
        f.SetLineSpacing(-20);
        f.SetLeftIndent(12);
        f.SetFirstIndent(-6);
        f.SetRightIndent(3);
    });
    document.ModifyParagraphs(50, 51, [](ZoTextFormat& f) {
        f.SetTabs({{40, ZoTabKind::Centre}, {90, ZoTabKind::Decimal}});
        f.SetFlag(kZoTextBullet, true);
        f.SetAlignment(ZoTextAlignment::Justify);
    });
    const size_t length = document.Length();
    document.ModifyFormat(length - 5, length, [](ZoTextFormat& f) {
        f.SetFontName("Courier New");
        f.SetLineSpacing(2048);
    });
    return document;
}

}  // namespace

TEST(RtfReader, WriteThenReadGivesTheSameDocument) {
    ZoRichText original = RichDocument();
    ZoString rtf;
    ASSERT_TRUE(original.GetRTF(rtf));
    const ZoRichText copy = Read(rtf);
    EXPECT_EQ(copy.Text(), original.Text());
    EXPECT_TRUE(copy.SameContent(original)) << rtf;
    ZoString again;
    ZoRichText mutableCopy = copy;
    mutableCopy.GetRTF(again);
    EXPECT_EQ(again, rtf);
}

TEST(RtfReader, ReadsNumbersAsTheWriterConvertsThem) {
    const ZoRichText document = Read(
        "{\\rtf1{\\fonttbl{\\f0 Arial;}}\\f0\\fs24\\sl288 a\\par\\pard\\sl-240\\li1440\\fi-720 "
        "b\\par\\pard\\tqc\\b\\tx720 c\\par\\tx1440 d\\b0 e}");
    EXPECT_EQ(FormatOf(document, "a").LineSpacing(), 1024);
    EXPECT_EQ(FormatOf(document, "b").LineSpacing(), -16);
    EXPECT_EQ(FormatOf(document, "b").LeftIndent(), 96);
    EXPECT_EQ(FormatOf(document, "b").FirstIndent(), -48);
    // A pending tab kind waits for the next \tx, then resets.
    EXPECT_EQ(FormatOf(document, "c").Tabs(), (std::vector<ZoTabStop>{{48, ZoTabKind::Centre}}));
    EXPECT_EQ(FormatOf(document, "d").Tabs(),
              (std::vector<ZoTabStop>{{48, ZoTabKind::Centre}, {96, ZoTabKind::Left}}));
    EXPECT_TRUE(FormatOf(document, "d").IsBold());
    EXPECT_FALSE(FormatOf(document, "e").IsBold());
    EXPECT_EQ(FormatOf(document, "a").FontName(), "Arial");
}

TEST(RtfReader, CharacterKeywords) {
    struct Case {
        const char* rtf;
        std::function<bool(const ZoTextFormat&)> check;
    };
    const char* table = "{\\rtf1{\\colortbl;\\red255\\green0\\blue0;\\red0\\green0\\blue255;}";
    const Case cases[] = {
        {"\\b x}", [](const ZoTextFormat& f) { return f.IsBold(); }},
        {"\\b1 x}", [](const ZoTextFormat& f) { return f.IsBold(); }},
        {"\\b\\b0 x}", [](const ZoTextFormat& f) { return !f.IsBold(); }},
        {"\\ul\\ulnone x}", [](const ZoTextFormat& f) { return !f.IsUnderlined(); }},
        {"\\up6 x}", [](const ZoTextFormat& f) { return f.IsSuperscript(); }},
        {"\\dn6\\dn0 x}", [](const ZoTextFormat& f) { return !f.IsSubscript(); }},
        {"\\super x}", [](const ZoTextFormat& f) { return f.IsSuperscript(); }},
        {"\\cf1 x}", [](const ZoTextFormat& f) { return f.Colour() == ZoRGB(255, 0, 0); }},
        {"\\cf9 x}", [](const ZoTextFormat& f) { return f.Colour() == 0; }},
        {"\\cb2 x}",
         [](const ZoTextFormat& f) {
             return !f.HasTransparentBack() && f.BackColour() == ZoRGB(0, 0, 255);
         }},
        {"\\shad1 x}",
         [](const ZoTextFormat& f) { return f.HasShadow() && f.ShadowColour() == 0xFF; }},
        {"\\fs31 x}", [](const ZoTextFormat& f) { return f.PointSize() == 15; }},
        {"\\f3 x}", [](const ZoTextFormat& f) { return f.FontName() == "Times New Roman"; }},
        {"\\id3\\id-4 x}",
         [](const ZoTextFormat& f) {
             return f.Ids() == std::vector{3, -4};
         }},
        {"\\b\\i\\cf1\\cb2\\shad1\\id5\\plain x}",
         [](const ZoTextFormat& f) {
             return !f.IsBold() && !f.IsItalic() && f.Colour() == 0 && f.HasTransparentBack() &&
                    !f.HasShadow() && f.Ids().empty();
         }},
        {"{\\b\\i y}x}", [](const ZoTextFormat& f) { return !f.IsBold() && !f.IsItalic(); }},
    };
    for (const auto& c : cases) {
        const ZoString rtf = ZoString(table) + c.rtf;
        EXPECT_TRUE(c.check(FormatOf(Read(rtf), "x"))) << c.rtf;
    }
}

TEST(RtfReader, SpecialCharactersAndEscapes) {
    struct Case {
        const char* rtf;
        const char* text;
    };
    const Case cases[] = {
        {"a\\par b", "a\nb"},
        {"\\\\\\{\\}", "\\{}"},
        {"a\\tab b", "a\tb"},
        {"\\~\\_\\emdash\\endash", " ---"},
        {"\\lquote\\rquote\\ldblquote\\rdblquote", "''\"\""},
        {"caf\\'e9 \\'80", "caf\xC3\xA9 \xE2\x82\xAC"},
        {"caf\\'E9", "caf\xC3\xA9"},
        {"\\ansi\\deff0\\unknownword12 x", "x"},
        {"\\u937?z", "\xCE\xA9z"},
        {"\\uc2\\u937??z", "\xCE\xA9z"},
        {"\\uc0\\u937 z", "\xCE\xA9z"},
        {"\\u937\\'3fz", "\xCE\xA9z"},
        {"\\u-3?", "\xEF\xBF\xBD"},
        {"\\u-10179?\\u-8704?", "\xF0\x9F\x98\x80"},
        {"{\\*\\generator Riched20 10.0;}x", "x"},
        {"{\\info{\\title T}{\\author A}}x", "x"},
        {"{\\stylesheet{\\s0 Normal;}}x", "x"},
        {"{\\pict\\bin3 }}}}x", "x"},
        {"{\\pntext\\f0\\'B7\\tab}x", "x"},
        {"{{{nested}}}x", "nestedx"},
        {"line\r\none", "lineone"},
        {"a\\'00\\'0d\\u0?\\u13?b", "ab"},
    };
    for (const auto& c : cases) {
        const ZoString rtf = ZoString("{\\rtf1 ") + c.rtf + "}";
        EXPECT_EQ(Read(rtf).Text(), ZoString(c.text) + "\n") << c.rtf;
    }
}

TEST(RtfReader, WordPadDocumentKeepsTextAndFormatting) {
    const char* rtf =
        "{\\rtf1\\ansi\\ansicpg1252\\deff0\\nouicompat\\deflang1033"
        "{\\fonttbl{\\f0\\fnil\\fcharset0 Calibri;}{\\f1\\froman\\fprq2\\fcharset0 Times New "
        "Roman{\\*\\panose 02020603050405020304};}{\\f2\\fswiss Arial;}}\r\n"
        "{\\colortbl ;\\red255\\green0\\blue0;\\red0\\green77\\blue187;}\r\n"
        "{\\*\\generator Riched20 10.0.19041}\\viewkind4\\uc1 \r\n"
        "\\pard\\sa200\\sl276\\slmult1\\qc\\cf1\\b\\f0\\fs22\\lang9 Red title\\cf0\\b0\\par\r\n"
        "\\pard\\li720\\sa200\\sl276\\slmult1\\f2\\fs20 Na\\'efve \\i caf\\u233?\\i0  and "
        "{\\field{\\*\\fldinst{HYPERLINK \"http://x\"}}{\\fldrslt{\\ul\\cf2 link}}}\\f2\\fs20  "
        "end\\par\r\n"
        "{\\pntext\\f0\\'B7\\tab}\\pard{\\*\\pn\\pnlvlblt\\pnf0{\\pntxtb\\'B7}}\\fi-360\\li720 "
        "item\\par\r\n}\r\n\0trailing";
    const ZoRichText document = Read(std::string_view(rtf, std::strlen(rtf) + 9));
    EXPECT_EQ(document.Text(), "Red title\nNa\xC3\xAFve caf\xC3\xA9 and link end\nitem\n\n");

    const ZoTextFormat& title = FormatOf(document, "Red");
    EXPECT_TRUE(title.IsBold());
    EXPECT_EQ(title.Colour(), ZoRGB(255, 0, 0));
    EXPECT_EQ(title.FontName(), "Calibri");
    EXPECT_EQ(title.PointSize(), 11);
    EXPECT_EQ(title.Alignment(), ZoTextAlignment::Centre);

    const ZoTextFormat& body = FormatOf(document, "Na");
    EXPECT_EQ(body.FontName(), "Arial");
    EXPECT_EQ(body.PointSize(), 10);
    EXPECT_EQ(body.LeftIndent(), 48);
    EXPECT_EQ(body.Alignment(), ZoTextAlignment::Left);
    EXPECT_FALSE(body.IsBold());
    EXPECT_EQ(body.Colour(), 0u);
    EXPECT_TRUE(FormatOf(document, "caf").IsItalic());
    EXPECT_FALSE(FormatOf(document, " and").IsItalic());

    const ZoTextFormat& link = FormatOf(document, "link");
    EXPECT_TRUE(link.IsUnderlined());
    EXPECT_EQ(link.Colour(), ZoRGB(0, 77, 187));
    EXPECT_FALSE(FormatOf(document, " end").IsUnderlined());

    EXPECT_EQ(FormatOf(document, "item").FirstIndent(), -24);  // -360 twips
}

TEST(RtfReader, RejectsTextThatIsNotRtf) {
    for (const char* text : {"", "{\\rt", "hello", "{ \\rtf1 x}", "\\rtf1"}) {
        ZoRichText document;
        document.InsertText(0, "kept");
        EXPECT_FALSE(document.SetRTF(text)) << text;
        EXPECT_EQ(document.Text(), "\n");
        document.InsertText(0, "kept");
        document.SelectAll();
        EXPECT_FALSE(document.ReadRTF(text, false));
        EXPECT_EQ(document.Text(), "kept\n");
    }
}

TEST(RtfReader, InsertsAtTheSelectionWithoutIdsWhenAsked) {
    ZoRichText document;
    document.InsertText(0, "Hello world");
    document.SetSelection(6, 11);
    ASSERT_TRUE(document.ReadRTF("{\\rtf1 {\\b\\id7 there}, you}", true));
    EXPECT_EQ(document.Text(), "Hello there, you\n");
    EXPECT_TRUE(FormatOf(document, "there").IsBold());
    EXPECT_TRUE(FormatOf(document, "there").Ids().empty());
    EXPECT_FALSE(FormatOf(document, ", you").IsBold());
    EXPECT_EQ(document.SelectionStart(), 16u);
}

TEST(RtfReader, DamagedInputKeepsWhatCouldBeRead) {
    struct Case {
        std::string_view rtf;
        const char* text;
    };
    const Case cases[] = {
        {"{\\rtf1 abc", "abc"},
        {"{\\rtf1 {\\b abc", "abc"},
        {"{\\rtf1 abc}}}} more", "abc"},
        {"{\\rtf1 abc\\", "abc"},
        {"{\\rtf1 abc\\par", "abc"},
        {"{\\rtf1 abc\\'e", "abce"},
        {"{\\rtf1 abc\\'zz def}", "abc def"},
        {"{\\rtf1 \\fs99999999999999999999 abc\\li-99999999999999 x}", "abcx"},
        {"{\\rtf1 {\\fonttbl{\\f0 Arial", ""},
        {"{\\rtf1 {\\colortbl\\red", ""},
        {"{\\rtf1 {\\*\\junk {{{", ""},
        {"{\\rtf1 \\u", ""},
        {"{\\rtf1 \\bin999999 abc}", ""},
        {std::string_view("{\\rtf1 a\0b}", 11), "a"},
        {"{\\rtf1 \x01\x02\xff\xfe}", "\x01\x02\xC3\xBF\xC3\xBE"},
    };
    for (const auto& c : cases) {
        ZoRichText document;
        EXPECT_TRUE(document.SetRTF(c.rtf)) << c.rtf;
        EXPECT_EQ(document.Text(), ZoString(c.text) + "\n") << c.rtf;
    }
}

TEST(RtfReader, DeepNestingIsBounded) {
    ZoString rtf = "{\\rtf1 a";
    for (int i = 0; i < 100000; ++i) {
        rtf += "{\\b ";
    }
    rtf += "deep";
    const ZoRichText document = Read(rtf);
    EXPECT_EQ(document.Text(), "a\n");

    ZoString shallow = "{\\rtf1 ";
    for (size_t i = 0; i < kZoRtfMaxGroupDepth - 2; ++i) {
        shallow += "{";
    }
    shallow += "x";
    EXPECT_EQ(Read(shallow).Text(), "x\n");
}
