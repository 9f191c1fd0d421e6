#pragma once
// The swirl of the spiral effect: every point of the object turns about the
// centre of the object rectangle and, in the spiralling styles, draws in
// towards it. Inner points turn more than outer ones; distances are measured
// against h, half the rectangle's diagonal.
#include <cstdint>

#include "platform/zo_rect.h"

/// The spiral over one rectangle for given settings.
class TeskSpiralMotion {
  public:
    /// `style` a TeskSpiralEffect::SpiralStyle (unknown styles rock like
    /// "Washing Machine"), `speed` 0..100.
    TeskSpiralMotion(int32_t style, int32_t speed, const ZoRect& rect) noexcept;

    /// How far frame `frame` of `frameCount` is through the swirl: the
    /// spiralling styles reach 1 at the last frame, the rocking one stops
    /// one frame short of it so that it can loop.
    double Progress(int32_t frame, int32_t frameCount) const noexcept;

    /// Where the rest point `rest` (twips) lies at `progress`.
    ZoPoint At(ZoPoint rest, double progress) const noexcept;

  private:
    // The turn (radians) and the share of its distance a point at distance
    // `r` from the centre keeps at `progress`; none when the point rests.
    struct Swirl {
        double turn = 0.0;
        double scale = 1.0;
    };
    Swirl SwirlAt(double r, double progress) const noexcept;

    int32_t style_;
    int32_t speed_;
    int32_t centreX_, centreY_;
    double halfDiagonal_;  // h
};
