#include <gtest/gtest.h>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QTest>
#include <QTextEdit>
#include <QToolButton>

#include "app/app_test_support.h"
#include "app/colour_button.h"
#include "app/gradient_picker.h"
#include "app/graduated_object_child.h"
#include "app/image_object_child.h"
#include "app/object_dialog.h"
#include "app/object_slot.h"
#include "app/rich_text_edit.h"
#include "app/text_object_child.h"
#include "document/file.h"
#include "media/image_path.h"
#include "objects/graduated_object.h"
#include "objects/image_object.h"
#include "objects/text_object.h"
#include "text/rich_text.h"

namespace {

using AppTest::Child;

TEST(ImagePage, EveryPlacementIsShownAndChosenByItsCode) {
    for (int32_t code = kTeskFixedTopLeft; code <= kTeskStretchKeepAspect; ++code) {
        SCOPED_TRACE(code);
        TeskImageObject shown;
        shown.SetPlacement(code);
        TeskImageObjectChild loaded(shown, [] {});
        EXPECT_EQ(Child<QComboBox>(loaded, "placement").currentIndex(), code);

        TeskImageObject chosen;
        int changes = 0;
        TeskImageObjectChild page(chosen, [&changes] { ++changes; });
        Child<QComboBox>(page, "placement").setCurrentIndex(code);
        EXPECT_EQ(chosen.GetPlacement(), code);
        EXPECT_EQ(changes, code == kTeskStretch ? 0 : 1) << "the default is Stretch";
    }
}

class ImageFileChoice : public ::testing::Test {
  protected:
    ImageFileChoice() : previous_(TeskGetProjectFolder()) {
        TeskSetProjectFolder(project_.path().toStdString());
    }
    ~ImageFileChoice() override { TeskSetProjectFolder(previous_); }

    QString InProject(const char* name) const { return project_.filePath(QString::fromUtf8(name)); }

