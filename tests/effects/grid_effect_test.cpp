#include "effects/grid_effect.h"

#include <gtest/gtest.h>

#include "effects/wave_effect.h"
#include "geometry/grid_triangulation.h"
#include "geometry/hex_triangulation.h"
#include "geometry/mesh_checks.h"
#include "platform/zo_random.h"

namespace {

using GridSettings = TeskGridEffect::GridSettings;

ZoAutoPtr<TeskTriangulation> Build(TeskGridEffect& effect, const ZoRect& rect, int32_t angle = 45,
                                   int32_t divisor = 1) {
    ZoAutoPtr<TeskTriangulation> out;
    effect.BuildTriangulation(rect, out, angle, divisor);
    return out;
}

void SetFixedGrid(TeskGridEffect& effect, int32_t gridType, int32_t across, int32_t down) {
    GridSettings settings;
    settings.chooseGrid = false;
    settings.gridType = gridType;
    settings.across = across;
    settings.down = down;
    effect.SetGridSettings(settings, nullptr);
}

TEST(GridEffectTest, AutomaticGridsFollowTheBudgetAndItsDivisor) {
    TeskWaveEffect wave;
    const ZoRect square{0, 0, 100, 100};
    const auto whole = Build(wave, square);
    ASSERT_NE(dynamic_cast<TeskGridTriangulation*>(whole.get()), nullptr);
    EXPECT_EQ(whole->GetTriangleCount(), 50);
    // 50 / 10 = 5, raised to 8: a 2 × 2 grid.
    EXPECT_EQ(Build(wave, square, 45, 10)->GetTriangleCount(), 8);

    ZoAutoPtr<TeskTriangulation> hex;
    wave.BuildTriangulationHex(square, hex, 1);
    auto* staggered = dynamic_cast<TeskHexTriangulation*>(hex.get());
    ASSERT_NE(staggered, nullptr);
    EXPECT_EQ(staggered->GetAcross(), 11);
    EXPECT_EQ(staggered->GetDown(), 5);
}

TEST(GridEffectTest, FixedGridsClampTheirSizeIntoTheSettings) {
    struct Case {
        int32_t gridType, across, down;
        int32_t storedAcross, storedDown, triangles;
    };
    const Case cases[] = {
        {TeskGridEffect::kRectangularNESW, 60, 3, 50, 3, 300},
        {TeskGridEffect::kRectangularNWSE, 0, -4, 1, 1, 2},
        {TeskGridEffect::kTriangular, 1, 4, 1, 4, 8},  // the hex grid raises 1 across to 2
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.gridType);
        TeskWaveEffect wave;
        SetFixedGrid(wave, c.gridType, c.across, c.down);
        ZoAutoPtr<TeskTriangulation> grid;
        wave.BuildTriangulationHex({0, 0, 100, 100}, grid, 1);
        EXPECT_EQ(wave.GetGridSettings().across, c.storedAcross);
        EXPECT_EQ(wave.GetGridSettings().down, c.storedDown);
        ASSERT_TRUE(grid);
        EXPECT_EQ(grid->GetTriangleCount(), c.triangles);
        EXPECT_EQ(Build(wave, {0, 0, 100, 100})->GetTriangleCount(), c.triangles);
    }

    TeskWaveEffect wave;
    SetFixedGrid(wave, TeskGridEffect::kRectangularNESW, 2, 2);
    const auto nesw = Build(wave, {0, 0, 100, 100});
    EXPECT_EQ(dynamic_cast<TeskGridTriangulation&>(*nesw).GetDiagonal(),
              TeskGridTriangulation::kNorthEastSouthWest);
    // An unknown type builds nothing and leaves what was there.
    SetFixedGrid(wave, 7, 2, 2);
    ZoAutoPtr<TeskTriangulation> kept = std::make_unique<TeskHexTriangulation>();
    TeskTriangulation* before = kept.get();
    wave.BuildTriangulation({0, 0, 100, 100}, kept);
    EXPECT_EQ(kept.get(), before);
}

TEST(GridEffectTest, AutomaticGridsTileTheSquareWithinBudgetSeed11) {
    ZoMsvcRandom random(11);
    for (int i = 0; i < 300; ++i) {
        const ZoRect rect{0, 0, 20 + random.Next() % 16000, 20 + random.Next() % 16000};
        GridSettings settings;
        settings.maxTriangles = 10 + random.Next() % 191;
        const int32_t angle = random.Next() % 720 - 360;
        const int32_t divisor = 1 + random.Next() % 3;
        TeskWaveEffect wave;
        wave.SetGridSettings(settings, nullptr);
        SCOPED_TRACE(testing::Message()
                     << rect.Width() << " x " << rect.Height() << ", budget "
                     << settings.maxTriangles << " / " << divisor << ", angle " << angle);
        const auto grid = Build(wave, rect, angle, divisor);
        EXPECT_LE(grid->GetTriangleCount(), std::max(settings.maxTriangles / divisor, 8));
        EXPECT_TRUE(vimbo_test::TilesUnitSquare(*grid, 0));
    }
}

}  // namespace
