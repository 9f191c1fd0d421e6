// The cube: its face slots, where its faces go, which of them face the
// viewer and how they are lit.
#include "effects/cube_effect.h"

#include <gtest/gtest.h>

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

}  // namespace
