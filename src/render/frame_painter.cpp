#include "render/frame_painter.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "render/bitmap_surface.h"

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

// The pattern's matrix is taken as device to pattern space: set under the
// identity, the source is locked to device pixels.
void SetDeviceSource(cairo_t* cr, cairo_pattern_t* pattern, const cairo_matrix_t& toPattern) {
    cairo_pattern_set_matrix(pattern, &toPattern);
    cairo_matrix_t user;
    cairo_get_matrix(cr, &user);
    cairo_identity_matrix(cr);
    cairo_set_source(cr, pattern);
    cairo_set_matrix(cr, &user);
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

}  // namespace

FramePainter::FramePainter(const MovieModel& movie, cairo_t* cr, double sampleX, double sampleY)
    : movie_(movie), cr_(cr) {
    cairo_get_matrix(cr_, &stage_);
    cairo_matrix_init_translate(&toSample_, -sampleX, -sampleY);
    cairo_set_fill_rule(cr_, CAIRO_FILL_RULE_EVEN_ODD);
}

void FramePainter::UseGeometryMatrix(const cairo_matrix_t& placement) {
    cairo_matrix_t m;
    cairo_matrix_multiply(&m, &placement, &toSample_);
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
        UseGeometryMatrix(at.matrix);
        cairo_new_path(cr_);
        AppendPath(cr_, path);
        const FillStyle& fill = shape.fills[i];
        if (fill.type >= kRepeatingBitmap)
            FillBitmap(fill, at);
        else if (SetFillSource(fill, at))
            cairo_fill(cr_);
    }
    PaintLines(shape, at);
}

bool FramePainter::SetFillSource(const FillStyle& fill, const Placement& at) {
    if (fill.type == kSolid) {
        SetColour(cr_, at.colour.Apply(fill.colour));
        return true;
    }
    std::optional<cairo_matrix_t> toGradient = DeviceToFill(fill.matrix, at.matrix);
    if (!toGradient)
        return false;
    // A gradient squashed almost flat needs huge terms to reach its square;
    // shrinking the square keeps every term at most one.
    const double unit = std::min(1.0, 1 / LargestTerm(*toGradient));
    cairo_matrix_t scale;
    cairo_matrix_init_scale(&scale, unit, unit);
    cairo_matrix_multiply(&*toGradient, &*toGradient, &scale);
    cairo_pattern_t* pattern = MakeGradient(fill, at.colour, kGradientHalfSide * unit);
    SetDeviceSource(cr_, pattern, *toGradient);
    cairo_pattern_destroy(pattern);
    return true;
}

// Movies before version 8 never smooth bitmaps (nor does any player of them).
void FramePainter::FillBitmap(const FillStyle& fill, const Placement& at) {
    auto found = movie_.bitmaps.find(fill.bitmapId);
    const std::optional<cairo_matrix_t> toBitmap = DeviceToFill(fill.matrix, at.matrix);
    // Squashed so far that one of our pixels spans tens of thousands of its
    // own, the picture is at most a pixel or two across: leave it out.
    if (found == movie_.bitmaps.end() || !toBitmap || LargestTerm(*toBitmap) > kMaxPatternTerm) {
        cairo_new_path(cr_);
        return;
    }
    const bool plain = at.colour.OnlyScalesAlpha();
    SurfaceRef surface = plain ? found->second : TransformedSurface(found->second.get(), at.colour);
    cairo_pattern_t* pattern = cairo_pattern_create_for_surface(surface.get());
    const bool repeat = fill.type == kRepeatingBitmap || fill.type == kRepeatingHardBitmap;
    cairo_pattern_set_extend(pattern, repeat ? CAIRO_EXTEND_REPEAT : CAIRO_EXTEND_PAD);
    const bool smooth = movie_.version >= 8 && fill.type <= kClippedBitmap;
    cairo_pattern_set_filter(pattern, smooth ? CAIRO_FILTER_GOOD : CAIRO_FILTER_NEAREST);
    SetDeviceSource(cr_, pattern, *toBitmap);
    if (plain && at.colour.mult[3] != 1) {
        cairo_save(cr_);
        cairo_clip(cr_);
        cairo_paint_with_alpha(cr_, std::clamp(at.colour.mult[3], 0.0f, 1.0f));
        cairo_restore(cr_);
    } else {
        cairo_fill(cr_);
    }
    cairo_new_path(cr_);
    cairo_pattern_destroy(pattern);
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
