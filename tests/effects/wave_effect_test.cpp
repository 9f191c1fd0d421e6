// The 3D light and the wave from its surface to a document's movie.
#include "effects/wave_effect.h"

#include <gtest/gtest.h>

#include <cmath>

#include "effects/wave_surface.h"
#include "flash/swf_sequence.h"
#include "media/swf_movie.h"
#include "objects/solid_object.h"
#include "support/movie_check.h"

namespace {

TEST(LightTest, FactorsColoursAndTheirTwoShadings) {
    const TeskLightModel defaults{TeskLighting{}};
    const double facing = defaults.LightFactor({0, 0, 1});
    EXPECT_NEAR(facing, 0.7320508, 1e-6);
    EXPECT_EQ(defaults.LightColour(facing), (TeskLightColour{186, 186, 186, 34}));
    ZoFlash::ZoSWFColourTransformation flat;
    defaults.ApplyLight(facing, flat);
    EXPECT_DOUBLE_EQ(flat.GetScale(0), 221.0 / 255.0);
    EXPECT_NEAR(flat.GetOffset(0), 186.0 * 34.0 / 255.0, 1e-9);
    for (const auto& [brightness, contrast, factor] : {std::tuple{100, 0, 1.0}, {0, 100, 0.0}}) {
        TeskLighting extreme;
        extreme.brightness = brightness;
        extreme.contrast = contrast;
        EXPECT_EQ(TeskLightModel(extreme).LightFactor({0, 0, 1}), factor);
    }

    // Smooth shading: equal corners take gradient 0 with no colour scale.
    const TeskTriangle corners{{{0, 0}, {1000, 0}, {1000, 1000}}};
    ZoFlash::ZoSWFFrame frame;
    TeskLightTriangles(defaults, false).Place(corners, {0.7, 0.7, 0.7}, frame, 300);
    TeskLightTriangles(defaults, false).Place(corners, {0.2, 1.0, 0.6}, frame, 301);
    TeskLighting off;
    off.useLighting = false;
    TeskLightTriangles(TeskLightModel(off), false).Place(corners, {0.2, 1.0, 0.6}, frame, 302);
    const auto placed = frame.GetPlacements();
    ASSERT_EQ(placed.size(), 2u);
    EXPECT_EQ(placed[0].cxform.redMult, 0);
    EXPECT_EQ(placed[0].cxform.redAdd, 178);  // trunc(255 · 0.7)
    // From the darkest corner (51, strength 82) to the brightest (255, 10).
    EXPECT_EQ(placed[1].cxform.redAdd, 51);
    EXPECT_EQ(placed[1].cxform.alphaAdd, 82);
    EXPECT_EQ(placed[1].cxform.redMult, 205);
    EXPECT_EQ(placed[1].cxform.alphaMult, -72);
}

TEST(WaveSurfaceTest, ExtentsAndFlatSurfaces) {
    const ZoRect rect{0, 0, 6000, 2000};
    for (const auto& [direction, extent] : {std::pair{0, 2000.0}, {180, 2000.0}, {90, 6000.0}})
        EXPECT_NEAR(TeskWaveSurface(140, 100, direction, 0, rect).Extent(), extent, 1e-9);
    const TeskWaveSurface flat[] = {
        TeskWaveSurface(140, 0, 135, TeskWaveEffect::kContinuous, rect),
        TeskWaveSurface(140, 100, 135, TeskWaveEffect::kPulse, rect),
        TeskWaveSurface(140, 100, 135, TeskWaveEffect::kRiseAndFall, rect),
    };
    for (const TeskWaveSurface& surface : flat) {
        for (const ZoPoint rest : {ZoPoint{0, 0}, ZoPoint{1234, 567}, ZoPoint{6000, 2000}}) {
            // Heights only: a pulse's crest starts on the start edge, tilted.
            EXPECT_EQ(surface.At(rest, 0.0).position,
                      (TeskPoint3D{rest.x - 3000.0, rest.y - 1000.0, 0.0}));
        }
    }
}

TEST(WaveEffectTest, AFlatUnlitWaveWritesItsPiecesOnceOnly) {
    TeskSWFMovie movie;
    movie.SetWidth(100);
    movie.SetHeight(80);
    movie.SetFrameRate(12);
    movie.AddScene();
    TeskWaveEffect wave;
    ZoAutoPtr<TeskObject> object = std::make_unique<TeskSolidObject>();
    wave.SetWaveObject(object, nullptr);
    wave.SetAmplitude(0, nullptr);
    wave.SetUseLighting(false, nullptr);
    wave.Compile(movie, true);
    const SwfTest::WrittenMovie written = SwfTest::WriteAndValidate(movie);
    ASSERT_TRUE(written.result.problems.empty()) << written.Problems();
    const auto& frames = written.result.movie.timeline.frames;
    ASSERT_EQ(frames.size(), 24u);
    EXPECT_EQ(frames[0].placeTags,
              static_cast<int>(movie.GetScene(0)->GetFrame(0)->GetPlacements().size()));
    for (size_t i = 1; i < frames.size(); ++i)
        EXPECT_EQ(frames[i].placeTags + frames[i].removeTags, 0) << i;
}

}  // namespace
