#include <gtest/gtest.h>
#include <QCheckBox>
#include <QDialog>
#include <QLineEdit>
#include <QStandardPaths>
#include <QUrl>
#include <fstream>

#include "app/app_settings.h"
#include "app/app_test_support.h"
#include "app/editor_app.h"
#include "app/support_mail.h"
#include "document/json_project.h"
#include "support/swf_reader.h"

namespace {

using Answer = TeskUserPrompts::Answer;

std::filesystem::path Documents() {
    return QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation).toStdString();
}

std::vector<uint8_t> ReadBytes(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

void WriteText(const std::filesystem::path& path, const std::string& text) {
    std::ofstream(path, std::ios::binary) << text;
}

class EditorAppTest : public ::testing::Test {
  protected:
    EditorAppTest()
        : app_(settings_.Get(), prompts_,
               {std::filesystem::path(VIMBO_SOURCE_DIR) / "resources" / "help",
                settings_.Folder() / "samples"}) {}

    TeskFile& Document() { return app_.GetDocument(); }
    std::filesystem::path Temp(const char* name) const { return settings_.Folder() / name; }

    void ChangeWidth(int32_t width) {
        auto transaction = std::make_unique<TeskFile::Transaction>("Edit Movie Width");
        Document().GetUndoList().Begin(transaction.get());
        Document().SetWidth(width, transaction.get());
        Document().GetUndoList().Add(transaction);
    }

    AppTest::TempSettings settings_;
    AppTest::ScriptedPrompts prompts_;
    TeskEditorApp app_;
};

TEST_F(EditorAppTest, NewAsksAboutUnsavedChangesAndCancelKeepsTheDocument) {
    ChangeWidth(300);
    prompts_.answers = {Answer::kCancel};
    app_.OnFileNew();
    EXPECT_EQ(prompts_.questions, std::vector<std::string>{"Do you want to save your changes?"});
    EXPECT_EQ(Document().GetWidth(), 300);

    prompts_.answers = {Answer::kNo};
    app_.OnFileNew();
    EXPECT_EQ(Document().GetWidth(), 182);
    EXPECT_FALSE(Document().IsModified());

    app_.OnFileNew();  // nothing to save: no question
    EXPECT_EQ(prompts_.questions.size(), 2u);
}

TEST_F(EditorAppTest, SaveAsStartsInTheLastFolderAndOpenBringsTheProjectBack) {
    ChangeWidth(320);
    const std::filesystem::path project = Temp("Intro.vmb");
    prompts_.chosenPath = project;
    ASSERT_TRUE(app_.OnFileSave());  // never saved: goes to Save As
    EXPECT_EQ(prompts_.offeredFolder, Documents());
    EXPECT_TRUE(std::filesystem::exists(project));
    EXPECT_FALSE(Document().IsModified());
    EXPECT_EQ(TeskReadDialogFolder(settings_.Get(), kTeskSaveAsFolderValue), settings_.Folder());

    prompts_.answers = {Answer::kNo};
    ChangeWidth(500);
    app_.OnFileNew();
    prompts_.chosenPath = project;
    app_.OnFileOpen();
    EXPECT_EQ(Document().GetWidth(), 320);
    EXPECT_EQ(Document().GetFilename(), project.string());
    EXPECT_EQ(TeskReadDialogFolder(settings_.Get(), kTeskOpenFolderValue), settings_.Folder());
    EXPECT_EQ(app_.GetRecentFiles().GetEntries(), std::vector<ZoString>{project.string()});
    EXPECT_TRUE(prompts_.messages.empty());
}

TEST_F(EditorAppTest, AFailedOpenExplainsAndKeepsTheCurrentDocument) {
    const std::filesystem::path corrupt = Temp("corrupt.vmb");
    WriteText(corrupt, "TSK1 but not a project at all");
    const std::filesystem::path missing = Temp("missing.vmb");
    ChangeWidth(300);
    EXPECT_FALSE(app_.Open(corrupt.string()));
    EXPECT_FALSE(app_.Open(missing.string()));
    EXPECT_EQ(
        prompts_.messages,
        (std::vector<std::string>{"An error occurred opening the file '" + corrupt.string() + "'",
                                  "The file '" + missing.string() + "' does not exist"}));
    EXPECT_EQ(Document().GetWidth(), 300);
    EXPECT_TRUE(Document().GetUndoList().CanUndo());
    EXPECT_TRUE(app_.GetRecentFiles().GetEntries().empty());
}

TEST_F(EditorAppTest, PublishWritesTheMovieAndPageAndAsksBeforeOverwriting) {
    const std::filesystem::path base = Temp("out") / "movie";
    prompts_.dialogHandler = [&](QDialog& dialog) {
        dialog.findChild<QLineEdit*>("location")->setText(QString::fromStdString(base.string()));
        dialog.findChild<QCheckBox*>("embedHTML")->setChecked(true);
        return true;
    };
    app_.OnPublish();
    const std::filesystem::path swf = Temp("out") / "movie.swf";
    const std::filesystem::path html = Temp("out") / "movie.html";
    ASSERT_TRUE(std::filesystem::exists(html));
    const SwfTest::Validation validation = SwfTest::ValidateSwf(ReadBytes(swf));
    EXPECT_TRUE(validation.problems.empty()) << validation.problems.front();
    EXPECT_EQ(Document().GetPublishSettings().GetLocation(), swf.string());
    EXPECT_FALSE(Document().IsModified());

    std::filesystem::remove(swf);
    prompts_.overwrite = false;
    prompts_.doNotAskAgain = true;
    app_.OnQuickPublish();
    EXPECT_EQ(prompts_.questions, std::vector<std::string>{"File '" + html.string() +
                                                           "' already exists. Do you want to "
                                                           "overwrite it?"});
    EXPECT_FALSE(std::filesystem::exists(swf));
    EXPECT_FALSE(Document().GetPublishSettings().GetConfirmOverwrite());
}

TEST_F(EditorAppTest, QuickPublishWithoutALocationOffersOneInTheDocumentsFolder) {
    QString offered;
    prompts_.dialogHandler = [&](QDialog& dialog) {
        offered = dialog.findChild<QLineEdit*>("location")->text();
        return false;
    };
    app_.OnQuickPublish();
    EXPECT_EQ(offered.toStdString(), (Documents() / "Untitled" / "Untitled.swf").string());
    EXPECT_TRUE(Document().GetPublishSettings().GetLocation().empty());
}

TEST_F(EditorAppTest, SamplesAreListedByNameAndOpenUntitled) {
    std::filesystem::create_directories(Temp("samples"));
    TeskFile sample;
    sample.SetWidth(240, nullptr);
    WriteText(Temp("samples") / "b_sample.json", TeskDocumentToJson(sample));
    WriteText(Temp("samples") / "a_sample.json", TeskDocumentToJson(sample));
    WriteText(Temp("samples") / "notes.txt", "not a sample");
    const std::vector<std::filesystem::path> samples = app_.GetSamples();
    ASSERT_EQ(samples.size(), 2u);
    EXPECT_EQ(samples[0].filename(), "a_sample.json");

    EXPECT_TRUE(app_.OpenSample(samples[1]));
    EXPECT_EQ(Document().GetWidth(), 240);
    EXPECT_TRUE(Document().GetFilename().empty());
}

TEST_F(EditorAppTest, EveryHelpTopicTheEditorNamesHasAPage) {
    std::vector<std::string> topics = {"::/html/Publishing/Publish.htm",
                                       "::/html/General/MovieProperties.htm",
                                       "::/html/publishing/hyperlink.htm",
                                       "::/index.html",
                                       "::/topics.html",
                                       "::/search.html"};
    topics.push_back(Document().GetEffect(0)->GetInfo().helpTopic);
    for (int i = 0; i < TeskEffect::GetCount(); ++i)
        topics.push_back(TeskEffect::GetInfo(i).helpTopic);
    for (const std::string& topic : topics)
        app_.GetHelp().ShowTopic(topic);
    app_.GetHelp().ShowTopic("::/html/NoSuchPage.htm");
    EXPECT_EQ(prompts_.opened.size(), topics.size());
}

TEST(SupportMail, AddressesSupportWithTheReferenceAndSystemFacts) {
    const QUrl url(
        QString::fromStdString(TeskSupportMailUrl(0xABCD, TeskSystemInfoBlock("Linux"))));
    EXPECT_EQ(url.scheme(), "mailto");
    EXPECT_EQ(url.path().toStdString(), kTeskSupportAddress);
    const QString decoded = QUrl::fromPercentEncoding(url.query(QUrl::FullyEncoded).toUtf8());
    EXPECT_TRUE(decoded.contains("subject=Technical Support Question (0000ABCD)"))
        << decoded.toStdString();
    EXPECT_TRUE(decoded.contains("Question: <Please enter your technical support question here>"));
    EXPECT_TRUE(decoded.contains("Operating System: Linux"));
}

}  // namespace
