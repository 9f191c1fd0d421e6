#pragma once
// The lens: a circle of radius R about a centre M that pushes every point
// inside it away from M (magnify) or pulls it in (reduce), keeping its rim
// and its centre in place. With P = 10^(power / 50), a point at distance r
// moves to r' = (1 − (P^((R − r)/R) − 1) / (P − 1))·R.
#include <cstdint>

#include "platform/zo_rect.h"

class TeskLens {
  public:
    /// `radius` in twips; `power` −100 (reduce) to 100 (magnify), 0 none.
    TeskLens(int32_t radius, int32_t power) noexcept;

    /// Where the lens centred on `centre` puts the rest point `rest` (twips).
    /// Points it moves land on the 20-twip grid, truncated towards zero;
    /// points outside the lens or at its centre stay exactly where they are.
    ZoPoint Apply(ZoPoint rest, ZoPoint centre) const noexcept;

    /// The distance, as a share of the radius, at which a point at `share`
    /// of the radius from the centre ends up.
    double MovedShare(double share) const noexcept;

  private:
    int32_t radius_;
    double power_;  // P
};

/// Where the lens is on its path (0 start, 1 end) in frame `frame` of
/// `frameCount`: `repeat` runs along the path, each jumping back to the start
/// (`pathAtEnd` 0) or running back (`pathAtEnd` 1, "Return to beginning").
double TeskLensPathTime(int32_t pathAtEnd, int32_t repeat, int32_t frame,
                        int32_t frameCount) noexcept;
