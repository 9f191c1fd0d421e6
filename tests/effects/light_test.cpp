#include <gtest/gtest.h>

#include <cmath>

#include "effects/light_model.h"
#include "effects/light_triangles.h"
#include "flash/swf_frame.h"
#include "flash/swf_transformation.h"

namespace {

using ZoFlash::ZoSWFColourTransformation;
using ZoFlash::ZoSWFFrame;

constexpr TeskPoint3D kTowardsViewer{0, 0, 1};

TEST(LightModelTest, FactorsOfTheDefaultsAndTheExtremes) {
    const TeskLightModel defaults{TeskLighting{}};
    EXPECT_NEAR(defaults.LightFactor(kTowardsViewer), 0.7320508, 1e-6);
    // Both sides light alike.
    EXPECT_DOUBLE_EQ(defaults.LightFactor({0, 0, -1}), defaults.LightFactor(kTowardsViewer));
    // The default light shines from the lower right (135°), 30° off the axis.
    EXPECT_DOUBLE_EQ(
        defaults.LightFactor({0.5 * std::sqrt(0.5), 0.5 * std::sqrt(0.5), std::sqrt(0.75)}), 1.0);
    EXPECT_NEAR(defaults.LightFactor({0.5, 0.5, std::sqrt(0.5)}), 0.9318517, 1e-6);
    EXPECT_DOUBLE_EQ(defaults.TriangleLightFactor({{{0, 0, 0}, {100, 0, 0}, {100, 100, 0}}}),
                     defaults.LightFactor(kTowardsViewer));

    struct Case {
        int32_t brightness, contrast;
        double factor;
    };
    for (const Case& c : {Case{100, 0, 1.0}, Case{0, 100, 0.0}, Case{50, 0, 1.0}}) {
        TeskLighting lighting;
        lighting.brightness = c.brightness;
        lighting.contrast = c.contrast;
        const TeskLightModel model(lighting);
        EXPECT_EQ(model.LightFactor(kTowardsViewer), c.factor) << c.brightness << "/" << c.contrast;
        // Whatever the surface's slant.
        EXPECT_EQ(model.LightFactor({1, 0, 0}), c.factor);
    }
}

TEST(LightModelTest, ColoursMixLightAndShadowAndShadeFlat) {
    const TeskLightModel defaults{TeskLighting{}};
    const double f = defaults.LightFactor(kTowardsViewer);
    EXPECT_EQ(defaults.LightColour(f), (TeskLightColour{186, 186, 186, 34}));
    EXPECT_EQ(defaults.LightColour(0.0), (TeskLightColour{0, 0, 0, 100}));
    EXPECT_EQ(defaults.LightColour(1.0), (TeskLightColour{255, 255, 255, 10}));

    ZoSWFColourTransformation ct;
    defaults.ApplyLight(f, ct);
    EXPECT_DOUBLE_EQ(ct.GetScale(0), 221.0 / 255.0);
    EXPECT_DOUBLE_EQ(ct.GetScale(3), 1.0);
    EXPECT_NEAR(ct.GetOffset(1), 186.0 * 34.0 / 255.0, 1e-9);
    EXPECT_EQ(ct.GetOffset(3), 0.0);

    TeskLighting tinted;
    tinted.lightColour = 0x0000FF;  // red
    tinted.darkColour = 0xFF0000;   // blue
    tinted.lightStrength = 200;
    tinted.darkStrength = 0;
    EXPECT_EQ(TeskLightModel(tinted).LightColour(0.25), (TeskLightColour{63, 0, 191, 50}));
}

struct Placed {
    int shape;  // index of the gradient shape among those placed in the test
    ZoFlash::ZoFCxformRecord cxform;
    ZoFlash::ZoFMatrixRecord matrix;
};

TEST(LightTrianglesTest, PicksTheGradientOfTheMiddleCornerAndSpansTheColours) {
    const TeskLightTriangles lights(TeskLightModel(TeskLighting{}), false);
    const TeskTriangle corners{{{0, 0}, {1000, 0}, {1000, 1000}}};
    ZoSWFFrame frame;
    lights.Place(corners, {0.7, 0.7, 0.7}, frame, 300);   // flat: shape 0, no scale
    lights.Place(corners, {0.2, 1.0, 0.6}, frame, 301);   // middle at half: shape 5
    lights.Place(corners, {1.0, 0.0, 0.96}, frame, 302);  // 0.96 rounds to shape 10
    const auto placed = frame.GetPlacements();
    ASSERT_EQ(placed.size(), 3u);
    EXPECT_EQ(placed[0].depth, 300);
    EXPECT_EQ(placed[0].cxform.redMult, 0);
    EXPECT_EQ(placed[0].cxform.alphaMult, 0);
    EXPECT_EQ(placed[0].cxform.redAdd, 178);  // trunc(255 · 0.7)
    EXPECT_EQ(placed[0].cxform.alphaAdd, 37);
    EXPECT_NE(placed[1].object.Get(), placed[0].object.Get());
    EXPECT_NE(placed[2].object.Get(), placed[1].object.Get());
    // Darkest corner 0 (0.2 → 51, strength 82), brightest corner 1 (1.0 → 255, 10).
    EXPECT_EQ(placed[1].cxform.redAdd, 51);
    EXPECT_EQ(placed[1].cxform.alphaAdd, 82);
    EXPECT_EQ(placed[1].cxform.redMult, 205);  // (255 − 51) / 255 · 256
    EXPECT_EQ(placed[1].cxform.alphaMult, -72);
    // The gradient's top corner (0, 0) lands on the darkest corner: corner 1 of
    // the third triangle, at (1000, 0).
    EXPECT_EQ(placed[2].matrix.translateX.value, 1000);
    EXPECT_EQ(placed[2].matrix.translateY.value, 0);

    // The same shapes serve every placement of the compilation.
    ZoSWFFrame again;
    lights.Place(corners, {0.2, 1.0, 0.6}, again, 301);
    EXPECT_EQ(again.GetPlacements()[0].object.Get(), placed[1].object.Get());
}

TEST(LightTrianglesTest, SnapsCornersWhenAskedAndPlacesNothingWithoutLighting) {
    const TeskTriangle corners{{{13, 9}, {1000, 0}, {1000, 1000}}};
    ZoSWFFrame frame;
    TeskLightTriangles(TeskLightModel(TeskLighting{}), true)
        .Place(corners, {0.5, 0.6, 0.7}, frame, 200);
    ASSERT_EQ(frame.GetPlacements().size(), 1u);
    EXPECT_EQ(frame.GetPlacements()[0].matrix.translateX.value, 20);
    EXPECT_EQ(frame.GetPlacements()[0].matrix.translateY.value, 0);

    TeskLighting off;
    off.useLighting = false;
    ZoSWFFrame dark;
    TeskLightTriangles(TeskLightModel(off), false).Place(corners, {0.5, 0.6, 0.7}, dark, 200);
    EXPECT_TRUE(dark.GetPlacements().empty());
}

}  // namespace
