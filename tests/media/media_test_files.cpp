#include "media/media_test_files.h"

#include <png.h>

#include "platform/image_test_files.h"

namespace MediaTestFiles {

std::vector<uint8_t> SolidPng(int width, int height, COLORREF colour) {
    std::vector<uint8_t> samples;
    for (int i = 0; i < width * height; ++i) {
        samples.insert(samples.end(), {ZoGetRed(colour), ZoGetGreen(colour), ZoGetBlue(colour)});
    }
    return ImageTestFiles::EncodePng({width, height, PNG_COLOR_TYPE_RGB, 8, samples});
}

std::vector<uint8_t> GreyJpeg(int width, int height) {
    const auto samples = static_cast<std::size_t>(width * height * 3);
    return ImageTestFiles::EncodeJpeg(
        {width, height, 3, false, std::vector<uint8_t>(samples, 128)});
}

}  // namespace MediaTestFiles
