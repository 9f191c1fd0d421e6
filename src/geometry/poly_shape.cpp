#include "geometry/poly_shape.h"

#include <algorithm>
#include <stdexcept>

namespace ZoGeometry {

int32_t ZoPolyShape::AddContour() {
    contours_.emplace_back();
    return ContourCount() - 1;
}

void ZoPolyShape::AddPoint(int32_t contour, ZoPolyPointKind kind, ZoDoublePoint point) {
    contours_.at(contour).push_back({point, kind});
}

void ZoPolyShape::RemoveContour(int32_t index) {
    if (index < 0 || index >= ContourCount())
        throw std::out_of_range("ZoPolyShape::RemoveContour");
    contours_.erase(contours_.begin() + index);
}

void ZoPolyShape::Transform(const ZoAffineMatrix& matrix) noexcept {
    for (ZoPolyContour& contour : contours_) {
        for (ZoPolyPoint& record : contour)
            record.point = matrix.Apply(record.point);
    }
}

ZoDoubleRect ZoPolyShape::GetBounds() const noexcept {
    bool any = false;
    ZoDoubleRect bounds;
    for (const ZoPolyContour& contour : contours_) {
        for (const ZoPolyPoint& record : contour) {
            const ZoDoublePoint p = record.point;
            if (!any) {
                bounds = {p.x, p.y, p.x, p.y};
                any = true;
                continue;
            }
            bounds.left = std::min(bounds.left, p.x);
            bounds.top = std::min(bounds.top, p.y);
            bounds.right = std::max(bounds.right, p.x);
            bounds.bottom = std::max(bounds.bottom, p.y);
        }
    }
    return bounds;
}

}  // namespace ZoGeometry
