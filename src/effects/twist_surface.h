#pragma once
// The surface of the twist effect: the object turns about a screen axis
// through its centre by an angle that grows along the axis, so that it is
// wrung like a ribbon. "Continuous" wrings it by half a turn from end A to
// end B and turns the whole twist once over the effect; "Pulse" sends one
// full turn along the axis from A to B, the object flat before and after.
#include <cstdint>

#include "effects/screen_axis.h"
#include "effects/wave_surface.h"

/// The twist over one rectangle for given settings.
class TeskTwistSurface {
  public:
    /// `degrees`: the axis direction (0 up the screen, clockwise); `style` a
    /// TeskTwistEffect::TwistStyle (unknown styles run as "Continuous").
    TeskTwistSurface(double degrees, int32_t style, const ZoRect& rect) noexcept;

    /// How far the effect has got in frame `frame` of `frameCount`: a pulse
    /// runs from 0 at the first frame to 1 at the last, so that it starts and
    /// ends flat; the continuous twist stops a frame short of a full turn.
    double Progress(int32_t frame, int32_t frameCount) const noexcept;

    /// Where the rest point `rest` (twips) lies at `progress`, relative to the
    /// rectangle's centre, and which way the surface faces there.
    TeskSurfacePoint At(ZoPoint rest, double progress) const noexcept;

  private:
    TeskScreenAxis axis_;
    int32_t style_;
};
