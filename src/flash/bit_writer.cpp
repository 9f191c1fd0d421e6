#include "flash/bit_writer.h"

#include <bit>

namespace ZoFlash {

int ZoUnsignedBits(uint32_t value) noexcept {
    return std::bit_width(value);
}

int ZoSignedBits(int32_t value) noexcept {
    if (value == 0)
        return 0;
    // A negative value needs the bits of its complement plus the sign bit.
    const uint32_t magnitude = value < 0 ? ~static_cast<uint32_t>(value) : value;
    return std::bit_width(magnitude) + 1;
}

void ZoFBitWriter::PutUnsigned(uint32_t value, int bits) {
    if (bits == 0)
        return;
    const uint64_t mask = (uint64_t{1} << bits) - 1;
    pending_ = (pending_ << bits) | (value & mask);
    pendingBits_ += bits;
    while (pendingBits_ >= 8) {
        pendingBits_ -= 8;
        out_.PutU8(static_cast<uint8_t>(pending_ >> pendingBits_));
    }
    pending_ &= (uint64_t{1} << pendingBits_) - 1;
}

void ZoFBitWriter::Flush() {
    if (pendingBits_ > 0)
        out_.PutU8(static_cast<uint8_t>(pending_ << (8 - pendingBits_)));
    pending_ = 0;
    pendingBits_ = 0;
}

}  // namespace ZoFlash
