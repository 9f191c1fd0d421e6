#include "render/frame_painter.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace ZoRender {
namespace {

// Sprites may place sprites; a file that nests them in a loop stops here.
constexpr int kMaxNesting = 32;

// A placement squashed to a line or a point covers no pixel. Cairo would
// refuse the matrix and stop drawing anything for the rest of the frame.
bool CoversArea(const cairo_matrix_t& m) noexcept {
    const double determinant = m.xx * m.yy - m.xy * m.yx;
    return determinant != 0 && std::isfinite(determinant);
}

void SetColour(cairo_t* cr, Rgba c) {
    cairo_set_source_rgba(cr, c.r / 255.0, c.g / 255.0, c.b / 255.0, c.a / 255.0);
}

// Glyphs are drawn in a 1024-unit em square scaled to the run's height.
void AppendGlyphs(const SampleContext& sample, const TextRun& run, const FontCharacter& font,
                  const cairo_matrix_t& textMatrix) {
    for (const GlyphPlacement& g : run.glyphs) {
        if (g.glyph >= font.glyphs.size())
            continue;
        cairo_matrix_t glyph;
        cairo_matrix_init(&glyph, run.height / 1024.0, 0, 0, run.height / 1024.0, g.x, g.y);
        cairo_matrix_multiply(&glyph, &glyph, &textMatrix);
        if (!CoversArea(glyph))
            continue;
        UseGeometryMatrix(sample, glyph);
        AppendPath(sample.cr, font.glyphs[g.glyph]);
    }
}

}  // namespace

FramePainter::FramePainter(const MovieModel& movie, std::span<const SampleContext> samples,
                           PaintScratch& scratch)
    : movie_(movie), samples_(samples), centreFill_(movie, samples, scratch) {
    cairo_get_matrix(samples.front().cr, &stage_);
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
    const Placement at = Child(entry, parent);
    if (!CoversArea(at.matrix))
        return;  // an empty mask shows nothing of what it covers
    auto shape = movie_.shapes.find(entry.characterId);
    if (shape == movie_.shapes.end()) {
        PaintThroughCharacter(list, mask, end, frame, parent);
        return;
    }
    for (const SampleContext& sample : samples_) {
        cairo_save(sample.cr);
        UseGeometryMatrix(sample, at.matrix);
        cairo_new_path(sample.cr);
        for (const Path& path : shape->second.paths.fills)
            AppendPath(sample.cr, path);
        cairo_clip(sample.cr);
    }
    PaintRange(list, mask + 1, end, frame, parent);
    for (const SampleContext& sample : samples_)
        cairo_restore(sample.cr);
}

// Both groups are made and used under the identity matrix, so their patterns
// line up pixel for pixel.
void FramePainter::PaintThroughCharacter(const DisplayList& list, size_t mask, size_t end,
                                         int32_t frame, const Placement& parent) {
    for (const SampleContext& sample : samples_) {
        cairo_save(sample.cr);
        cairo_identity_matrix(sample.cr);
        cairo_push_group(sample.cr);
    }
    PaintRange(list, mask + 1, end, frame, parent);
    std::vector<cairo_pattern_t*> contents;
    for (const SampleContext& sample : samples_) {
        contents.push_back(cairo_pop_group(sample.cr));
        cairo_push_group(sample.cr);
    }
    const DisplayEntry& entry = list[mask];
    Placement at = Child(entry, parent);
    at.colour = ColourTransform::Opaque();
    PaintCharacter(entry.characterId, frame - entry.placedFrame, at);
    for (size_t i = 0; i < samples_.size(); ++i) {
        cairo_t* cr = samples_[i].cr;
        cairo_pattern_t* maskPattern = cairo_pop_group(cr);
        cairo_set_source(cr, contents[i]);
        cairo_mask(cr, maskPattern);
        cairo_pattern_destroy(maskPattern);
        cairo_pattern_destroy(contents[i]);
        cairo_restore(cr);
    }
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
        const FillStyle& fill = shape.fills[i];
        if (path.empty())
            continue;
        if (fill.type == kSolid)
            FillSolid(path, at.matrix, at.colour.Apply(fill.colour));
        else
            centreFill_.Fill(fill, path, at.matrix, at.colour);
    }
    PaintLines(shape, at);
}

void FramePainter::FillSolid(const Path& path, const cairo_matrix_t& placement, Rgba colour) {
    for (const SampleContext& sample : samples_) {
        UseGeometryMatrix(sample, placement);
        cairo_new_path(sample.cr);
        AppendPath(sample.cr, path);
        SetColour(sample.cr, colour);
        cairo_fill(sample.cr);
    }
}

// A line is at least one pixel wide, however far it is scaled down.
void FramePainter::PaintLines(const ShapeCharacter& shape, const Placement& at) {
    const double pixel =
        1.0 /
        std::sqrt(std::abs(at.matrix.xx * at.matrix.yy - at.matrix.xy * at.matrix.yx) + 1e-12);
    for (size_t i = 0; i < shape.lines.size() && i < shape.paths.lines.size(); ++i) {
        if (shape.paths.lines[i].empty())
            continue;
        for (const SampleContext& sample : samples_) {
            cairo_t* cr = sample.cr;
            UseGeometryMatrix(sample, at.matrix);
            cairo_new_path(cr);
            AppendPath(cr, shape.paths.lines[i]);
            SetColour(cr, at.colour.Apply(shape.lines[i].colour));
            cairo_set_line_width(cr, std::max<double>(shape.lines[i].width, pixel));
            cairo_set_line_cap(cr, CAIRO_LINE_CAP_ROUND);
            cairo_set_line_join(cr, CAIRO_LINE_JOIN_ROUND);
            cairo_stroke(cr);
        }
    }
}

void FramePainter::PaintText(const TextCharacter& text, const Placement& at) {
    cairo_matrix_t textMatrix;
    cairo_matrix_multiply(&textMatrix, &text.matrix, &at.matrix);
    for (const TextRun& run : text.runs) {
        auto font = movie_.fonts.find(run.fontId);
        if (font == movie_.fonts.end())
            continue;
        for (const SampleContext& sample : samples_) {
            cairo_new_path(sample.cr);
            AppendGlyphs(sample, run, font->second, textMatrix);
            cairo_identity_matrix(sample.cr);
            SetColour(sample.cr, at.colour.Apply(run.colour));
            cairo_fill(sample.cr);
        }
    }
}

}  // namespace ZoRender
