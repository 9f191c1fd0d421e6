#include <gtest/gtest.h>
#include <QCheckBox>
#include <QSlider>
#include <QSpinBox>

#include "app/angle_dial.h"
#include "app/app_test_support.h"
#include "app/number_fields.h"
#include "app/slider_field.h"
#include "app/tip_of_the_day.h"

namespace {

TEST(AngleDial, ReadsDirectionsLikeACompassOnTheScreen) {
    struct Case {
        QPointF offset;  // from the centre, y down
        int degrees;
    };
    const Case cases[] = {
        {{0, -10}, 0},     {{10, 0}, 90}, {{0, 10}, 180},  {{-10, 0}, 270},  {{10, -10}, 45},
        {{-10, -10}, 315}, {{0, 0}, 0},   {{1, -1000}, 0}, {{-1, -1000}, 0}, {{-10, 10}, 225},
    };
    for (const Case& c : cases)
        EXPECT_EQ(TeskAngleFace::DegreesTowards(c.offset), c.degrees)
            << c.offset.x() << "," << c.offset.y();

    const std::pair<int64_t, int> turns[] = {{0, 0},    {359, 359}, {360, 0},   {-1, 359},
                                             {-720, 0}, {725, 5},   {-361, 359}};
    for (const auto& [degrees, normal] : turns)
        EXPECT_EQ(TeskNormalDegrees(degrees), normal) << degrees;
}

TEST(AngleDial, KeepsAStoredAngleBeyondATurnUntilTheUserTurnsIt) {
    TeskAngleDial dial;
    std::vector<int32_t> edits;
    QObject::connect(&dial, &TeskAngleDial::angleEdited, [&](int32_t a) { edits.push_back(a); });
    dial.SetAngle(-45);
    EXPECT_EQ(dial.GetAngle(), -45);
    auto* field = dial.findChild<QSpinBox*>();
    EXPECT_EQ(field->value(), 315);
    EXPECT_TRUE(edits.empty());  // showing is no edit

    field->setValue(20);
    EXPECT_EQ(dial.GetAngle(), 20);
    EXPECT_EQ(edits, std::vector<int32_t>{20});
}

TEST(SliderField, KeepsAStoredValueBeyondItsRangeUntilMoved) {
    TeskSliderField field(0, 100, "Low", "High");
    int edits = 0;
    QObject::connect(&field, &TeskSliderField::valueEdited, [&] { ++edits; });
    field.SetValue(250);
    EXPECT_EQ(field.GetValue(), 250);
    EXPECT_EQ(field.GetSlider()->value(), 100);
    EXPECT_EQ(edits, 0);
    field.GetSlider()->setValue(40);
    EXPECT_EQ(field.GetValue(), 40);
    EXPECT_EQ(edits, 1);
}

TEST(TimeField, TakesSecondsOrMilliseconds) {
    const std::pair<const char*, std::optional<double>> cases[] = {
        {"1.5", 1.5},       {"1.5 s", 1.5},         {"2 secs", 2.0},
        {"750 ms", 0.75},   {"750MS", 0.75},        {"0,25", 0.25},
        {" 3 ", 3.0},       {"abc", std::nullopt},  {"1.5 m", std::nullopt},
        {"", std::nullopt}, {"1..5", std::nullopt},
    };
    for (const auto& [text, seconds] : cases)
        EXPECT_EQ(TeskTimeField::ParseSeconds(QString::fromUtf8(text)), seconds) << text;

    TeskTimeField field(0, 10000);
    field.SetMilliseconds(1234);
    EXPECT_EQ(field.GetMilliseconds(), 1230);  // shown to a hundredth of a second
    field.SetMilliseconds(20000);
    EXPECT_EQ(field.GetMilliseconds(), 10000);
}

TEST(TipOfTheDay, ShowsTipsInTurnAcrossRunsAndRemembersTheChoice) {
    AppTest::TempSettings settings;
    EXPECT_TRUE(TeskTipOfTheDay::ShowsAtStartup(settings.Get()));
    const int count = static_cast<int>(TeskTipOfTheDay::Tips().size());
    settings.Get().setValue(TeskTipOfTheDay::kNextTipKey, count - 1);
    {
        TeskTipOfTheDay tip(settings.Get());
        EXPECT_EQ(tip.GetTipIndex(), count - 1);
        tip.findChild<QCheckBox*>()->setChecked(false);
        tip.accept();
    }
    EXPECT_FALSE(TeskTipOfTheDay::ShowsAtStartup(settings.Get()));
    TeskTipOfTheDay next(settings.Get());
    EXPECT_EQ(next.GetTipIndex(), 0);  // after the last comes the first
    next.ShowNextTip();
    EXPECT_EQ(next.GetTipIndex(), 1);

    settings.Get().setValue(TeskTipOfTheDay::kNextTipKey, count + 7);  // from a longer list
    EXPECT_EQ(TeskTipOfTheDay(settings.Get()).GetTipIndex(), 0);
}

}  // namespace
