// Our player against Ruffle: every frame we draw must agree with the real
// player's pixel for pixel, within a few units, away from anti-aliased edges.
// Adding a movie to the comparison is one row of kMovies.
#include <gtest/gtest.h>

#include <algorithm>

#include "document/json_project.h"
#include "effects/cross_fade_effect.h"
#include "effects/register_effects.h"
#include "objects/graduated_object.h"
#include "objects/image_object.h"
#include "objects/solid_object.h"
#include "playback/playback_movie.h"
#include "publish/cross_fade_document.h"
#include "publish/movie_compiler.h"
#include "render/movie_player.h"
#include "support/feature_movies.h"

namespace {

// Channel units two pictures may differ by; masks and gradients are
// rounded slightly differently by the two rasterisers.
constexpr int kTolerance = 3;
// Pixels whose neighbours differ by more than this are edges; both players
// anti-alias them, each its own way.
constexpr int kEdgeContrast = 10;
// Share of the compared pixels allowed to differ anyway.
constexpr double kAllowedShare = 0.002;

void WriteFade(const std::filesystem::path& file, ZoAutoPtr<TeskObject> from,
               ZoAutoPtr<TeskObject> to, bool clip = false) {
    CrossFadeDocument doc;
    if (from)
        doc.fade->SetStartObject(from, nullptr);
    if (to)
        doc.fade->SetEndObject(to, nullptr);
    if (clip) {
        doc.file.SetClipToMovieSize(true, nullptr);
        ZoAutoPtr<TeskObject> back = std::make_unique<TeskGraduatedObject>();
        doc.file.SetBackgroundObject(back, nullptr);
    }
    TeskWriteMovie(doc.file, file);
}

ZoAutoPtr<TeskObject> Graduated(int32_t type, int32_t angle) {
    auto object = std::make_unique<TeskGraduatedObject>();
    object->SetGradientType(type);
    object->SetAngle(angle);
    return object;
}

// A new document whose one effect is the registered effect `name` with its
// default settings between two solid colours (the wave keeps its picture).
void WriteDefaultEffect(const std::filesystem::path& file, std::string_view name) {
    TeskRegisterEffects();
    TeskFile document;
    if (name != "Wave") {
        for (int i = 0; i < TeskEffect::GetCount(); ++i) {
            if (TeskEffect::GetInfo(i).name != name)
                continue;
            ZoAutoPtr<TeskEffect> effect;
            TeskEffect::Create(i, effect);
            for (int slot = 0; slot < effect->GetObjectCount(); ++slot) {
                ZoAutoPtr<TeskObject> solid =
                    std::make_unique<TeskSolidObject>(slot == 0 ? 0x3366CC : 0x22AA55);
                effect->SetObject(solid, slot);
            }
            document.ReplaceEffect(effect, 0, nullptr);
        }
    }
    TeskWriteMovie(document, file);
}

// One of the example projects, pictures and all.
void WriteExample(const std::filesystem::path& file, std::string_view name) {
    TeskRegisterEffects();
    TeskFile document;
    TeskLoadProjectFile(document, VIMBO_SOURCE_DIR "/examples/" + std::string(name) + ".json");
    TeskWriteMovie(document, file);
}

struct Comparison {
    std::string name;
    playback::PlaybackMovie movie;
    std::vector<int> frames;
};

Comparison Row(std::string name, std::vector<int> frames, playback::MovieWriter writer) {
    return {name, playback::PlaybackMovie(name, frames, std::move(writer)), frames};
}

const Comparison kMovies[] = {
    Row("solid_fade", {0, 5, 11}, [](auto& file) { WriteFade(file, nullptr, nullptr); }),
    Row("clipped_fade", {0, 6}, [](auto& file) { WriteFade(file, nullptr, nullptr, true); }),
    Row("graduated_fade", {0, 6, 11},
        [](auto& file) {
            WriteFade(file, Graduated(kTeskLinearGradient, 30), Graduated(kTeskRadialGradient, 0));
        }),
    Row("image_fade", {0, 6, 11},
        [](auto& file) {
            WriteFade(file, std::make_unique<TeskImageObject>("<PreviewImage1>"),
                      std::make_unique<TeskImageObject>("<PreviewImage2>"));
        }),
    Row("writer_features", {0}, SwfTest::WriteFeatureMovie),
    Row("writer_text", {0}, SwfTest::WriteTextMovie),
    Row("wave", {0, 12, 23}, [](auto& file) { WriteDefaultEffect(file, "Wave"); }),
    Row("cube", {0, 12, 23}, [](auto& file) { WriteDefaultEffect(file, "Cube"); }),
    Row("curl_up", {0, 12, 23}, [](auto& file) { WriteDefaultEffect(file, "Curl Up"); }),
    Row("explode", {0, 12, 23}, [](auto& file) { WriteDefaultEffect(file, "Explode"); }),
    Row("twist", {0, 12, 23}, [](auto& file) { WriteDefaultEffect(file, "Twist"); }),
    Row("morph", {0, 27, 53}, [](auto& file) { WriteExample(file, "morph"); }),
    Row("rotate_3d", {0, 30, 59}, [](auto& file) { WriteExample(file, "rotate_3d"); }),
    Row("lens", {0, 42, 83}, [](auto& file) { WriteExample(file, "lens"); }),
    Row("spiral", {0, 30, 59}, [](auto& file) { WriteExample(file, "spiral"); }),
    Row("test_explode", {0, 24, 47}, [](auto& file) { WriteExample(file, "test_explode"); }),
    Row("test_sphere", {0, 24, 47}, [](auto& file) { WriteExample(file, "test_sphere"); }),
    Row("test_curl_up", {0, 24, 47}, [](auto& file) { WriteExample(file, "test_curl_up"); }),
    Row("test_cube", {0, 24, 47}, [](auto& file) { WriteExample(file, "test_cube"); }),
    Row("test_alpha_blend", {0, 24, 47},
        [](auto& file) { WriteExample(file, "test_alpha_blend"); }),
    Row("test_twist", {0, 24, 47}, [](auto& file) { WriteExample(file, "test_twist"); }),
    Row("text_cross_fade", {0, 15, 30}, [](auto& file) { WriteExample(file, "text_cross_fade"); }),
    Row("graduated_colours", {0, 19, 38},
        [](auto& file) { WriteExample(file, "graduated_colours"); }),
    Row("picture_cross_fade", {0, 21, 41},
        [](auto& file) { WriteExample(file, "picture_cross_fade"); }),
};

int Distance(const uint8_t* a, playback::Rgba b) {
    return std::max({std::abs(a[0] - b.r), std::abs(a[1] - b.g), std::abs(a[2] - b.b)});
}

bool IsEdge(const ZoRgbaImage& image, int x, int y) {
    const uint8_t* centre = &image.rgba[(static_cast<size_t>(y) * image.width + x) * 4];
    for (int dy = -1; dy <= 1; ++dy)
        for (int dx = -1; dx <= 1; ++dx) {
            const int nx = std::clamp(x + dx, 0, image.width - 1);
            const int ny = std::clamp(y + dy, 0, image.height - 1);
            const uint8_t* n = &image.rgba[(static_cast<size_t>(ny) * image.width + nx) * 4];
            if (Distance(centre, {n[0], n[1], n[2], 255}) > kEdgeContrast)
                return true;
        }
    return false;
}

testing::AssertionResult AgreesAwayFromEdges(const ZoRgbaImage& ours,
                                             const playback::PngImage& ruffle) {
    if (ours.width != ruffle.Width() || ours.height != ruffle.Height())
        return testing::AssertionFailure()
               << "sizes differ: " << ours.width << "x" << ours.height << " against "
               << ruffle.Width() << "x" << ruffle.Height();
    int compared = 0, differing = 0, largest = 0, firstX = -1, firstY = -1;
    for (int y = 0; y < ours.height; ++y)
        for (int x = 0; x < ours.width; ++x) {
            if (IsEdge(ours, x, y))
                continue;
            ++compared;
            const int d = Distance(&ours.rgba[(static_cast<size_t>(y) * ours.width + x) * 4],
                                   ruffle.At(x, y));
            largest = std::max(largest, d);
            if (d > kTolerance && differing++ == 0) {
                firstX = x;
                firstY = y;
            }
        }
    if (differing <= compared * kAllowedShare)
        return testing::AssertionSuccess();
    return testing::AssertionFailure()
           << differing << " of " << compared << " pixels differ (largest " << largest
           << "), first at (" << firstX << ", " << firstY << ")";
}

class RenderAgainstRuffle : public testing::TestWithParam<size_t> {};

TEST_P(RenderAgainstRuffle, FramesAgreeAwayFromEdges) {
    const Comparison& row = kMovies[GetParam()];
    const ZoMoviePlayer ours = ZoMoviePlayer::FromFile(row.movie.File());
    for (int frame : row.frames)
        EXPECT_TRUE(AgreesAwayFromEdges(ours.RenderFrame(frame), row.movie.Frame(frame)))
            << "frame " << frame;
}

INSTANTIATE_TEST_SUITE_P(Movies, RenderAgainstRuffle, testing::Range<size_t>(0, std::size(kMovies)),
                         [](const testing::TestParamInfo<size_t>& info) {
                             return kMovies[info.param].name;
                         });

}  // namespace
