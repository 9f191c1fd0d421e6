#include <gtest/gtest.h>
#include <QCheckBox>
#include <QComboBox>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QGroupBox>
#include <QRadioButton>
#include <QSpinBox>
#include <functional>

#include <QPushButton>
#include <QTabBar>
#include <QToolButton>

#include "app/angle_dial.h"
#include "app/app_test_support.h"
#include "app/editor_app.h"
#include "app/editor_window.h"
#include "app/lighting_control.h"
#include "app/number_fields.h"
#include "app/object_slot.h"
#include "app/pages/effect_property_page.h"
#include "app/slider_field.h"
#include "effects/cross_fade_effect.h"
#include "effects/cube_effect.h"
#include "effects/curl_up_effect.h"
#include "effects/explode_effect.h"
#include "effects/lens_effect.h"
#include "effects/morph_effect.h"
#include "effects/register_effects.h"
#include "effects/rotate_3d_effect.h"
#include "effects/spiral_effect.h"
#include "effects/test_effect.h"
#include "effects/twist_effect.h"
#include "effects/wave_effect.h"

namespace {

// What a control shows, as a number: positions of lists, 0/1 for check
// boxes and radio groups (the checked button's position), milliseconds.
int Shown(QWidget& control) {
    if (auto* slider = qobject_cast<TeskSliderField*>(&control))
        return slider->GetValue();
    if (auto* dial = qobject_cast<TeskAngleDial*>(&control))
        return dial->GetAngle();
    if (auto* list = qobject_cast<QComboBox*>(&control))
        return list->currentIndex();
    if (auto* check = qobject_cast<QCheckBox*>(&control))
        return check->isChecked();
    if (auto* time = qobject_cast<TeskTimeField*>(&control))
        return time->GetMilliseconds();
    if (auto* number = qobject_cast<QSpinBox*>(&control))
        return number->value();
    const QList<QRadioButton*> radios = control.findChildren<QRadioButton*>();
    for (int i = 0; i < radios.size(); ++i) {
        if (radios[i]->isChecked())
            return i;
    }
    return -1;
}

// Changes the control the way a user's edit does.
void Edit(QWidget& control, int value) {
    if (auto* slider = qobject_cast<TeskSliderField*>(&control))
        slider->GetSlider()->setValue(value);
    else if (auto* dial = qobject_cast<TeskAngleDial*>(&control))
        dial->findChild<QSpinBox*>()->setValue(value);
    else if (auto* list = qobject_cast<QComboBox*>(&control))
        list->setCurrentIndex(value);
    else if (auto* check = qobject_cast<QCheckBox*>(&control))
        check->setChecked(value != 0);
    else if (auto* time = qobject_cast<TeskTimeField*>(&control))
        time->SetMilliseconds(value);
    else if (auto* number = qobject_cast<QSpinBox*>(&control))
        number->setValue(value);
    else
        control.findChildren<QRadioButton*>().at(value)->setChecked(true);
}

template <typename E>
std::function<int(const TeskEffect&)> Stored(int (*read)(const E&)) {
    return [read](const TeskEffect& effect) { return read(dynamic_cast<const E&>(effect)); };
}

class PropertyPageTest : public ::testing::Test {
  protected:
    PropertyPageTest() { TeskRegisterEffects(); }

    /// Makes the document's effect one of registry type `name` and opens its page.
    TeskEffectPropertyPage& Open(const char* name) {
        for (int i = 0; i < TeskEffect::GetCount(); ++i) {
            if (TeskEffect::GetInfo(i).name == name) {
                ZoAutoPtr<TeskEffect> effect;
                TeskEffect::Create(i, effect);
                document_.ReplaceEffect(effect, 0, nullptr);
            }
        }
        EXPECT_EQ(document_.GetEffect(0)->GetInfo().name, name);
        page_ = TeskCreatePropertyPage(*document_.GetEffect(0), context_);
        EXPECT_NE(page_, nullptr) << name;
        page_->SetApplyDelay(1);
        return *page_;
    }

    /// Runs the event loop until the page has applied its edits.
    void WaitForApply() {
        QElapsedTimer clock;
        clock.start();
        while (page_->IsApplyPending() && clock.elapsed() < 2000)
            QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
        EXPECT_FALSE(page_->IsApplyPending());
    }

