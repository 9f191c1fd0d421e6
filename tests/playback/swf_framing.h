#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace playback {

/// Checks what a lenient player forgives: an uncompressed SWF whose header
/// length is the file's length, whose tags each fit in the file and end with
/// an End tag on the last byte, and whose ShowFrame count matches the header.
/// Returns an empty string for a well-framed movie, else one line saying what
/// is wrong and at which byte.
std::string CheckSwfFraming(std::span<const std::uint8_t> movie);

}  // namespace playback
