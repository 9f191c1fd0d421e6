#pragma once
// Draws display lists with Cairo: characters in depth order, masks clipping
// the depths they cover, sprites playing their own frames, and every colour
// through the colour transforms of all enclosing placements.
#include <cairo.h>

#include <memory>

#include "render/centre_sample_cache.h"
#include "render/movie_model.h"

namespace ZoRender {

using ContextRef = std::unique_ptr<cairo_t, decltype(&cairo_destroy)>;

/// What the sample passes of a frame share, kept by the player between
/// frames so that drawing one allocates little.
struct PaintScratch {
    CentreSampleCache centres;                    // emptied after each frame
    ContextRef coverage{nullptr, cairo_destroy};  // A8, clear but while a piece is drawn
};

class FramePainter {
  public:
    /// Draws into `cr`, whose matrix maps the stage's twips to its pixels.
    /// Shapes cover a pixel when they cover the point (`sampleX`, `sampleY`)
    /// pixels from its centre; gradients and pictures are read at the centre,
    /// once a frame: the passes of a frame share `scratch`.
    FramePainter(const MovieModel& movie, cairo_t* cr, double sampleX, double sampleY,
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
    Placement Child(const DisplayEntry& entry, const Placement& parent) const;
    void PaintCharacter(uint16_t id, int32_t age, const Placement& at);
    void PaintShape(const ShapeCharacter& shape, const Placement& at);
    void PaintText(const TextCharacter& text, const Placement& at);
    void PaintLines(const ShapeCharacter& shape, const Placement& at);
    void FillFromCentres(const FillStyle& fill, const Path& path, const Placement& at);
    /// Reads the picture at the centres of `box` into `into`; false if it
    /// cannot be drawn.
    bool ReadBitmap(const FillStyle& fill, const cairo_matrix_t& toBitmap,
                    const ColourTransform& colour, const PixelBox& box,
                    cairo_surface_t* into) const;
    void FillThrough(const Path& path, const cairo_matrix_t& placement, cairo_surface_t* colours,
                     const PixelBox& box, double alpha);
    /// Draws shapes placed by `placement` at this pass's sample position.
    cairo_matrix_t GeometryMatrix(const cairo_matrix_t& placement) const;
    void UseGeometryMatrix(const cairo_matrix_t& placement);

    const MovieModel& movie_;
    cairo_t* cr_;
    CentreSampleCache& centres_;
    cairo_t* coverage_;
    int width_, height_;  // of the frame, in device pixels
    cairo_matrix_t stage_;
    cairo_matrix_t toSample_;  // device pixels to the pixels sampled at their centres
};

}  // namespace ZoRender
