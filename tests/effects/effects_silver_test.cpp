// Silver files: every placement of every frame of a small movie, with the
// default settings and with others, so that no change to what the effects
// compute passes unnoticed.
#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "effect_fakes.h"
#include "effects/cube_effect.h"
#include "effects/curl_up_effect.h"
#include "effects/explode_effect.h"
#include "effects/lens_effect.h"
#include "effects/rotate_3d_effect.h"
#include "effects/spiral_effect.h"
#include "effects/test_effect.h"
#include "effects/twist_effect.h"
#include "placement_record.h"
#include "silver_file.h"

namespace {

using effect_test::ColouredLight;
using effect_test::SetFixedGrid;

struct SilverCase {
    const char* file;
    int32_t lengthMs;
    std::function<ZoAutoPtr<TeskEffect>()> make;
};

// A 2 × 2 grid unless `change` sets another.
template <typename E>
std::function<ZoAutoPtr<TeskEffect>()> Make(std::function<void(E&)> change = [](E&) {}) {
    return [change] {
        auto effect = std::make_unique<E>();
        SetFixedGrid(*effect, TeskGridEffect::kRectangularNWSE, 2, 2);
        change(*effect);
        return ZoAutoPtr<TeskEffect>(std::move(effect));
    };
}

// Automatic grids, as a new effect has them.
template <typename E>
std::function<ZoAutoPtr<TeskEffect>()> MakeDefault() {
    return [] { return ZoAutoPtr<TeskEffect>(std::make_unique<E>()); };
}

const SilverCase kCases[] = {
    {"cube_default.txt", 500, MakeDefault<TeskCubeEffect>()},
    {"cube_turned_faces.txt", 417, Make<TeskCubeEffect>([](TeskCubeEffect& cube) {
         SetFixedGrid(cube, TeskGridEffect::kRectangularNESW, 1, 1);
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
         SetFixedGrid(curl, TeskGridEffect::kRectangularNWSE, 3, 2);
     })},
    {"curl_up_tear_away_underneath.txt", 500, Make<TeskCurlUpEffect>([](TeskCurlUpEffect& curl) {
         SetFixedGrid(curl, TeskGridEffect::kTriangular, 3, 2);
         curl.SetStyle(TeskCurlUpEffect::kTearAway | TeskCurlUpEffect::kUnderneath, nullptr);
         curl.SetDirection(300, nullptr);
         curl.SetRadius(30, nullptr);
         curl.SetLighting(ColouredLight(), nullptr);
     })},
    {"explode_default.txt", 500, MakeDefault<TeskExplodeEffect>()},
    {"implode_inwards.txt", 417, Make<TeskExplodeEffect>([](TeskExplodeEffect& explode) {
         explode.SetExplodeType(TeskExplodeEffect::kImplode, nullptr);
         explode.SetInwards(1, nullptr);
         explode.SetSpread(-120, nullptr);
         explode.SetSpin(0, nullptr);
         explode.SetSwirl(450, nullptr);
         explode.SetRandomness(0, nullptr);
         explode.SetLighting(ColouredLight(), nullptr);
     })},
    {"lens_default.txt", 500, Make<TeskLensEffect>()},
    {"rotate_3d_default.txt", 500, Make<TeskRotate3DEffect>()},
    // A slanted axis and a coloured light from the lower left.
    {"rotate_3d_slanted_axis.txt", 500, Make<TeskRotate3DEffect>([](TeskRotate3DEffect& rotate) {
         rotate.SetAxisDirection(30, nullptr);
         TeskLighting lighting;
         lighting.lightColour = 0x40FFFF;
         lighting.lightStrength = 90;
         lighting.lightDirection = 225;
         rotate.SetLighting(lighting, nullptr);
     })},
    {"spiral_default.txt", 500, Make<TeskSpiralEffect>()},
    {"spiral_screw_up.txt", 500, Make<TeskSpiralEffect>([](TeskSpiralEffect& spiral) {
         spiral.SetSpiralStyle(TeskSpiralEffect::kScrewUp, nullptr);
         spiral.SetSpiralSpeed(80, nullptr);
     })},
    {"test_default.txt", 500, Make<TeskTestEffect>()},
    {"twist_default.txt", 500, Make<TeskTwistEffect>([](TeskTwistEffect& twist) {
         SetFixedGrid(twist, TeskGridEffect::kRectangularNWSE, 2, 3);
     })},
    {"twist_pulse.txt", 500, Make<TeskTwistEffect>([](TeskTwistEffect& twist) {
         SetFixedGrid(twist, TeskGridEffect::kTriangular, 2, 2);
         twist.SetTwistStyle(TeskTwistEffect::kPulse, nullptr);
         twist.SetTwistAngle(250, nullptr);
         twist.SetLighting(ColouredLight(), nullptr);
     })},
};

class EffectsSilver : public ::testing::TestWithParam<SilverCase> {};

TEST_P(EffectsSilver, FramesMatchTheRecordedOnes) {
    ZoAutoPtr<TeskEffect> effect = GetParam().make();
    EXPECT_TRUE(effect_test::MatchesSilver(
        GetParam().file, effect_test::RecordEffect(*effect, GetParam().lengthMs)));
}

INSTANTIATE_TEST_SUITE_P(Each, EffectsSilver, ::testing::ValuesIn(kCases), [](const auto& info) {
    std::string name = info.param.file;
    return name.substr(0, name.find('.'));
});

std::string Record(TeskGridEffect& effect) {
    SetFixedGrid(effect, TeskGridEffect::kRectangularNWSE, 2, 2);
    return effect_test::RecordEffect(effect, 500);
}

// A smaller, reducing lens on every path, alternately reset and returning.
TEST(EffectsSilverTest, TheLensOnEachPathMatchesTheSilverFile) {
    std::string text;
    for (int32_t preset = 0; preset < TeskAnimationPath::kPresetCount; ++preset) {
        TeskLensEffect lens;
        lens.SetPath(TeskAnimationPath::Preset(preset), nullptr);
        lens.SetPathAtEnd(preset % 2, nullptr);
        lens.SetLensRadius(700, nullptr);
        lens.SetLensPower(-60, nullptr);
        text += effect_test::Format("path %d\n", preset);
        text += Record(lens);
    }
    EXPECT_TRUE(effect_test::MatchesSilver("lens_paths.txt", text));
}

// Every type but the default one; the twist on a slanted axis.
TEST(EffectsSilverTest, EachTestTypeMatchesTheSilverFile) {
    std::string text;
    for (int32_t type = TeskTestEffect::kSphere; type <= TeskTestEffect::kTwist; ++type) {
        TeskTestEffect effect;
        effect.SetTestType(type, nullptr);
        effect.SetParameter1(12, nullptr);
        text += effect_test::Format("type %d\n", type);
        text += Record(effect);
    }
    EXPECT_TRUE(effect_test::MatchesSilver("test_types.txt", text));
}

}  // namespace
