#include <gtest/gtest.h>
#include <QLabel>
#include <QSettings>
#include <QTest>
#include <QTextDocument>
#include <QToolButton>

#include "app/app_test_support.h"
#include "app/gradient_picker.h"
#include "app/object_dialog.h"
#include "app/rich_text_edit.h"
#include "app/text_object_child.h"
#include "document/file.h"
#include "effects/register_effects.h"
#include "objects/graduated_object.h"
#include "objects/solid_object.h"
#include "objects/text_object.h"
#include "text/rich_text.h"

namespace {

constexpr COLORREF kPurple = ZoRGB(90, 20, 140);

class ObjectDialogTest : public ::testing::Test {
  protected:
    ObjectDialogTest() { TeskRegisterEffects(); }

    TeskObjectDialogContext Context() { return {{320, 240}, 0xFFFFFF, &settings_.Get(), nullptr}; }
    /// Opens the dialog on the document's foreground object; `edit` fills it
    /// in and says whether OK is pressed.
    bool Change(const std::function<bool(TeskObjectDialog&)>& edit) {
        return TeskChangeObject(
            document_,
            [&](QDialog& dialog) { return edit(static_cast<TeskObjectDialog&>(dialog)); },
            Context(), nullptr, document_.GetForegroundObject(),
            QStringLiteral("Foreground Object Properties"), "Foreground Object",
            [this](ZoAutoPtr<TeskObject>& object, ZoEditor::ZoEditTransaction* transaction) {
                document_.SetForegroundObject(object, transaction);
            });
    }
    static void Type(TeskObjectDialog& dialog, const char* text) {
        TeskRichTextEdit* editor = dialog.findChild<TeskRichTextEdit*>();
        ASSERT_NE(editor, nullptr);
        QTest::keyClicks(editor, QString::fromUtf8(text));
    }
    static ZoString TextOf(const TeskObject* object) {
        return static_cast<const TeskTextObject*>(object)->GetRichText().Text();
    }

