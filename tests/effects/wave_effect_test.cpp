#include "effects/wave_effect.h"

#include <gtest/gtest.h>

#include <cmath>
#include <set>

#include "document/file.h"
#include "effects/wave_surface.h"
#include "flash/byte_stream.h"
#include "flash/swf_sequence.h"
#include "geometry/perspective.h"
#include "media/swf_movie.h"
#include "objects/solid_object.h"
#include "publish/movie_compiler.h"
#include "support/movie_check.h"

namespace {

const ZoRect kRect{0, 0, 3640, 4040};  // the default movie, 182 × 202 pixels

TeskWaveSurface Surface(int32_t amplitude, int32_t direction, int32_t style,
                        const ZoRect& rect = kRect) {
    return TeskWaveSurface(140, amplitude, direction, style, rect);
}

TEST(WaveSurfaceTest, ExtentAlongTheDirection) {
    const ZoRect wide{0, 0, 6000, 2000};
    struct Case {
        int32_t direction;
        double extent;
    };
    for (const Case& c : {Case{0, 2000}, Case{180, 2000}, Case{90, 6000}, Case{270, 6000},
                          Case{45, 8000 * std::sqrt(0.5)}, Case{-45, 8000 * std::sqrt(0.5)}}) {
        EXPECT_NEAR(Surface(100, c.direction, 0, wide).Extent(), c.extent, 1e-9) << c.direction;
    }
}

TEST(WaveSurfaceTest, FlatWhereverTheWaveHasNoHeight) {
    struct Case {
        const char* name;
        TeskWaveSurface surface;
        double progress;
    };
    const Case cases[] = {
        {"amplitude 0", Surface(0, 135, TeskWaveEffect::kContinuous), 0.3},
        {"pulse at the start", Surface(100, 135, TeskWaveEffect::kPulse), 0.0},
        {"rise and fall at the start", Surface(100, 135, TeskWaveEffect::kRiseAndFall), 0.0},
        {"no wavelength", TeskWaveSurface(0, 100, 135, 0, kRect), 0.5},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        for (const ZoPoint rest : {ZoPoint{0, 0}, ZoPoint{1234, 567}, ZoPoint{3640, 4040}}) {
            const TeskSurfacePoint p = c.surface.At(rest, c.progress);
            EXPECT_EQ(p.position, (TeskPoint3D{rest.x - 1820.0, rest.y - 2020.0, 0.0}));
            EXPECT_EQ(p.normal, (TeskPoint3D{0, 0, 1}));
        }
    }
}

TEST(WaveSurfaceTest, ContinuousWaveRunsOneWavelengthAlongTheDirection) {
    // Direction 90: the wave runs to the right from the left edge; L = W.
    const TeskWaveSurface surface = Surface(100, 90, TeskWaveEffect::kContinuous);
    const double lambda = 1.4 * 3640;
    const double amplitude = 0.1 * 3640;
    const double turn = 6.283184;
    for (const double progress : {0.0, 0.25, 0.7}) {
        for (const int32_t x : {0, 500, 3640}) {
            const double phase = (progress - x / lambda) * turn;
            const TeskSurfacePoint p = surface.At({x, 1000}, progress);
            EXPECT_NEAR(p.position.z, amplitude * std::sin(phase), 1e-9);
            const double slope = std::cos(phase) * turn * amplitude / lambda;
            EXPECT_NEAR(p.normal.x, slope / std::sqrt(slope * slope + 1.0), 1e-9);
            EXPECT_NEAR(p.normal.y, 0.0, 1e-12);
        }
    }
    // A pulse is under way halfway through: somewhere it stands off the screen.
    const TeskWaveSurface pulse = Surface(100, 90, TeskWaveEffect::kPulse);
    EXPECT_NE(pulse.At({1820, 0}, 0.5).position.z, 0.0);
    // The centre of the rectangle on the screen plane projects onto itself.
    EXPECT_EQ(TeskProject({0, 0, 0}, kRect), (ZoPoint{1820, 2020}));
}

/// The wave of a 100 × 80 movie on a solid object, compiled at 12 fps.
struct WaveMovie {
    WaveMovie() {
        movie.SetWidth(100);
        movie.SetHeight(80);
        movie.SetFrameRate(12);
        movie.AddScene();
        ZoAutoPtr<TeskObject> object = std::make_unique<TeskSolidObject>(0x00FF00);
        wave.SetWaveObject(object, nullptr);
    }
    const ZoFlash::ZoSWFFrame& Frame(int index) const {
        return *movie.GetScene(0)->GetFrame(index);
    }

