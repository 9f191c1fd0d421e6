#include <gtest/gtest.h>

#include <map>
#include <string>

#include "effect_fakes.h"
#include "effects/wave_effect.h"
#include "flash/swf_sequence.h"
#include "media/swf_movie.h"
#include "objects/solid_object.h"
#include "placement_record.h"
#include "silver_file.h"

namespace {

using effect_test::Format;

// Per frame: each mesh triangle's depth, moved corners and corner lights as
// the wave computes them, then every placement of the compiled frame with its
// shape (numbered as first met) and colour transformation.
std::string Record(TeskWaveEffect& wave, int32_t lengthMs) {
    TeskSWFMovie movie;
    movie.SetWidth(100);
    movie.SetHeight(80);
    movie.SetFrameRate(12);
    movie.AddScene();
    wave.SetEffectTime(lengthMs, nullptr);
    ZoAutoPtr<TeskObject> object = std::make_unique<TeskSolidObject>(0x3366CC);
    wave.SetWaveObject(object, nullptr);
    wave.Compile(movie, true);

    const ZoRect rect{0, 0, 2000, 1600};
    TeskMeshEffect::MeshTriangleList mesh = wave.BuildMesh(movie, rect);
    TeskWaveEffect::CornerLights light;
    std::map<const void*, int> shapes;
    std::string text;
    const ZoFlash::ZoSWFScene& scene = *movie.GetScene(0);
    for (int32_t f = 0; f < scene.TotalFrames(); ++f) {
        text += Format("frame %d\n", f);
        wave.MoveMesh(mesh, rect, f, scene.TotalFrames(), light);
        for (size_t i = 0; i < mesh.size(); ++i) {
            const TeskTriangle& c = mesh[i].corners;
            text += Format("  triangle %d (%d, %d) (%d, %d) (%d, %d) light %.4f %.4f %.4f\n",
                           mesh[i].depth, c[0].x, c[0].y, c[1].x, c[1].y, c[2].x, c[2].y,
                           light[i][0], light[i][1], light[i][2]);
        }
        for (const auto& p : scene.GetFrame(f)->GetPlacements()) {
            const int shape = shapes.emplace(p.object.Get(), shapes.size()).first->second;
            const auto& x = p.cxform;
            text += Format("  depth %d shape %d mult %d %d %d %d add %d %d %d %d\n", p.depth, shape,
                           x.redMult, x.greenMult, x.blueMult, x.alphaMult, x.redAdd, x.greenAdd,
                           x.blueAdd, x.alphaAdd);
        }
    }
    return text;
}

TEST(WaveSilverTest, ContinuousWaveWithDefaultLight) {
    TeskWaveEffect wave;
    effect_test::SetFixedGrid(wave, TeskGridEffect::kRectangularNWSE, 2, 2, false);
    EXPECT_TRUE(effect_test::MatchesSilver("wave_continuous.txt", Record(wave, 500)));
}

TEST(WaveSilverTest, PulseOnATriangularGridWithColouredLight) {
    TeskWaveEffect wave;
    effect_test::SetFixedGrid(wave, TeskGridEffect::kTriangular, 3, 2, true);
    wave.SetWaveStyle(TeskWaveEffect::kPulse, nullptr);
    wave.SetDirection(200, nullptr);
    wave.SetAmplitude(300, nullptr);
    wave.SetWavelength(60, nullptr);
    wave.SetLighting(effect_test::ColouredLight(), nullptr);
    EXPECT_TRUE(effect_test::MatchesSilver("wave_pulse.txt", Record(wave, 667)));
}

}  // namespace
