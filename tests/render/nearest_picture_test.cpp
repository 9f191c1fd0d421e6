// Which picture pixel each device pixel shows decides whether our frames
// match the reference player's at picture-pixel boundaries.
#include "render/nearest_picture.h"

#include <gtest/gtest.h>

#include <cstdint>

#include "render/centre_fill.h"

namespace {

using ZoRender::PixelBox;
using ZoRender::ReadNearestPicture;

// A picture one row high whose pixel i holds the value i.
cairo_surface_t* NumberedRow(int width) {
    cairo_surface_t* picture = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, width, 1);
    auto* pixels = reinterpret_cast<uint32_t*>(cairo_image_surface_get_data(picture));
    for (int i = 0; i < width; ++i)
        pixels[i] = 0xFF000000u | static_cast<uint32_t>(i);
    cairo_surface_mark_dirty(picture);
    return picture;
}

// The picture pixel device pixel 0 shows when its centre maps to `position`.
int PixelAt(cairo_surface_t* picture, double position, bool repeat) {
    cairo_matrix_t toPicture;
    cairo_matrix_init_translate(&toPicture, position - 0.5, 0);
    cairo_surface_t* into = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, 1, 1);
    ReadNearestPicture(picture, toPicture, repeat, PixelBox{0, 0, 1, 1}, into);
    cairo_surface_flush(into);
    const uint32_t value = *reinterpret_cast<uint32_t*>(cairo_image_surface_get_data(into));
    cairo_surface_destroy(into);
    return static_cast<int>(value & 0xFFFF);
}

TEST(NearestPicture, PicksThePixelTheSamplerPicks) {
    struct Case {
        double position;
        bool repeat;
        int expected;
    } const cases[] = {
        {8.00042, false, 7},  // a hair past a boundary rounds down, as the player does
        {8.00875, false, 8},  {7.5, false, 7},           {-3.0, false, 0},  {500.0, false, 181},
        {181.99, false, 181}, {182.5, true, 0},          {-0.5, true, 181}, {-182.5, true, 181},
        {182e6, true, 0},     {-182e6 - 0.5, true, 181},
    };
    cairo_surface_t* picture = NumberedRow(182);
    for (const Case& c : cases)
        EXPECT_EQ(PixelAt(picture, c.position, c.repeat), c.expected)
            << "at " << c.position << (c.repeat ? " repeating" : "");
    cairo_surface_destroy(picture);
}

}  // namespace