    ZoEditor::ZoUndoList& History() { return document_.GetUndoList(); }
    std::string LastStep() { return History().GetName(History().GetPosition() - 1); }

    TeskFile document_;
    AppTest::ScriptedPrompts prompts_;
    AppTest::TempSettings settings_;
    TeskPageContext context_{document_, prompts_, &settings_.Get(), nullptr};
    std::unique_ptr<TeskEffectPropertyPage> page_;
};

struct PageCase {
    const char* effect;
    const char* control;  // its caption on the page
    int edited;           // what the user sets, as Shown() reads it
    const char* step;     // the name of the step in the history
    std::function<int(const TeskEffect&)> stored;
    int storedAfter;  // the setting once applied
};

TEST_F(PropertyPageTest, EveryPageAppliesAnEditAsOneNamedStepThatUndoShows) {
    using Curl = TeskCurlUpEffect;
    const PageCase cases[] = {
        {"Cross Fade", "Return to start", 1, "Cross Fade Return to Start",
         Stored<TeskCrossFadeEffect>([](auto& e) { return int{e.GetReturnToStart()}; }), 1},
        {"Cross Fade", "Hold Time", 1500, "Cross Fade Return Hold Time",
         Stored<TeskCrossFadeEffect>([](auto& e) { return e.GetReturnHold(); }), 1500},
        {"Cube", "Scale", 120, "Scale Size",
         Stored<TeskCubeEffect>([](auto& e) { return e.GetScaleSize(); }), 120},
        {"Cube", "Rotate Z", 300, "Rotate Z Angle",
         Stored<TeskCubeEffect>([](auto& e) { return e.GetRotateZ(); }), 300},
        // Reverse Curl clears the forwards bit and keeps the roll-up style.
        {"Curl Up", "Reverse Curl", 1, "Edit CurlUp Style",
         Stored<Curl>([](auto& e) { return static_cast<int>(e.GetStyle()); }), Curl::kRollUp},
        {"Curl Up", "Curl Style", 0, "Edit CurlUp Style",
         Stored<Curl>([](auto& e) { return static_cast<int>(e.GetStyle()); }), Curl::kForwards},
        {"Curl Up", "Radius of Curl", 40, "Edit CurlUp Radius",
         Stored<Curl>([](auto& e) { return e.GetRadius(); }), 40},
        // "Implode Inwards" changes type and direction: two settings at once.
        {"Explode", "Style", 3, "Edit Explode Effect",
         Stored<TeskExplodeEffect>([](auto& e) { return 2 * e.GetExplodeType() + e.GetInwards(); }),
         3},
        {"Explode", "Swirl", -250, "Edit Explode Swirl",
         Stored<TeskExplodeEffect>([](auto& e) { return e.GetSwirl(); }), -250},
        {"Lens", "Lens Radius", 150, "Edit Lens Radius",
         Stored<TeskLensEffect>([](auto& e) { return e.GetLensRadius(); }), 3000},
        {"Lens", "Lens Path", 9, "Edit Lens Path",
         Stored<TeskLensEffect>([](auto& e) { return e.GetPath().GetNodeCount(); }), 13},
        {"Lens", "At end of path", 1, "Edit Lens Path At End",
         Stored<TeskLensEffect>([](auto& e) { return e.GetPathAtEnd(); }), 1},
        {"Morph", "Hold Time", 2500, "Edit Morph Return Hold Time",
         Stored<TeskMorphEffect>([](auto& e) { return e.GetReturnHoldTime(); }), 2500},
        {"Rotate 3D", "Direction of Axis", 90, "Direction of Axis",
         Stored<TeskRotate3DEffect>([](auto& e) { return e.GetAxisDirection(); }), 90},
        {"Spiral", "Style", 4, "Edit Spiral Style",
         Stored<TeskSpiralEffect>([](auto& e) { return e.GetSpiralStyle(); }), 4},
        {"Spiral", "Spin Speed", 5, "Edit Spiral Speed",
         Stored<TeskSpiralEffect>([](auto& e) { return e.GetSpiralSpeed(); }), 5},
        {"Test Effect", "Choose Test Effect", 5, "Edit Test Type",
         Stored<TeskTestEffect>([](auto& e) { return e.GetTestType(); }), 5},
        {"Test Effect", "Parameter2", 70, "Edit Parameter 2",
         Stored<TeskTestEffect>([](auto& e) { return e.GetParameter2(); }), 70},
        {"Twist", "Twist Angle", 45, "Twist Angle",
         Stored<TeskTwistEffect>([](auto& e) { return e.GetTwistAngle(); }), 45},
        {"Twist", "Style", 1, "Twist Style",
         Stored<TeskTwistEffect>([](auto& e) { return e.GetTwistStyle(); }), 1},
        {"Wave", "Amplitude", 700, "Edit Amplitude",
         Stored<TeskWaveEffect>([](auto& e) { return e.GetAmplitude(); }), 700},
        {"Wave", "Direction", 359, "Edit Direction",
         Stored<TeskWaveEffect>([](auto& e) { return e.GetDirection(); }), 359},
    };
    for (const PageCase& c : cases) {
        SCOPED_TRACE(std::string(c.effect) + " / " + c.control);
        TeskEffectPropertyPage& page = Open(c.effect);
        auto* control = page.findChild<QWidget*>(QString::fromUtf8(c.control));
        ASSERT_NE(control, nullptr);
        const int shownBefore = Shown(*control);
        const int storedBefore = c.stored(page.GetEffect());
        ASSERT_NE(shownBefore, c.edited);

        Edit(*control, c.edited);
        EXPECT_EQ(History().GetCount(), 0) << "applied before the pause";
        WaitForApply();
        ASSERT_EQ(History().GetCount(), 1);
        EXPECT_EQ(LastStep(), c.step);
        EXPECT_EQ(c.stored(page.GetEffect()), c.storedAfter);

        History().Undo();
        EXPECT_EQ(c.stored(page.GetEffect()), storedBefore);
        EXPECT_EQ(Shown(*control), shownBefore);
        History().Clear();
    }
}

TEST_F(PropertyPageTest, SeveralEditsMakeOneStepNamedAfterThePageAndNoEditMakesNone) {
    TeskEffectPropertyPage& page = Open("Wave");
    page.Apply();
    EXPECT_EQ(History().GetCount(), 0);

    Edit(*page.findChild<QWidget*>(QStringLiteral("Wavelength")), 200);
    Edit(*page.findChild<QWidget*>(QStringLiteral("Style")), 2);
    WaitForApply();
    ASSERT_EQ(History().GetCount(), 1);
    EXPECT_EQ(LastStep(), "Edit Wave Effect");
    const auto& wave = dynamic_cast<const TeskWaveEffect&>(page.GetEffect());
    EXPECT_EQ(wave.GetWavelength(), 200);
    EXPECT_EQ(wave.GetWaveStyle(), TeskWaveEffect::kRiseAndFall);
}

TEST_F(PropertyPageTest, LightingAppliesItsFieldsTogetherAndTheCheckBoxAtOnce) {
    TeskEffectPropertyPage& page = Open("Twist");
    auto& twist = dynamic_cast<TeskTwistEffect&>(page.GetEffect());
    auto* lighting = page.findChild<TeskLightingControl*>();
    ASSERT_NE(lighting, nullptr);
    auto slider = [&](int row) {
        return lighting->findChildren<TeskSliderField*>().at(row)->GetSlider();
    };
    slider(0)->setValue(80);  // brightness
    lighting->Apply();
    EXPECT_EQ(LastStep(), "Edit Brightness");
    slider(1)->setValue(10);  // contrast
    lighting->findChildren<TeskAngleDial*>().at(1)->findChild<QSpinBox*>()->setValue(60);
    lighting->Apply();
    EXPECT_EQ(LastStep(), "Edit Lighting");
    EXPECT_EQ(twist.GetLighting().contrast, 10);
    EXPECT_EQ(twist.GetLighting().lightAngle, 60);
    lighting->Apply();
    EXPECT_EQ(History().GetCount(), 2) << "nothing changed, nothing recorded";

    lighting->findChild<QCheckBox*>()->setChecked(false);
    EXPECT_EQ(LastStep(), "Edit Use Lighting");
    EXPECT_FALSE(twist.GetLighting().useLighting);
    History().Undo();
    EXPECT_TRUE(lighting->findChild<QCheckBox*>()->isChecked());
}

TEST_F(PropertyPageTest, ObjectButtonsAndReverseActAtOnceInStepsOfTheirOwn) {
    TeskEffectPropertyPage& page = Open("Cross Fade");
    auto& fade = dynamic_cast<TeskCrossFadeEffect&>(page.GetEffect());
    const TeskObject* end = fade.GetEndObject();
    auto objectSlots = page.findChildren<TeskObjectSlot*>();
    ASSERT_EQ(objectSlots.size(), 2);

    prompts_.dialogHandler = [](QDialog&) { return false; };
    objectSlots[0]->Change();
    EXPECT_EQ(History().GetCount(), 0) << "Cancel changes nothing";
    prompts_.dialogHandler = [](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), "Cross Fade End Object Properties");
        return true;
    };
    objectSlots[1]->Change();
    EXPECT_EQ(LastStep(), "Edit end object");
    EXPECT_NE(fade.GetEndObject(), end);

    QPushButton* reverse = nullptr;
    for (QPushButton* button : page.findChildren<QPushButton*>()) {
        if (button->text() == "&Reverse")
            reverse = button;
    }
    ASSERT_NE(reverse, nullptr);
    // Undo gives back the very state, so the objects are the same ones.
    const TeskObject* start = fade.GetStartObject();
    const TeskObject* newEnd = fade.GetEndObject();
    reverse->click();
    EXPECT_EQ(LastStep(), "Reverse Cross Fade");
    EXPECT_EQ(History().GetCount(), 2);
    EXPECT_NE(fade.GetStartObject(), start);
    History().Undo();
    EXPECT_EQ(fade.GetStartObject(), start);
    EXPECT_EQ(fade.GetEndObject(), newEnd);
}

