#include "render/nearest_picture.h"

#include <algorithm>
#include <cstdint>

#include "render/centre_fill.h"

namespace ZoRender {
namespace {

constexpr double kFractionSteps = 65536;
// Far beyond any picture, yet small enough to convert to an integer.
constexpr double kFarthestStep = 1e15;

// floor(), without the library call it becomes on plain x86-64.
int64_t FloorToInteger(double t) noexcept {
    const auto i = static_cast<int64_t>(t);
    return i - (t < static_cast<double>(i));
}

// One side of the picture: positions along it, counted in 16-bit fractions
// of the side, become picture pixels.
struct Side {
    int size;
    bool repeat;

    int Pixel(double steps) const noexcept {
        // Past the edges a clamped picture repeats its edge pixels; within
        // them, truncating is rounding down.
        const int64_t fraction =
            repeat ? FloorToInteger(std::clamp(steps, -kFarthestStep, kFarthestStep)) & 0xFFFF
                   : static_cast<int64_t>(std::clamp(steps, 0.0, kFractionSteps - 1));
        return static_cast<int>((fraction * size) >> 16);
    }
};

}  // namespace

void ReadNearestPicture(cairo_surface_t* picture, const cairo_matrix_t& toPicture, bool repeat,
                        const PixelBox& box, cairo_surface_t* into) {
    cairo_surface_flush(picture);
    const Side across{cairo_image_surface_get_width(picture), repeat};
    const Side down{cairo_image_surface_get_height(picture), repeat};
    // Device pixels straight to steps, so that each pixel costs two adds.
    cairo_matrix_t toSteps;
    cairo_matrix_init_scale(&toSteps, kFractionSteps / across.size, kFractionSteps / down.size);
    cairo_matrix_multiply(&toSteps, &toPicture, &toSteps);
    const ptrdiff_t pictureStride = cairo_image_surface_get_stride(picture) / 4;
    const auto* pixels = reinterpret_cast<const uint32_t*>(cairo_image_surface_get_data(picture));
    const ptrdiff_t intoStride = cairo_image_surface_get_stride(into) / 4;
    auto* row = reinterpret_cast<uint32_t*>(cairo_image_surface_get_data(into));
    for (int y = 0; y < box.height; ++y, row += intoStride) {
        double u = box.x + 0.5, v = box.y + y + 0.5;
        cairo_matrix_transform_point(&toSteps, &u, &v);
        if (toSteps.yx == 0) {
            // Unturned pictures read each row from one picture row.
            const uint32_t* from = pixels + down.Pixel(v) * pictureStride;
            for (int x = 0; x < box.width; ++x)
                row[x] = from[across.Pixel(u + x * toSteps.xx)];
            continue;
        }
        for (int x = 0; x < box.width; ++x) {
            const double pu = u + x * toSteps.xx, pv = v + x * toSteps.yx;
            row[x] = pixels[down.Pixel(pv) * pictureStride + across.Pixel(pu)];
        }
    }
    cairo_surface_mark_dirty(into);
}

}  // namespace ZoRender
