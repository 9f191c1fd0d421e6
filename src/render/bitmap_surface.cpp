#include "render/bitmap_surface.h"

#include <cmath>

#include "platform/image_codec.h"

namespace ZoRender {
namespace {

SurfaceRef NewSurface(int width, int height) {
    SurfaceRef surface(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, width, height),
                       cairo_surface_destroy);
    if (cairo_surface_status(surface.get()) != CAIRO_STATUS_SUCCESS)
        throw ParseError("a bitmap is too large to draw");
    return surface;
}

uint32_t* Row(cairo_surface_t* surface, int y) {
    return reinterpret_cast<uint32_t*>(cairo_image_surface_get_data(surface) +
                                       static_cast<ptrdiff_t>(y) *
                                           cairo_image_surface_get_stride(surface));
}

uint32_t Premultiplied(uint32_t a, uint32_t r, uint32_t g, uint32_t b) noexcept {
    auto mul = [a](uint32_t c) { return (c * a + 127) / 255; };
    return a << 24 | mul(r) << 16 | mul(g) << 8 | mul(b);
}

// Lossless data is ARGB already premultiplied (DefineBitsLossless2) or with an
// unused first byte (DefineBitsLossless, always opaque).
SurfaceRef LosslessSurface(const Bitmap& bitmap) {
    SurfaceRef surface = NewSurface(bitmap.width, bitmap.height);
    const bool hasAlpha = bitmap.code == kDefineBitsLossless2;
    const uint8_t* p = bitmap.pixels.data();
    for (int y = 0; y < bitmap.height; ++y) {
        uint32_t* row = Row(surface.get(), y);
        for (int x = 0; x < bitmap.width; ++x, p += 4) {
            const uint32_t a = hasAlpha ? p[0] : 255;
            // A broken file may store colour above its alpha; Cairo needs c <= a.
            row[x] = a << 24 | std::min<uint32_t>(p[1], a) << 16 |
                     std::min<uint32_t>(p[2], a) << 8 | std::min<uint32_t>(p[3], a);
        }
    }
    cairo_surface_mark_dirty(surface.get());
    return surface;
}

SurfaceRef JpegSurface(const Bitmap& bitmap) {
    const ZoDecodedImage image = ZoImageCodec::Decode(bitmap.jpeg);
    const size_t pixels = static_cast<size_t>(image.width) * static_cast<size_t>(image.height);
    std::vector<uint8_t> alpha;
    if (!bitmap.alpha.empty())
        alpha = Inflate(bitmap.alpha, pixels);
    SurfaceRef surface = NewSurface(image.width, image.height);
    const uint8_t* p = image.rgba.data();
    size_t i = 0;
    for (int y = 0; y < image.height; ++y) {
        uint32_t* row = Row(surface.get(), y);
        for (int x = 0; x < image.width; ++x, p += 4, ++i)
            row[x] = Premultiplied(alpha.empty() ? 255 : alpha[i], p[0], p[1], p[2]);
    }
    cairo_surface_mark_dirty(surface.get());
    return surface;
}

}  // namespace

SurfaceRef DecodeBitmap(const Bitmap& bitmap) {
    if (!bitmap.jpeg.empty())
        return JpegSurface(bitmap);
    return LosslessSurface(bitmap);
}

void TransformPixels(cairo_surface_t* surface, const ColourTransform& colour) {
    cairo_surface_flush(surface);
    const int width = cairo_image_surface_get_width(surface);
    const int height = cairo_image_surface_get_height(surface);
    for (int y = 0; y < height; ++y) {
        uint32_t* row = Row(surface, y);
        for (int x = 0; x < width; ++x) {
            const uint32_t p = row[x];
            const uint32_t a = p >> 24;
            auto straight = [a](uint32_t c) {
                return static_cast<uint8_t>(a == 0 ? 0 : (c * 255 + a / 2) / a);
            };
            const Rgba c = colour.Apply({straight(p >> 16 & 0xFF), straight(p >> 8 & 0xFF),
                                         straight(p & 0xFF), static_cast<uint8_t>(a)});
            row[x] = Premultiplied(c.a, c.r, c.g, c.b);
        }
    }
    cairo_surface_mark_dirty(surface);
}

void FadePixels(cairo_surface_t* surface, double alpha) {
    cairo_surface_flush(surface);
    const auto a = static_cast<uint32_t>(std::lround(alpha * 255));
    // x * a / 255, rounded, in the bit operations Pixman uses.
    auto scale = [a](uint32_t x) {
        const uint32_t t = x * a + 0x80;
        return ((t >> 8) + t) >> 8;
    };
    const int width = cairo_image_surface_get_width(surface);
    for (int y = 0; y < cairo_image_surface_get_height(surface); ++y) {
        uint32_t* row = Row(surface, y);
        for (int x = 0; x < width; ++x) {
            const uint32_t p = row[x];
            row[x] = scale(p >> 24) << 24 | scale(p >> 16 & 0xFF) << 16 |
                     scale(p >> 8 & 0xFF) << 8 | scale(p & 0xFF);
        }
    }
    cairo_surface_mark_dirty(surface);
}

SurfaceRef TransformedSurface(cairo_surface_t* source, const ColourTransform& colour) {
    SurfaceRef surface =
        NewSurface(cairo_image_surface_get_width(source), cairo_image_surface_get_height(source));
    cairo_t* cr = cairo_create(surface.get());
    cairo_set_source_surface(cr, source, 0, 0);
    cairo_set_operator(cr, CAIRO_OPERATOR_SOURCE);
    cairo_paint(cr);
    cairo_destroy(cr);
    TransformPixels(surface.get(), colour);
    return surface;
}

}  // namespace ZoRender
