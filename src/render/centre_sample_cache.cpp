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

// Most pieces share a block; a piece larger than this has a block of its own.
constexpr size_t kBlockPixels = 1 << 18;

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

void ReadAtCentres(cairo_pattern_t* pattern, const cairo_matrix_t& toPattern, const PixelBox& box,
                   cairo_surface_t* into) {
    cairo_matrix_t fromBox;
    cairo_matrix_init_translate(&fromBox, box.x, box.y);
    cairo_matrix_multiply(&fromBox, &fromBox, &toPattern);
    cairo_pattern_set_matrix(pattern, &fromBox);
    cairo_t* cr = cairo_create(into);
    cairo_set_operator(cr, CAIRO_OPERATOR_SOURCE);
    cairo_set_source(cr, pattern);
    cairo_paint(cr);
    cairo_destroy(cr);
    cairo_surface_flush(into);
}

bool CentreSampleKey::operator==(const CentreSampleKey& other) const noexcept {
    return std::memcmp(this, &other, sizeof other) == 0;
}

uint32_t* CentreSampleCache::Allocate(size_t pixels) {
    // Starts on 16 bytes, as Pixman's vector loops like their rows.
    const size_t rounded = (pixels + 3) & ~size_t{3};
    for (Block& block : blocks_)
        if (block.size - block.used >= rounded) {
            block.used += rounded;
            return block.pixels.get() + block.used - rounded;
        }
    const size_t size = std::max(rounded, kBlockPixels);
    blocks_.push_back({std::make_unique_for_overwrite<uint32_t[]>(size), size, rounded});
    return blocks_.back().pixels.get();
}

cairo_surface_t* CentreSampleCache::NewSurface(const PixelBox& box) {
    const size_t pixels = static_cast<size_t>(box.width) * static_cast<size_t>(box.height);
    auto* data = reinterpret_cast<unsigned char*>(Allocate(pixels));
    made_.emplace_back(cairo_image_surface_create_for_data(data, CAIRO_FORMAT_ARGB32, box.width,
                                                           box.height, box.width * 4),
                       cairo_surface_destroy);
    return made_.back().get();
}

cairo_surface_t* CentreSampleCache::Find(const CentreSampleKey& key) const {
    auto found = kept_.find(key);
    return found == kept_.end() ? nullptr : found->second;
}

void CentreSampleCache::Keep(const CentreSampleKey& key, cairo_surface_t* surface) {
    kept_.insert_or_assign(key, surface);
}

void CentreSampleCache::Clear() noexcept {
    kept_.clear();
    made_.clear();
    for (Block& block : blocks_)
        block.used = 0;
}

}  // namespace ZoRender
