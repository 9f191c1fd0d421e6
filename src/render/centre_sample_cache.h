#pragma once
// Gradients and pictures are read at pixel centres, so all four sample passes
// of a frame read the same colours for a piece. Each piece's colours are read
// once, into a surface covering its pixels, and every pass composites that
// surface untransformed, which Pixman does several times faster than reading
// a turned picture or a gradient again.
#include <cairo.h>

#include <cstddef>
#include <string_view>
#include <unordered_map>

#include "render/colour_transform.h"
#include "render/movie_model.h"

namespace ZoRender {

/// A rectangle of whole device pixels.
struct PixelBox {
    int x = 0, y = 0;
    int width = 0, height = 0;

    bool Empty() const noexcept { return width <= 0 || height <= 0; }
};

/// The pixels of a `width` x `height` frame that any sample of `path`
/// placed by `toDevice` may cover: the same box for every sample position.
PixelBox SampledBox(const Path& path, const cairo_matrix_t& toDevice, int width, int height);

/// A premultiplied ARGB32 surface covering `box`, each pixel the colour of
/// `pattern` at its centre; `toPattern` maps device pixels to the pattern.
SurfaceRef ReadAtCentres(cairo_pattern_t* pattern, const cairo_matrix_t& toPattern,
                         const PixelBox& box);

/// What decides a piece's colours. Compared and hashed byte for byte: the
/// passes compute the same terms in the same way.
struct CentreSampleKey {
    const FillStyle* fill = nullptr;
    cairo_matrix_t toFill{};  // device pixels to the fill's own space
    ColourTransform colour;
    PixelBox box;

    bool operator==(const CentreSampleKey& other) const noexcept;
};

struct CentreSampleKeyHash {
    size_t operator()(const CentreSampleKey& key) const noexcept {
        return std::hash<std::string_view>()(
            std::string_view(reinterpret_cast<const char*>(&key), sizeof key));
    }
};

/// The colours read for the pieces of one frame, kept for its other passes.
class CentreSampleCache {
  public:
    /// The surface stored under `key`, or null.
    cairo_surface_t* Find(const CentreSampleKey& key) const;
    /// Keeps `surface` for the rest of the frame and returns it.
    cairo_surface_t* Add(const CentreSampleKey& key, SurfaceRef surface);

  private:
    std::unordered_map<CentreSampleKey, SurfaceRef, CentreSampleKeyHash> surfaces_;
};

}  // namespace ZoRender
