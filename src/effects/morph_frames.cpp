#include "effects/morph_frames.h"

#include "geometry/mesh_geometry.h"
#include "geometry/triangulation.h"

TeskMorphStep TeskMorphStepAt(int32_t frame, int32_t frameCount, bool returnToStart) noexcept {
    if (!returnToStart)
        return {frame, frameCount - 1};
    // The second half retraces the first backwards.
    const int32_t middle = (frameCount - 1) / 2;
    return {frame > middle ? frameCount - frame - 1 : frame, middle};
}

namespace {

// Truncated towards zero, as the mesh triangles' rest corners are.
ZoPoint Twips(const ZoGeometry::ZoDoublePoint& p) noexcept {
    return {static_cast<int32_t>(p.x), static_cast<int32_t>(p.y)};
}

TeskTriangle Mapped(const TeskTriangulation& triangulation, int32_t index, int32_t set,
                    const ZoRect& rect) {
    TeskPoint2D a, b, c;
    triangulation.GetTriangle(index, set, a, b, c);
    return {Twips(TeskMapToRect(a, rect)), Twips(TeskMapToRect(b, rect)),
            Twips(TeskMapToRect(c, rect))};
}

}  // namespace

std::vector<TeskMorphTrack> TeskMorphTracks(const TeskTriangulation& triangulation,
                                            const ZoRect& rect, int32_t endSet) {
    std::vector<TeskMorphTrack> tracks(static_cast<size_t>(triangulation.GetTriangleCount()));
    for (size_t i = 0; i < tracks.size(); ++i) {
        const auto index = static_cast<int32_t>(i);
        tracks[i] = {Mapped(triangulation, index, 0, rect),
                     Mapped(triangulation, index, endSet, rect)};
    }
    return tracks;
}

ZoPoint TeskMorphCorner(ZoPoint start, ZoPoint end, const TeskMorphStep& at) noexcept {
    const double still = at.last - at.step;
    const auto along = [&](int32_t from, int32_t to) {
        const double v = (from * still + to * static_cast<double>(at.step)) / at.last;
        return TeskRoundToPixel(static_cast<int32_t>(v));
    };
    return {along(start.x, end.x), along(start.y, end.y)};
}

std::vector<TeskTriangle> TeskMorphCorners(const std::vector<TeskMorphTrack>& tracks,
                                           const TeskMorphStep& at) {
    std::vector<TeskTriangle> corners(tracks.size());
    for (size_t i = 0; i < tracks.size(); ++i) {
        for (size_t k = 0; k < 3; ++k)
            corners[i][k] = TeskMorphCorner(tracks[i].start[k], tracks[i].end[k], at);
    }
    return corners;
}
