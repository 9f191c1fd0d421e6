#pragma once
// Gradients and pictures are read at pixel centres, the same for every
// sample. Each piece's colours are read once, into a surface covering its
// pixels, and composited into every sample's surface through that sample's
// coverage while they are still in the cache: Pixman reads a turned picture
// or a gradient several times slower than an untransformed surface.
#include <cairo.h>

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "render/colour_transform.h"
#include "render/movie_model.h"
#include "render/sample_context.h"

namespace ZoRender {

using ContextRef = std::unique_ptr<cairo_t, decltype(&cairo_destroy)>;

enum FillType : uint8_t {
    kSolid = 0x00,
    kLinearGradient = 0x10,
    kRadialGradient = 0x12,
    kRepeatingBitmap = 0x40,
    kClippedBitmap = 0x41,
    kRepeatingHardBitmap = 0x42,
    kClippedHardBitmap = 0x43,
};

/// A rectangle of whole device pixels.
struct PixelBox {
    int x = 0, y = 0;
    int width = 0, height = 0;

    bool Empty() const noexcept { return width <= 0 || height <= 0; }
};

/// The pixels of a `width` x `height` frame that any sample of `path`
/// placed by `toDevice` may cover.
PixelBox SampledBox(const Path& path, const cairo_matrix_t& toDevice, int width, int height);

/// Memory kept from frame to frame, so that drawing one allocates little.
struct PaintScratch {
    ContextRef coverage{nullptr, cairo_destroy};  // A8, clear but while a piece is drawn
    std::vector<uint32_t> colours;                // of the piece being drawn
};

/// Fills pieces with gradients and pictures in every sample at once.
class CentreFill {
  public:
    /// `samples` draw into surfaces of one size, the frame's.
    CentreFill(const MovieModel& movie, std::span<const SampleContext> samples,
               PaintScratch& scratch);

    /// Fills `path` placed by `placement` (its twips to device pixels) with
    /// `fill`, a gradient or picture fill, through `colour`.
    void Fill(const FillStyle& fill, const Path& path, const cairo_matrix_t& placement,
              const ColourTransform& colour);

  private:
    bool ReadBitmap(const FillStyle& fill, const cairo_matrix_t& toBitmap,
                    const ColourTransform& colour, const PixelBox& box,
                    cairo_surface_t* into) const;
    void Composite(const SampleContext& sample, const Path& path, const cairo_matrix_t& placement,
                   cairo_surface_t* colours, const PixelBox& box);

    const MovieModel& movie_;
    std::span<const SampleContext> samples_;
    PaintScratch& scratch_;
    int width_, height_;
};

}  // namespace ZoRender
