#include <gtest/gtest.h>
#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QSpinBox>
#include <QSplitter>
#include <QTest>
#include <cmath>

#include "app/app_settings.h"
#include "app/app_test_support.h"
#include "app/colour_button.h"
#include "app/editor_app.h"
#include "app/editor_window.h"
#include "app/effect_bar.h"
#include "app/link_url_dialog.h"
#include "app/movie_properties_dialog.h"
#include "app/object_dialog.h"
#include "effects/register_effects.h"

namespace {

class EditorWindowTest : public ::testing::Test {
  protected:
    EditorWindowTest()
        : app_(settings_.Get(), prompts_, {"/nonexistent/help", "/nonexistent/samples"}) {}

    TeskFile& Document() { return app_.GetDocument(); }
    TeskEffect& Effect() { return *Document().GetEffect(0); }
    template <typename T>
    T* Find(TeskEditorDlg& window, const char* name) {
        T* child = window.findChild<T*>(QString::fromUtf8(name));
        EXPECT_NE(child, nullptr) << name;
        return child;
    }
    std::string Text(TeskEditorDlg& window, const char* action) {
        return Find<QAction>(window, action)->text().toStdString();
    }

    AppTest::TempSettings settings_;
    AppTest::ScriptedPrompts prompts_;
    TeskEditorApp app_;
};

TEST(EffectTimingFields, ClampTheTimesTheUserTyped) {
    struct Case {
        int32_t duration, startHold, finishHold;
        int32_t endTime, storedStart, storedFinish;
    };
    const Case cases[] = {
        {12500, 0, 0, 10000, 0, 0},    // 12.5 s is longer than any effect
        {-1, 0, 0, 100, 0, 0},         // a negative duration becomes the shortest
        {0, 120000, -5, 0, 99900, 0},  // holds stay within 0 ... 99.9 s
        {1500, 500, 99900, 1500, 500, 99900},
    };
    TeskEffect::Timing current;
    current.startTime = 300;
    current.timingReserved = 7;
    for (const Case& c : cases) {
        const TeskEffect::Timing t =
            TeskTimingFromFields(current, c.duration, c.startHold, c.finishHold);
        EXPECT_EQ(t.startTime, 0);
        EXPECT_EQ(t.endTime, c.endTime) << c.duration;
        EXPECT_EQ(t.startHold, c.storedStart) << c.startHold;
        EXPECT_EQ(t.finishHold, c.storedFinish) << c.finishHold;
        EXPECT_EQ(t.timingReserved, 7);
    }
}

TEST_F(EditorWindowTest, TimeFieldsRecordOneNamedChangeThatUndoAndRedoShow) {
    TeskEditorDlg window(app_);
    auto* duration = Find<QDoubleSpinBox>(window, "duration");
    EXPECT_EQ(Text(window, "undo"), "Can't Undo");
    EXPECT_DOUBLE_EQ(duration->value(), Effect().GetTiming().GetLength() / 1000.0);

    duration->setValue(3.5);
    EXPECT_EQ(Effect().GetTiming().GetLength(), 3500);
    EXPECT_EQ(Document().GetUndoList().GetCount(), 1);
    EXPECT_EQ(Text(window, "undo"), "&Undo Edit Effect Time");
    EXPECT_TRUE(window.isWindowModified());

    window.ApplyTimeFields();  // nothing changed: nothing recorded
    EXPECT_EQ(Document().GetUndoList().GetCount(), 1);

    Find<QAction>(window, "undo")->trigger();
    EXPECT_DOUBLE_EQ(duration->value(), 2.0);
    EXPECT_EQ(Text(window, "redo"), "&Redo Edit Effect Time");
    Find<QAction>(window, "redo")->trigger();
    EXPECT_DOUBLE_EQ(duration->value(), 3.5);

    // The window follows a new document as well.
    prompts_.answers = {TeskUserPrompts::Answer::kNo};
    Find<QAction>(window, "fileNew")->trigger();
    EXPECT_DOUBLE_EQ(duration->value(), 2.0);
    EXPECT_EQ(Text(window, "undo"), "Can't Undo");
    EXPECT_FALSE(window.isWindowModified());
}

TEST_F(EditorWindowTest, TimeFieldsTakeWhatIsTypedBeyondTheirSpinRange) {
    struct Case {
        const char* field;
        const char* typed;  // empty: one step up instead
        int32_t stored;     // the field's milliseconds after it was left
    };
    const Case cases[] = {
        {"duration", "-1", 100},  // a negative duration becomes the shortest
        {"duration", "12.5", 10000}, {"duration", "9.95", 9950},
        {"duration", "", 10000},  // a step stops at the end of the spin range
        {"startHold", "120", 99900}, {"finishHold", "-2", 0},
    };
    TeskEditorDlg window(app_);
    const auto stored = [this](std::string_view field) {
        const TeskEffect::Timing& t = Effect().GetTiming();
        return field == "duration"    ? t.GetLength()
               : field == "startHold" ? t.startHold
                                      : t.finishHold;
    };
    for (const Case& c : cases) {
        auto* field = Find<QDoubleSpinBox>(window, c.field);
        field->selectAll();
        QTest::keyClicks(field, c.typed);
        *c.typed ? QTest::keyClick(field, Qt::Key_Enter) : field->stepUp();
        EXPECT_EQ(stored(c.field), c.stored) << c.field << " " << c.typed;
        EXPECT_EQ(std::lround(field->value() * 1000), c.stored) << "shows what is stored";
    }

    // Holding an arrow key steps on and on, but records one change.
    auto* finish = Find<QDoubleSpinBox>(window, "finishHold");
    const int history = Document().GetUndoList().GetCount();
    for (int i = 0; i < 3; ++i)
        QTest::keyPress(finish, Qt::Key_Up);
    EXPECT_EQ(Effect().GetTiming().finishHold, 0) << "nothing while the key is down";
    QTest::keyRelease(finish, Qt::Key_Up);
    EXPECT_EQ(Effect().GetTiming().finishHold, 300);
    EXPECT_EQ(Document().GetUndoList().GetCount(), history + 1);
}

TEST_F(EditorWindowTest, ChoosingAnEffectReplacesItAndKeepsItsTiming) {
    TeskEditorDlg window(app_);
    auto* name = Find<QLabel>(window, "effectName");
    const QString before = name->text();
    Find<QDoubleSpinBox>(window, "startHold")->setValue(1.0);
    const int crossFade = 0;
    ASSERT_GT(TeskEffect::GetCount(), crossFade);
    window.OnEffectChosen(crossFade);
    window.OnEffectChosen(crossFade);  // the same type again is still a fresh copy
    EXPECT_EQ(Effect().GetInfo().guid, TeskEffect::GetInfo(crossFade).guid);
    EXPECT_EQ(Effect().GetTiming().startHold, 1000);
    EXPECT_EQ(name->text().toStdString(), TeskEffect::GetInfo(crossFade).name);
    EXPECT_EQ(Text(window, "undo"), "&Undo Change Effect");
    EXPECT_EQ(Document().GetUndoList().GetCount(), 3);

    Document().GetUndoList().Undo();
    Document().GetUndoList().Undo();
    EXPECT_EQ(name->text(), before);
    window.OnEffectChosen(TeskEffect::GetCount());  // out of range: nothing
    EXPECT_EQ(Document().GetUndoList().GetPosition(), 1);
}

TEST_F(EditorWindowTest, MoviePropertiesRecordOneTransactionNamedAfterWhatChanged) {
    struct Case {
        const char* what;
        std::function<void(QDialog&)> edit;
        int added;
        std::string name;
    };
    const Case cases[] = {
        {"nothing", [](QDialog&) {}, 0, ""},
        {"frame rate", [](QDialog& d) { d.findChild<QSpinBox*>("frameRate")->setValue(24); }, 1,
         "Edit Frame Rate"},
        {"colour",
         [](QDialog& d) {
             d.findChild<TeskColourButton*>("backgroundColour")->SetColour(0x336699);
         },
         1, "Edit Background Colour"},
        {"size and clip",
         [](QDialog& d) {
             d.findChild<QSpinBox*>("width")->setValue(400);
             d.findChild<QCheckBox*>("clipToMovieSize")->setChecked(true);
         },
         1, "Edit Movie Properties"},
    };
    for (const Case& c : cases) {
        const int before = Document().GetUndoList().GetCount();
        TeskMoviePropertiesDialog dialog(Document(), app_.GetHelp());
        c.edit(dialog);
        dialog.Apply(Document());
        ASSERT_EQ(Document().GetUndoList().GetCount(), before + c.added) << c.what;
        if (c.added) {
            EXPECT_EQ(Document().GetUndoList().GetName(before), c.name) << c.what;
        }
    }
    EXPECT_EQ(Document().GetFrameRate(), 24);
    EXPECT_EQ(Document().GetBackgroundColour(), 0x336699u);
    EXPECT_EQ(Document().GetWidth(), 400);
    EXPECT_TRUE(Document().GetClipToMovieSize());
}

TEST_F(EditorWindowTest, LinkDialogShowsOtherTargetsAsNamedWindowsAndRecordsEditLinkURL) {
    Document().SetLinkTarget("_Blank", nullptr);
    Document().SetLinkEnabled(true, nullptr);
    TeskLinkURLDialog dialog(Document(), app_.GetHelp());
    EXPECT_EQ(dialog.findChild<QComboBox*>("linkTarget")->currentText(), "<Named Window>");
    EXPECT_EQ(dialog.findChild<QLineEdit*>("windowName")->text(), "_Blank");
    EXPECT_TRUE(dialog.findChild<QLineEdit*>("windowName")->isEnabled());
    EXPECT_TRUE(dialog.findChild<QLabel*>("explanation")->text().contains("'_Blank'"));

    dialog.Apply(Document());  // all three unchanged
    EXPECT_EQ(Document().GetUndoList().GetCount(), 0);

    dialog.findChild<QCheckBox*>("linkEnabled")->setChecked(false);
    EXPECT_FALSE(dialog.findChild<QLineEdit*>("linkURL")->isEnabled());
    dialog.Apply(Document());
    ASSERT_EQ(Document().GetUndoList().GetCount(), 1);
    EXPECT_EQ(Document().GetUndoList().GetName(0), "Edit Link URL");
    EXPECT_FALSE(Document().GetLinkEnabled());
    EXPECT_EQ(Document().GetLinkTarget(), "_Blank");
}

TEST_F(EditorWindowTest, TheFileMenuListsRecentProjectsNewestFirst) {
    TeskEditorDlg window(app_);
    QMenu* file = window.menuBar()->actions().front()->menu();
    const auto recentTexts = [&] {
        emit file->aboutToShow();
        std::vector<std::string> texts;
        for (QAction* action : file->actions()) {
            if (action->isVisible() && action->text().contains("Recent File"))
                texts.push_back(action->isEnabled() ? "enabled" : "disabled");
            else if (action->property("recentIndex").isValid())
                texts.push_back(action->text().toStdString());
        }
        return texts;
    };
    EXPECT_EQ(recentTexts(), std::vector<std::string>{"disabled"});

    for (const char* name : {"First.vmb", "Second.vmb"}) {
        prompts_.chosenPath = settings_.Folder() / name;
        app_.OnFileSaveAs();
    }
    const std::string second = (settings_.Folder() / "Second.vmb").string();
    const std::string first = (settings_.Folder() / "First.vmb").string();
    EXPECT_EQ(recentTexts(), (std::vector<std::string>{"&1 " + second, "&2 " + first}));
}

TEST_F(EditorWindowTest, PlacementIsKeptFromOneRunToTheNext) {
    {
        TeskEditorDlg window(app_);
        EXPECT_EQ(window.size(),
                  QSize(TeskEditorDlg::kDesignedWidth, TeskEditorDlg::kDesignedHeight));
        window.setGeometry(0, 20, 800, 550);
        window.GetDivider()->setSizes({350, 450});
        window.SaveWindowSettings();
    }
    const TeskWindowPlacement stored =
        TeskReadWindowPlacement(settings_.Get(), kTeskMainWindowSection);
    EXPECT_EQ(stored.height, 550);
    EXPECT_EQ(stored.divider, 350);

    TeskEditorDlg window(app_);
    EXPECT_EQ(window.geometry(), QRect(0, 20, 800, 550));
    EXPECT_EQ(window.GetDivider()->sizes().value(0), 350);
}

}  // namespace

