#pragma once
// Draws display lists with Cairo: characters in depth order, masks clipping
// the depths they cover, sprites playing their own frames, and every colour
// through the colour transforms of all enclosing placements.
#include <cairo.h>

#include "render/movie_model.h"

namespace ZoRender {

class FramePainter {
  public:
    /// Draws into `cr`, whose matrix maps the stage's twips to its pixels.
    /// Shapes cover a pixel when they cover the point (`sampleX`, `sampleY`)
    /// pixels from its centre; gradients and pictures are read at the centre.
    FramePainter(const MovieModel& movie, cairo_t* cr, double sampleX, double sampleY);

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
    Placement Child(const DisplayEntry& entry, const Placement& parent) const;
    void PaintCharacter(uint16_t id, int32_t age, const Placement& at);
    void PaintShape(const ShapeCharacter& shape, const Placement& at);
    void PaintText(const TextCharacter& text, const Placement& at);
    void PaintLines(const ShapeCharacter& shape, const Placement& at);
    bool SetFillSource(const FillStyle& fill, const Placement& at);
    /// Sets `cr_`'s matrix to draw shapes placed by `placement`.
    void UseGeometryMatrix(const cairo_matrix_t& placement);
    void FillBitmap(const FillStyle& fill, const Placement& at);

    const MovieModel& movie_;
    cairo_t* cr_;
    cairo_matrix_t stage_;
    cairo_matrix_t toSample_;  // device pixels to the pixels sampled at their centres
};

}  // namespace ZoRender
