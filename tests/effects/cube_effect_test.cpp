// The cube: its face slots, where its faces go, which of them face the
// viewer and how they are lit.
#include "effects/cube_effect.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>

#include "effects/cube_geometry.h"
#include "geometry/perspective.h"
#include "media/swf_movie.h"
#include "objects/solid_object.h"

namespace {

using Cube = TeskCubeEffect;

TEST(CubeEffectTest, FacesShowTheirOwnObjectOrTheOneTheyAreSameAs) {
    Cube cube;
    EXPECT_EQ(cube.GetObjectCount(), 1);
    TeskObject* top = cube.GetFace(Cube::kTop).object.get();
    for (int32_t f = 0; f < Cube::kFaceCount; ++f)
        EXPECT_EQ(cube.GetShownObject(f), top) << f;

    ZoAutoPtr<TeskObject> right = std::make_unique<TeskSolidObject>(0x00FF00);
    TeskObject* rightObject = right.get();
    cube.SetFaceObject(Cube::kRight, right, nullptr);
    cube.SetFaceSameAs(Cube::kBack, Cube::kRight, nullptr);
    cube.SetFaceSameAs(Cube::kLeft, Cube::kOwnObject, nullptr);
    EXPECT_EQ(cube.GetObjectCount(), 2);
    EXPECT_EQ(cube.GetObject(0), top);
    EXPECT_EQ(cube.GetObject(1), rightObject);
    EXPECT_EQ(cube.GetObject(5), top);
    EXPECT_EQ(cube.GetShownObject(Cube::kRight), rightObject);
    EXPECT_EQ(cube.GetShownObject(Cube::kBack), rightObject);
    EXPECT_EQ(cube.GetShownObject(Cube::kLeft), nullptr);

    TeskSWFMovie movie;
    const Cube::FaceMeshes meshes = cube.BuildMeshes(movie, {0, 0, 2000, 2000});
    EXPECT_TRUE(meshes[Cube::kLeft].empty());
    ASSERT_FALSE(meshes[Cube::kBack].empty());
    // Faces showing the same object share its shapes.
    EXPECT_EQ(meshes[Cube::kBack][0].shape.Get(), meshes[Cube::kRight][0].shape.Get());
    EXPECT_EQ(meshes[Cube::kBottom][0].shape.Get(), meshes[Cube::kTop][0].shape.Get());
    EXPECT_NE(meshes[Cube::kRight][0].shape.Get(), meshes[Cube::kTop][0].shape.Get());
}

TEST(CubeEffectTest, UntiltedFacesLieOnTheCubeFacingOutwards) {
    Cube cube;
    cube.SetRotateX(0, nullptr);
    cube.SetRotateZ(0, nullptr);
    cube.SetScaleSize(100, nullptr);
    // 182 × 202 pixels: half sides 1820 and 2020 twips.
    const ZoRect rect{0, 0, 3640, 4040};
    EXPECT_DOUBLE_EQ(TeskCubeSize(rect), 1456.0);
    const TeskMatrix4 front = TeskCubeFaceMatrix(cube.GetCubeState(), Cube::kFront, rect);
    EXPECT_EQ(front.Transform({0, 0, 0}), (TeskPoint3D{-1456, -1456, 1456}));
    EXPECT_EQ(front.Transform({3640, 4040, 0}), (TeskPoint3D{1456, 1456, 1456}));

    const TeskPoint3D centres[] = {{0, -1456, 0}, {0, 1456, 0}, {-1456, 0, 0},
                                   {1456, 0, 0},  {0, 0, 1456}, {0, 0, -1456}};
    for (int32_t f = 0; f < Cube::kFaceCount; ++f) {
        SCOPED_TRACE(Cube::kFaceNames[f]);
        const TeskMatrix4 m = TeskCubeFaceMatrix(cube.GetCubeState(), f, rect);
        const TeskPoint3D centre = m.Transform({1820, 2020, 0});
        EXPECT_NEAR(TeskLength(centre - centres[f]), 0.0, 1e-9);
        // The rest triangles' front (clockwise on screen) looks out of the cube.
        const TeskPoint3D normal = m.Transform({0, 0, 1}) - m.Transform({0, 0, 0});
        EXPECT_GT(TeskDot(normal, centre), 0.0);
    }
}

// Per frame: triangles facing the viewer (by their 3D place, not their
// winding) lie above all others, and the face towards the viewer is lit as a
// face towards the viewer is.
TEST(CubeEffectTest, FacesTowardsTheViewerAreDrawnAboveTheOthersAndLit) {
    Cube cube;
    cube.SetRotateX(0, nullptr);
    cube.SetRotateZ(0, nullptr);
    const ZoRect rect{0, 0, 3000, 2400};
    TeskSWFMovie movie;
    Cube::FaceMeshes meshes = cube.BuildMeshes(movie, rect);
    const double eye = TeskEyeDistance(rect);
    for (const int32_t frame : {0, 2, 5, 9, 13, 20}) {
        SCOPED_TRACE(frame);
        cube.MoveFaces(meshes, rect, frame, 24);
        int32_t lowestFront = 1 << 30, highestBack = 0;
        for (int32_t f = 0; f < Cube::kFaceCount; ++f) {
            TeskMatrix4 m = TeskCubeFaceMatrix(cube.GetCubeState(), f, rect);
            m.Apply(TeskCubeSpin(cube.GetCubeState(), frame, 24));
            const TeskPoint3D normal = m.Transform({0, 0, 1}) - m.Transform({0, 0, 0});
            const TeskPoint3D centre = m.Transform({1500, 1200, 0});
            const bool towardsEye = TeskDot(normal, TeskPoint3D{0, 0, eye} - centre) > 0.0;
            for (const auto& triangle : meshes[f]) {
                EXPECT_EQ(TeskFacesViewer(triangle.corners), towardsEye) << f;
                int32_t& bound = towardsEye ? lowestFront : highestBack;
                bound =
                    towardsEye ? std::min(bound, triangle.depth) : std::max(bound, triangle.depth);
            }
        }
        EXPECT_LT(highestBack, lowestFront);
    }
    cube.MoveFaces(meshes, rect, 0, 24);
    // Facing the viewer, default light: factor 0.732, blended by 34/255
    // towards grey 186.
    const auto& lit = meshes[Cube::kFront][0].colourTransformation;
    EXPECT_DOUBLE_EQ(lit.GetScale(0), 221.0 / 255.0);
    EXPECT_NEAR(lit.GetOffset(0), 186.0 * 34.0 / 255.0, 1e-9);

    cube.SetUseLighting(false, nullptr);
    cube.MoveFaces(meshes, rect, 0, 24);
    EXPECT_EQ(meshes[Cube::kFront][0].colourTransformation.GetScale(0), 1.0);
}

// Where two faces towards the viewer meet, each reaches 20 twips (before
// perspective) beyond the edge, so that no hairline opens between them;
// every other edge, and so the cube's outline, stays where it is.
TEST(CubeEffectTest, OnlyEdgesBetweenTwoFacesTowardsTheViewerOverlap) {
    const ZoRect rect{0, 0, 3000, 2400};
    const TeskPoint3D sides[] = {{0, 1200, 0}, {3000, 1200, 0}, {1500, 0, 0}, {1500, 2400, 0}};
    Cube cube;
    TeskSWFMovie movie;
    Cube::FaceMeshes meshes = cube.BuildMeshes(movie, rect);
    for (const int32_t frame : {0, 5, 13}) {
        cube.MoveFaces(meshes, rect, frame, 24);
        std::array<TeskMatrix4, Cube::kFaceCount> m;
        std::array<TeskPoint3D, Cube::kFaceCount> centres;
        for (int32_t f = 0; f < Cube::kFaceCount; ++f) {
            m[f] = TeskCubeFaceMatrix(cube.GetCubeState(), f, rect);
            m[f].Apply(TeskCubeSpin(cube.GetCubeState(), frame, 24));
            centres[f] = m[f].Transform({1500, 1200, 0});
        }
        const auto towards = [&](size_t f) { return TeskFacesViewer(meshes[f][0].corners); };
        for (size_t f = 0; f < m.size(); ++f) {
            const TeskMatrix4 grown =
                TeskOverlappingCubeFace(m[f], rect, cube.GetCubeState().scaleSize / 100.0, 20);
            for (const TeskPoint3D& side : sides) {
                SCOPED_TRACE(testing::Message() << frame << " " << f << " " << side.x << side.y);
                const TeskPoint3D edge = m[f].Transform(side);
                // The face across the edge has the centre nearest to it.
                size_t across = f == 0 ? 1 : 0;
                for (size_t g = 0; g < m.size(); ++g) {
                    if (g != f &&
                        TeskLength(centres[g] - edge) < TeskLength(centres[across] - edge))
                        across = g;
                }
                const TeskPoint3D outwards = TeskNormalise(edge - centres[f]);
                const double beyond = TeskDot(grown.Transform(side) - edge, outwards);
                EXPECT_NEAR(beyond, towards(f) && towards(across) ? 20.0 : 0.0, 1e-6);
            }
        }
    }
}

TEST(CubeEffectTest, HalfWayTheCubeHasTurnedHalfAboutItsAxis) {
    Cube cube;
    for (const int32_t axis : {0, 90}) {
        cube.SetRotateAxis(axis, nullptr);
        const TeskMatrix4 half = TeskCubeSpin(cube.GetCubeState(), 12, 24);
        // About the vertical axis, or with 90 the horizontal one.
        const TeskPoint3D onAxis = axis == 0 ? TeskPoint3D{0, 100, 0} : TeskPoint3D{100, 0, 0};
        EXPECT_NEAR(TeskLength(half.Transform(onAxis) - onAxis), 0.0, 1e-6);
        EXPECT_NEAR(TeskLength(half.Transform({0, 0, 100}) - TeskPoint3D{0, 0, -100}), 0.0, 1e-6);
    }
    EXPECT_EQ(TeskCubeSpin(cube.GetCubeState(), 0, 24), TeskMatrix4());
}

}  // namespace
