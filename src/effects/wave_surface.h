#pragma once
// The surface of the wave effect: a sine wave of height z that travels along a
// screen direction D across the object rectangle. Distances along D are
// measured from the rectangle's start edge, the line through S (the centre
// moved back half the rectangle's extent L along D) across D.
#include <cstdint>

#include "geometry/point_3d.h"
#include "platform/zo_rect.h"

/// A point of a surface and the direction it faces.
struct TeskSurfacePoint {
    TeskPoint3D position;  // twips, relative to the rectangle's centre
    TeskPoint3D normal;    // unit length
};

/// The wave over one rectangle for given settings; cheap to evaluate for
/// every corner of every frame.
class TeskWaveSurface {
  public:
    /// `wavelength` in hundredths and `amplitude` in thousandths of L,
    /// `direction` in degrees (0 up the screen, clockwise), `style` a
    /// TeskWaveEffect::WaveStyle (unknown styles run as "Continuous").
    TeskWaveSurface(int32_t wavelength, int32_t amplitude, int32_t direction, int32_t style,
                    const ZoRect& rect) noexcept;

    /// The rectangle's extent along the wave direction (twips).
    double Extent() const noexcept { return extent_; }

    /// Where the rest point `rest` (twips) lies at `progress` (0 at the first
    /// frame, towards 1 at the last) and which way the surface faces there.
    TeskSurfacePoint At(ZoPoint rest, double progress) const noexcept;

  private:
    // The surface height at distance `along` and its slope along D.
    struct Height {
        double z = 0.0;
        double slope = 0.0;
    };
    Height HeightAt(double along, double progress) const noexcept;

    int32_t style_;
    double extent_;           // L
    double dx_, dy_;          // D
    double startX_, startY_;  // S
    int32_t centreX_, centreY_;
    double wavelength_;  // λ, twips
    double amplitude_;   // A, twips
};
