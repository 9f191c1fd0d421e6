#include <gtest/gtest.h>
#include <QComboBox>
#include <QLabel>
#include <QSettings>
#include <QSlider>
#include <QSpinBox>
#include <QTest>
#include <QTextDocument>
#include <QToolButton>
#include <QWhatsThis>

#include "app/app_test_support.h"
#include "app/colour_button.h"
#include "app/gradient_picker.h"
#include "app/help_topics.h"
#include "app/object_dialog.h"
#include "app/rich_text_edit.h"
#include "document/file.h"
#include "document/json_field_writer.h"
#include "effects/register_effects.h"
#include "objects/graduated_object.h"
#include "objects/image_object.h"
#include "objects/solid_object.h"
#include "objects/text_object.h"
#include "text/rich_text.h"

namespace {

using AppTest::Child;

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
    AppTest::TempSettings settings_;
    TeskFile document_;
};

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

/// Every stored field of `object`, for comparing objects.
std::string FieldsOf(const TeskObject* object) {
    TeskJson json;
    TeskJsonFieldWriter writer(json);
    ZoAutoPtr<TeskObject> copy = object ? object->Clone() : nullptr;
    writer.Object("object", copy);
    return json.dump();
}

/// One kind of object: an object unlike the defaults, what its page must
/// show of it, and an edit a user makes on the page.
struct KindCase {
    const char* page;
    std::function<ZoAutoPtr<TeskObject>()> make;
    std::function<bool(QWidget& page)> shows;
    std::function<void(QWidget& page)> edit;
};

std::vector<KindCase> KindCases() {
    return {
        {"imagePage",
         [] {
             auto image = std::make_unique<TeskImageObject>();
             image->SetPlacement(kTeskFixedBottomCentre);
             image->SetUseTransparent(true);
             image->SetAutoTransparent(false);
             image->SetTransparentColour(kPurple);
             image->SetTolerance(40);
             return image;
         },
         [](QWidget& page) {
             return Child<QComboBox>(page, "placement").currentIndex() == kTeskFixedBottomCentre &&
                    Child<QSlider>(page, "tolerance").value() == 40 &&
                    Child<TeskColourButton>(page, "transparentColour").isEnabled() &&
                    Child<TeskColourButton>(page, "transparentColour").GetColour() == kPurple;
         },
         [](QWidget& page) { Child<QComboBox>(page, "placement").setCurrentIndex(kTeskTiled); }},
        {"graduatedPage",
         [] {
             auto gradient = std::make_unique<TeskGraduatedObject>();
             gradient->AddColour();
             gradient->SetAngle(-60);  // shown as 300, stored as it was
             return gradient;
         },
         [](QWidget& page) {
             return Child<QSpinBox>(page, "angle").value() == 300 &&
                    Child<QToolButton>(page, "linearGradient").isChecked() &&
                    Child<QSpinBox>(page, "stopPosition").value() == 127;
         },
         [](QWidget& page) { Child<QToolButton>(page, "radialGradient").click(); }},
        {"textPage",
         [] {
             auto text = std::make_unique<TeskTextObject>();
             text->GetRichText().SetRTF(
                 "{\\rtf1\\ansi{\\fonttbl{\\f0 Arial;}}\\f0\\fs36\\b Bold\\b0  plain}");
             text->SetBackColour(kPurple);
             text->SetVerticalAlignment(ZoVerticalAlignment::Centre);
             return text;
         },
         [](QWidget& page) {
             return Child<QToolButton>(page, "bold").isChecked() &&
                    Child<QToolButton>(page, "verticalCentre").isChecked() &&
                    Child<TeskColourButton>(page, "backColour").GetColour() == kPurple;
         },
         [](QWidget& page) {
             QTest::keyClicks(&Child<TeskRichTextEdit>(page, "richText"), QStringLiteral("Hi "));
         }},
        {"solidPage", [] { return std::make_unique<TeskSolidObject>(kPurple); },
         [](QWidget& page) {
             return Child<TeskColourButton>(page, "solidColour").GetColour() == kPurple;
         },
         [](QWidget& page) {
             emit Child<TeskColourButton>(page, "solidColour").colourChosen(ZoRGB(1, 2, 3));
         }},
    };
}

