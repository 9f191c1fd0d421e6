// A morph from a red to a blue object over a hand-edited grid, as a real
// player draws it over a green movie background: the first frame is the red
// object, the last the blue one, and in between the two mix everywhere with
// no seam letting the background through.
#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "document/file.h"
#include "effects/morph_effect.h"
#include "geometry/edit_grid_triangulation.h"
#include "objects/solid_object.h"
#include "pixel_misses.h"
#include "playback/pixel_checks.h"
#include "playback/playback_movie.h"
#include "publish/movie_compiler.h"

namespace {

using effect_test::AtMost;
using effect_test::CountMisses;
using effect_test::Everywhere;
using playback::Rgba;

// Skewed in both point sets, with a split cell and a reversed cut, so that
// every triangle moves and turns between its two rest places.
ZoAutoPtr<TeskTriangulation> EditedGrid() {
    auto grid = std::make_unique<TeskEditGridTriangulation>(2);
    grid->Root().Resize(4, 3);
    grid->Root().SplitCell(2, 1)->Resize(2, 2);
    grid->Root().ReverseDiagonal(0, 0);
    for (const auto& [index, set, point] : {std::tuple{6, 0, TeskPoint2D{0.38, 0.22}},
                                            {7, 1, TeskPoint2D{0.6, 0.45}},
                                            {11, 0, TeskPoint2D{0.3, 0.75}},
                                            {11, 1, TeskPoint2D{0.2, 0.6}},
                                            {2, 1, TeskPoint2D{0.7, 0.0}},
                                            {20 + 2, 1, TeskPoint2D{0.6, 0.58}}}) {
        TeskPoint2D p = point;
        grid->MovePoint(index, set, p);
    }
    return grid;
}

void WriteMorph(const std::filesystem::path& path) {
    TeskFile file;
    file.SetWidth(160, nullptr);
    file.SetHeight(120, nullptr);
    file.SetBackgroundColour(0x00FF00, nullptr);
    auto morph = std::make_unique<TeskMorphEffect>();
    ZoAutoPtr<TeskObject> red = std::make_unique<TeskSolidObject>(0x0000FF);
    ZoAutoPtr<TeskObject> blue = std::make_unique<TeskSolidObject>(0xFF0000);
    morph->SetStartObject(red, nullptr);
    morph->SetEndObject(blue, nullptr);
    ZoAutoPtr<TeskTriangulation> grid = EditedGrid();
    morph->SetTriangulation(grid, nullptr);
    ZoAutoPtr<TeskEffect> effect = std::move(morph);
    file.RemoveEffect(0, nullptr);
    file.InsertEffect(effect, 0, nullptr);
    TeskWriteMovie(file, path);
}

const playback::PlaybackMovie kMorph("morph", {0, 12, 23}, WriteMorph);

TEST(MorphPlayback, StartsRedEndsBlueAndMixesWithoutSeams) {
    EXPECT_TRUE(AtMost(0, CountMisses(kMorph.Frame(0), Everywhere, [](Rgba p) {
                           return ChannelDistance(p, {255, 0, 0}) <= 4;
                       })));
    EXPECT_TRUE(AtMost(0, CountMisses(kMorph.Frame(23), Everywhere, [](Rgba p) {
                           return ChannelDistance(p, {0, 0, 255}) <= 4;
                       })));
    // Halfway the blue mesh lies at 12/23 strength over the red one. The
    // start mesh is enlarged to overlap, so the green background shows
    // nowhere; the translucent end mesh is not (overlaps would show darker),
    // so a few hairlines along its edges let a little more red through.
    EXPECT_TRUE(AtMost(0, CountMisses(kMorph.Frame(12), Everywhere,
                                      [](Rgba p) { return p.g <= 8 && p.r + p.b >= 245; })));
    EXPECT_TRUE(AtMost(160 * 120 / 100, CountMisses(kMorph.Frame(12), Everywhere, [](Rgba p) {
                           return ChannelDistance(p, {122, 0, 133}) <= 6;
                       })));
}

}  // namespace