namespace {

TEST_F(EditorWindowTest, MovieWideObjectsAreEditedInTheObjectDialogAsOneStep) {
    TeskEditorDlg window(app_);
    struct Case {
        const char* action;
        const char* title;
        const char* undoName;
        std::function<const TeskObject*()> stored;
    };
    const Case cases[] = {
        {"foregroundObject", "Foreground Object Properties", "Edit Foreground Object",
         [&] { return Document().GetForegroundObject(); }},
        {"backgroundObject", "Background Object Properties", "Edit Background Object",
         [&] { return Document().GetBackgroundObject(); }},
    };
    for (const Case& c : cases) {
        QString title;
        prompts_.dialogHandler = [&](QDialog& dialog) {
            title = dialog.windowTitle();
            static_cast<TeskObjectDialog&>(dialog).SetKind(kTeskSolidObject);
            return true;
        };
        Find<QAction>(window, c.action)->trigger();
        EXPECT_EQ(title.toStdString(), c.title);
        ASSERT_NE(c.stored(), nullptr) << c.action;
        EXPECT_EQ(c.stored()->GetType(), kTeskSolidObject);
        EXPECT_EQ(Text(window, "undo"), std::string("&Undo ") + c.undoName);

        const int steps = Document().GetUndoList().GetCount();
        prompts_.dialogHandler = [](QDialog&) { return false; };
        Find<QAction>(window, c.action)->trigger();
        EXPECT_EQ(Document().GetUndoList().GetCount(), steps) << "Cancel changes nothing";
    }
}

}  // namespace
