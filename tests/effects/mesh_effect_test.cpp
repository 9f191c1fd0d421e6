// The mesh and grid bases: pieces placed by affine maps, grids from the settings.
#include "effects/mesh_effect.h"

#include <gtest/gtest.h>

#include "effects/wave_effect.h"
#include "flash/swf_frame.h"
#include "geometry/mesh_checks.h"
#include "platform/zo_random.h"

namespace {

using ZoFlash::ZoSWFTransformation;

ZoSWFTransformation Transform(const TeskTriangle& p, const TeskTriangle& q) {
    ZoSWFTransformation t;
    EXPECT_TRUE(TeskMeshEffect::TriangleTransform(t, p[0], q[0], p[1], q[1], p[2], q[2]));
    return t;
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
