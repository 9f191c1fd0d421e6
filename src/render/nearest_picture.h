#pragma once
// Unsmoothed pictures read the way the reference player's texture sampler
// reads them: the position within the picture is first rounded down to a
// 16-bit fraction of its side, then scaled to a pixel. Where a pixel centre
// lands a hair past a picture-pixel boundary, that rounding picks the pixel
// before, and so must we to draw the same frame.
#include <cairo.h>

namespace ZoRender {

struct PixelBox;

/// Fills `into` (premultiplied ARGB32, covering `box`) with the pixels of
/// `picture` (premultiplied ARGB32) found at each device pixel's centre;
/// `toPicture` maps device pixels to picture pixels. Outside the picture,
/// `repeat` tiles it, otherwise its edge pixels stretch.
void ReadNearestPicture(cairo_surface_t* picture, const cairo_matrix_t& toPicture, bool repeat,
                        const PixelBox& box, cairo_surface_t* into);

}  // namespace ZoRender