TEST_F(PropertyPageTest, CubeFacesBorrowAnotherFacesObjectUntilTheyGetTheirOwn) {
    TeskEffectPropertyPage& page = Open("Cube");
    auto& cube = dynamic_cast<TeskCubeEffect&>(page.GetEffect());
    page.findChild<QTabBar*>()->setCurrentIndex(TeskCubeEffect::kFront);
    auto* sameAs = page.findChild<QComboBox*>();
    ASSERT_EQ(sameAs->count(), 1);
    EXPECT_EQ(sameAs->currentText(), "Same as Top");

    prompts_.dialogHandler = [](QDialog&) { return true; };
    page.findChild<TeskObjectSlot*>()->Change();
    EXPECT_EQ(History().GetCount(), 1);
    EXPECT_NE(cube.GetFace(TeskCubeEffect::kFront).object, nullptr);
    EXPECT_EQ(cube.GetFace(TeskCubeEffect::kFront).sameAs, TeskCubeEffect::kOwnObject);
    EXPECT_EQ(sameAs->currentIndex(), -1) << "a face with its own object borrows none";

    // The bottom face may now borrow from the top or the front.
    page.findChild<QTabBar*>()->setCurrentIndex(TeskCubeEffect::kBottom);
    ASSERT_EQ(sameAs->count(), 2);
    sameAs->setCurrentIndex(sameAs->findText("Same as Front"));
    for (QToolButton* button : page.findChildren<QToolButton*>()) {
        if (button->toolTip() == "Right Direction")
            button->click();
    }
    WaitForApply();
    EXPECT_EQ(LastStep(), "Cube Effect");
    EXPECT_EQ(cube.GetFace(TeskCubeEffect::kBottom).sameAs, TeskCubeEffect::kFront);
    EXPECT_EQ(cube.GetFace(TeskCubeEffect::kBottom).objectDirection, 3);
    EXPECT_EQ(cube.GetShownObject(TeskCubeEffect::kBottom),
              cube.GetFace(TeskCubeEffect::kFront).object.get());
}

