#include "geometry/perspective.h"

#include <algorithm>
#include <numeric>

ZoPoint TeskProject(const TeskPoint3D& p, const ZoRect& rect) noexcept {
    const ZoPoint centre{(rect.left + rect.right) / 2, (rect.top + rect.bottom) / 2};
    const double eye = TeskEyeDistance(rect);
    if (eye <= 0.0)
        return centre;
    // Keeps points at or behind the eye finite; the effects never get there.
    const double distance = std::max(eye - p.z, eye / 64.0);
    return {centre.x + static_cast<int32_t>(eye * p.x / distance),
            centre.y + static_cast<int32_t>(eye * p.y / distance)};
}

bool TeskFacesViewer(const std::array<ZoPoint, 3>& projected) noexcept {
    const auto& [a, b, c] = projected;
    const int64_t cross = int64_t{b.x - a.x} * (c.y - b.y) - int64_t{b.y - a.y} * (c.x - b.x);
    return cross > 0;
}

std::vector<int32_t> TeskBackToFront(std::span<const double> depths) {
    std::vector<int32_t> order(depths.size());
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(order.begin(), order.end(),
                     [&](int32_t a, int32_t b) { return depths[a] < depths[b]; });
    return order;
}