    QTemporaryDir project_;
    ZoString previous_;
};

TEST_F(ImageFileChoice, BrowseStartsBesideThePictureAndKeepsProjectPicturesRelative) {
    struct Case {
        const char* what;
        ZoString current;
        QString answer;  // what the user picks; empty: cancelled
        QString offered;
        ZoString stored;
        bool typed = false;  // into the field rather than browsed
    };
    const Case cases[] = {
        {"a built-in picture starts in the project folder", TeskImageObject::kDefaultFileName,
         InProject("pics/a.png"), project_.path(), "pics/a.png"},
        {"a relative name starts in its own folder", "pics/a.png", "/other/c.png",
         InProject("pics"), "/other/c.png"},
        {"a picture elsewhere stays absolute", "/elsewhere/b.png", InProject("b.png"), "/elsewhere",
         "b.png"},
        {"cancelled", "/elsewhere/b.png", QString(), "/elsewhere", "/elsewhere/b.png"},
        {"typed", "/elsewhere/b.png", InProject("typed.png"), QString(), "typed.png", true},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        TeskImageObject object(c.current);
        int changes = 0;
        TeskImageObjectChild page(object, [&changes] { ++changes; });
        QString offered;
        page.SetFileChooser([&](QWidget*, const QString& folder) {
            offered = folder;
            return c.answer;
        });
        if (c.typed) {
            QLineEdit& field = Child<QLineEdit>(page, "fileName");
            field.selectAll();
            QTest::keyClicks(&field, c.answer);
            QTest::keyClick(&field, Qt::Key_Return);
        } else {
            Child<QPushButton>(page, "browse").click();
        }
        EXPECT_EQ(offered, c.offered);
        EXPECT_EQ(object.GetFileName().GetName(), c.stored);
        EXPECT_EQ(Child<QLineEdit>(page, "fileName").text().toStdString(), c.stored);
        EXPECT_EQ(changes, c.answer.isEmpty() ? 0 : 1);
    }
}

// What the page sets in the selection survives RTF and shows again on a
// page opened on that RTF.
TEST(TextPage, FormatsSurviveTheRtfRoundTripAndShowAgain) {
    constexpr COLORREF kRed = ZoRGB(200, 10, 30);
    struct Case {
        const char* what;
        std::function<void(TeskTextObjectChild&)> apply;
        std::function<bool(const ZoTextFormat&)> holds;
        std::function<bool(TeskTextObjectChild&)> shown;
        bool wholeParagraph;
    };
    auto click = [](const char* button) {
        return [button](TeskTextObjectChild& page) { Child<QToolButton>(page, button).click(); };
    };
    auto checked = [](const char* button) {
        return [button](TeskTextObjectChild& page) {
            return Child<QToolButton>(page, button).isChecked();
        };
    };
    const Case cases[] = {
        {"bold", click("bold"), [](const ZoTextFormat& f) { return f.IsBold(); }, checked("bold"),
         false},
        {"italic", click("italic"), [](const ZoTextFormat& f) { return f.IsItalic(); },
         checked("italic"), false},
        {"colour",
         [](TeskTextObjectChild& page) {
             emit Child<TeskColourButton>(page, "fontColour").colourChosen(kRed);
         },
         [](const ZoTextFormat& f) { return f.Colour() == kRed; },
         [](TeskTextObjectChild& page) {
             return Child<TeskColourButton>(page, "fontColour").GetColour() == kRed;
         },
         false},
        {"size",
         [](TeskTextObjectChild& page) {
             QLineEdit* typed = Child<QComboBox>(page, "pointSize").lineEdit();
             typed->selectAll();
             QTest::keyClicks(typed, QStringLiteral("28"));
             QTest::keyClick(typed, Qt::Key_Return);
         },
         [](const ZoTextFormat& f) { return f.PointSize() == 28; },
         [](TeskTextObjectChild& page) {
             return Child<QComboBox>(page, "pointSize").currentText() == QStringLiteral("28");
         },
         false},
        {"superscript", click("superscript"),
         [](const ZoTextFormat& f) { return f.IsSuperscript(); }, checked("superscript"), false},
        {"alignment", click("alignRight"),
         [](const ZoTextFormat& f) { return f.Alignment() == ZoTextAlignment::Right; },
         checked("alignRight"), true},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        TeskTextObject text;
        text.GetRichText().InsertText(0, "abcdef");
        TeskTextObjectChild page(text, {320, 240}, [] {});
        page.show();
        QTextCursor cursor = page.GetEditor()->textCursor();
        cursor.setPosition(1);
        cursor.setPosition(4, QTextCursor::KeepAnchor);
        page.GetEditor()->setTextCursor(cursor);
        c.apply(page);

        ZoString rtf;
        text.GetRichText().GetRTF(rtf);
        ZoRichText back;
        ASSERT_TRUE(back.SetRTF(rtf)) << rtf;
        EXPECT_EQ(back.Text(), "abcdef\n");
        EXPECT_TRUE(c.holds(*back.FormatAt(2))) << rtf;
        EXPECT_EQ(c.holds(*back.FormatAt(5)), c.wholeParagraph) << rtf;

        TeskTextObject reopened;
        ASSERT_TRUE(reopened.GetRichText().SetRTF(rtf));
        TeskTextObjectChild again(reopened, {320, 240}, [] {});
        QTextCursor inside = again.GetEditor()->textCursor();
        inside.setPosition(3);
        again.GetEditor()->setTextCursor(inside);
        EXPECT_TRUE(c.shown(again));
        ZoString unchanged;
        reopened.GetRichText().GetRTF(unchanged);
        EXPECT_EQ(unchanged, rtf) << "showing the text changes nothing";
    }
}

TEST(GraduatedPage, StopsStayBetweenOneAndEightAndInOrder) {
    struct Case {
        const char* what;
        std::vector<int32_t> start;
        size_t selected;
        std::function<void(TeskGraduatedObjectChild&)> act;
        size_t count;
        std::vector<int32_t> positions;  // empty: not checked
        bool canAdd, canRemove;
    };
    auto clicks = [](const char* button, int times) {
        return [button, times](TeskGraduatedObjectChild& page) {
            for (int i = 0; i < times; ++i)
                Child<QPushButton>(page, button).click();
        };
    };
    auto type = [](const char* digits) {
        return [digits](TeskGraduatedObjectChild& page) {
            QSpinBox& position = Child<QSpinBox>(page, "stopPosition");
            position.setFocus();
            position.selectAll();
            QTest::keyClicks(&position, QString::fromUtf8(digits));
            QTest::keyClick(&position, Qt::Key_Return);
        };
    };
    const std::vector<int32_t> eight = {0, 30, 60, 90, 120, 150, 180, 255};
    const Case cases[] = {
        {"Add stops at eight", {0, 255}, 0, clicks("addColour", 10), 8, {}, false, true},
        {"the bar adds none beyond eight", eight, 0,
         [](TeskGraduatedObjectChild& page) {
             auto& picker = Child<TeskGradientPicker>(page, "gradientPicker");
             QTest::mouseDClick(&picker, Qt::LeftButton, {}, {picker.PositionToX(220), 8});
         },
         8, eight, false, true},
        {"Remove keeps the last stop",
         {0, 127, 255},
         1,
         clicks("removeColour", 5),
         1,
         {},
         true,
         false},
        {"a typed position between the neighbours moves the stop",
         {0, 100, 150, 255},
         2,
         type("120"),
         4,
         {0, 100, 120, 255},
         true,
         true},
        {"a typed position past a neighbour is refused",
         {0, 100, 150, 255},
         2,
         type("90"),
         4,
         {0, 100, 150, 255},
         true,
         true},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        TeskGraduatedObject object;
        ASSERT_TRUE(object.SetStops(
            std::vector<ZoFlash::ZoSWFColour>(c.start.size(), {90, 90, 90, 255}), c.start));
        object.SetSelected(c.selected);
        TeskGraduatedObjectChild page(object, [] {});
        page.resize(400, 300);
        page.show();
        c.act(page);
        EXPECT_EQ(object.GetColours().size(), c.count);
        EXPECT_EQ(object.GetPositions().size(), c.count);
        EXPECT_TRUE(std::is_sorted(object.GetPositions().begin(), object.GetPositions().end()));
        if (!c.positions.empty()) {
            EXPECT_EQ(object.GetPositions(), c.positions);
        }
        EXPECT_EQ(Child<QSpinBox>(page, "stopPosition").value(),
                  object.GetPositions()[object.GetSelected()]);
        EXPECT_EQ(Child<QPushButton>(page, "addColour").isEnabled(), c.canAdd);
        EXPECT_EQ(Child<QPushButton>(page, "removeColour").isEnabled(), c.canRemove);
    }
}

TEST(ObjectSlot, AButtonWithoutPreviewOpensOnTheMovieAsItIsNow) {
    TeskFile document;
    AppTest::ScriptedPrompts prompts;
    TeskObjectSlot slot(
        document, prompts, {}, [&document] { return document.GetForegroundObject(); },
        [&document](ZoAutoPtr<TeskObject>& object, ZoEditor::ZoEditTransaction* transaction) {
            document.SetForegroundObject(object, transaction);
        },
        QStringLiteral("Cube Object Properties"), "&Change...", "Edit Face", false);
    document.SetWidth(432, nullptr);
    int wrap = 0;
    prompts.dialogHandler = [&wrap](QDialog& dialog) {
        static_cast<TeskObjectDialog&>(dialog).SetKind(kTeskTextObject);
        wrap = dialog.findChild<TeskRichTextEdit*>()->lineWrapColumnOrWidth();
        return true;
    };
    slot.GetButton()->click();
    EXPECT_EQ(wrap, 432) << "text wraps where the movie will wrap it";
    ASSERT_NE(document.GetForegroundObject(), nullptr);
    EXPECT_EQ(document.GetForegroundObject()->GetType(), kTeskTextObject);
    EXPECT_EQ(document.GetUndoList().GetCount(), 1);
    EXPECT_EQ(document.GetUndoList().GetName(0), "Edit Face");
}

}  // namespace