// Each kind's page shows the object, hands back an equal one when left
// alone, drops edits on Cancel and stores them on OK as one undoable step.
TEST_F(ObjectDialogTest, EachKindsPageShowsTheObjectAndStoresEditsOnlyOnOk) {
    for (const KindCase& c : KindCases()) {
        SCOPED_TRACE(c.page);
        ZoAutoPtr<TeskObject> object = c.make();
        const std::string original = FieldsOf(object.get());
        document_.SetForegroundObject(object, nullptr);
        const int steps = document_.GetUndoList().GetCount();
        auto open = [this, &c](bool edit, bool ok) {
            return Change([&c, edit, ok](TeskObjectDialog& dialog) {
                dialog.show();
                QWidget& page = *dialog.findChild<QWidget*>(QString::fromUtf8(c.page));
                EXPECT_TRUE(page.isVisible() && c.shows(page));
                if (edit)
                    c.edit(page);
                return ok;
            });
        };
        ASSERT_TRUE(open(false, true));
        EXPECT_EQ(FieldsOf(document_.GetForegroundObject()), original);
        const TeskObject* before = document_.GetForegroundObject();
        EXPECT_FALSE(open(true, false));
        EXPECT_EQ(document_.GetForegroundObject(), before);
        EXPECT_EQ(FieldsOf(before), original);
        ASSERT_TRUE(open(true, true));
        const std::string edited = FieldsOf(document_.GetForegroundObject());
        EXPECT_NE(edited, original);
        ASSERT_EQ(document_.GetUndoList().GetCount(), steps + 2);
        EXPECT_EQ(document_.GetUndoList().GetName(steps + 1), "Foreground Object");
        ASSERT_TRUE(document_.GetUndoList().Undo());
        EXPECT_EQ(FieldsOf(document_.GetForegroundObject()), original);
        ASSERT_TRUE(document_.GetUndoList().Redo());
        EXPECT_EQ(FieldsOf(document_.GetForegroundObject()), edited);
    }
}

TEST_F(ObjectDialogTest, EditsOfEveryKindSurviveSwitchingAmongTheKinds) {
    const std::vector<KindCase> cases = KindCases();
    const int32_t kinds[] = {kTeskImageObject, kTeskGraduatedObject, kTeskTextObject,
                             kTeskSolidObject};
    ASSERT_TRUE(Change([&](TeskObjectDialog& dialog) {
        dialog.show();
        std::vector<std::string> edited;
        for (size_t i = 0; i < cases.size(); ++i) {
            dialog.SetKind(kinds[i]);
            cases[i].edit(*dialog.findChild<QWidget*>(QString::fromUtf8(cases[i].page)));
            edited.push_back(FieldsOf(dialog.GetWorkingObject(kinds[i])));
        }
        for (int32_t kind : {kTeskNoObject, kTeskSolidObject, kTeskImageObject})
            dialog.SetKind(kind);
        for (size_t i = 0; i < cases.size(); ++i) {
            dialog.SetKind(kinds[i]);
            EXPECT_EQ(FieldsOf(dialog.GetWorkingObject(kinds[i])), edited[i]) << cases[i].page;
        }
        dialog.SetKind(kTeskImageObject);
        return true;
    }));
    ASSERT_NE(document_.GetForegroundObject(), nullptr);
    EXPECT_EQ(document_.GetForegroundObject()->GetType(), kTeskImageObject);
    EXPECT_EQ(static_cast<TeskImageObject*>(document_.GetForegroundObject())->GetPlacement(),
              kTeskTiled);
    EXPECT_EQ(document_.GetUndoList().GetCount(), 1);
}

TEST(ObjectDialogHelp, ShiftF1AsksWhatsThisBesideAPageWithTextsOfItsOwn) {
    AppTest::ScriptedPrompts prompts;
    TeskHelpViewer help(std::filesystem::path(VIMBO_SOURCE_DIR) / "resources" / "help", prompts);
    TeskObjectDialogContext context;
    context.help = &help;
    TeskObjectDialog dialog(nullptr, QStringLiteral("Object Properties"), context);
    dialog.SetKind(kTeskTextObject);
    dialog.show();
    dialog.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
    QTest::keyClick(&dialog, Qt::Key_F1, Qt::ShiftModifier);
    EXPECT_TRUE(QWhatsThis::inWhatsThisMode());
    QWhatsThis::leaveWhatsThisMode();
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
