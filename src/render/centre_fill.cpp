#include "render/centre_fill.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "render/bitmap_surface.h"
#include "render/nearest_picture.h"

namespace ZoRender {
namespace {

// Gradients span this square of their own space, mapped by the fill matrix.
constexpr double kGradientHalfSide = 16384;
// Pixman takes the device-to-pattern matrix in 16.16 fixed point; with a
// larger term Cairo fails and draws nothing more in the frame.
constexpr double kMaxPatternTerm = 32767;

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

// Every sample lies inside its pixel, so the pixels that the extents touch
// hold whatever any sample covers.
std::pair<int, int> PixelSpan(double low, double high, int size) {
    if (!std::isfinite(low) || !std::isfinite(high))
        return {0, 0};
    const double first = std::clamp(std::floor(low), 0.0, static_cast<double>(size));
    const double end = std::clamp(std::ceil(high), 0.0, static_cast<double>(size));
    return {static_cast<int>(first), static_cast<int>(end)};
}

// Device pixels to the fill's own space (gradient square or bitmap pixels);
// nothing for a fill squashed flat.
std::optional<cairo_matrix_t> DeviceToFill(const Matrix& fillMatrix,
                                           const cairo_matrix_t& placement) {
    cairo_matrix_t m = ToCairo(fillMatrix);
    cairo_matrix_multiply(&m, &m, &placement);
    if (cairo_matrix_invert(&m) != CAIRO_STATUS_SUCCESS)
        return std::nullopt;
    return m;
}

double LargestTerm(const cairo_matrix_t& m) noexcept {
    return std::max({std::abs(m.xx), std::abs(m.yx), std::abs(m.xy), std::abs(m.yy)});
}

// Paints `into`, which covers `box`, with `pattern` read at each pixel's
// centre; `toPattern` maps device pixels to the pattern.
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

cairo_pattern_t* MakeGradient(const FillStyle& fill, const ColourTransform& colour,
                              double halfSide) {
    cairo_pattern_t* pattern = fill.type == kLinearGradient
                                   ? cairo_pattern_create_linear(-halfSide, 0, halfSide, 0)
                                   : cairo_pattern_create_radial(0, 0, 0, 0, 0, halfSide);
    for (const auto& [ratio, stop] : fill.gradient) {
        const Rgba c = colour.Apply(stop);
        cairo_pattern_add_color_stop_rgba(pattern, ratio / 255.0, c.r / 255.0, c.g / 255.0,
                                          c.b / 255.0, c.a / 255.0);
    }
    cairo_pattern_set_extend(pattern, CAIRO_EXTEND_PAD);
    return pattern;
}

// A gradient squashed almost flat needs huge terms to reach its square;
// shrinking the square keeps every term at most one.
void ReadGradient(const FillStyle& fill, cairo_matrix_t toGradient, const ColourTransform& colour,
                  const PixelBox& box, cairo_surface_t* into) {
    const double unit = std::min(1.0, 1 / LargestTerm(toGradient));
    cairo_matrix_t scale;
    cairo_matrix_init_scale(&scale, unit, unit);
    cairo_matrix_multiply(&toGradient, &toGradient, &scale);
    cairo_pattern_t* pattern = MakeGradient(fill, colour, kGradientHalfSide * unit);
    ReadAtCentres(pattern, toGradient, box, into);
    cairo_pattern_destroy(pattern);
}

// The frame's coverage mask, made anew only when the frame's size changes.
cairo_t* CoverageMask(ContextRef& kept, int width, int height) {
    cairo_surface_t* surface = kept ? cairo_get_target(kept.get()) : nullptr;
    if (surface && cairo_image_surface_get_width(surface) == width &&
        cairo_image_surface_get_height(surface) == height)
        return kept.get();
    surface = cairo_image_surface_create(CAIRO_FORMAT_A8, width, height);
    kept.reset(cairo_create(surface));
    cairo_surface_destroy(surface);
    cairo_set_antialias(kept.get(), CAIRO_ANTIALIAS_NONE);
    cairo_set_fill_rule(kept.get(), CAIRO_FILL_RULE_EVEN_ODD);
    return kept.get();
}

void ClearBox(cairo_surface_t* a8, const PixelBox& box) {
    cairo_surface_flush(a8);
    const int stride = cairo_image_surface_get_stride(a8);
    unsigned char* row = cairo_image_surface_get_data(a8) + static_cast<ptrdiff_t>(box.y) * stride;
    for (int y = 0; y < box.height; ++y, row += stride)
        std::fill_n(row + box.x, box.width, 0);
    cairo_surface_mark_dirty_rectangle(a8, box.x, box.y, box.width, box.height);
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

CentreFill::CentreFill(const MovieModel& movie, std::span<const SampleContext> samples,
                       PaintScratch& scratch)
    : movie_(movie), samples_(samples), scratch_(scratch) {
    cairo_surface_t* frame = cairo_get_target(samples.front().cr);
    width_ = cairo_image_surface_get_width(frame);
    height_ = cairo_image_surface_get_height(frame);
    CoverageMask(scratch_.coverage, width_, height_);
    scratch_.colours.resize(static_cast<size_t>(width_) * static_cast<size_t>(height_));
}

void CentreFill::Fill(const FillStyle& fill, const Path& path, const cairo_matrix_t& placement,
                      const ColourTransform& colour) {
    const std::optional<cairo_matrix_t> toFill = DeviceToFill(fill.matrix, placement);
    const PixelBox box = SampledBox(path, placement, width_, height_);
    if (!toFill || box.Empty())
        return;
    SurfaceRef colours(cairo_image_surface_create_for_data(
                           reinterpret_cast<unsigned char*>(scratch_.colours.data()),
                           CAIRO_FORMAT_ARGB32, box.width, box.height, box.width * 4),
                       cairo_surface_destroy);
    const bool bitmap = fill.type >= kRepeatingBitmap;
    if (bitmap && !ReadBitmap(fill, *toFill, colour, box, colours.get()))
        return;
    if (!bitmap)
        ReadGradient(fill, *toFill, colour, box, colours.get());
    const bool scalesAlpha = bitmap && colour.OnlyScalesAlpha();
    // Fading the colours once keeps the coverage all or nothing, which Cairo
    // draws several times faster than a translucent mask.
    if (scalesAlpha && colour.mult[3] < 1)
        FadePixels(colours.get(), std::max(colour.mult[3], 0.0f));
    for (const SampleContext& sample : samples_)
        Composite(sample, path, placement, colours.get(), box);
}

// Movies before version 8 never smooth bitmaps (nor does any player of them).
bool CentreFill::ReadBitmap(const FillStyle& fill, const cairo_matrix_t& toBitmap,
                            const ColourTransform& colour, const PixelBox& box,
                            cairo_surface_t* into) const {
    auto found = movie_.bitmaps.find(fill.bitmapId);
    // Squashed so far that one of our pixels spans tens of thousands of its
    // own, the picture is at most a pixel or two across: leave it out.
    if (found == movie_.bitmaps.end() || LargestTerm(toBitmap) > kMaxPatternTerm)
        return false;
    const bool smooth = movie_.version >= 8 && fill.type <= kClippedBitmap;
    // Reading the nearest pixel keeps its colour, so the colour transform can
    // follow; smoothing mixes colours, so it must see them transformed.
    const bool plain = colour.OnlyScalesAlpha();
    SurfaceRef picture =
        plain || !smooth ? found->second : TransformedSurface(found->second.get(), colour);
    const bool repeat = fill.type == kRepeatingBitmap || fill.type == kRepeatingHardBitmap;
    if (smooth) {
        cairo_pattern_t* pattern = cairo_pattern_create_for_surface(picture.get());
        cairo_pattern_set_extend(pattern, repeat ? CAIRO_EXTEND_REPEAT : CAIRO_EXTEND_PAD);
        cairo_pattern_set_filter(pattern, CAIRO_FILTER_GOOD);
        ReadAtCentres(pattern, toBitmap, box, into);
        cairo_pattern_destroy(pattern);
    } else {
        ReadNearestPicture(picture.get(), toBitmap, repeat, box, into);
    }
    if (!plain && !smooth)
        TransformPixels(into, colour);
    return true;
}

// The sample decides whether `colours` cover a pixel: the path is drawn
// unsmoothed into the coverage mask, which scales them.
void CentreFill::Composite(const SampleContext& sample, const Path& path,
                           const cairo_matrix_t& placement, cairo_surface_t* colours,
                           const PixelBox& box) {
    cairo_t* mask = scratch_.coverage.get();
    const cairo_matrix_t geometry = GeometryMatrix(sample, placement);
    cairo_set_matrix(mask, &geometry);
    cairo_new_path(mask);
    AppendPath(mask, path);
    cairo_set_source_rgb(mask, 0, 0, 0);
    cairo_fill(mask);
    // The colours end at the box, and so does the compositing.
    cairo_t* cr = sample.cr;
    cairo_save(cr);
    cairo_identity_matrix(cr);
    cairo_set_source_surface(cr, colours, box.x, box.y);
    cairo_pattern_set_filter(cairo_get_source(cr), CAIRO_FILTER_NEAREST);
    cairo_mask_surface(cr, cairo_get_target(mask), 0, 0);
    cairo_restore(cr);
    ClearBox(cairo_get_target(mask), box);
}

}  // namespace ZoRender