    TeskSWFMovie movie;
    TeskWaveEffect wave;
};

TEST(WaveEffectTest, EveryFramePlacesTheMeshAndALightTriangleAboveEachPiece) {
    WaveMovie m;
    m.wave.Compile(m.movie, true);
    ASSERT_EQ(m.movie.GetScene(0)->TotalFrames(), 24);
    const auto first = m.Frame(0).GetPlacements();
    const int triangles = static_cast<int>(first.size()) / 2;
    EXPECT_GT(triangles, 40);
    EXPECT_LE(triangles, 50);
    std::set<const void*> meshShapes, lightShapes;
    for (int i = 0; i < 2 * triangles; ++i) {
        EXPECT_EQ(first[i].depth, TeskWaveEffect::kDepthBase + i);
        (i < triangles ? meshShapes : lightShapes).insert(first[i].object.Get());
    }
    EXPECT_EQ(static_cast<int>(meshShapes.size()), triangles);
    EXPECT_LE(lightShapes.size(), 11u);
    // The wave moves: the same piece sits elsewhere half a second later.
    EXPECT_FALSE(m.Frame(6).GetPlacements()[0].matrix == first[0].matrix);

    const SwfTest::WrittenMovie written = SwfTest::WriteAndValidate(m.movie);
    EXPECT_TRUE(written.result.problems.empty()) << written.Problems();
}

TEST(WaveEffectTest, WithoutAmplitudeOrLightTheObjectStaysPutAndNothingIsRewritten) {
    WaveMovie m;
    m.wave.SetAmplitude(0, nullptr);
    m.wave.SetUseLighting(false, nullptr);
    m.wave.Compile(m.movie, true);
    for (const auto& placement : m.Frame(11).GetPlacements())
        EXPECT_TRUE(placement.matrix.IsIdentity()) << placement.depth;

    const SwfTest::WrittenMovie written = SwfTest::WriteAndValidate(m.movie);
    ASSERT_TRUE(written.result.problems.empty()) << written.Problems();
    const auto& frames = written.result.movie.timeline.frames;
    ASSERT_EQ(frames.size(), 24u);
    EXPECT_EQ(frames[0].placeTags, static_cast<int>(m.Frame(0).GetPlacements().size()));
    for (size_t i = 1; i < frames.size(); ++i)
        EXPECT_EQ(frames[i].placeTags + frames[i].removeTags, 0) << i;
}

TEST(WaveEffectTest, AmplitudeZeroStillLaysTheUniformLightOfAFaceTowardsTheViewer) {
    WaveMovie m;
    m.wave.SetAmplitude(0, nullptr);
    m.wave.Compile(m.movie, true);
    const auto placements = m.Frame(3).GetPlacements();
    const size_t triangles = placements.size() / 2;
    for (size_t i = triangles; i < placements.size(); ++i) {
        EXPECT_EQ(placements[i].object.Get(), placements[triangles].object.Get());
        EXPECT_EQ(placements[i].cxform.redAdd, 186);  // LightColour(0.732)
        EXPECT_EQ(placements[i].cxform.alphaAdd, 34);
        EXPECT_EQ(placements[i].cxform.redMult, 0);
    }
}

TEST(WaveEffectTest, ADefaultDocumentCompilesToTwentyFourFramesAtTwelvePerSecond) {
    const TeskFile file;
    ZoFlash::ZoFMemorySink sink;
    TeskBuildMovie(file)->WriteMovie(sink);
    const SwfTest::Validation result = SwfTest::ValidateSwf(sink.Bytes());
    EXPECT_TRUE(result.problems.empty());
    EXPECT_EQ(result.movie.frameCount, 24);
    EXPECT_EQ(result.movie.frameRate, 12 << 8);
    EXPECT_EQ(result.movie.timeline.frames.size(), 24u);
    EXPECT_EQ(result.movie.timeline.frames[0].displayList.size(), 100u);
}

}  // namespace
