#pragma once
// The frame loop that every mesh effect shares: one new frame of scene 0 per
// effect frame, filled by the effect.
#include <cassert>
#include <cstdint>

#include "effects/mesh_effect.h"
#include "flash/swf_sequence.h"
#include "media/swf_movie.h"

/// Appends `frameCount` frames to scene 0 of `movie` (which must exist) and
/// lets `fill(i, frame)` place frame i's objects.
template <typename Fill>
void TeskAddMeshFrames(TeskSWFMovie& movie, int32_t frameCount, Fill&& fill) {
    assert(movie.GetScene(0) && "the caller adds the movie's scene first");
    ZoFlash::ZoSWFScene& scene = *movie.GetScene(0);
    for (int32_t i = 0; i < frameCount; ++i)
        fill(i, *scene.AddFrame());
}

/// The whole compilation of an effect whose every frame is just its mesh,
/// built by `effect.BuildMesh(movie, rect)` and moved for frame i of N by
/// `effect.MoveMesh(mesh, rect, i, N)`.
template <typename Effect>
void TeskCompileMovingMesh(Effect& effect, TeskSWFMovie& movie, bool ignoreMovieClipOffset) {
    const ZoRect rect =
        effect.GetMovieRect(movie.GetWidth(), movie.GetHeight(), ignoreMovieClipOffset);
    TeskMeshEffect::MeshTriangleList mesh = effect.BuildMesh(movie, rect);
    const int32_t frameCount = effect.GetFrameCount(movie.GetFrameRate());
    TeskAddMeshFrames(movie, frameCount, [&](int32_t i, ZoFlash::ZoSWFFrame& frame) {
        effect.MoveMesh(mesh, rect, i, frameCount);
        TeskMeshEffect::PlaceMeshTriangles(mesh, frame);
    });
}
