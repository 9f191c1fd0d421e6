#pragma once
// Smooth shading: over each object triangle lies a semi-transparent gradient
// triangle that runs from the light of its darkest corner to that of its
// brightest. A gradient is linear, so the middle corner's light is matched by
// choosing among a few shapes whose third corner sits at different points
// along the gradient.
#include <array>
#include <cstdint>

#include "effects/light_model.h"
#include "flash/swf_entity.h"
#include "objects/object.h"

namespace ZoFlash {
class ZoSWFFrame;
}

/// The gradient triangles of one compilation.
class TeskLightTriangles {
  public:
    /// Gradient shapes, the middle corner at 0, 1/10, ..., 1 of the way.
    static constexpr int32_t kShapeCount = 11;

    /// Shapes lit by `model`; with `roundMovedPoints` the corners are snapped
    /// to whole pixels in every frame. Makes no shape when lighting is off.
    TeskLightTriangles(const TeskLightModel& model, bool roundMovedPoints);

    const TeskLightModel& GetModel() const noexcept { return model_; }

    /// Places the gradient triangle over the triangle `corners` (twips),
    /// whose corners have the light factors `light`, at `depth`. Nothing when
    /// lighting is off.
    void Place(const TeskTriangle& corners, const std::array<double, 3>& light,
               ZoFlash::ZoSWFFrame& frame, int32_t depth) const;

  private:
    TeskLightModel model_;
    bool roundMovedPoints_;
    std::array<ZoAutoInterface2<ZoFlash::ZoSWFObject>, kShapeCount> shapes_;
};
