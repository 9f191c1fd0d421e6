#pragma once
// The turn of the rotate 3D effect: the whole object turns rigidly about a
// screen axis through its centre, once over the effect, so that every point
// keeps its foot on the axis and swings round it at the same angle.
#include <cstdint>

#include "effects/screen_axis.h"
#include "geometry/point_3d.h"

class TeskRotate3DMotion {
  public:
    /// `degrees`: the axis direction (0 up the screen, clockwise).
    TeskRotate3DMotion(int32_t degrees, const ZoRect& rect) noexcept;

    /// The angle turned in frame `frame` of `frameCount` (radians): one full
    /// turn over the effect, starting unturned.
    static double TurnAt(int32_t frame, int32_t frameCount) noexcept;

    /// Which way the turned object faces after `turn` radians (unit length).
    TeskPoint3D Normal(double turn) const noexcept;
    /// Where the rest point `rest` (twips) lies after `turn` radians,
    /// relative to the rectangle's centre.
    TeskPoint3D At(ZoPoint rest, double turn) const noexcept;

  private:
    TeskScreenAxis axis_;
};