    AppTest::TempSettings settings_;
    TeskFile document_;
};

TEST_F(ObjectDialogTest, EveryKindKeepsItsOwnWorkingCopyAndOkReturnsOnlyTheChosenOne) {
    ZoAutoPtr<TeskObject> solid = std::make_unique<TeskSolidObject>(kPurple);
    document_.SetForegroundObject(solid, nullptr);
    ASSERT_TRUE(Change([](TeskObjectDialog& dialog) {
        EXPECT_EQ(dialog.GetCurrentKind(), kTeskSolidObject);
        dialog.SetKind(kTeskTextObject);
        Type(dialog, "Hello");
        dialog.SetKind(kTeskGraduatedObject);
        static_cast<TeskGraduatedObject*>(dialog.GetWorkingObject(kTeskGraduatedObject))
            ->AddColour();
        dialog.SetKind(kTeskImageObject);
        dialog.SetKind(kTeskTextObject);
        Type(dialog, " there");
        EXPECT_EQ(TextOf(dialog.GetWorkingObject(kTeskTextObject)), "Hello there\n");
        EXPECT_EQ(static_cast<TeskGraduatedObject*>(dialog.GetWorkingObject(kTeskGraduatedObject))
                      ->GetColours()
                      .size(),
                  3u);
        EXPECT_EQ(
            static_cast<TeskSolidObject*>(dialog.GetWorkingObject(kTeskSolidObject))->GetColour(),
            kPurple);
        return true;
    }));
    EXPECT_EQ(TextOf(document_.GetForegroundObject()), "Hello there\n");
    EXPECT_EQ(document_.GetUndoList().GetCount(), 1);
    EXPECT_EQ(document_.GetUndoList().GetName(0), "Foreground Object");
    ASSERT_TRUE(document_.GetUndoList().Undo());
    ASSERT_EQ(document_.GetForegroundObject()->GetType(), kTeskSolidObject);
    EXPECT_EQ(static_cast<TeskSolidObject*>(document_.GetForegroundObject())->GetColour(), kPurple);
}

TEST_F(ObjectDialogTest, CancelLeavesTheObjectAndTheHistoryAlone) {
    ZoAutoPtr<TeskObject> text = std::make_unique<TeskTextObject>();
    static_cast<TeskTextObject&>(*text).GetRichText().InsertText(0, "Kept");
    document_.SetForegroundObject(text, nullptr);
    const TeskObject* before = document_.GetForegroundObject();
    EXPECT_FALSE(Change([](TeskObjectDialog& dialog) {
        EXPECT_EQ(dialog.GetCurrentKind(), kTeskTextObject);
        Type(dialog, "Lost ");
        dialog.SetKind(kTeskNoObject);
        return false;
    }));
    EXPECT_EQ(document_.GetForegroundObject(), before);
    EXPECT_EQ(TextOf(before), "Kept\n");
    EXPECT_EQ(document_.GetUndoList().GetCount(), 0);
}

TEST_F(ObjectDialogTest, AnEmptyHolderOpensOnTheNoteAndOkKeepsItEmpty) {
    ASSERT_TRUE(Change([](TeskObjectDialog& dialog) {
        EXPECT_EQ(dialog.GetCurrentKind(), kTeskNoObject);
        EXPECT_TRUE(dialog.findChild<QLabel*>("noObjectNote")->isVisibleTo(&dialog));
        dialog.setGeometry(130, 140, 900, 640);
        dialog.accept();
        return true;
    }));
    EXPECT_EQ(document_.GetForegroundObject(), nullptr);
    EXPECT_EQ(document_.GetUndoList().GetCount(), 1);
    // The dialog comes back where it was closed.
    TeskObjectDialog again(nullptr, QStringLiteral("Again"), Context());
    EXPECT_EQ(again.geometry(), QRect(130, 140, 900, 640));
}

TEST(GradientPicker, MarkersMoveBetweenTheirNeighboursAndTheBarAddsStops) {
    struct Case {
        const char* what;
        std::function<void(TeskGradientPicker&)> act;
        std::vector<int32_t> positions;
        size_t selected;
    };
    auto drag = [](TeskGradientPicker& picker, int from, int to) {
        const int y = picker.height() - 4;
        QTest::mousePress(&picker, Qt::LeftButton, {}, {picker.PositionToX(from), y});
        QTest::mouseMove(&picker, {picker.PositionToX(to), y});
        QTest::mouseRelease(&picker, Qt::LeftButton, {}, {picker.PositionToX(to), y});
    };
    const Case cases[] = {
        {"drag the middle stop",
         [&](TeskGradientPicker& p) { drag(p, 127, 200); },
         {0, 200, 255},
         1},
        {"a stop stops at its neighbour",
         [&](TeskGradientPicker& p) { drag(p, 0, 200); },
         {127, 127, 255},
         0},
        {"double-click the bar",
         [](TeskGradientPicker& p) {
             QTest::mouseDClick(&p, Qt::LeftButton, {}, {p.PositionToX(64), p.height() / 3});
         },
         {0, 64, 127, 255},
         1},
        {"Delete removes the selected stop",
         [](TeskGradientPicker& p) { QTest::keyClick(&p, Qt::Key_Delete); },
         {0, 255},
         1},
        {"arrow keys move it",
         [](TeskGradientPicker& p) { QTest::keyClick(&p, Qt::Key_Left, Qt::ShiftModifier); },
         {0, 117, 255},
         1},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        TeskGraduatedObject object;
        ASSERT_TRUE(object.AddColour());  // selected, at 127
        TeskGradientPicker picker(object);
        picker.resize(300, 40);
        picker.show();
        c.act(picker);
        EXPECT_EQ(object.GetPositions(), c.positions);
        EXPECT_EQ(object.GetColours().size(), c.positions.size());
        EXPECT_EQ(object.GetSelected(), c.selected);
    }
}

TEST(TextPage, ButtonsFormatTheSelectionAndTheWholeText) {
    struct Case {
        const char* button;
        std::function<bool(const TeskTextObject&)> holds;
    };
    const Case cases[] = {
        {"bold", [](const TeskTextObject& t) { return t.GetRichText().FormatAt(2)->IsBold(); }},
        {"superscript",
         [](const TeskTextObject& t) { return t.GetRichText().FormatAt(2)->IsSuperscript(); }},
        {"alignCentre",
         [](const TeskTextObject& t) {
             return t.GetRichText().FormatAt(2)->Alignment() == ZoTextAlignment::Centre;
         }},
        {"verticalBottom",
         [](const TeskTextObject& t) {
             return t.GetVerticalAlignment() == ZoVerticalAlignment::Bottom;
         }},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.button);
        TeskTextObject text;
        text.GetRichText().InsertText(0, "abcdef");
        int changes = 0;
        TeskTextObjectChild page(text, {320, 240}, [&changes] { ++changes; });
        QTextCursor cursor = page.GetEditor()->textCursor();
        cursor.setPosition(1);
        cursor.setPosition(4, QTextCursor::KeepAnchor);
        page.GetEditor()->setTextCursor(cursor);
        page.findChild<QToolButton*>(QString::fromUtf8(c.button))->click();
        EXPECT_TRUE(c.holds(text));
        EXPECT_GT(changes, 0);
        EXPECT_FALSE(text.GetRichText().FormatAt(5)->IsBold()) << "outside the selection";
        EXPECT_EQ(text.GetRichText().Text(), "abcdef\n");
    }
}

TEST(RichTextBridge, QtsEditorShowsAndGivesBackOurText) {
    const char* cases[] = {
        "{\\rtf1\\ansi{\\fonttbl{\\f0 Arial;}}\\f0\\fs24 plain}",
        "{\\rtf1\\ansi{\\fonttbl{\\f0 Arial;}}{\\colortbl\\red0\\green0\\blue0;\\red200\\green10"
        "\\blue30;}\\f0\\fs36\\b bold \\b0\\i\\cf1 red italic\\i0\\ul under\\par\\qc centred}",
        "{\\rtf1\\ansi{\\fonttbl{\\f0 Arial;}}\\f0\\fs20\\li300\\fi-150 indented\\par "
        "\\pard\\qr\\dn4 low\\up4 high}",
        "{\\rtf1\\ansi{\\fonttbl{\\f0 Arial;}}\\f0\\fs24 one\\par\\par three\\par}",
    };
    for (const char* rtf : cases) {
        SCOPED_TRACE(rtf);
        ZoRichText original;
        ASSERT_TRUE(original.SetRTF(rtf));
        QTextDocument document;
        TeskRichTextToDocument(original, document);
        ZoRichText back;
        TeskDocumentToRichText(document, back);
        EXPECT_EQ(back.Text(), original.Text());
        EXPECT_TRUE(back.SameContent(original));
        ZoString written, expected;
        back.GetRTF(written);
        original.GetRTF(expected);
        EXPECT_EQ(written, expected);
    }
}

}  // namespace
