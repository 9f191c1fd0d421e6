#include "effects/mesh_effect.h"

#include <gtest/gtest.h>

#include <cmath>

#include "flash/swf_frame.h"
#include "flash/swf_shape.h"
#include "geometry/grid_triangulation.h"
#include "media/swf_movie.h"
#include "objects/solid_object.h"
#include "platform/zo_random.h"

namespace {

using ZoFlash::ZoFMatrixRecord;
using ZoFlash::ZoSWFFrame;
using ZoFlash::ZoSWFTransformation;
using MeshTriangleList = TeskMeshEffect::MeshTriangleList;

// Where the player puts `p` under a written matrix.
std::pair<double, double> Apply(const ZoFMatrixRecord& m, ZoPoint p) {
    const double a = m.scaleX.raw / 65536.0, d = m.scaleY.raw / 65536.0;
    const double b = m.rotateSkew1.raw / 65536.0, c = m.rotateSkew0.raw / 65536.0;
    return {a * p.x + b * p.y + m.translateX.value, c * p.x + d * p.y + m.translateY.value};
}

ZoSWFTransformation Transform(const TeskTriangle& p, const TeskTriangle& q) {
    ZoSWFTransformation t;
    EXPECT_TRUE(TeskMeshEffect::TriangleTransform(t, p[0], q[0], p[1], q[1], p[2], q[2]));
    return t;
}

struct Mesh {
    TeskSWFMovie movie;
    TeskSolidObject object{0x0000FF};
    MeshTriangleList list;
};

// A 2 × 1 NWSE grid over `rect`: four triangles at depths 100 to 103.
void BuildGrid(Mesh& mesh, const ZoRect& rect, double expand, bool roundPoints) {
    TeskGridTriangulation grid;
    grid.SetAcross(2);
    grid.SetDown(1);
    TeskMeshEffect::BuildMeshTriangles(mesh.list, mesh.movie, mesh.object, rect, grid, 0, expand,
                                       roundPoints, 100);
}

TEST(MeshEffectTest, TriangleTransformOfUnmovedAndShiftedTriangles) {
    const TeskTriangle rest{{{0, 0}, {1000, 0}, {1000, 700}}};
    const ZoSWFTransformation same = Transform(rest, rest);
    EXPECT_TRUE(same.ToRecord().IsIdentity());
    EXPECT_DOUBLE_EQ(same.Tx(), 0.0);

    const ZoSWFTransformation shifted = Transform(rest, {{{200, 0}, {1200, 0}, {1200, 700}}});
    EXPECT_DOUBLE_EQ(shifted.A(), 1.0);
    EXPECT_DOUBLE_EQ(shifted.B(), 0.0);
    EXPECT_DOUBLE_EQ(shifted.C(), 0.0);
    EXPECT_DOUBLE_EQ(shifted.D(), 1.0);
    EXPECT_DOUBLE_EQ(shifted.Tx(), 200.0);
    EXPECT_DOUBLE_EQ(shifted.Ty(), 0.0);

    ZoSWFTransformation untouched;
    untouched.SetTranslate(5, 5);
    EXPECT_FALSE(TeskMeshEffect::TriangleTransform(untouched, {0, 0}, {0, 0}, {10, 10}, {1, 0},
                                                   {20, 20}, {0, 1}));
    EXPECT_DOUBLE_EQ(untouched.Tx(), 5.0);
}

TEST(MeshEffectTest, WrittenMapsCarryRestCornersOntoMovedCornersSeed3) {
    ZoMsvcRandom random(3);
    auto coordinate = [&] { return random.Next() % 8000 - 1000; };
    int checked = 0;
    while (checked < 1000) {
        const TeskTriangle rest{{{coordinate(), coordinate()},
                                 {coordinate(), coordinate()},
                                 {coordinate(), coordinate()}}};
        const auto& [a, b, c] = rest;
        const int64_t twiceArea =
            int64_t{b.x - a.x} * (c.y - b.y) - int64_t{b.y - a.y} * (c.x - b.x);
        if (twiceArea < 200000)  // clockwise and no sliver, like a mesh triangle
            continue;
        TeskTriangle moved = rest;
        for (ZoPoint& p : moved)
            p = {p.x + random.Next() % 2000 - 1000, p.y + random.Next() % 2000 - 1000};
        const ZoFMatrixRecord record = Transform(rest, moved).ToRecord();
        for (int k = 0; k < 3; ++k) {
            const auto [x, y] = Apply(record, rest[k]);
            // Half a twip from the translation, a little more from 16.16 terms.
            EXPECT_NEAR(x, moved[k].x, 0.75) << checked;
            EXPECT_NEAR(y, moved[k].y, 0.75) << checked;
        }
        ++checked;
    }
}

TEST(MeshEffectTest, BuildsOneEnlargedShapePerTriangleAtItsRestPlace) {
    Mesh mesh;
    BuildGrid(mesh, {0, 0, 1001, 500}, 20.0, false);
    ASSERT_EQ(mesh.list.size(), 4u);
    const TeskTriangle firstRest{{{0, 0}, {500, 0}, {500, 500}}};
    EXPECT_EQ(mesh.list[0].restCorners, firstRest);  // 500.5 truncated
    for (size_t i = 0; i < mesh.list.size(); ++i) {
        const TeskMeshEffect::MeshTriangle& t = mesh.list[i];
        EXPECT_EQ(t.corners, t.restCorners);
        EXPECT_EQ(t.restDepth, 100 + static_cast<int32_t>(i));
        EXPECT_EQ(t.depth, t.restDepth);
        EXPECT_TRUE(t.colourTransformation.ToRecord().IsIdentity());
    }
    // Pushed out over the inner edges, cut off at the object's border.
    const auto* shape = dynamic_cast<const ZoFlash::ZoSWFShape*>(mesh.list[0].shape.Get());
    ASSERT_NE(shape, nullptr);
    const ZoRect bounds = shape->GetBounds();
    EXPECT_EQ(bounds.left, 0);
    EXPECT_EQ(bounds.top, 0);
    EXPECT_EQ(bounds.right, 520);
    EXPECT_EQ(bounds.bottom, 500);

    Mesh rounded;
    BuildGrid(rounded, {0, 0, 1001, 500}, 7.0, true);
    const auto* snapped = dynamic_cast<const ZoFlash::ZoSWFShape*>(rounded.list[0].shape.Get());
    EXPECT_EQ(snapped->GetBounds().right, 500);  // 507 snaps back to the pixel
}

TEST(MeshEffectTest, PlacesTrianglesWithDepthsAndSkipsHiddenOnesForOneFrame) {
    Mesh mesh;
    BuildGrid(mesh, {0, 0, 1000, 500}, 20.0, false);
    for (ZoPoint& p : mesh.list[1].corners)
        p = {p.x + 33, p.y - 7};
    mesh.list[2].depth = 0;
    mesh.list[3].colourTransformation.SetScale(0.5, 0.5, 0.5, 1.0);
    ZoSWFFrame hidden;
    TeskMeshEffect::PlaceMeshTriangles(mesh.list, hidden);
    const auto placements = hidden.GetPlacements();
    ASSERT_EQ(placements.size(), 3u);
    EXPECT_EQ(placements[0].depth, 100);
    EXPECT_TRUE(placements[0].matrix.IsIdentity());
    EXPECT_EQ(placements[1].depth, 101);
    EXPECT_EQ(placements[1].matrix.translateX.value, 33);
    EXPECT_EQ(placements[1].matrix.translateY.value, -7);
    EXPECT_EQ(placements[2].depth, 103);
    EXPECT_EQ(placements[2].cxform.redMult, 128);
    EXPECT_EQ(placements[2].object.Get(), mesh.list[3].shape.Get());

    mesh.list[2].depth = mesh.list[2].restDepth;
    ZoSWFFrame next;
    TeskMeshEffect::PlaceMeshTriangles(mesh.list, next, true);
    ASSERT_EQ(next.GetPlacements().size(), 4u);
    // Snapped to whole pixels: 33 → 40, −7 → 0.
    EXPECT_EQ(next.GetPlacements()[1].matrix.translateX.value, 40);
    EXPECT_EQ(next.GetPlacements()[1].matrix.translateY.value, 0);
}

}  // namespace
