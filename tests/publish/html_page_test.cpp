#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "publish/html_page.h"

namespace {

TEST(HtmlPage, TemplateIsCompiledInByteForByte) {
    std::ifstream file(VIMBO_SOURCE_DIR "/resources/publish_template.html", std::ios::binary);
    std::ostringstream stored;
    stored << file.rdbuf();
    EXPECT_EQ(TeskHtmlTemplate(), stored.str());
    EXPECT_NE(TeskHtmlTemplate().find("<html>\r\n<head>\r\n"), std::string_view::npos);
}

TEST(HtmlPage, FillsEveryPlaceholder) {
    const TeskHtmlPageValues values{"Intro", "Intro.swf", 0x00336699, 182, 202, true};
    const ZoString page = TeskMakeHtmlPage(values);
    EXPECT_EQ(page.find("insert_"), ZoString::npos);
    for (const char* expected : {
             "<title>Intro</title>\r\n",
             "<body bgcolor=\"#996633\">\r\n",  // red 0x99, green 0x66, blue 0x33
             "<OBJECT ID=\"Intro\" CLASSID=\"clsid:D27CDB6E-AE6D-11cf-96B8-444553540000\" "
             "WIDTH=\"182\" HEIGHT=\"202\"\r\n",
             "\t<PARAM NAME=\"movie\" VALUE=\"Intro.swf\">\r\n",
             "\t<PARAM NAME=\"menu\" VALUE=\"false\">\r\n",
             "\t<EMBED NAME=\"Intro\" SRC=\"Intro.swf\" WIDTH=\"182\" HEIGHT=\"202\"\r\n",
             "\t\tMENU=\"false\" SWLIVECONNECT=\"true\" QUALITY=\"high\"\r\n",
         }) {
        EXPECT_NE(page.find(expected), ZoString::npos) << expected;
    }
    EXPECT_NE(TeskMakeHtmlPage({"a", "a.swf", 0, 1, 1, false}).find("VALUE=\"true\""),
              ZoString::npos);
}

TEST(HtmlPage, LegalIdentifiers) {
    struct Case {
        const char* title;
        const char* identifier;
    };
    for (const Case& c :
         {Case{"Intro", "Intro"}, Case{"My Movie-2", "My_Movie_2"}, Case{"2nd take", "_2nd_take"},
          Case{"", "_"}, Case{"Caf\xC3\xA9", "Caf__"}, Case{"_x9", "_x9"}}) {
        EXPECT_EQ(TeskConvertToLegalIdentifier(c.title), c.identifier) << c.title;
    }
}

// The page's path is checked where the publishers write it.
TEST(HtmlPage, TitleIsTheProjectFilesStem) {
    EXPECT_EQ(TeskHtmlTitle(""), "Untitled");
    EXPECT_EQ(TeskHtmlTitle("relative/My.Movie.vmb"), "My.Movie");
}

}  // namespace
