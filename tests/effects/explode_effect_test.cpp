// The explode effect's pieces: their random shares, their motion and what an
// implosion shows.
#include "effects/explode_effect.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <tuple>

#include "flash/swf_sequence.h"
#include "media/swf_movie.h"
#include "objects/solid_object.h"

namespace {

using Explode = TeskExplodeEffect;

std::vector<std::string> FramePlacements(Explode& explode) {
    TeskSWFMovie movie;
    movie.SetWidth(100);
    movie.SetHeight(80);
    movie.SetFrameRate(12);
    ZoAutoPtr<TeskObject> object = std::make_unique<TeskSolidObject>(0x0000FF);
    explode.SetExplodeObject(object, nullptr);
    explode.CompileAlone(movie);
    std::vector<std::string> frames;
    const ZoFlash::ZoSWFScene& scene = *movie.GetScene(0);
    for (int32_t f = 0; f < scene.TotalFrames(); ++f) {
        std::string text;
        for (const auto& p : scene.GetFrame(f)->GetPlacements()) {
            text += std::to_string(p.depth) + " " + std::to_string(p.matrix.translateX.value) +
                    " " + std::to_string(p.matrix.scaleX.raw) + " " +
                    std::to_string(p.cxform.redMult) + ";";
        }
        frames.push_back(text);
    }
    return frames;
}

TEST(ExplodeEffectTest, AnImplosionIsTheExplosionBackwards) {
    for (const int32_t inwards : {0, 1}) {
        Explode explosion, implosion;
        explosion.SetInwards(inwards, nullptr);
        implosion.SetInwards(inwards, nullptr);
        implosion.SetExplodeType(Explode::kImplode, nullptr);
        std::vector<std::string> forwards = FramePlacements(explosion);
        const std::vector<std::string> backwards = FramePlacements(implosion);
        std::reverse(forwards.begin(), forwards.end());
        EXPECT_EQ(backwards, forwards);
    }
}

TEST(ExplodeEffectTest, StyleItemsFollowTypeAndDirection) {
    Explode explode;
    for (const auto& [type, inwards, item] :
         {std::tuple{0, 0, 0}, {0, 1, 1}, {1, 0, 2}, {1, 5, 3}, {7, 0, 0}}) {
        explode.SetExplodeType(type, nullptr);
        explode.SetInwards(inwards, nullptr);
        EXPECT_EQ(explode.GetStyleItem(), item);
    }
}

}  // namespace