TEST_F(PropertyPageTest, UndoWhileAnEditWaitsShowsTheDocumentAndDropsTheEdit) {
    TeskEffectPropertyPage& page = Open("Wave");
    auto* amplitude = page.findChild<QWidget*>(QStringLiteral("Amplitude"));
    Edit(*amplitude, 300);
    WaitForApply();
    page.SetApplyDelay(60000);
    Edit(*amplitude, 900);
    ASSERT_TRUE(page.IsApplyPending());
    History().Undo();
    EXPECT_FALSE(page.IsApplyPending());
    EXPECT_EQ(Shown(*amplitude), 100);
    page.Apply();
    EXPECT_EQ(History().GetPosition(), 0) << "the dropped edit is not applied later";
}

TEST_F(PropertyPageTest, StoredValuesTheControlsCannotShowSurviveAnEditOfAnotherSetting) {
    struct Case {
        const char* effect;
        std::function<void(TeskEffect&)> store;  // without undo, as a loaded file would
        const char* control;
        int edited;
        const char* step;
        std::function<bool(const TeskEffect&)> kept;
    };
    TeskAnimationPath unusual = TeskAnimationPath::Preset(0);
    unusual.InsertNode(1, TeskAnimationPath::kLine, {0.5, 0.9});
    const Case cases[] = {
        {"Curl Up",
         [](TeskEffect& e) { dynamic_cast<TeskCurlUpEffect&>(e).SetStyle(0x1201, nullptr); },
         "Radius of Curl", 30, "Edit CurlUp Radius",
         [](const TeskEffect& e) {
             return dynamic_cast<const TeskCurlUpEffect&>(e).GetStyle() == 0x1201;
         }},
        {"Explode",
         [](TeskEffect& e) { dynamic_cast<TeskExplodeEffect&>(e).SetExplodeType(5, nullptr); },
         "Spread", 20, "Edit Explode Spread",
         [](const TeskEffect& e) {
             return dynamic_cast<const TeskExplodeEffect&>(e).GetExplodeType() == 5;
         }},
        {"Lens",
         [&](TeskEffect& e) {
             auto& lens = dynamic_cast<TeskLensEffect&>(e);
             lens.SetPath(unusual, nullptr);
             lens.SetLensRadius(4010, nullptr);
         },
         "Lens Power", -40, "Edit Lens Power",
         [&](const TeskEffect& e) {
             auto& lens = dynamic_cast<const TeskLensEffect&>(e);
             return lens.GetPath() == unusual && lens.GetLensRadius() == 4010;
         }},
        {"Wave", [](TeskEffect& e) { dynamic_cast<TeskWaveEffect&>(e).SetWaveStyle(7, nullptr); },
         "Amplitude", 500, "Edit Amplitude",
         [](const TeskEffect& e) {
             return dynamic_cast<const TeskWaveEffect&>(e).GetWaveStyle() == 7;
         }},
        {"Spiral",
         [](TeskEffect& e) { dynamic_cast<TeskSpiralEffect&>(e).SetSpiralSpeed(250, nullptr); },
         "Style", 2, "Edit Spiral Style",
         [](const TeskEffect& e) {
             return dynamic_cast<const TeskSpiralEffect&>(e).GetSpiralSpeed() == 250;
         }},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.effect);
        TeskEffectPropertyPage& page = Open(c.effect);
        c.store(page.GetEffect());
        page.Reload();
        Edit(*page.findChild<QWidget*>(QString::fromUtf8(c.control)), c.edited);
        WaitForApply();
        ASSERT_EQ(History().GetCount(), 1);
        EXPECT_EQ(LastStep(), c.step);
        EXPECT_TRUE(c.kept(page.GetEffect()));
        History().Clear();
    }
}

