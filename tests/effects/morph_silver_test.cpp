#include <gtest/gtest.h>

#include <string>

#include "effects/morph_effect.h"
#include "effects/morph_frames.h"
#include "flash/swf_sequence.h"
#include "geometry/edit_grid_triangulation.h"
#include "media/swf_movie.h"
#include "objects/solid_object.h"
#include "placement_record.h"
#include "silver_file.h"

namespace {

using effect_test::Format;

// Per frame of a 100 × 80 movie at 12 frames per second: the step, every
// triangle's travelling corners, and what the compiled frame places (count,
// and the depth and alpha of the last placement).
std::string Record(TeskMorphEffect& morph, int32_t lengthMs) {
    TeskSWFMovie movie;
    movie.SetWidth(100);
    movie.SetHeight(80);
    movie.SetFrameRate(12);
    movie.AddScene();
    morph.SetEffectTime(lengthMs, nullptr);
    ZoAutoPtr<TeskObject> red = std::make_unique<TeskSolidObject>(0x0000FF);
    ZoAutoPtr<TeskObject> blue = std::make_unique<TeskSolidObject>(0xFF0000);
    morph.SetStartObject(red, nullptr);
    morph.SetEndObject(blue, nullptr);
    morph.Compile(movie, true);

    const ZoRect rect{0, 0, 2000, 1600};
    const std::vector<TeskMorphTrack> tracks = TeskMorphTracks(morph.GetTriangulation(), rect, 1);
    const int32_t frames = morph.GetFrameCount(12);
    const ZoFlash::ZoSWFScene& scene = *movie.GetScene(0);
    std::string text;
    for (int32_t f = 0; f < scene.TotalFrames(); ++f) {
        const auto placements = scene.GetFrame(f)->GetPlacements();
        const ZoFlash::ZoSWFPlacement top = placements[placements.size() - 1];
        text += Format("frame %d: %zu placements, the last at depth %d alpha %d\n", f,
                       placements.size(), top.depth, top.cxform.alphaMult);
    }
    for (int32_t f = 0; f < frames; ++f) {
        const TeskMorphStep step = TeskMorphStepAt(f, frames, morph.GetReturnToStart());
        text += Format("step %d of %d\n", step.step, step.last);
        if (step.ShowsEnd())
            continue;
        for (const TeskTriangle& c : TeskMorphCorners(tracks, step)) {
            text += Format("  (%d, %d) (%d, %d) (%d, %d)\n", c[0].x, c[0].y, c[1].x, c[1].y, c[2].x,
                           c[2].y);
        }
    }
    return text;
}

TEST(MorphSilverTest, DefaultGrid) {
    TeskMorphEffect morph;
    EXPECT_TRUE(effect_test::MatchesSilver("morph_default.txt", Record(morph, 500)));
}

TEST(MorphSilverTest, EditedGridThereAndBack) {
    TeskMorphEffect morph;
    auto grid = std::make_unique<TeskEditGridTriangulation>(2);
    grid->Root().Resize(3, 3);
    grid->Root().SplitCell(1, 1)->Resize(2, 2);
    grid->Root().ReverseDiagonal(0, 2);
    for (const auto& [index, set, point] : {std::tuple{5, 0, TeskPoint2D{0.25, 0.4}},
                                            {6, 1, TeskPoint2D{0.7, 0.2}},
                                            {2, 1, TeskPoint2D{0.8, 0.0}},
                                            {16 + 2, 0, TeskPoint2D{0.45, 0.55}}}) {
        TeskPoint2D p = point;
        grid->MovePoint(index, set, p);
    }
    ASSERT_TRUE(grid->IsValid());
    ZoAutoPtr<TeskTriangulation> mesh = std::move(grid);
    morph.SetTriangulation(mesh, nullptr);
    morph.SetReturnToStart(true, nullptr);
    morph.SetReturnHoldTime(250, nullptr);
    EXPECT_TRUE(effect_test::MatchesSilver("morph_edited_return.txt", Record(morph, 667)));
}

}  // namespace
