#include "media/media_test_files.h"

#include <fstream>

#include "platform/image_test_files.h"
#include "platform/temp_directory.h"

namespace MediaTestFiles {

std::vector<uint8_t> SolidPng(int width, int height, COLORREF colour, COLORREF corner) {
    std::vector<uint8_t> samples;
    for (int i = 0; i < width * height; ++i) {
        const COLORREF c = i == 0 ? corner : colour;
        samples.insert(samples.end(), {ZoGetRed(c), ZoGetGreen(c), ZoGetBlue(c)});
    }
    return ImageTestFiles::EncodePng({width, height, 2, 8, samples});
}

std::vector<uint8_t> GreyJpeg(int width, int height) {
    ImageTestFiles::JpegSource source;
    source.width = width;
    source.height = height;
    source.samples.assign(static_cast<size_t>(width) * height * 3, 128);
    return ImageTestFiles::EncodeJpeg(source);
}

void WriteFile(const std::filesystem::path& path, const std::vector<uint8_t>& bytes) {
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out.write(reinterpret_cast<const char*>(bytes.data()),
              static_cast<std::streamsize>(bytes.size()));
}

std::filesystem::path NewName(const char* extension) {
    return ZoMakeTempFileName(extension);
}

}  // namespace MediaTestFiles
