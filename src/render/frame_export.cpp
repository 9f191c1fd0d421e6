#include "render/frame_export.h"

#include <gif_lib.h>
#include <png.h>

#include <algorithm>
#include <cmath>
#include <string>

#include "platform/zo_exception.h"

std::vector<uint8_t> ZoEncodePng(const ZoRgbaImage& image) {
    png_image png{};
    png.version = PNG_IMAGE_VERSION;
    png.width = static_cast<png_uint_32>(image.width);
    png.height = static_cast<png_uint_32>(image.height);
    std::vector<uint8_t> rgb(static_cast<size_t>(image.width) * image.height * 3);
    for (size_t i = 0, o = 0; o < rgb.size(); i += 4, o += 3) {
        rgb[o] = image.rgba[i];
        rgb[o + 1] = image.rgba[i + 1];
        rgb[o + 2] = image.rgba[i + 2];
    }
    png.format = PNG_FORMAT_RGB;
    png_alloc_size_t size = 0;
    if (!png_image_write_get_memory_size(png, size, 0, rgb.data(), 0, nullptr))
        throw ZoException(std::string("The frame cannot be encoded as PNG: ") + png.message);
    std::vector<uint8_t> bytes(size);
    if (!png_image_write_to_memory(&png, bytes.data(), &size, 0, rgb.data(), 0, nullptr))
        throw ZoException(std::string("The frame cannot be encoded as PNG: ") + png.message);
    bytes.resize(size);
    return bytes;
}

struct ZoGifEncoder::Stream {
    GifFileType* gif = nullptr;
    std::vector<uint8_t> bytes;
    int32_t width = 0, height = 0;
    int delay = 0;  // hundredths of a second
};

namespace {

int WriteToMemory(GifFileType* gif, const GifByteType* data, int count) {
    auto* bytes = static_cast<std::vector<uint8_t>*>(gif->UserData);
    bytes->insert(bytes->end(), data, data + count);
    return count;
}

void Check(int result, const GifFileType* gif) {
    if (result != GIF_OK)
        throw ZoException(std::string("The animation cannot be encoded as GIF: ") +
                          GifErrorString(gif->Error));
}

// Loops for ever: the NETSCAPE2.0 application extension with count 0.
void PutLoopForever(GifFileType* gif) {
    static const GifByteType kApplication[] = {'N', 'E', 'T', 'S', 'C', 'A',
                                               'P', 'E', '2', '.', '0'};
    static const GifByteType kLoop[] = {1, 0, 0};
    Check(EGifPutExtensionLeader(gif, APPLICATION_EXT_FUNC_CODE), gif);
    Check(EGifPutExtensionBlock(gif, sizeof kApplication, kApplication), gif);
    Check(EGifPutExtensionBlock(gif, sizeof kLoop, kLoop), gif);
    Check(EGifPutExtensionTrailer(gif), gif);
}

}  // namespace

ZoGifEncoder::ZoGifEncoder(int32_t width, int32_t height, double frameRate)
    : stream_(std::make_unique<Stream>()) {
    stream_->width = width;
    stream_->height = height;
    stream_->delay = std::max(1, static_cast<int>(std::lround(100.0 / frameRate)));
    int error = 0;
    stream_->gif = EGifOpen(&stream_->bytes, WriteToMemory, &error);
    if (!stream_->gif)
        throw ZoException(std::string("The animation cannot be encoded as GIF: ") +
                          GifErrorString(error));
    EGifSetGifVersion(stream_->gif, true);
    Check(EGifPutScreenDesc(stream_->gif, width, height, 8, 0, nullptr), stream_->gif);
    PutLoopForever(stream_->gif);
}

ZoGifEncoder::~ZoGifEncoder() {
    if (stream_->gif)
        EGifCloseFile(stream_->gif, nullptr);
}

void ZoGifEncoder::AddFrame(const ZoRgbaImage& image) {
    if (image.width != stream_->width || image.height != stream_->height)
        throw ZoException("All frames of an animation must have the same size.");
    const size_t pixels = static_cast<size_t>(image.width) * static_cast<size_t>(image.height);
    std::vector<GifByteType> red(pixels), green(pixels), blue(pixels), indices(pixels);
    for (size_t i = 0; i < pixels; ++i) {
        red[i] = image.rgba[i * 4];
        green[i] = image.rgba[i * 4 + 1];
        blue[i] = image.rgba[i * 4 + 2];
    }
    int colours = 256;
    GifColorType palette[256] = {};
    if (GifQuantizeBuffer(image.width, image.height, &colours, red.data(), green.data(),
                          blue.data(), indices.data(), palette) != GIF_OK)
        throw ZoException("The frame's colours cannot be reduced for GIF.");
    ColorMapObject* map = GifMakeMapObject(256, palette);
    GraphicsControlBlock control{DISPOSE_DO_NOT, false, stream_->delay, NO_TRANSPARENT_COLOR};
    GifByteType extension[4];
    const size_t length = EGifGCBToExtension(&control, extension);
    GifFileType* gif = stream_->gif;
    int result = EGifPutExtension(gif, GRAPHICS_EXT_FUNC_CODE, static_cast<int>(length), extension);
    if (result == GIF_OK)
        result = EGifPutImageDesc(gif, 0, 0, image.width, image.height, false, map);
    for (int y = 0; result == GIF_OK && y < image.height; ++y)
        result =
            EGifPutLine(gif, indices.data() + static_cast<size_t>(y) * image.width, image.width);
    GifFreeMapObject(map);
    Check(result, gif);
}

std::vector<uint8_t> ZoGifEncoder::Finish() {
    int error = 0;
    const int result = EGifCloseFile(stream_->gif, &error);
    stream_->gif = nullptr;
    if (result != GIF_OK)
        throw ZoException(std::string("The animation cannot be encoded as GIF: ") +
                          GifErrorString(error));
    return std::move(stream_->bytes);
}