TEST(PropertyArea, ShowsThePageOfTheSelectedEffectThroughChangesUndoAndNew) {
    AppTest::TempSettings settings;
    AppTest::ScriptedPrompts prompts;
    TeskEditorApp app(settings.Get(), prompts, {"/nonexistent/help", "/nonexistent/samples"});
    TeskFile& document = app.GetDocument();
    TeskEditorDlg window(app);
    auto showsSelectedEffect = [&] {
        auto pages = window.findChildren<TeskEffectPropertyPage*>();
        return pages.size() == 1 && pages[0]->IsShowing(document.GetEffect(0));
    };
    EXPECT_TRUE(showsSelectedEffect());
    for (int i = 0; i < TeskEffect::GetCount(); ++i) {
        if (TeskEffect::GetInfo(i).name == "Morph")
            window.OnEffectChosen(i);
    }
    EXPECT_EQ(document.GetEffect(0)->GetInfo().name, "Morph");
    EXPECT_TRUE(showsSelectedEffect());
    // The morph page's mesh editor follows the document on its own; New
    // closes the page while the document attaches its observers again.
    document.New();
    EXPECT_TRUE(showsSelectedEffect());
    window.OnEffectChosen(0);
    document.GetUndoList().Undo();
    EXPECT_TRUE(showsSelectedEffect());
}

}  // namespace
