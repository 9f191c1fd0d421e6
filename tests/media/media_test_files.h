#pragma once
// Small picture files for the media tests.
#include <cstdint>
#include <vector>

#include "platform/zo_colour.h"

namespace MediaTestFiles {

/// A PNG of `width` x `height` opaque pixels of `colour`.
std::vector<uint8_t> SolidPng(int width, int height, COLORREF colour);
/// A baseline colour JPEG of `width` x `height` grey pixels.
std::vector<uint8_t> GreyJpeg(int width, int height);

}  // namespace MediaTestFiles
