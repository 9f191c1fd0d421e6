#pragma once
// Mesh pieces: a triangle cut to the part of the object rectangle it covers.
#include <vector>

#include "objects/object.h"

/// The intersection of `triangle` and `rect` as a convex polygon of 0 to 7
/// vertices in twips (truncated toward zero), vertices in outline order.
std::vector<ZoPoint> TeskClipTriangle(const ZoRect& rect, const TeskTriangle& triangle);

/// Adds the outline of TeskClipTriangle(rect, triangle) to `shape` with its
/// current fill, closed back to the first vertex; nothing when it is empty.
void TeskOutlineTrianglePiece(ZoFlash::ZoSWFShape& shape, const ZoRect& rect,
                              const TeskTriangle& triangle);
