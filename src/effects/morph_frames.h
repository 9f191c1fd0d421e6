#pragma once
// The morph's motion: every mesh corner travels in a straight line from its
// place on the start object to its place on the end object while the end
// object fades in over the start object; the last step shows the end object
// whole. With "Return to start" the morph runs there and back, turning at
// the middle frame.
#include <array>
#include <cstdint>
#include <vector>

#include "objects/object.h"
#include "platform/zo_rect.h"

class TeskTriangulation;

/// Where one frame stands in the morph: step `step` of `last`.
struct TeskMorphStep {
    int32_t step = 0;
    int32_t last = 0;

    /// The end object alone, unwarped.
    bool ShowsEnd() const noexcept { return step == last; }
    /// The end object's opacity over the start object, 0 to 1.
    double EndAlpha() const noexcept { return static_cast<double>(step) / last; }
};

/// The step of frame `frame` of `frameCount`.
TeskMorphStep TeskMorphStepAt(int32_t frame, int32_t frameCount, bool returnToStart) noexcept;

/// One mesh triangle's corners (twips) on the start object and on the end object.
struct TeskMorphTrack {
    TeskTriangle start;
    TeskTriangle end;
};

/// Every triangle of `triangulation` mapped onto `rect`: point set 0 gives
/// the start corners, `endSet` the end corners, each truncated to twips as
/// the mesh triangles' rest corners are.
std::vector<TeskMorphTrack> TeskMorphTracks(const TeskTriangulation& triangulation,
                                            const ZoRect& rect, int32_t endSet);

/// The corner on its way from `start` to `end` at `at` (not the last step),
/// truncated to twips and snapped to a whole pixel.
ZoPoint TeskMorphCorner(ZoPoint start, ZoPoint end, const TeskMorphStep& at) noexcept;

/// Every corner of `tracks` at `at` (not the last step).
std::vector<TeskTriangle> TeskMorphCorners(const std::vector<TeskMorphTrack>& tracks,
                                           const TeskMorphStep& at);
