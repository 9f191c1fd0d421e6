#pragma once
// Gradients and pictures are read at pixel centres, so all four sample passes
// of a frame read the same colours for a piece. Each piece's colours are read
// once, into a surface covering its pixels, and every pass composites that
// surface untransformed, which Pixman does several times faster than reading
// a turned picture or a gradient again.
#include <cairo.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <unordered_map>
#include <vector>

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

/// Paints `into`, an ARGB32 surface of `box`'s size, with the colour of
/// `pattern` at each pixel's centre; `toPattern` maps device pixels to it.
void ReadAtCentres(cairo_pattern_t* pattern, const cairo_matrix_t& toPattern, const PixelBox& box,
                   cairo_surface_t* into);

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
/// Their pixels live in blocks that later frames reuse: a frame allocated
/// and freed afresh costs more in page faults than the reading itself.
class CentreSampleCache {
  public:
    /// An uninitialised premultiplied ARGB32 surface of `box`'s size that
    /// lives until Clear().
    cairo_surface_t* NewSurface(const PixelBox& box);
    /// The surface kept under `key`, or null.
    cairo_surface_t* Find(const CentreSampleKey& key) const;
    /// Keeps `surface`, made by NewSurface(), under `key` until Clear().
    void Keep(const CentreSampleKey& key, cairo_surface_t* surface);
    /// Forgets every surface; their memory waits for the next frame.
    void Clear() noexcept;

  private:
    struct Block {
        std::unique_ptr<uint32_t[]> pixels;
        size_t size = 0, used = 0;
    };

    uint32_t* Allocate(size_t pixels);

    std::vector<Block> blocks_;
    std::vector<SurfaceRef> made_;
    std::unordered_map<CentreSampleKey, cairo_surface_t*, CentreSampleKeyHash> kept_;
};

}  // namespace ZoRender
