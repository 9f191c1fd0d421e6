// The rotate 3D effect's turn and its flat light.
#include "effects/rotate_3d_effect.h"

#include <gtest/gtest.h>

#include "effect_fakes.h"
#include "media/swf_movie.h"
#include "objects/solid_object.h"

namespace {

const ZoRect kRect{0, 0, 2000, 1600};

bool Same(const ZoFlash::ZoSWFColourTransformation& a,
          const ZoFlash::ZoSWFColourTransformation& b) {
    for (int channel = 0; channel < 4; ++channel) {
        if (a.GetScale(channel) != b.GetScale(channel) ||
            a.GetOffset(channel) != b.GetOffset(channel))
            return false;
    }
    return true;
}

TeskMeshEffect::MeshTriangleList TurnedMesh(TeskRotate3DEffect& rotate, int32_t frame) {
    TeskSWFMovie movie;
    ZoAutoPtr<TeskObject> object = std::make_unique<TeskSolidObject>(0x0000FF);
    rotate.SetRotateObject(object, nullptr);
    effect_test::SetFixedGrid(rotate, TeskGridEffect::kRectangularNWSE, 3, 3);
    TeskMeshEffect::MeshTriangleList mesh = rotate.BuildMesh(movie, kRect);
    rotate.MoveMesh(mesh, kRect, frame, 24);
    return mesh;
}

TEST(Rotate3DEffectTest, StartsUnchangedAndIsEdgeOnAfterAQuarterTurn) {
    struct Case {
        int32_t axisDirection;
        int32_t frame;
        bool onVerticalLine, onHorizontalLine;
    };
    for (const Case& c : {Case{0, 0, false, false},
                          {0, 6, true, false},
                          {90, 6, false, true},
                          {90, 18, false, true}}) {
        SCOPED_TRACE(testing::Message() << c.axisDirection << " frame " << c.frame);
        TeskRotate3DEffect rotate;
        rotate.SetAxisDirection(c.axisDirection, nullptr);
        for (const auto& triangle : TurnedMesh(rotate, c.frame)) {
            for (size_t k = 0; k < 3; ++k) {
                const ZoPoint p = triangle.corners[k];
                if (c.onVerticalLine)
                    EXPECT_NEAR(p.x, 1000, 1);
                else if (c.onHorizontalLine)
                    EXPECT_NEAR(p.y, 800, 1);
                else
                    EXPECT_EQ(p, triangle.restCorners[k]);
            }
            EXPECT_EQ(triangle.depth, triangle.restDepth);  // nothing is hidden
        }
    }
}

TEST(Rotate3DEffectTest, EveryTriangleTakesTheOneFlatLightOfTheObject) {
    TeskRotate3DEffect rotate;
    const TeskLightModel light = rotate.GetLightModel();
    ZoFlash::ZoSWFColourTransformation facing;
    light.ApplyLight(light.LightFactor({0, 0, 1}), facing);
    // Both sides light alike: half a turn shows the back as lit as the front.
    for (const int32_t frame : {0, 12}) {
        for (const auto& triangle : TurnedMesh(rotate, frame))
            EXPECT_TRUE(Same(triangle.colourTransformation, facing)) << frame;
    }
    ZoFlash::ZoSWFColourTransformation edgeOn;
    light.ApplyLight(light.LightFactor({1, 0, 0}), edgeOn);
    EXPECT_TRUE(Same(TurnedMesh(rotate, 6).front().colourTransformation, edgeOn));
    rotate.SetUseLighting(false, nullptr);
    EXPECT_TRUE(Same(TurnedMesh(rotate, 3).front().colourTransformation,
                     ZoFlash::ZoSWFColourTransformation()));
}

}  // namespace
