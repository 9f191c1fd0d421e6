#include "effects/light_triangles.h"

#include <vector>

#include "effects/mesh_effect.h"
#include "flash/swf_frame.h"
#include "flash/swf_shape.h"
#include "geometry/mesh_geometry.h"

using ZoFlash::ZoSWFColour;

namespace {

// Every shape's gradient runs down its left edge, from (0, 0) to (0, kSide).
// The shapes are as large as rounding a placement's terms allows (to half a
// twip), so that the terms that scale them onto small triangles take few
// bits; a multiple of ten keeps every third corner on a whole twip.
constexpr int32_t kSide = ZoFlash::kZoHalfTwipExtent / 1000 * 1000;
static_assert(kSide % (TeskLightTriangles::kShapeCount - 1) == 0);

// Where shape `index` has its third corner on the right: `index` steps of the
// way down the gradient.
constexpr ZoPoint ThirdCorner(int32_t index) noexcept {
    return {kSide, index * kSide / (TeskLightTriangles::kShapeCount - 1)};
}

ZoAutoInterface2<ZoFlash::ZoSWFShape> GradientTriangle(int32_t index) {
    auto shape = ZoMakeCounted<ZoFlash::ZoSWFShape>();
    // Transparent black to opaque white: the colour transformation stretches
    // this onto the light of the darkest and the brightest corner.
    std::vector<ZoSWFColour> colours{ZoSWFColour(0x000000, 0), ZoSWFColour(0xFFFFFF, 255)};
    shape->SetLinearGradientFill(std::move(colours), {0, 0}, {0, kSide}, kSide, nullptr);
    shape->MoveTo(0, 0);
    shape->LineTo(0, kSide);
    shape->LineTo(ThirdCorner(index));
    shape->LineTo(0, 0);
    return shape;
}

// Corner indices ordered darkest, middle, brightest; the first of equals wins.
std::array<int, 3> ByLight(const std::array<double, 3>& light) noexcept {
    int darkest = 0;
    int brightest = 0;
    for (int k = 1; k < 3; ++k) {
        if (light[k] < light[darkest])
            darkest = k;
        if (light[k] > light[brightest])
            brightest = k;
    }
    if (darkest == brightest)
        return {0, 1, 2};
    return {darkest, 3 - darkest - brightest, brightest};
}

}  // namespace

TeskLightTriangles::TeskLightTriangles(const TeskLightModel& model, bool roundMovedPoints)
    : model_(model), roundMovedPoints_(roundMovedPoints) {
    if (!model_.IsOn())
        return;
    for (int32_t i = 0; i < kShapeCount; ++i)
        shapes_[i] = GradientTriangle(i);
}

void TeskLightTriangles::Place(const TeskTriangle& corners, const std::array<double, 3>& light,
                               ZoFlash::ZoSWFFrame& frame, int32_t depth) const {
    if (!model_.IsOn())
        return;
    const auto [low, middle, high] = ByLight(light);
    const double range = light[high] - light[low];
    const int32_t index =
        range > 0.0
            ? static_cast<int32_t>((kShapeCount - 1) * (light[middle] - light[low]) / range + 0.5)
            : 0;

    auto corner = [&](int k) {
        return roundMovedPoints_ ? TeskRoundToPixel(corners[k]) : corners[k];
    };
    ZoFlash::ZoSWFTransformation t;
    TeskMeshEffect::TriangleTransform(t, {0, 0}, corner(low), ThirdCorner(index), corner(middle),
                                      {0, kSide}, corner(high));

    const TeskLightColour dark = model_.LightColour(light[low]);
    const TeskLightColour bright = model_.LightColour(light[high]);
    ZoFlash::ZoSWFColourTransformation ct;
    ct.SetOffset(dark.red, dark.green, dark.blue, dark.strength);
    ct.SetScale((bright.red - dark.red) / 255.0, (bright.green - dark.green) / 255.0,
                (bright.blue - dark.blue) / 255.0, (bright.strength - dark.strength) / 255.0);
    frame.PlaceObject(shapes_[index], nullptr, depth, t, 0, -1, ct);
}
