#pragma once
// Where the cube effect puts its faces. The object rectangle is squeezed into
// a square of side 2·size about the origin (size = 0.8 · the smaller half
// side), turned on its face, folded onto its face of a cube of that side,
// scaled and tilted; every frame then spins the cube about the y axis leaned
// by the rotate axis angle in the screen plane.
#include <cstdint>

#include "effects/cube_effect.h"
#include "geometry/matrix_3d.h"

/// Half the cube's edge for `rect` (twips), before the cube's scale.
double TeskCubeSize(const ZoRect& rect) noexcept;

/// The matrix that carries face `face`'s object rectangle `rect` (twips)
/// onto its place on the tilted cube, relative to the rectangle's centre.
TeskMatrix4 TeskCubeFaceMatrix(const TeskCubeEffect::CubeState& state, int32_t face,
                               const ZoRect& rect) noexcept;

/// `faceMatrix` (spin included) of a face of a cube whose half edge is
/// `scale` · TeskCubeSize(`rect`), first stretching the face so that, if it
/// looks towards the viewer, it reaches `overlap` twips (on the scaled cube,
/// before perspective; at most an eighth of its half side) beyond each edge
/// whose other face looks towards the viewer too.
TeskMatrix4 TeskOverlappingCubeFace(const TeskMatrix4& faceMatrix, const ZoRect& rect, double scale,
                                    double overlap) noexcept;

/// The cube's spin in frame `frame` of `frameCount`: one full turn over the
/// effect, starting unturned.
TeskMatrix4 TeskCubeSpin(const TeskCubeEffect::CubeState& state, int32_t frame,
                         int32_t frameCount) noexcept;
