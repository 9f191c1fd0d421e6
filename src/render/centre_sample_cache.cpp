#include "render/centre_sample_cache.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "render/swf_parser.h"

namespace ZoRender {
namespace {

// Keys are hashed and compared as bytes: padding would hold garbage.
static_assert(sizeof(CentreSampleKey) == sizeof(const FillStyle*) + sizeof(cairo_matrix_t) +
                                             sizeof(ColourTransform) + sizeof(PixelBox));

struct Extents {
    double left = INFINITY, top = INFINITY, right = -INFINITY, bottom = -INFINITY;

    void Add(const cairo_matrix_t& m, double x, double y) {
        cairo_matrix_transform_point(&m, &x, &y);
        left = std::min(left, x);
        top = std::min(top, y);
        right = std::max(right, x);
        bottom = std::max(bottom, y);
    }
};

// A sample lies less than a pixel from its pixel's centre, so a pixel more on
// every side holds whatever any sample covers.
std::pair<int, int> PixelSpan(double low, double high, int size) {
    if (!std::isfinite(low) || !std::isfinite(high))
        return {0, 0};
    const double first = std::clamp(std::floor(low) - 1, 0.0, static_cast<double>(size));
    const double last = std::clamp(std::ceil(high) + 1, 0.0, static_cast<double>(size));
    return {static_cast<int>(first), static_cast<int>(last)};
}

}  // namespace

PixelBox SampledBox(const Path& path, const cairo_matrix_t& toDevice, int width, int height) {
    // A quadratic curve stays inside the hull of its ends and control point.
    Extents e;
    for (const PathCommand& c : path) {
        if (c.kind == PathCommand::Kind::kClose)
            continue;
        if (c.kind == PathCommand::Kind::kCurve)
            e.Add(toDevice, c.cx, c.cy);
        e.Add(toDevice, c.x, c.y);
    }
    const auto [left, right] = PixelSpan(e.left, e.right, width);
    const auto [top, bottom] = PixelSpan(e.top, e.bottom, height);
    return {left, top, right - left, bottom - top};
}

SurfaceRef ReadAtCentres(cairo_pattern_t* pattern, const cairo_matrix_t& toPattern,
                         const PixelBox& box) {
    SurfaceRef surface(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, box.width, box.height),
                       cairo_surface_destroy);
    cairo_matrix_t fromBox;
    cairo_matrix_init_translate(&fromBox, box.x, box.y);
    cairo_matrix_multiply(&fromBox, &fromBox, &toPattern);
    cairo_pattern_set_matrix(pattern, &fromBox);
    cairo_t* cr = cairo_create(surface.get());
    cairo_set_operator(cr, CAIRO_OPERATOR_SOURCE);
    cairo_set_source(cr, pattern);
    cairo_paint(cr);
    cairo_destroy(cr);
    cairo_surface_flush(surface.get());
    return surface;
}

bool CentreSampleKey::operator==(const CentreSampleKey& other) const noexcept {
    return std::memcmp(this, &other, sizeof other) == 0;
}

cairo_surface_t* CentreSampleCache::Find(const CentreSampleKey& key) const {
    auto found = surfaces_.find(key);
    return found == surfaces_.end() ? nullptr : found->second.get();
}

cairo_surface_t* CentreSampleCache::Add(const CentreSampleKey& key, SurfaceRef surface) {
    return surfaces_.insert_or_assign(key, std::move(surface)).first->second.get();
}

}  // namespace ZoRender
