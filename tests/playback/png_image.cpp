#include "playback/png_image.h"

#include <png.h>

#include <cstdio>
#include <memory>
#include <stdexcept>
#include <string>

namespace playback {

PngImage::PngImage(int width, int height, Rgba fill)
    : width_(width),
      height_(height),
      pixels_(static_cast<std::size_t>(width) * static_cast<std::size_t>(height), fill) {}

namespace {

struct FileCloser {
    void operator()(std::FILE* file) const noexcept { std::fclose(file); }
};

[[noreturn]] void OnPngError(png_structp png, png_const_charp message) {
    *static_cast<std::string*>(png_get_error_ptr(png)) = message;
    png_longjmp(png, 1);
}

void OnPngWarning(png_structp, png_const_charp) {}

// Everything libpng can hold becomes 8-bit RGBA, so callers see one layout.
void NormaliseToRgba8(png_structp png, png_infop info) {
    const png_byte type = png_get_color_type(png, info);
    if (png_get_bit_depth(png, info) == 16) {
        png_set_strip_16(png);
    }
    if (type == PNG_COLOR_TYPE_PALETTE) {
        png_set_palette_to_rgb(png);
    }
    if (type == PNG_COLOR_TYPE_GRAY || type == PNG_COLOR_TYPE_GRAY_ALPHA) {
        png_set_expand_gray_1_2_4_to_8(png);
        png_set_gray_to_rgb(png);
    }
    if (png_get_valid(png, info, PNG_INFO_tRNS)) {
        png_set_tRNS_to_alpha(png);
    }
    if ((type & PNG_COLOR_MASK_ALPHA) == 0) {
        png_set_filler(png, 0xFF, PNG_FILLER_AFTER);
    }
    png_read_update_info(png, info);
}

}  // namespace

PngImage ReadPng(const std::filesystem::path& path) {
    std::unique_ptr<std::FILE, FileCloser> file(std::fopen(path.c_str(), "rb"));
    if (!file) {
        throw std::runtime_error("cannot open PNG file " + path.string());
    }
    std::string error;
    png_structp png =
        png_create_read_struct(PNG_LIBPNG_VER_STRING, &error, OnPngError, OnPngWarning);
    png_infop info = png ? png_create_info_struct(png) : nullptr;
    if (!info) {
        png_destroy_read_struct(&png, nullptr, nullptr);
        throw std::runtime_error("out of memory reading " + path.string());
    }
    PngImage image;
    std::vector<png_bytep> rows;
    // libpng reports errors by longjmp, so the guarded block creates nothing
    // with a destructor; it only fills objects that live outside it.
    if (setjmp(png_jmpbuf(png)) == 0) {
        png_init_io(png, file.get());
        png_read_info(png, info);
        NormaliseToRgba8(png, info);
        image = PngImage(static_cast<int>(png_get_image_width(png, info)),
                         static_cast<int>(png_get_image_height(png, info)));
        rows.resize(static_cast<std::size_t>(image.Height()));
        for (int y = 0; y < image.Height(); ++y) {
            rows[static_cast<std::size_t>(y)] = reinterpret_cast<png_bytep>(image.Row(y));
        }
        png_read_image(png, rows.data());
        png_read_end(png, nullptr);
    }
    png_destroy_read_struct(&png, &info, nullptr);
    if (!error.empty()) {
        throw std::runtime_error("cannot decode PNG file " + path.string() + ": " + error);
    }
    return image;
}

}  // namespace playback
