// Silver files of the cube, curl up, explode and twist effects: every
// placement of every frame of a small movie, with the default settings and
// with one set of others, so that no change to what they compute passes
// unnoticed.
#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "effect_fakes.h"
#include "effects/cube_effect.h"
#include "effects/curl_up_effect.h"
#include "effects/explode_effect.h"
#include "effects/twist_effect.h"
#include "placement_record.h"
#include "silver_file.h"

namespace {

struct SilverCase {
    const char* file;
    int32_t lengthMs;
    std::function<ZoAutoPtr<TeskEffect>()> make;
};

template <typename E>
std::function<ZoAutoPtr<TeskEffect>()> Make(std::function<void(E&)> change = [](E&) {}) {
    return [change] {
        auto effect = std::make_unique<E>();
        change(*effect);
        return ZoAutoPtr<TeskEffect>(std::move(effect));
    };
}

TeskLighting ColouredLight() {
    TeskLighting lighting;
    lighting.brightness = 70;
    lighting.contrast = 30;
    lighting.lightColour = 0x40FFFF;
    lighting.darkColour = 0x800000;
    lighting.lightDirection = 300;
    lighting.lightAngle = 50;
    return lighting;
}

const SilverCase kCases[] = {
    {"cube_default.txt", 500, Make<TeskCubeEffect>()},
    {"cube_turned_faces.txt", 417, Make<TeskCubeEffect>([](TeskCubeEffect& cube) {
         effect_test::SetFixedGrid(cube, TeskGridEffect::kRectangularNESW, 1, 1);
         ZoAutoPtr<TeskObject> front = std::make_unique<TeskSolidObject>(0x00AA00);
         cube.SetFaceObject(TeskCubeEffect::kFront, front, nullptr);
         cube.SetFaceSameAs(TeskCubeEffect::kBack, TeskCubeEffect::kFront, nullptr);
         cube.SetFaceSameAs(TeskCubeEffect::kLeft, TeskCubeEffect::kOwnObject, nullptr);
         cube.SetFaceDirection(TeskCubeEffect::kRight, 2, nullptr);
         cube.SetFaceDirection(TeskCubeEffect::kTop, 1, nullptr);
         cube.SetRotateX(-20, nullptr);
         cube.SetRotateZ(10, nullptr);
         cube.SetRotateAxis(90, nullptr);
         cube.SetScaleSize(120, nullptr);
         cube.SetLighting(ColouredLight(), nullptr);
     })},
    {"curl_up_default.txt", 500, Make<TeskCurlUpEffect>([](TeskCurlUpEffect& curl) {
         effect_test::SetFixedGrid(curl, TeskGridEffect::kRectangularNWSE, 3, 2);
     })},
    {"curl_up_tear_away_underneath.txt", 500, Make<TeskCurlUpEffect>([](TeskCurlUpEffect& curl) {
         effect_test::SetFixedGrid(curl, TeskGridEffect::kTriangular, 3, 2);
         curl.SetStyle(TeskCurlUpEffect::kTearAway | TeskCurlUpEffect::kUnderneath, nullptr);
         curl.SetDirection(300, nullptr);
         curl.SetRadius(30, nullptr);
         curl.SetLighting(ColouredLight(), nullptr);
     })},
    {"explode_default.txt", 500, Make<TeskExplodeEffect>()},
    {"implode_inwards.txt", 417, Make<TeskExplodeEffect>([](TeskExplodeEffect& explode) {
         effect_test::SetFixedGrid(explode, TeskGridEffect::kRectangularNWSE, 2, 2);
         explode.SetExplodeType(TeskExplodeEffect::kImplode, nullptr);
         explode.SetInwards(1, nullptr);
         explode.SetSpread(-120, nullptr);
         explode.SetSpin(0, nullptr);
         explode.SetSwirl(450, nullptr);
         explode.SetRandomness(0, nullptr);
         explode.SetLighting(ColouredLight(), nullptr);
     })},
    {"twist_default.txt", 500, Make<TeskTwistEffect>([](TeskTwistEffect& twist) {
         effect_test::SetFixedGrid(twist, TeskGridEffect::kRectangularNWSE, 2, 3);
     })},
    {"twist_pulse.txt", 500, Make<TeskTwistEffect>([](TeskTwistEffect& twist) {
         effect_test::SetFixedGrid(twist, TeskGridEffect::kTriangular, 2, 2);
         twist.SetTwistStyle(TeskTwistEffect::kPulse, nullptr);
         twist.SetTwistAngle(250, nullptr);
         twist.SetLighting(ColouredLight(), nullptr);
     })},
};

class ThreeDSilver : public ::testing::TestWithParam<SilverCase> {};

TEST_P(ThreeDSilver, FramesMatchTheRecordedOnes) {
    ZoAutoPtr<TeskEffect> effect = GetParam().make();
    EXPECT_TRUE(effect_test::MatchesSilver(
        GetParam().file, effect_test::RecordEffect(*effect, GetParam().lengthMs)));
}

INSTANTIATE_TEST_SUITE_P(Each, ThreeDSilver, ::testing::ValuesIn(kCases), [](const auto& info) {
    std::string name = info.param.file;
    return name.substr(0, name.find('.'));
});

}  // namespace
