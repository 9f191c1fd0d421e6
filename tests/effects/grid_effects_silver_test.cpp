// Silver files: every placement of every frame of a small movie, with the
// default settings and with others, so that no change to what they compute
// passes unnoticed. Here of the rotate 3D, lens, spiral and test effects.
#include <gtest/gtest.h>

#include <functional>

#include "effect_fakes.h"
#include "effects/lens_effect.h"
#include "effects/rotate_3d_effect.h"
#include "effects/spiral_effect.h"
#include "effects/test_effect.h"
#include "placement_record.h"
#include "silver_file.h"

namespace {

struct SilverCase {
    const char* file;
    std::function<ZoAutoPtr<TeskGridEffect>()> make;
};

template <typename Effect>
ZoAutoPtr<TeskGridEffect> Default() {
    return std::make_unique<Effect>();
}

// A slanted axis and a coloured light from the lower left.
ZoAutoPtr<TeskGridEffect> Rotate3D(int32_t axisDirection) {
    auto rotate = std::make_unique<TeskRotate3DEffect>();
    rotate->SetAxisDirection(axisDirection, nullptr);
    TeskLighting lighting;
    lighting.lightColour = 0x40FFFF;
    lighting.lightStrength = 90;
    lighting.lightDirection = 225;
    rotate->SetLighting(lighting, nullptr);
    return rotate;
}

ZoAutoPtr<TeskGridEffect> Spiral(int32_t style, int32_t speed) {
    auto spiral = std::make_unique<TeskSpiralEffect>();
    spiral->SetSpiralStyle(style, nullptr);
    spiral->SetSpiralSpeed(speed, nullptr);
    return spiral;
}

ZoAutoPtr<TeskGridEffect> Lens(int32_t preset, int32_t pathAtEnd) {
    auto lens = std::make_unique<TeskLensEffect>();
    lens->SetPath(TeskAnimationPath::Preset(preset), nullptr);
    lens->SetPathAtEnd(pathAtEnd, nullptr);
    lens->SetLensRadius(700, nullptr);
    lens->SetLensPower(-60, nullptr);
    return lens;
}

const SilverCase kCases[] = {
    {"lens_default.txt", Default<TeskLensEffect>},
    {"rotate_3d_default.txt", Default<TeskRotate3DEffect>},
    {"rotate_3d_slanted_axis.txt", [] { return Rotate3D(30); }},
    {"spiral_default.txt", Default<TeskSpiralEffect>},
    {"spiral_screw_up.txt", [] { return Spiral(TeskSpiralEffect::kScrewUp, 80); }},
    {"test_default.txt", Default<TeskTestEffect>},
};

std::string Record(TeskGridEffect& effect) {
    effect_test::SetFixedGrid(effect, TeskGridEffect::kRectangularNWSE, 2, 2);
    return effect_test::RecordEffect(effect, 500);
}

TEST(GridEffectsSilverTest, EveryFrameMatchesItsSilverFile) {
    for (const SilverCase& c : kCases) {
        SCOPED_TRACE(c.file);
        EXPECT_TRUE(effect_test::MatchesSilver(c.file, Record(*c.make())));
    }
}

// A smaller, reducing lens on every path, alternately reset and returning.
TEST(GridEffectsSilverTest, TheLensOnEachPathMatchesTheSilverFile) {
    std::string text;
    for (int32_t preset = 0; preset < TeskAnimationPath::kPresetCount; ++preset) {
        text += effect_test::Format("path %d\n", preset);
        text += Record(*Lens(preset, preset % 2));
    }
    EXPECT_TRUE(effect_test::MatchesSilver("lens_paths.txt", text));
}

// Every type but the default one; the twist on a slanted axis.
TEST(GridEffectsSilverTest, EachTestTypeMatchesTheSilverFile) {
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
