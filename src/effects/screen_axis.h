#pragma once
// An axis in the screen plane through the centre of an object rectangle, about
// which the twist and the rotate 3D effect turn the object. It runs from end A
// to end B across the rectangle's whole extent along its direction.
#include <cstdint>

#include "geometry/point_2d.h"
#include "platform/zo_rect.h"

/// Where a point lies relative to a TeskScreenAxis.
struct TeskAxisFoot {
    /// The foot of the perpendicular from the point onto the axis (twips).
    TeskPoint2D foot;
    /// How far along the axis the foot lies: 0 at end A, 1 at end B (not clamped).
    double along = 0.0;
    /// The point minus its foot.
    TeskPoint2D offset;
    /// The length of `offset`, negative on the clockwise side of the axis.
    double distance = 0.0;
};

/// The axis at `degrees` (0 up the screen, growing clockwise) over `rect`.
class TeskScreenAxis {
  public:
    TeskScreenAxis(double degrees, const ZoRect& rect) noexcept;

    /// The axis direction's sine and cosine; it points from A to B, (sin, −cos).
    double Sin() const noexcept { return sin_; }
    double Cos() const noexcept { return cos_; }
    /// The distance from A to B (twips).
    double Length() const noexcept { return 2.0 * halfLength_; }
    /// The rectangle's centre, truncated to whole twips as the projection has it.
    ZoPoint Centre() const noexcept { return centre_; }

    /// Where `point` (twips) lies relative to the axis. An axis without length
    /// (an empty rectangle) has every foot at A.
    TeskAxisFoot FootOf(ZoPoint point) const noexcept;

  private:
    double sin_, cos_;
    double halfLength_;
    ZoPoint centre_;
    TeskPoint2D a_, b_;
};
