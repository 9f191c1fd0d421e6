#include "effects/light_model.h"

#include <algorithm>
#include <cmath>

#include "flash/swf_transformation.h"
#include "platform/zo_units.h"

namespace {

// The unit vector towards the light: tilted by `angle` from the viewing axis
// towards the screen direction `direction` (0 up the screen, clockwise).
TeskPoint3D TowardsLight(int32_t direction, int32_t angle) noexcept {
    const double d = direction * kZoDegreesToRadians;
    const double a = angle * kZoDegreesToRadians;
    return {std::sin(a) * std::sin(d), -std::sin(a) * std::cos(d), std::cos(a)};
}

int32_t Mix(int32_t light, int32_t dark, double t) noexcept {
    return static_cast<int32_t>(light * t + dark * (1.0 - t));
}

}  // namespace

TeskLightModel::TeskLightModel(const TeskLighting& lighting) noexcept
    : lighting_(lighting),
      towardsLight_(TowardsLight(lighting.lightDirection, lighting.lightAngle)) {}

double TeskLightModel::LightFactor(const TeskPoint3D& normal) const noexcept {
    const double k = std::abs(TeskDot(normal, towardsLight_));
    const double f = lighting_.brightness / 50.0 + lighting_.contrast * (k - 1.0) / 25.0;
    return std::clamp(f, 0.0, 1.0);
}

double TeskLightModel::TriangleLightFactor(
    const std::array<TeskPoint3D, 3>& corners) const noexcept {
    const auto& [p0, p1, p2] = corners;
    return LightFactor(TeskNormalise(TeskCross(p1 - p0, p2 - p1)));
}

TeskLightColour TeskLightModel::LightColour(double t) const noexcept {
    const COLORREF light = lighting_.lightColour;
    const COLORREF dark = lighting_.darkColour;
    return {Mix(ZoGetRed(light), ZoGetRed(dark), t), Mix(ZoGetGreen(light), ZoGetGreen(dark), t),
            Mix(ZoGetBlue(light), ZoGetBlue(dark), t),
            Mix(lighting_.lightStrength, lighting_.darkStrength, t)};
}

void TeskLightModel::ApplyLight(double t, ZoFlash::ZoSWFColourTransformation& ct) const noexcept {
    const TeskLightColour c = LightColour(t);
    const double keep = (255 - c.strength) / 255.0;
    ct.SetScale(keep, keep, keep, 1.0);
    ct.SetOffset(c.red * (1.0 - keep), c.green * (1.0 - keep), c.blue * (1.0 - keep), 0.0);
}
