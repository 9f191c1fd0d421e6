#pragma once
// The motion of the explode effect's pieces. Every piece draws its own share
// of spread, swirl, travel and tumbling from one random sequence, in mesh
// order, so the draws depend only on the settings and the number of pieces.
// In each frame a piece is tumbled about its own centre, then carried out
// from the object's centre, swirled round it and moved along z.
#include <cstdint>
#include <vector>

#include "effects/explode_effect.h"
#include "geometry/matrix_3d.h"

/// One share of the motion per piece of `mesh` over `rect` (twips), drawn
/// from the MSVC sequence seeded with 1.
std::vector<TeskExplodeEffect::TriangleInfo> TeskDrawExplodePieces(
    const TeskExplodeEffect::ExplodeState& state, const TeskMeshEffect::MeshTriangleList& mesh,
    const ZoRect& rect);

/// How far the explosion has got in frame `frame` of `frameCount`: 0 to 1,
/// or 1 to 0 for an implosion.
double TeskExplodeProgress(int32_t type, int32_t frame, int32_t frameCount) noexcept;

/// Where `piece` is at `progress`: the matrix that carries its rest corners
/// (twips, z = 0) to 3D points relative to `centre`, the rectangle's centre.
TeskMatrix4 TeskExplodePieceMatrix(const TeskExplodeEffect::TriangleInfo& piece, ZoPoint centre,
                                   double progress) noexcept;
