#pragma once
// Draws display lists with Cairo: characters in depth order, masks clipping
// the depths they cover, sprites playing their own frames, and every colour
// through the colour transforms of all enclosing placements.
#include <cairo.h>

#include <span>

#include "render/centre_fill.h"
#include "render/movie_model.h"
#include "render/sample_context.h"

namespace ZoRender {

class FramePainter {
  public:
    /// Draws every sample of `samples`, each piece into all of them in turn.
    /// Their contexts' matrices map the stage's twips to device pixels, the
    /// same for all. Gradients and pictures are read at pixel centres.
    FramePainter(const MovieModel& movie, std::span<const SampleContext> samples,
                 PaintScratch& scratch);

    /// Draws `list` as frame `frame` of its timeline.
    void Paint(const DisplayList& list, int32_t frame);

  private:
    struct Placement {
        cairo_matrix_t matrix;  // character twips to device pixels
        ColourTransform colour;
        int nesting = 0;
    };

    void PaintRange(const DisplayList& list, size_t begin, size_t end, int32_t frame,
                    const Placement& parent);
    void PaintMasked(const DisplayList& list, size_t mask, size_t end, int32_t frame,
                     const Placement& parent);
    void PaintThroughCharacter(const DisplayList& list, size_t mask, size_t end, int32_t frame,
                               const Placement& parent);
    Placement Child(const DisplayEntry& entry, const Placement& parent) const;
    void PaintCharacter(uint16_t id, int32_t age, const Placement& at);
    void PaintShape(const ShapeCharacter& shape, const Placement& at);
    void FillSolid(const Path& path, const cairo_matrix_t& placement, Rgba colour);
    void PaintText(const TextCharacter& text, const Placement& at);
    void PaintLines(const ShapeCharacter& shape, const Placement& at);

    const MovieModel& movie_;
    std::span<const SampleContext> samples_;
    CentreFill centreFill_;
    cairo_matrix_t stage_;
};

}  // namespace ZoRender
