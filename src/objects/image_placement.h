#pragma once
// Where a picture of w x h pixels lands in an object rectangle (twips).
#include <cstdint>

#include "platform/zo_colour.h"
#include "platform/zo_rect.h"

class ZoReferenceImage;

/// `rect` reduced to the aspect ratio width : height, centred in it.
ZoRect TeskFitAspect(const ZoRect& rect, int32_t width, int32_t height);

/// The rectangle a picture of `width` x `height` pixels covers in `rect` for
/// placement mode `placement`. Fixed placements keep the picture's own size
/// and are measured from the origin of the object space; the stretch modes
/// (and unknown codes) fill `rect`.
ZoRect TeskPlacedRectangle(int32_t placement, const ZoRect& rect, int32_t width, int32_t height);

/// The colour to key out of `picture` (null when it cannot be loaded): the
/// file's own transparent colour first; none for pictures with alpha or when
/// the user has not asked; then the top-left pixel or the user's colour.
COLORREF TeskEffectiveTransparentColour(const ZoReferenceImage* picture, bool useTransparent,
                                        bool autoTransparent, COLORREF transparentColour);
