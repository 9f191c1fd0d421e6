#pragma once
// Bitmaps of the movie as Cairo surfaces (premultiplied ARGB32), decoded once
// when the movie loads.
#include "render/colour_transform.h"
#include "render/movie_model.h"

namespace ZoRender {

/// The picture of a bitmap tag: lossless pixels as they are, JPEG data
/// through our codec, with its alpha plane when it has one. Throws
/// ParseError or ZoException when the data is broken.
SurfaceRef DecodeBitmap(const Bitmap& bitmap);

/// Applies `colour` to every pixel of `surface` in place.
void TransformPixels(cairo_surface_t* surface, const ColourTransform& colour);

/// Scales every pixel of `surface` in place by `alpha` (0 to 1), rounded as
/// Pixman scales colours by a mask.
void FadePixels(cairo_surface_t* surface, double alpha);

/// A copy of `surface` with `colour` applied to every pixel.
SurfaceRef TransformedSurface(cairo_surface_t* surface, const ColourTransform& colour);

}  // namespace ZoRender
