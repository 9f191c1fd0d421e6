#include <gtest/gtest.h>
#include <QWidget>
#include <fstream>
#include <sstream>

#include "app/app_test_support.h"
#include "app/context_help.h"
#include "app/editor_app.h"
#include "app/editor_window.h"
#include "app/grid_combo.h"
#include "app/lighting_control.h"
#include "app/link_url_dialog.h"
#include "app/movie_properties_dialog.h"
#include "app/object_dialog.h"
#include "app/publish_dialog.h"
#include "document/file.h"
#include "effects/cube_effect.h"

namespace {

using Texts = std::map<std::string, std::string>;

TEST(ContextHelp, PopupTextFilesGiveOneTextPerTopic) {
    struct Case {
        const char* what;
        const char* file;
        Texts texts;
    };
    const Case cases[] = {
        {"lines join",
         ".topic width\nThe width\nin pixels.\n",
         {{"width", "The width in pixels."}}},
        {"two topics, CRLF",
         ".topic a\r\nFirst.\r\n\r\n.topic b\r\nSecond.\r\n",
         {{"a", "First."}, {"b", "Second."}}},
        {"paragraphs", ".topic a\nOne.\n\n\nTwo.\n", {{"a", "One.\n\nTwo."}}},
        {"text before any topic and nameless topics are dropped",
         "stray\n.topic\nlost\n.topic  a  \n  kept  \n",
         {{"a", "kept"}}},
        {"a repeated topic keeps its last text", ".topic a\nold\n.topic a\nnew", {{"a", "new"}}},
        {"empty", "", {}},
    };
    for (const Case& c : cases)
        EXPECT_EQ(TeskParsePopupTexts(c.file), c.texts) << c.what;
}

class ShippedContextHelp : public ::testing::Test {
  protected:
    ShippedContextHelp()
        : app_(settings_.Get(), prompts_,
               {std::filesystem::path(VIMBO_SOURCE_DIR) / "resources" / "help", "/nonexistent"}) {}

    /// Every topic of `textFile` names a control of `window` that shows it.
    void ExpectEveryTopicShown(QWidget& window, std::string_view textFile) {
        const std::filesystem::path path = app_.GetHelp().PageOf(textFile);
        std::ifstream in(path, std::ios::binary);
        ASSERT_TRUE(in) << path;
        std::ostringstream text;
        text << in.rdbuf();
        const Texts texts = TeskParsePopupTexts(text.str());
        EXPECT_FALSE(texts.empty()) << path;
        for (const auto& [name, popup] : texts) {
            auto* control = window.findChild<QWidget*>(QString::fromStdString(name));
            ASSERT_NE(control, nullptr) << textFile << " names " << name;
            EXPECT_EQ(control->whatsThis().toStdString(), popup) << name;
        }
    }

    AppTest::TempSettings settings_;
    AppTest::ScriptedPrompts prompts_;
    TeskEditorApp app_;
};

TEST_F(ShippedContextHelp, EveryTopicNamesAControlOfItsWindow) {
    TeskEditorDlg window(app_);
    ExpectEveryTopicShown(window, "::/Text/TeskEditorDialog.txt");
    TeskMoviePropertiesDialog properties(app_.GetDocument(), app_.GetHelp());
    ExpectEveryTopicShown(properties, "::/Text/MoviePropertiesDialog.txt");
    TeskLinkURLDialog link(app_.GetDocument(), app_.GetHelp());
    ExpectEveryTopicShown(link, "::/Text/LinkURLDialog.txt");
    TeskPublishDialog publish(app_.GetDocument(), prompts_, app_.GetHelp(), settings_.Folder());
    ExpectEveryTopicShown(publish, "::/Text/PublishDialog.txt");
}

TEST_F(ShippedContextHelp, TheObjectDialogAndEachKindsPageExplainTheirControls) {
    TeskObjectDialogContext context;
    context.help = &app_.GetHelp();
    TeskObjectDialog dialog(nullptr, QStringLiteral("Object Properties"), context);
    ExpectEveryTopicShown(dialog, "::/Text/TeskObjectDialog.txt");
    const std::tuple<int32_t, const char*, const char*> pages[] = {
        {kTeskImageObject, "imagePage", "::/Text/ImageObjectChild.txt"},
        {kTeskGraduatedObject, "graduatedPage", "::/Text/GraduatedObjectChild.txt"},
        {kTeskTextObject, "textPage", "::/Text/TextObjectChild.txt"},
        {kTeskSolidObject, "solidPage", "::/Text/SolidObjectChild.txt"},
    };
    for (const auto& [kind, name, file] : pages) {
        dialog.SetKind(kind);
        auto* page = dialog.findChild<QWidget*>(QString::fromUtf8(name));
        ASSERT_NE(page, nullptr) << name;
        ExpectEveryTopicShown(*page, file);
    }
}

TEST_F(ShippedContextHelp, TheGridAndLightingPanelsExplainTheirFields) {
    auto* effect = dynamic_cast<TeskGridEffect*>(app_.GetDocument().GetEffect(0));
    ASSERT_NE(effect, nullptr) << "a new document starts with a grid effect";
    TeskGridCombo combo(app_.GetDocument(), *effect, &app_.GetHelp());
    ExpectEveryTopicShown(*combo.GetPopup(), TeskGridCombo::kContextHelpFile);
    TeskCubeEffect cube;
    TeskLightingControl lighting(app_.GetDocument(), cube, &app_.GetHelp());
    ExpectEveryTopicShown(lighting, TeskLightingControl::kContextHelpFile);
}

}  // namespace
