// Silver files: every placement of every frame of a small movie, with the
// default settings and with others, so that no change to what they compute
// passes unnoticed. Here of the spiral effect.
#include <gtest/gtest.h>

#include <functional>

#include "effect_fakes.h"
#include "effects/spiral_effect.h"
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

ZoAutoPtr<TeskGridEffect> Spiral(int32_t style, int32_t speed) {
    auto spiral = std::make_unique<TeskSpiralEffect>();
    spiral->SetSpiralStyle(style, nullptr);
    spiral->SetSpiralSpeed(speed, nullptr);
    return spiral;
}

const SilverCase kCases[] = {
    {"spiral_default.txt", Default<TeskSpiralEffect>},
    {"spiral_screw_up.txt", [] { return Spiral(TeskSpiralEffect::kScrewUp, 80); }},
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

}  // namespace
