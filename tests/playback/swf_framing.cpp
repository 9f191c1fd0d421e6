#include "playback/swf_framing.h"

#include <cstddef>

namespace playback {

namespace {

constexpr int kEndTag = 0;
constexpr int kShowFrameTag = 1;
constexpr std::uint32_t kLongLength = 0x3F;

std::uint32_t ReadU16(std::span<const std::uint8_t> bytes, std::size_t at) {
    return bytes[at] | static_cast<std::uint32_t>(bytes[at + 1]) << 8;
}

std::uint32_t ReadU32(std::span<const std::uint8_t> bytes, std::size_t at) {
    return ReadU16(bytes, at) | ReadU16(bytes, at + 2) << 16;
}

// The stage RECT starts with a 5-bit field count, then four fields of that
// many bits, padded to a byte.
std::size_t RectBytes(std::uint8_t first) {
    return (5 + 4 * (first >> 3) + 7) / 8;
}

std::string At(std::size_t offset) {
    return " at byte " + std::to_string(offset);
}

}  // namespace

std::string CheckSwfFraming(std::span<const std::uint8_t> movie) {
    if (movie.size() < 9) {
        return "too short for an SWF header (" + std::to_string(movie.size()) + " bytes)";
    }
    if (movie[0] != 'F' || movie[1] != 'W' || movie[2] != 'S') {
        return "not an uncompressed SWF file (signature must be FWS)";
    }
    if (ReadU32(movie, 4) != movie.size()) {
        return "header says " + std::to_string(ReadU32(movie, 4)) + " bytes, file has " +
               std::to_string(movie.size());
    }
    std::size_t at = 8 + RectBytes(movie[8]);
    if (at + 4 > movie.size()) {
        return "header is cut short";
    }
    const std::uint32_t frameCount = ReadU16(movie, at + 2);
    at += 4;
    std::uint32_t shownFrames = 0;
    while (at + 2 <= movie.size()) {
        const std::size_t tagStart = at;
        const std::uint32_t codeAndLength = ReadU16(movie, at);
        const int code = static_cast<int>(codeAndLength >> 6);
        std::size_t length = codeAndLength & kLongLength;
        at += 2;
        if (length == kLongLength) {
            if (at + 4 > movie.size()) {
                return "long tag header is cut short" + At(tagStart);
            }
            length = ReadU32(movie, at);
            at += 4;
        }
        if (length > movie.size() - at) {
            return "tag " + std::to_string(code) + " of " + std::to_string(length) +
                   " bytes runs past the end of the file" + At(tagStart);
        }
        at += length;
        if (code == kShowFrameTag) {
            ++shownFrames;
        }
        if (code == kEndTag) {
            if (at != movie.size()) {
                return "End tag" + At(tagStart) + " is followed by " +
                       std::to_string(movie.size() - at) + " more bytes";
            }
            if (shownFrames != frameCount) {
                return "header says " + std::to_string(frameCount) + " frames, tags show " +
                       std::to_string(shownFrames);
            }
            return {};
        }
    }
    return "no End tag before the end of the file";
}

}  // namespace playback
