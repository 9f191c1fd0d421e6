#include "platform/image_test_files.h"

#include <cstdio>  // jpeglib.h uses FILE without including it
#include <cstdlib>
#include <stdexcept>

#include <gif_lib.h>
#include <jpeglib.h>
#include <png.h>

namespace ImageTestFiles {
namespace {

void AppendToBytes(png_structp png, png_bytep data, png_size_t length) {
    auto* out = static_cast<Bytes*>(png_get_io_ptr(png));
    out->insert(out->end(), data, data + length);
}

void SetTransparency(png_structp png, png_infop info, const PngSource& source) {
    if (source.transparency.empty()) {
        return;
    }
    if (source.colourType == PNG_COLOR_TYPE_PALETTE) {
        std::vector<png_byte> alpha(source.transparency.begin(), source.transparency.end());
        png_set_tRNS(png, info, alpha.data(), static_cast<int>(alpha.size()), nullptr);
        return;
    }
    png_color_16 key{};
    key.gray = source.transparency[0];
    if (source.transparency.size() == 3) {
        key.red = source.transparency[0];
        key.green = source.transparency[1];
        key.blue = source.transparency[2];
    }
    png_set_tRNS(png, info, nullptr, 0, &key);
}

}  // namespace

Bytes EncodePng(const PngSource& source) {
    Bytes out;
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png_create_info_struct(png);
    if (setjmp(png_jmpbuf(png)) != 0) {
        png_destroy_write_struct(&png, &info);
        throw std::runtime_error("test PNG could not be written");
    }
    png_set_write_fn(png, &out, AppendToBytes, nullptr);
    png_set_IHDR(png, info, source.width, source.height, source.bitDepth, source.colourType,
                 source.interlaced ? PNG_INTERLACE_ADAM7 : PNG_INTERLACE_NONE,
                 PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    std::vector<png_color> palette;
    for (std::size_t i = 0; i + 2 < source.palette.size(); i += 3) {
        palette.push_back({source.palette[i], source.palette[i + 1], source.palette[i + 2]});
    }
    if (!palette.empty()) {
        png_set_PLTE(png, info, palette.data(), static_cast<int>(palette.size()));
    }
    SetTransparency(png, info, source);
    png_write_info(png, info);
    const std::size_t stride = source.samples.size() / static_cast<std::size_t>(source.height);
    std::vector<png_bytep> rows;
    for (int y = 0; y < source.height; ++y) {
        rows.push_back(const_cast<png_bytep>(source.samples.data() + y * stride));
    }
    png_write_image(png, rows.data());
    png_write_end(png, nullptr);
    png_destroy_write_struct(&png, &info);
    return out;
}

Bytes EncodeJpeg(const JpegSource& source) {
    jpeg_compress_struct info{};
    jpeg_error_mgr errors{};
    info.err = jpeg_std_error(&errors);
    jpeg_create_compress(&info);
    unsigned char* buffer = nullptr;
    unsigned long size = 0;
    jpeg_mem_dest(&info, &buffer, &size);
    info.image_width = static_cast<JDIMENSION>(source.width);
    info.image_height = static_cast<JDIMENSION>(source.height);
    info.input_components = source.components;
    info.in_color_space = source.components == 1   ? JCS_GRAYSCALE
                          : source.components == 4 ? JCS_CMYK
                                                   : JCS_RGB;
    jpeg_set_defaults(&info);
    jpeg_set_quality(&info, 95, TRUE);
    if (source.progressive) {
        jpeg_simple_progression(&info);
    }
    jpeg_start_compress(&info, TRUE);
    const std::size_t stride = static_cast<std::size_t>(source.width * source.components);
    while (info.next_scanline < info.image_height) {
        JSAMPROW row = const_cast<JSAMPROW>(source.samples.data() + info.next_scanline * stride);
        jpeg_write_scanlines(&info, &row, 1);
    }
    jpeg_finish_compress(&info);
    jpeg_destroy_compress(&info);
    Bytes out(buffer, buffer + size);
    std::free(buffer);
    return out;
}

namespace {

int AppendGif(GifFileType* gif, const GifByteType* data, int length) {
    auto* out = static_cast<Bytes*>(gif->UserData);
    out->insert(out->end(), data, data + length);
    return length;
}

std::vector<int> FileRowOrder(int height, bool interlaced) {
    std::vector<int> rows;
    const int starts[] = {0, 4, 2, 1};
    const int steps[] = {8, 8, 4, 2};
    for (int pass = 0; pass < (interlaced ? 4 : 1); ++pass) {
        const int start = interlaced ? starts[pass] : 0;
        const int step = interlaced ? steps[pass] : 1;
        for (int y = start; y < height; y += step) {
            rows.push_back(y);
        }
    }
    return rows;
}

}  // namespace

Bytes EncodeGif(const GifSource& source) {
    Bytes out;
    int error = 0;
    GifFileType* gif = EGifOpen(&out, AppendGif, &error);
    const int colours = static_cast<int>(source.palette.size() / 3);
    ColorMapObject* map = GifMakeMapObject(colours, nullptr);
    for (int i = 0; i < colours; ++i) {
        map->Colors[i] = {source.palette[i * 3], source.palette[i * 3 + 1],
                          source.palette[i * 3 + 2]};
    }
    EGifSetGifVersion(gif, true);
    EGifPutScreenDesc(gif, source.screenWidth, source.screenHeight, map->BitsPerPixel, 0, map);
    if (source.transparentIndex >= 0) {
        GraphicsControlBlock control{};
        control.TransparentColor = source.transparentIndex;
        GifByteType extension[4];
        const std::size_t length = EGifGCBToExtension(&control, extension);
        EGifPutExtension(gif, GRAPHICS_EXT_FUNC_CODE, static_cast<int>(length), extension);
    }
    EGifPutImageDesc(gif, source.left, source.top, source.width, source.height, source.interlaced,
                     nullptr);
    for (const int y : FileRowOrder(source.height, source.interlaced)) {
        auto* row = const_cast<GifPixelType*>(source.indices.data() + y * source.width);
        EGifPutLine(gif, row, source.width);
    }
    EGifCloseFile(gif, &error);
    GifFreeMapObject(map);
    return out;
}

}  // namespace ImageTestFiles
