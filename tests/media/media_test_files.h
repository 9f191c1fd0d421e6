#pragma once
// Picture files written into the process's temporary folder for the media
// tests.
#include <cstdint>
#include <filesystem>
#include <vector>

#include "platform/zo_colour.h"

namespace MediaTestFiles {

/// A PNG of `width` x `height` opaque pixels of `colour`, with the top-left
/// pixel `corner`.
std::vector<uint8_t> SolidPng(int width, int height, COLORREF colour, COLORREF corner);
/// A baseline colour JPEG of `width` x `height` grey pixels.
std::vector<uint8_t> GreyJpeg(int width, int height);
/// Writes `bytes` to `path`, replacing what was there.
void WriteFile(const std::filesystem::path& path, const std::vector<uint8_t>& bytes);
/// A new file name in the temporary folder.
std::filesystem::path NewName(const char* extension);

}  // namespace MediaTestFiles
