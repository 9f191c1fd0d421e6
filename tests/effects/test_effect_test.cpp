// The test effect's six treatments: what each shows first and last, which
// faces it leaves out, and how it lights what it shows.
#include "effects/test_effect.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <set>

#include "effect_fakes.h"
#include "effects/test_effect_geometry.h"
#include "flash/swf_sequence.h"
#include "media/swf_movie.h"
#include "objects/solid_object.h"
#include "placement_record.h"
#include "render/movie_player.h"
#include "support/movie_check.h"

namespace {

const ZoRect kRect{0, 0, 2000, 1600};
using T = TeskTestEffect;

struct Compiled {
    TeskSWFMovie movie;
    TeskMeshEffect::MeshTriangleList mesh;
};

// Type `type` over a 100 × 80 movie, 24 frames, a 4 × 4 grid.
std::unique_ptr<T> Effect(int32_t type) {
    auto effect = std::make_unique<T>();
    effect->SetTestType(type, nullptr);
    ZoAutoPtr<TeskObject> object = std::make_unique<TeskSolidObject>(0x2080F0);
    effect->SetStartObject(object, nullptr);
    effect_test::SetFixedGrid(*effect, TeskGridEffect::kRectangularNWSE, 4, 4);
    return effect;
}

std::vector<ZoFlash::ZoSWFPlacement> Placements(TeskSWFMovie& movie, int32_t frame) {
    std::vector<ZoFlash::ZoSWFPlacement> placed;
    for (const auto& p : movie.GetScene(0)->GetFrame(frame)->GetPlacements())
        placed.push_back(p);
    return placed;
}

TeskSWFMovie& Compile(T& effect, TeskSWFMovie& movie) {
    movie.SetWidth(100);
    movie.SetHeight(80);
    movie.SetFrameRate(12);
    effect.CompileAlone(movie);
    const SwfTest::WrittenMovie written = SwfTest::WriteAndValidate(movie);
    EXPECT_TRUE(written.result.problems.empty()) << written.Problems();
    EXPECT_EQ(written.result.movie.frameCount, 24);
    return movie;
}

TEST(TestEffectTest, UnknownTypesExplodeAndTheUnusedSettingsChangeNothing) {
    EXPECT_EQ(Effect(7)->GetCompiledType(), T::kExplode);
    for (const int32_t type : {0, 1, 2, 3, 4, 5}) {
        auto plain = Effect(type);
        auto varied = Effect(type);
        varied->SetParameter2(77, nullptr);
        ZoAutoPtr<TeskObject> end = std::make_unique<TeskSolidObject>(0x00FF00);
        varied->SetEndObject(end, nullptr);
        EXPECT_EQ(effect_test::RecordEffect(*plain, 500), effect_test::RecordEffect(*varied, 500))
            << type;
    }
    EXPECT_EQ(effect_test::RecordEffect(*Effect(0), 500),
              effect_test::RecordEffect(*Effect(7), 500));
}

TEST(TestEffectTest, TheFlatTypesStartWithTheObjectAtRestAndTheTwistEndsSo) {
    for (const auto& [type, frame] : {std::pair{T::kExplode, 0},
                                      {T::kCurlUp, 0},
                                      {T::kAlphaBlend, 0},
                                      {T::kTwist, 0},
                                      {T::kTwist, 23}}) {
        auto effect = Effect(type);
        TeskSWFMovie movie;
        auto mesh = effect->BuildMesh(movie, kRect);
        T::CornerLights light;
        effect->MoveMesh(mesh, kRect, frame, 24, light);
        for (const auto& triangle : mesh) {
            for (size_t k = 0; k < 3; ++k) {
                EXPECT_NEAR(triangle.corners[k].x, triangle.restCorners[k].x, 1) << type;
                EXPECT_NEAR(triangle.corners[k].y, triangle.restCorners[k].y, 1) << type;
            }
        }
        EXPECT_EQ(mesh.front().depth, T::kDepthBase);
    }
}

TEST(TestEffectTest, TheFadeEndsWithTheCentreOpaqueAndTheCornersClear) {
    const TeskTestFrame frame(kRect);
    const TeskTriangle middle{{{990, 790}, {1020, 800}, {990, 810}}};
    const TeskTriangle corner{{{0, 0}, {30, 0}, {0, 30}}};
    EXPECT_DOUBLE_EQ(TeskTestFadeAlpha(frame, middle, 0.0), 0.0);
    EXPECT_DOUBLE_EQ(TeskTestFadeAlpha(frame, middle, 1.0), 1.0);
    EXPECT_NEAR(TeskTestFadeAlpha(frame, corner, 1.0), 0.0, 0.02);
}

// Placements that flip the mesh piece over (a negative determinant) show
// its back.
bool ShowsFront(const ZoFlash::ZoSWFPlacement& p) {
    const auto& m = p.matrix;
    return double(m.scaleX.raw) * m.scaleY.raw - double(m.rotateSkew0.raw) * m.rotateSkew1.raw > 0;
}

TEST(TestEffectTest, TheCubeShowsOnlyTheFacesTurnedTowardsTheViewer) {
    auto cube = Effect(T::kCube);
    TeskSWFMovie movie;
    Compile(*cube, movie);
    const size_t pieces = cube->BuildMesh(movie, kRect).size();
    for (int32_t f = 0; f < 24; ++f) {
        const auto placed = Placements(movie, f);
        ASSERT_EQ(placed.size() % pieces, 0u) << f;
        const size_t faces = placed.size() / pieces;
        EXPECT_GE(faces, 1u) << f;
        EXPECT_LE(faces, 3u) << f;
        std::set<int> depths;
        for (const auto& p : placed) {
            EXPECT_TRUE(ShowsFront(p)) << f;
            depths.insert(p.depth);
        }
        EXPECT_EQ(depths.size(), placed.size()) << f;
    }
}

// How far `image`'s pixel (x, y) is from `background`, summed over channels.
int Contrast(const ZoRgbaImage& image, int x, int y, const uint8_t* background) {
    const uint8_t* p = &image.rgba[(static_cast<size_t>(y) * image.width + x) * 4];
    return std::abs(p[0] - background[0]) + std::abs(p[1] - background[1]) +
           std::abs(p[2] - background[2]);
}

// A pixel nearer the background (the colour of the top left corner) than
// the two pixels two steps away on either side of it: the background shows
// through a hairline between pieces or faces. Pixels within four steps of
// the outline are left out, where corners of the faces rightly leave notches.
int Hairlines(const ZoRgbaImage& image) {
    constexpr int kObject = 50, kVisible = 12, kMargin = 4;
    const uint8_t* background = image.rgba.data();
    const int steps[][2] = {{1, 0}, {0, 1}, {1, 1}, {1, -1}};
    const auto contrast = [&](int x, int y) { return Contrast(image, x, y, background); };
    const auto inside = [&](int x, int y) {
        for (const auto& [dx, dy] : steps) {
            if (contrast(x - kMargin * dx, y - kMargin * dy) <= kObject ||
                contrast(x + kMargin * dx, y + kMargin * dy) <= kObject)
                return false;
        }
        return true;
    };
    int found = 0;
    for (int y = kMargin; y < image.height - kMargin; ++y)
        for (int x = kMargin; x < image.width - kMargin; ++x) {
            if (!inside(x, y))
                continue;
            for (const auto& [dx, dy] : steps) {
                const int a = contrast(x - 2 * dx, y - 2 * dy),
                          b = contrast(x + 2 * dx, y + 2 * dy);
                if (contrast(x, y) < std::min(a, b) - kVisible) {
                    ++found;
                    break;
                }
            }
        }
    return found;
}

TEST(TestEffectTest, TheCubesFacesMeetWithoutAHairline) {
    auto cube = Effect(T::kCube);
    TeskSWFMovie movie;
    const ZoMoviePlayer player(SwfTest::WriteAndValidate(Compile(*cube, movie)).bytes);
    for (int32_t f = 0; f < 24; f += 3)
        EXPECT_EQ(Hairlines(player.RenderFrame(f, 2.0)), 0) << f;
}

TEST(TestEffectTest, TheSphereLeavesOutItsFarSideAndLightsTheRest) {
    auto sphere = Effect(T::kSphere);
    TeskSWFMovie movie;
    Compile(*sphere, movie);
    auto mesh = sphere->BuildMesh(movie, kRect);
    T::CornerLights light;
    sphere->MoveMesh(mesh, kRect, 0, 24, light);
    size_t shown = 0;
    for (const auto& triangle : mesh) {
        // At the start the left and right quarters face the viewer.
        double x = 0.0;
        for (const ZoPoint p : triangle.restCorners)
            x += p.x / 6000.0;
        const bool front = x < 0.25 || x > 0.75;
        if (std::abs(x - 0.25) > 0.05 && std::abs(x - 0.75) > 0.05) {
            EXPECT_EQ(triangle.depth != 0, front) << x;
        }
        shown += triangle.depth != 0;
    }
    EXPECT_GT(shown, 0u);
    EXPECT_LT(shown, mesh.size());
    // Each piece shown has its light triangle, and nothing else is placed.
    EXPECT_EQ(Placements(movie, 0).size(), 2 * shown);
}

TEST(TestEffectTest, SmoothLightOfAFlatCurlIsTheLightOfAFaceTowardsTheViewer) {
    auto curl = Effect(T::kCurlUp);
    TeskSWFMovie movie;
    Compile(*curl, movie);
    const auto placed = Placements(movie, 0);
    const size_t pieces = placed.size() / 2;
    // (186, 186, 186) at strength 34 everywhere: a flat overlay.
    for (size_t i = pieces; i < placed.size(); ++i) {
        EXPECT_EQ(placed[i].depth, placed[i - pieces].depth + static_cast<int>(pieces));
        EXPECT_EQ(placed[i].cxform.redAdd, 186);
        EXPECT_EQ(placed[i].cxform.alphaAdd, 34);
        EXPECT_EQ(placed[i].cxform.redMult, 0);
    }
}

}  // namespace
