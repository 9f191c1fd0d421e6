// The mesh and grid bases: pieces placed by affine maps, grids from the settings.
#include "effects/mesh_effect.h"

#include <gtest/gtest.h>

#include "effect_fakes.h"
#include "effects/wave_effect.h"
#include "flash/swf_frame.h"
#include "geometry/grid_triangulation.h"
#include "geometry/mesh_checks.h"
#include "media/swf_movie.h"
#include "objects/solid_object.h"
#include "platform/zo_random.h"

namespace {

using ZoFlash::ZoSWFTransformation;

ZoSWFTransformation Transform(const TeskTriangle& p, const TeskTriangle& q) {
    ZoSWFTransformation t;
    EXPECT_TRUE(TeskMeshEffect::TriangleTransform(t, p[0], q[0], p[1], q[1], p[2], q[2]));
    return t;
}

TEST(MeshEffectTest, TriangleTransformOfUnmovedAndShiftedTriangles) {
    const TeskTriangle rest{{{0, 0}, {1000, 0}, {1000, 700}}};
    EXPECT_TRUE(Transform(rest, rest).ToRecord().IsIdentity());
    const ZoSWFTransformation shifted = Transform(rest, {{{200, 0}, {1200, 0}, {1200, 700}}});
    EXPECT_EQ(std::vector<double>(
                  {shifted.A(), shifted.B(), shifted.C(), shifted.D(), shifted.Tx(), shifted.Ty()}),
              std::vector<double>({1, 0, 0, 1, 200, 0}));
}

TEST(MeshEffectTest, WrittenMapsCarryRestCornersOntoMovedCornersSeed3) {
    ZoMsvcRandom random(3);
    auto coordinate = [&] { return random.Next() % 8000 - 1000; };
    for (int checked = 0; checked < 1000;) {
        const TeskTriangle rest{{{coordinate(), coordinate()},
                                 {coordinate(), coordinate()},
                                 {coordinate(), coordinate()}}};
        const auto& [a, b, c] = rest;
        if (int64_t{b.x - a.x} * (c.y - b.y) - int64_t{b.y - a.y} * (c.x - b.x) < 200000)
            continue;  // clockwise and no sliver, like a mesh triangle
        TeskTriangle moved = rest;
        for (ZoPoint& p : moved)
            p = {p.x + random.Next() % 2000 - 1000, p.y + random.Next() % 2000 - 1000};
        // As the player applies the rounded record.
        const ZoFlash::ZoFMatrixRecord m = Transform(rest, moved).ToRecord();
        for (int k = 0; k < 3; ++k) {
            const ZoPoint p = rest[k];
            const double x =
                (m.scaleX.raw * double(p.x) + m.rotateSkew1.raw * double(p.y)) / 65536.0 +
                m.translateX.value;
            const double y =
                (m.rotateSkew0.raw * double(p.x) + m.scaleY.raw * double(p.y)) / 65536.0 +
                m.translateY.value;
            EXPECT_NEAR(x, moved[k].x, 0.75) << checked;
            EXPECT_NEAR(y, moved[k].y, 0.75) << checked;
        }
        ++checked;
    }
}

TEST(MeshEffectTest, PlacesPiecesAtTheirDepthsAndLeavesHiddenOnesOut) {
    TeskSWFMovie movie;
    TeskSolidObject object;
    TeskGridTriangulation grid;  // 2 × 1 cells: four triangles
    grid.SetAcross(2);
    grid.SetDown(1);
    TeskMeshEffect::MeshTriangleList mesh;
    TeskMeshEffect::BuildMeshTriangles(mesh, movie, object, {0, 0, 1001, 500}, grid, 0, 20.0, 100);
    ASSERT_EQ(mesh.size(), 4u);
    EXPECT_EQ(mesh[1].restCorners, (TeskTriangle{{{0, 0}, {500, 500}, {0, 500}}}));  // truncated
    for (ZoPoint& p : mesh[1].corners)
        p = {p.x + 33, p.y - 7};
    mesh[2].depth = 0;
    ZoFlash::ZoSWFFrame frame, snapped;
    TeskMeshEffect::PlaceMeshTriangles(mesh, frame);
    TeskMeshEffect::PlaceMeshTriangles(mesh, snapped, true);
    const auto placed = frame.GetPlacements();
    ASSERT_EQ(placed.size(), 3u);
    EXPECT_EQ(std::vector<int>({placed[0].depth, placed[1].depth, placed[2].depth}),
              std::vector<int>({100, 101, 103}));
    EXPECT_EQ(placed[1].matrix.translateX.value, 33);
    EXPECT_EQ(snapped.GetPlacements()[1].matrix.translateX.value, 40);  // whole pixels
    EXPECT_EQ(snapped.GetPlacements()[1].matrix.translateY.value, 0);
}

TEST(GridEffectTest, BudgetsDivisorsAndFixedGridLimits) {
    TeskWaveEffect wave;
    ZoAutoPtr<TeskTriangulation> grid;
    wave.BuildTriangulation({0, 0, 100, 100}, grid);
    EXPECT_EQ(grid->GetTriangleCount(), 50);
    wave.BuildTriangulation({0, 0, 100, 100}, grid, 45, 10);  // 50 / 10 raised to 8
    EXPECT_EQ(grid->GetTriangleCount(), 8);
    effect_test::SetFixedGrid(wave, TeskGridEffect::kRectangularNESW, 60, 3);
    wave.BuildTriangulation({0, 0, 100, 100}, grid);
    EXPECT_EQ(wave.GetGridSettings().across, 50);  // clamped in the settings themselves
    EXPECT_EQ(grid->GetTriangleCount(), 300);
}

TEST(GridEffectTest, AutomaticGridsTileTheSquareWithinBudgetSeed11) {
    ZoMsvcRandom random(11);
    for (int i = 0; i < 300; ++i) {
        const ZoRect rect{0, 0, 20 + random.Next() % 16000, 20 + random.Next() % 16000};
        TeskGridEffect::GridSettings settings;
        settings.maxTriangles = 10 + random.Next() % 191;
        const int32_t angle = random.Next() % 720 - 360;
        TeskWaveEffect wave;
        wave.SetGridSettings(settings, nullptr);
        ZoAutoPtr<TeskTriangulation> grid;
        wave.BuildTriangulation(rect, grid, angle);
        SCOPED_TRACE(testing::Message() << rect.Width() << " x " << rect.Height() << ", budget "
                                        << settings.maxTriangles << ", angle " << angle);
        EXPECT_LE(grid->GetTriangleCount(), settings.maxTriangles);
        EXPECT_TRUE(vimbo_test::TilesUnitSquare(*grid, 0));
    }
}

}  // namespace
