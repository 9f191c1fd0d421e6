#include <gtest/gtest.h>
#include <fstream>
#include <set>

#include "app/app_test_support.h"
#include "app/editor_app.h"
#include "app/editor_window.h"
#include "app/screenshots.h"

namespace {

const std::filesystem::path kExamples = std::filesystem::path(VIMBO_SOURCE_DIR) / "examples";

std::string ReadBytes(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

TEST(Screenshots, OneExamplePerEffectTypeTheFirstByName) {
    std::map<std::string, std::string> planned;  // picture -> project
    for (const TeskScreenshotShot& shot : TeskPlanScreenshots(kExamples)) {
        const bool added =
            planned.emplace(shot.picture.string(), shot.project.filename().string()).second;
        EXPECT_TRUE(added) << shot.picture << " twice";
    }
    const std::pair<const char*, const char*> expected[] = {
        {"main-window.png", ""},
        {"effect-cross-fade.png", "cross_fade.json"},
        {"effect-rotate-3d.png", "rotate_3d.json"},
        {"effect-test-effect.png", "test_alpha_blend.json"},
        {"effect-wave.png", "picture_wave.json"},  // before wave.json
    };
    for (const auto& [picture, project] : expected)
        EXPECT_EQ(planned[picture], project) << picture;
    EXPECT_EQ(planned.size(), static_cast<size_t>(TeskEffect::GetCount()) + 1)
        << "every effect type has an example";
}

TEST(Screenshots, TheSameProjectsGiveTheSamePictures) {
    AppTest::TempSettings settings;
    AppTest::ScriptedPrompts prompts;
    TeskEditorApp app(settings.Get(), prompts, {"/nonexistent", kExamples});
    TeskEditorDlg window(app);
    window.show();
    const std::vector<TeskScreenshotShot> shots = {{{}, "new.png"},
                                                   {kExamples / "cube.json", "cube.png"}};
    const auto first = TeskTakeScreenshots(app, window, shots, settings.Folder() / "first");
    const auto second = TeskTakeScreenshots(app, window, shots, settings.Folder() / "second");
    ASSERT_EQ(first.size(), 2u);
    ASSERT_EQ(second.size(), 2u);
    for (size_t i = 0; i < first.size(); ++i)
        EXPECT_EQ(ReadBytes(first[i]), ReadBytes(second[i])) << first[i];
    EXPECT_NE(ReadBytes(first[0]), ReadBytes(first[1]));
    EXPECT_TRUE(prompts.messages.empty());
}

TEST(Screenshots, TheObjectDialogIsPicturedPerKindOnTheFirstExampleHoldingIt) {
    const std::vector<TeskObjectShot> shots = TeskPlanObjectScreenshots(kExamples);
    const std::tuple<int32_t, const char*, const char*> expected[] = {
        {kTeskImageObject, "object-image.png", "image_cross_fade.json"},
        {kTeskGraduatedObject, "object-graduated-colour.png", "cube.json"},
        {kTeskTextObject, "object-text.png", "text_cross_fade.json"},
        {kTeskSolidObject, "object-solid-colour.png", "cross_fade.json"},
        {kTeskNoObject, "object-no-object.png", ""},
    };
    ASSERT_EQ(shots.size(), std::size(expected));
    for (size_t i = 0; i < shots.size(); ++i) {
        const auto& [kind, picture, project] = expected[i];
        EXPECT_EQ(shots[i].kind, kind) << picture;
        EXPECT_EQ(shots[i].picture, picture);
        EXPECT_EQ(shots[i].project.filename(), project) << picture;
    }
}

TEST(Screenshots, TheObjectDialogGivesTheSamePictureEachTimeAndOnePerKind) {
    AppTest::TempSettings settings;
    AppTest::ScriptedPrompts prompts;
    TeskEditorApp app(settings.Get(), prompts, {"/nonexistent", kExamples});
    const std::vector<TeskObjectShot> shots = TeskPlanObjectScreenshots(kExamples);
    const auto first = TeskTakeObjectScreenshots(app, shots, settings.Folder() / "first");
    const auto second = TeskTakeObjectScreenshots(app, shots, settings.Folder() / "second");
    ASSERT_EQ(first.size(), shots.size());
    ASSERT_EQ(second.size(), shots.size());
    std::set<std::string> distinct;
    for (size_t i = 0; i < first.size(); ++i) {
        const std::string bytes = ReadBytes(first[i]);
        EXPECT_FALSE(bytes.empty()) << first[i];
        EXPECT_EQ(bytes, ReadBytes(second[i])) << first[i];
        distinct.insert(bytes);
    }
    EXPECT_EQ(distinct.size(), first.size()) << "each kind shows its own page";
    EXPECT_TRUE(prompts.messages.empty());
}

}  // namespace
