#include "render/frame_painter.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "render/bitmap_surface.h"
#include "render/centre_sample_cache.h"

namespace ZoRender {
namespace {

// Sprites may place sprites; a file that nests them in a loop stops here.
constexpr int kMaxNesting = 32;
// Gradients span this square of their own space, mapped by the fill matrix.
constexpr double kGradientHalfSide = 16384;
// Pixman takes the device-to-pattern matrix in 16.16 fixed point; with a
// larger term Cairo fails and draws nothing more in the frame.
constexpr double kMaxPatternTerm = 32767;

enum FillType : uint8_t {
    kSolid = 0x00,
    kLinearGradient = 0x10,
    kRadialGradient = 0x12,
    kRepeatingBitmap = 0x40,
    kClippedBitmap = 0x41,
    kRepeatingHardBitmap = 0x42,
    kClippedHardBitmap = 0x43,
};

// A placement squashed to a line or a point covers no pixel. Cairo would
// refuse the matrix and stop drawing anything for the rest of the frame.
bool CoversArea(const cairo_matrix_t& m) noexcept {
    const double determinant = m.xx * m.yy - m.xy * m.yx;
    return determinant != 0 && std::isfinite(determinant);
}

void SetColour(cairo_t* cr, Rgba c) {
    cairo_set_source_rgba(cr, c.r / 255.0, c.g / 255.0, c.b / 255.0, c.a / 255.0);
}

void AppendPath(cairo_t* cr, const Path& path) {
    double x = 0, y = 0;
    for (const PathCommand& c : path) {
        switch (c.kind) {
            case PathCommand::Kind::kMove:
                cairo_move_to(cr, c.x, c.y);
                break;
            case PathCommand::Kind::kLine:
                cairo_line_to(cr, c.x, c.y);
                break;
            case PathCommand::Kind::kCurve:
                // The quadratic as the cubic with the same curve.
                cairo_curve_to(cr, x + 2.0 / 3.0 * (c.cx - x), y + 2.0 / 3.0 * (c.cy - y),
                               c.x + 2.0 / 3.0 * (c.cx - c.x), c.y + 2.0 / 3.0 * (c.cy - c.y), c.x,
                               c.y);
                break;
            case PathCommand::Kind::kClose:
                cairo_close_path(cr);
                continue;  // the pen stays at the contour's end
        }
        x = c.x;
        y = c.y;
    }
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

// A gradient squashed almost flat needs huge terms to reach its square;
// shrinking the square keeps every term at most one.
bool ReadGradient(const FillStyle& fill, cairo_matrix_t toGradient, const ColourTransform& colour,
                  const PixelBox& box, cairo_surface_t* into) {
    const double unit = std::min(1.0, 1 / LargestTerm(toGradient));
    cairo_matrix_t scale;
    cairo_matrix_init_scale(&scale, unit, unit);
    cairo_matrix_multiply(&toGradient, &toGradient, &scale);
    cairo_pattern_t* pattern = MakeGradient(fill, colour, kGradientHalfSide * unit);
    ReadAtCentres(pattern, toGradient, box, into);
    cairo_pattern_destroy(pattern);
    return true;
}

}  // namespace

FramePainter::FramePainter(const MovieModel& movie, cairo_t* cr, double sampleX, double sampleY,
                           PaintScratch& scratch)
    : movie_(movie),
      cr_(cr),
      centres_(scratch.centres),
      width_(cairo_image_surface_get_width(cairo_get_target(cr))),
      height_(cairo_image_surface_get_height(cairo_get_target(cr))) {
    coverage_ = CoverageMask(scratch.coverage, width_, height_);
    cairo_get_matrix(cr_, &stage_);
    cairo_matrix_init_translate(&toSample_, -sampleX, -sampleY);
    cairo_set_fill_rule(cr_, CAIRO_FILL_RULE_EVEN_ODD);
}

cairo_matrix_t FramePainter::GeometryMatrix(const cairo_matrix_t& placement) const {
    cairo_matrix_t m;
    cairo_matrix_multiply(&m, &placement, &toSample_);
    return m;
}

void FramePainter::UseGeometryMatrix(const cairo_matrix_t& placement) {
    const cairo_matrix_t m = GeometryMatrix(placement);
    cairo_set_matrix(cr_, &m);
}

void FramePainter::Paint(const DisplayList& list, int32_t frame) {
    PaintRange(list, 0, list.size(), frame, {stage_, {}, 0});
}

FramePainter::Placement FramePainter::Child(const DisplayEntry& entry,
                                            const Placement& parent) const {
    Placement child;
    cairo_matrix_multiply(&child.matrix, &entry.matrix, &parent.matrix);
    child.colour = parent.colour.After(entry.colour);
    child.nesting = parent.nesting + 1;
    return child;
}

void FramePainter::PaintRange(const DisplayList& list, size_t begin, size_t end, int32_t frame,
                              const Placement& parent) {
    for (size_t i = begin; i < end; ++i) {
        const DisplayEntry& entry = list[i];
        if (entry.clipDepth == 0) {
            PaintCharacter(entry.characterId, frame - entry.placedFrame, Child(entry, parent));
            continue;
        }
        size_t covered = i + 1;
        while (covered < end && list[covered].depth <= entry.clipDepth)
            ++covered;
        PaintMasked(list, i, covered, frame, parent);
        i = covered - 1;
    }
}

// A shape mask becomes a clip path; any other mask is drawn opaque into a
// mask of its own.
void FramePainter::PaintMasked(const DisplayList& list, size_t mask, size_t end, int32_t frame,
                               const Placement& parent) {
    const DisplayEntry& entry = list[mask];
    Placement at = Child(entry, parent);
    if (!CoversArea(at.matrix))
        return;  // an empty mask shows nothing of what it covers
    cairo_save(cr_);
    auto shape = movie_.shapes.find(entry.characterId);
    if (shape != movie_.shapes.end()) {
        UseGeometryMatrix(at.matrix);
        cairo_new_path(cr_);
        for (const Path& path : shape->second.paths.fills)
            AppendPath(cr_, path);
        cairo_clip(cr_);
        PaintRange(list, mask + 1, end, frame, parent);
    } else {
        // Both groups are made and used under the identity matrix, so their
        // patterns line up pixel for pixel.
        cairo_identity_matrix(cr_);
        cairo_push_group(cr_);
        PaintRange(list, mask + 1, end, frame, parent);
        cairo_pattern_t* content = cairo_pop_group(cr_);
        cairo_push_group(cr_);
        at.colour = ColourTransform::Opaque();
        PaintCharacter(entry.characterId, frame - entry.placedFrame, at);
        cairo_pattern_t* maskPattern = cairo_pop_group(cr_);
        cairo_set_source(cr_, content);
        cairo_mask(cr_, maskPattern);
        cairo_pattern_destroy(maskPattern);
        cairo_pattern_destroy(content);
    }
    cairo_restore(cr_);
}

void FramePainter::PaintCharacter(uint16_t id, int32_t age, const Placement& at) {
    if (at.nesting > kMaxNesting || !CoversArea(at.matrix))
        return;
    if (auto shape = movie_.shapes.find(id); shape != movie_.shapes.end()) {
        PaintShape(shape->second, at);
    } else if (auto text = movie_.texts.find(id); text != movie_.texts.end()) {
        PaintText(text->second, at);
    } else if (auto sprite = movie_.sprites.find(id); sprite != movie_.sprites.end()) {
        const auto& frames = sprite->second.frames;
        if (frames.empty())
            return;
        const auto count = static_cast<int32_t>(frames.size());
        const int32_t local = (age % count + count) % count;
        PaintRange(*frames[local], 0, frames[local]->size(), local, at);
    } else if (auto button = movie_.buttons.find(id); button != movie_.buttons.end()) {
        PaintRange(button->second, 0, button->second.size(), 0, at);
    }
}

void FramePainter::PaintShape(const ShapeCharacter& shape, const Placement& at) {
    for (size_t i = 0; i < shape.fills.size() && i < shape.paths.fills.size(); ++i) {
        const Path& path = shape.paths.fills[i];
        if (path.empty())
            continue;
        const FillStyle& fill = shape.fills[i];
        if (fill.type != kSolid) {
            FillFromCentres(fill, path, at);
            continue;
        }
        UseGeometryMatrix(at.matrix);
        cairo_new_path(cr_);
        AppendPath(cr_, path);
        SetColour(cr_, at.colour.Apply(fill.colour));
        cairo_fill(cr_);
    }
    PaintLines(shape, at);
}

void FramePainter::FillFromCentres(const FillStyle& fill, const Path& path, const Placement& at) {
    const std::optional<cairo_matrix_t> toFill = DeviceToFill(fill.matrix, at.matrix);
    const PixelBox box = SampledBox(path, at.matrix, width_, height_);
    if (!toFill || box.Empty())
        return;
    const CentreSampleKey key{&fill, *toFill, at.colour, box};
    cairo_surface_t* colours = centres_.Find(key);
    const bool bitmap = fill.type >= kRepeatingBitmap;
    if (!colours) {
        colours = centres_.NewSurface(box);
        const bool read = bitmap ? ReadBitmap(fill, *toFill, at.colour, box, colours)
                                 : ReadGradient(fill, *toFill, at.colour, box, colours);
        if (!read)
            return;
        centres_.Keep(key, colours);
    }
    const bool scalesAlpha = bitmap && at.colour.OnlyScalesAlpha();
    FillThrough(path, at.matrix, colours, box,
                scalesAlpha ? std::clamp(at.colour.mult[3], 0.0f, 1.0f) : 1.0);
}

// Movies before version 8 never smooth bitmaps (nor does any player of them).
bool FramePainter::ReadBitmap(const FillStyle& fill, const cairo_matrix_t& toBitmap,
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
    cairo_pattern_t* pattern = cairo_pattern_create_for_surface(picture.get());
    const bool repeat = fill.type == kRepeatingBitmap || fill.type == kRepeatingHardBitmap;
    cairo_pattern_set_extend(pattern, repeat ? CAIRO_EXTEND_REPEAT : CAIRO_EXTEND_PAD);
    cairo_pattern_set_filter(pattern, smooth ? CAIRO_FILTER_GOOD : CAIRO_FILTER_NEAREST);
    ReadAtCentres(pattern, toBitmap, box, into);
    cairo_pattern_destroy(pattern);
    if (!plain && !smooth)
        TransformPixels(into, colour);
    return true;
}

// This pass's sample of each pixel decides whether `colours` cover it: the
// path is drawn unsmoothed into the coverage mask, which scales them.
void FramePainter::FillThrough(const Path& path, const cairo_matrix_t& placement,
                               cairo_surface_t* colours, const PixelBox& box, double alpha) {
    cairo_t* mask = coverage_;
    const cairo_matrix_t geometry = GeometryMatrix(placement);
    cairo_set_matrix(mask, &geometry);
    cairo_new_path(mask);
    AppendPath(mask, path);
    cairo_set_source_rgba(mask, 0, 0, 0, alpha);
    cairo_fill(mask);
    // The colours end at the box, and so does the compositing.
    cairo_save(cr_);
    cairo_identity_matrix(cr_);
    cairo_set_source_surface(cr_, colours, box.x, box.y);
    cairo_pattern_set_filter(cairo_get_source(cr_), CAIRO_FILTER_NEAREST);
    cairo_mask_surface(cr_, cairo_get_target(mask), 0, 0);
    cairo_restore(cr_);
    ClearBox(cairo_get_target(mask), box);
}

// A line is at least one pixel wide, however far it is scaled down.
void FramePainter::PaintLines(const ShapeCharacter& shape, const Placement& at) {
    const double pixel =
        1.0 /
        std::sqrt(std::abs(at.matrix.xx * at.matrix.yy - at.matrix.xy * at.matrix.yx) + 1e-12);
    for (size_t i = 0; i < shape.lines.size() && i < shape.paths.lines.size(); ++i) {
        if (shape.paths.lines[i].empty())
            continue;
        UseGeometryMatrix(at.matrix);
        cairo_new_path(cr_);
        AppendPath(cr_, shape.paths.lines[i]);
        SetColour(cr_, at.colour.Apply(shape.lines[i].colour));
        cairo_set_line_width(cr_, std::max<double>(shape.lines[i].width, pixel));
        cairo_set_line_cap(cr_, CAIRO_LINE_CAP_ROUND);
        cairo_set_line_join(cr_, CAIRO_LINE_JOIN_ROUND);
        cairo_stroke(cr_);
    }
}

// Glyphs are drawn in a 1024-unit em square scaled to the run's height.
void FramePainter::PaintText(const TextCharacter& text, const Placement& at) {
    cairo_matrix_t textMatrix;
    cairo_matrix_multiply(&textMatrix, &text.matrix, &at.matrix);
    for (const TextRun& run : text.runs) {
        auto font = movie_.fonts.find(run.fontId);
        if (font == movie_.fonts.end())
            continue;
        cairo_new_path(cr_);
        for (const GlyphPlacement& g : run.glyphs) {
            if (g.glyph >= font->second.glyphs.size())
                continue;
            cairo_matrix_t glyph;
            cairo_matrix_init(&glyph, run.height / 1024.0, 0, 0, run.height / 1024.0, g.x, g.y);
            cairo_matrix_multiply(&glyph, &glyph, &textMatrix);
            if (!CoversArea(glyph))
                continue;
            UseGeometryMatrix(glyph);
            AppendPath(cr_, font->second.glyphs[g.glyph]);
        }
        cairo_identity_matrix(cr_);
        SetColour(cr_, at.colour.Apply(run.colour));
        cairo_fill(cr_);
    }
}

}  // namespace ZoRender
