#include "publish/publisher.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "platform/temp_directory.h"
#include "publish/cross_fade_document.h"
#include "support/swf_reader.h"

namespace {

namespace fs = std::filesystem;

// Answers as a person would have been told to, and remembers what it saw.
struct ScriptedUi : TeskPublishUi {
    OverwriteAnswer answer{true, false};
    bool openSucceeds = true;
    std::vector<ZoString> questions;
    std::vector<ZoString> messages;
    std::vector<fs::path> opened;

    OverwriteAnswer AskOverwrite(const ZoString& question, const std::vector<fs::path>&) override {
        questions.push_back(question);
        return answer;
    }
    void MovieNotWritten(const ZoString& reason) override { messages.push_back(reason); }
    void ShowMessage(const ZoString& message) override { messages.push_back(message); }
    bool Open(const fs::path& path) override {
        opened.push_back(path);
        return openSucceeds;
    }
};

std::string ReadAll(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

class Publisher : public ::testing::Test {
  protected:
    void SetUp() override {
        folder_ = ZoMakeTempFileName("");
        fs::create_directories(folder_ / "temp");
        doc_.file.SetFilename((folder_ / "Intro.vmb").c_str());
        Settings().SetLocation((folder_ / "Intro.swf").string());
    }
    TeskPublishSettings& Settings() { return doc_.file.GetPublishSettings(); }
    fs::path Swf() const { return folder_ / "Intro.swf"; }
    fs::path Html() const { return folder_ / "Intro.html"; }
    bool Publish() { return TeskPublisher(doc_.file, ui_, folder_ / "temp").Publish(); }
    void WriteFile(const fs::path& path, const char* text) { std::ofstream(path) << text; }

    fs::path folder_;
    CrossFadeDocument doc_;
    ScriptedUi ui_;
};

TEST_F(Publisher, WritesAValidMovieAndItsPageBesideIt) {
    Settings().embedHTML = true;
    ASSERT_TRUE(Publish());
    const std::string swf = ReadAll(Swf());
    const std::vector<uint8_t> bytes(swf.begin(), swf.end());
    EXPECT_TRUE(SwfTest::ValidateSwf(bytes).problems.empty());
    const std::string page = ReadAll(Html());
    EXPECT_NE(page.find("<title>Intro</title>"), std::string::npos);
    EXPECT_NE(page.find("VALUE=\"Intro.swf\""), std::string::npos);
    EXPECT_TRUE(ui_.questions.empty());
    EXPECT_TRUE(ui_.messages.empty());
    EXPECT_TRUE(ui_.opened.empty());
}

TEST_F(Publisher, OverwriteQuestionNamesTheExistingFiles) {
    struct Case {
        bool swfExists, htmlExists, embedHTML;
        const char* question;  // %1 the movie, %2 the page; empty: no question
    };
    const Case cases[] = {
        {true, false, true, "File '%1' already exists. Do you want to overwrite it?"},
        {false, true, true, "File '%2' already exists. Do you want to overwrite it?"},
        {true, true, true, "Files '%1' and '%2' already exist. Do you want to overwrite them?"},
        // Without a page to write, an old page is no one's concern.
        {false, true, false, ""},
    };
    for (const Case& c : cases) {
        fs::remove(Swf());
        fs::remove(Html());
        if (c.swfExists)
            WriteFile(Swf(), "old");
        if (c.htmlExists)
            WriteFile(Html(), "old");
        Settings().embedHTML = c.embedHTML;
        Settings().SetConfirmOverwrite(true);
        ui_.questions.clear();
        ASSERT_TRUE(Publish());
        ZoString expected = c.question;
        if (auto at = expected.find("%1"); at != ZoString::npos)
            expected.replace(at, 2, Swf().string());
        if (auto at = expected.find("%2"); at != ZoString::npos)
            expected.replace(at, 2, Html().string());
        if (expected.empty()) {
            EXPECT_TRUE(ui_.questions.empty()) << ui_.questions.front();
        } else {
            ASSERT_EQ(ui_.questions.size(), 1u);
            EXPECT_EQ(ui_.questions[0], expected);
        }
    }
}

TEST_F(Publisher, CancelWritesNothingButKeepsTheTickedBox) {
    Settings().embedHTML = true;
    WriteFile(Swf(), "old");
    ui_.answer = {false, true};
    EXPECT_FALSE(Publish());
    EXPECT_EQ(ReadAll(Swf()), "old");
    EXPECT_FALSE(fs::exists(Html()));
    EXPECT_FALSE(Settings().GetConfirmOverwrite());
    // Not asked again: the next publish overwrites at once.
    ui_.questions.clear();
    EXPECT_TRUE(Publish());
    EXPECT_TRUE(ui_.questions.empty());
    EXPECT_NE(ReadAll(Swf()), "old");
}

TEST_F(Publisher, MissingFoldersOnTheWayAreMade) {
    const fs::path deep = folder_ / "a" / "b" / "Movie.swf";
    Settings().SetLocation(deep.string());
    ASSERT_TRUE(Publish());
    EXPECT_TRUE(fs::is_regular_file(deep));
}

TEST_F(Publisher, TestingOpensThePageOrTheMovieOrATemporaryPage) {
    struct Case {
        bool embedHTML;
        bool openSucceeds;
        std::vector<const char*> opened;  // "swf", "html" or "test"
        std::vector<const char*> messages;
    };
    const Case cases[] = {
        {true, true, {"html"}, {}},
        {true, false, {"html"}, {"Error running published file."}},
        {false, true, {"swf"}, {}},
        {false, false, {"swf", "test"}, {"Error running published file."}},
    };
    const fs::path testPage = folder_ / "temp" / "Vimbo Test.html";
    for (const Case& c : cases) {
        Settings().embedHTML = c.embedHTML;
        Settings().testImmediately = true;
        Settings().SetConfirmOverwrite(false);
        ui_.openSucceeds = c.openSucceeds;
        ui_.opened.clear();
        ui_.messages.clear();
        ASSERT_TRUE(Publish());
        std::vector<fs::path> expected;
        for (const char* which : c.opened) {
            const std::string_view name = which;
            expected.push_back(name == "swf" ? Swf() : name == "html" ? Html() : testPage);
        }
        EXPECT_EQ(ui_.opened, expected);
        EXPECT_EQ(ui_.messages, std::vector<ZoString>(c.messages.begin(), c.messages.end()));
    }
    // The temporary page refers to the movie by its full address.
    EXPECT_NE(ReadAll(testPage).find("VALUE=\"file://" + Swf().string() + "\""), std::string::npos);
}

TEST_F(Publisher, FailuresAreReportedAndPublishingGoesOn) {
    // A folder where the page would go: the page cannot be written.
    fs::create_directories(Html());
    Settings().embedHTML = true;
    Settings().SetConfirmOverwrite(false);
    ASSERT_TRUE(Publish());
    EXPECT_EQ(ui_.messages, std::vector<ZoString>{"Error creating HTML file."});
    EXPECT_TRUE(fs::is_regular_file(Swf()));

    // A folder where the movie would go: reported, and the page still written.
    ui_.messages.clear();
    fs::remove(Html());
    fs::remove(Swf());
    fs::create_directories(Swf());
    ASSERT_TRUE(Publish());
    ASSERT_EQ(ui_.messages.size(), 1u);
    EXPECT_NE(ui_.messages[0].find("is a folder"), std::string::npos);
    EXPECT_TRUE(fs::is_regular_file(Html()));
}

TEST_F(Publisher, OfferedAndCompletedLocations) {
    TeskFile fresh;
    EXPECT_EQ(TeskOfferedPublishLocation(fresh, "/home/ann"), "/home/ann/Untitled/Untitled.swf");
    fresh.SetFilename("/work/Intro.vmb");
    EXPECT_EQ(TeskOfferedPublishLocation(fresh, "/home/ann"), "/work/Intro.swf");
    fresh.GetPublishSettings().SetLocation("/out/Chosen.swf");
    EXPECT_EQ(TeskOfferedPublishLocation(fresh, "/home/ann"), "/out/Chosen.swf");

    EXPECT_EQ(TeskCompletePublishLocation("/out/movie"), "/out/movie.swf");
    EXPECT_EQ(TeskCompletePublishLocation("/out/movie.swf"), "/out/movie.swf");
    EXPECT_EQ(TeskCompletePublishLocation("/out/movie.SWF"), "/out/movie.SWF");
}

}  // namespace
