#include <gtest/gtest.h>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QLabel>
#include <QListWidget>

#include "app/app_test_support.h"
#include "app/editor_app.h"
#include "app/editor_window.h"
#include "app/effect_chooser.h"

namespace {

TEST(EffectChooser, SamplesKeepTheirAspectInAnyArea) {
    struct Case {
        QSize area, expected;
    };
    const Case cases[] = {
        {{182, 202}, {182, 202}},
        {{400, 202}, {182, 202}},
        {{91, 300}, {91, 101}},
        {{1, 1}, {1, 1}},
        {{0, 50}, {}},
    };
    for (const Case& c : cases)
        EXPECT_EQ(TeskEffectSampleSize(c.area), c.expected)
            << c.area.width() << "x" << c.area.height();
}

class EffectChooserTest : public ::testing::Test {
  protected:
    EffectChooserTest() : app_(settings_.Get(), prompts_, {"/nonexistent", "/nonexistent"}) {}

    AppTest::TempSettings settings_;
    AppTest::ScriptedPrompts prompts_;
    TeskEditorApp app_;
};

TEST_F(EffectChooserTest, TheListPlaysASampleOfTheHighlightedTypeAndChoosingChangesTheEffect) {
    TeskEditorDlg window(app_);
    window.show();
    auto* chooser = window.findChild<TeskEffectChooserCombo*>("effectChooser");
    ASSERT_NE(chooser, nullptr);
    chooser->showPopup();
    TeskEffectChooserPopup& popup = chooser->GetPopup();
    ASSERT_TRUE(popup.isVisible());
    const int current = chooser->currentIndex();
    EXPECT_EQ(popup.GetHighlighted(), current) << "opens on the effect in use";

    const int cube = TeskEffect::GetCount() - 1 == current ? 0 : current + 1;
    popup.Highlight(cube);
    const ZoMoviePlayer* sample = popup.GetSample();
    ASSERT_NE(sample, nullptr);
    EXPECT_EQ(QSize(sample->Width(), sample->Height()), QSize(182, 202));
    EXPECT_DOUBLE_EQ(sample->FrameRate(), 12.0);
    ZoAutoPtr<TeskEffect> fresh;
    TeskEffect::Create(cube, fresh);
    EXPECT_EQ(sample->FrameCount(), fresh->GetFrameCount(12)) << "the type alone, no holds";

    // Pictures are drawn one per turn of the event loop while the list is open.
    QElapsedTimer clock;
    clock.start();
    while (!popup.HasAllIcons() && clock.elapsed() < 60000)
        QCoreApplication::processEvents();
    for (int i = 0; i < chooser->count(); ++i)
        EXPECT_FALSE(chooser->itemIcon(i).isNull()) << TeskEffect::GetInfo(i).name;

    auto* list = popup.findChild<QListWidget*>("effectList");
    ASSERT_NE(list, nullptr);
    emit list->itemClicked(list->item(cube));
    EXPECT_FALSE(popup.isVisible());
    TeskFile& document = app_.GetDocument();
    EXPECT_EQ(document.GetEffect(0)->GetInfo().guid, TeskEffect::GetInfo(cube).guid);
    EXPECT_EQ(document.GetUndoList().GetName(0), "Change Effect");
    EXPECT_EQ(window.findChild<QLabel*>("effectName")->text().toStdString(),
              TeskEffect::GetInfo(cube).name);
}

}  // namespace
