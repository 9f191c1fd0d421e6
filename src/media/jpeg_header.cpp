#include "media/jpeg_header.h"

#include <cstdint>
#include <fstream>

namespace {

constexpr int kMarker = 0xFF;
constexpr int kStartOfImage = 0xD8;
constexpr int kStartOfScan = 0xDA;
constexpr int kEndOfImage = 0xD9;
constexpr int kBaseline = 0xC0;
constexpr int kExtendedSequential = 0xC1;

/// A frame header marker: C0..CF except DHT (C4), JPG (C8) and DAC (CC).
bool IsFrameHeader(int marker) noexcept {
    return marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC;
}

/// Markers that stand alone, without a length: TEM and the restart markers.
bool HasNoLength(int marker) noexcept {
    return marker == 0x01 || (marker >= 0xD0 && marker <= 0xD7);
}

int ReadByte(std::istream& in) {
    const int byte = in.get();
    return in ? byte : -1;
}

int ReadBigEndian16(std::istream& in) {
    const int high = ReadByte(in);
    const int low = ReadByte(in);
    return high < 0 || low < 0 ? -1 : high << 8 | low;
}

}  // namespace

bool TeskIsPlayableJpegFile(const ZoString& path) {
    std::ifstream in(path, std::ios::binary);
    if (ReadByte(in) != kMarker || ReadByte(in) != kStartOfImage)
        return false;
    for (;;) {
        if (ReadByte(in) != kMarker)
            return false;
        int marker = ReadByte(in);
        while (marker == kMarker)  // fill bytes before a marker
            marker = ReadByte(in);
        if (marker < 0 || marker == kStartOfScan || marker == kEndOfImage)
            return false;
        if (HasNoLength(marker))
            continue;
        const int length = ReadBigEndian16(in);
        if (length < 2)
            return false;
        if (IsFrameHeader(marker)) {
            if (marker != kBaseline && marker != kExtendedSequential)
                return false;
            in.ignore(5);  // precision, height, width
            const int components = ReadByte(in);
            return components == 1 || components == 3;
        }
        in.ignore(length - 2);
    }
}
