#include "objects/image_placement.h"

#include "media/reference_image.h"
#include "objects/image_object.h"
#include "platform/zo_units.h"

namespace {

/// Halves toward zero, so a picture larger than the rectangle overhangs
/// both sides alike.
constexpr int32_t Half(int32_t value) noexcept {
    return value / 2;
}

}  // namespace

ZoRect TeskFitAspect(const ZoRect& rect, int32_t width, int32_t height) {
    if (width <= 0 || height <= 0 || rect.IsEmpty())
        return rect;
    // Compare width/height ratios without division: w * H against h * W.
    const int64_t pictureByRect = int64_t(width) * rect.Height();
    const int64_t rectByPicture = int64_t(height) * rect.Width();
    ZoRect fitted = rect;
    if (pictureByRect > rectByPicture) {
        const auto fittedHeight = static_cast<int32_t>(int64_t(rect.Width()) * height / width);
        fitted.top = rect.top + Half(rect.Height() - fittedHeight);
        fitted.bottom = fitted.top + fittedHeight;
    } else {
        const auto fittedWidth = static_cast<int32_t>(int64_t(rect.Height()) * width / height);
        fitted.left = rect.left + Half(rect.Width() - fittedWidth);
        fitted.right = fitted.left + fittedWidth;
    }
    return fitted;
}

ZoRect TeskPlacedRectangle(int32_t placement, const ZoRect& rect, int32_t width, int32_t height) {
    if (placement == kTeskStretchKeepAspect)
        return TeskFitAspect(rect, width, height);
    if (placement < kTeskFixedTopLeft || placement > kTeskFixedBottomRight)
        return rect;
    ZoRect placed{0, 0, ZoPixelsToTwips(width), ZoPixelsToTwips(height)};
    const int32_t dx = rect.Width() - placed.Width();
    const int32_t dy = rect.Height() - placed.Height();
    // Columns: left, centre, right; rows: top, centre, bottom.
    const int32_t column = placement % 3;
    const int32_t row = placement / 3;
    placed.Offset(column == 0   ? 0
                  : column == 1 ? Half(dx)
                                : dx,
                  row == 0   ? 0
                  : row == 1 ? Half(dy)
                             : dy);
    return placed;
}

COLORREF TeskEffectiveTransparentColour(const ZoReferenceImage* picture, bool useTransparent,
                                        bool autoTransparent, COLORREF transparentColour) {
    if (picture && picture->GetTransparentColour() != kZoNoColour)
        return picture->GetTransparentColour();
    if ((picture && picture->HasAlpha()) || !useTransparent)
        return kZoNoColour;
    if (picture && autoTransparent)
        return picture->GetCornerColour();
    return transparentColour;
}
