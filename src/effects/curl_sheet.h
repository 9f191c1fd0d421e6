#pragma once
// The sheet of the curl up effect. A straight fold line sweeps across the
// object rectangle along a screen direction; whatever the line has passed is
// wrapped round a cylinder of radius r standing on the line. "Tear Away Curl"
// lays the sheet over face down once it has gone half way round; "Roll Up
// Curl" keeps rolling it into a spiral whose radius shrinks by a fifth of r
// per radian. Curling underneath mirrors the curl below the screen plane.
#include <cstdint>

#include "effects/wave_surface.h"
#include "geometry/point_2d.h"

/// The sheet over one rectangle at one point of the sweep.
class TeskCurlSheet {
  public:
    /// `direction` in degrees (0 up the screen, clockwise), `radius` in
    /// percent of the rectangle's larger side, `style` TeskCurlUpEffect
    /// style bits, `progress` from 0 (the line just outside the rectangle,
    /// the sheet flat) to 1 (the line π·r beyond the far side).
    TeskCurlSheet(int32_t direction, int32_t radius, uint32_t style, const ZoRect& rect,
                  double progress) noexcept;

    /// How far the sweep has got in frame `frame` of `frameCount` for `style`:
    /// 0 to 1 over the frames, or 1 to 0 when the curl runs in reverse.
    static double Progress(uint32_t style, int32_t frame, int32_t frameCount) noexcept;

    /// The curl radius (twips).
    double Radius() const noexcept { return radius_; }

    /// Where the rest point `rest` (twips) lies, relative to the rectangle's
    /// centre, and which way the sheet faces there.
    TeskSurfacePoint At(ZoPoint rest) const noexcept;

  private:
    // The curled place of a point `distance` behind the line, measured from
    // the line's foot along `away`, before any mirroring.
    TeskSurfacePoint Curl(const TeskPoint2D& foot, const TeskPoint2D& away,
                          double distance) const noexcept;

    uint32_t style_;
    double radius_;
    ZoPoint centre_;
    TeskPoint2D a_, b_;  // the fold line
};
