#pragma once
// The light of the 3D effects: a triangle is lit by how squarely it faces a
// light that shines from a direction tilted away from the viewing axis, and
// its colour is blended towards a mix of the light and shadow colours by a
// strength that follows the same mix.
#include <array>
#include <cstdint>

#include "geometry/point_3d.h"
#include "platform/zo_colour.h"

namespace ZoFlash {
class ZoSWFColourTransformation;
}

/// The lighting settings of a 3D effect.
struct TeskLighting {
    bool useLighting = true;
    int32_t brightness = 50;            // 0..100
    int32_t contrast = 50;              // 0..100
    COLORREF lightColour = 0x00FFFFFF;  // white
    int32_t lightStrength = 10;         // 0..255
    COLORREF darkColour = 0x00000000;   // black
    int32_t darkStrength = 100;         // 0..255
    int32_t lightDirection = 135;       // degrees on the screen, 0 up, clockwise
    int32_t lightAngle = 30;            // degrees away from the viewing axis
    friend bool operator==(const TeskLighting&, const TeskLighting&) = default;
};

/// A colour to blend towards and how strongly (each 0..255).
struct TeskLightColour {
    int32_t red = 0;
    int32_t green = 0;
    int32_t blue = 0;
    int32_t strength = 0;
    friend bool operator==(const TeskLightColour&, const TeskLightColour&) = default;
};

/// The settings turned into what shading needs, computed once per compilation.
class TeskLightModel {
  public:
    explicit TeskLightModel(const TeskLighting& lighting) noexcept;

    bool IsOn() const noexcept { return lighting_.useLighting; }

    /// 0 (shadow) to 1 (full light) for a surface with unit normal `normal`;
    /// both sides of a surface light alike.
    double LightFactor(const TeskPoint3D& normal) const noexcept;
    /// LightFactor of the triangle's unit normal (p1 − p0) × (p2 − p1).
    double TriangleLightFactor(const std::array<TeskPoint3D, 3>& corners) const noexcept;
    /// The shadow colour and strength mixed with the light's by `t` (0..1),
    /// each channel truncated.
    TeskLightColour LightColour(double t) const noexcept;
    /// Flat shading: `ct` blends a triangle's colours towards LightColour(t)
    /// by its strength.
    void ApplyLight(double t, ZoFlash::ZoSWFColourTransformation& ct) const noexcept;

  private:
    TeskLighting lighting_;
    TeskPoint3D towardsLight_;
};
