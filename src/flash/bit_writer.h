#pragma once
// Bit-packed fields, most significant bit first, as every SWF record that is
// not byte aligned stores them.
#include <bit>
#include <cstdint>

#include "flash/byte_stream.h"

namespace ZoFlash {

/// Bits an unsigned field needs to hold `value` (0 needs 0 bits).
constexpr int ZoUnsignedBits(uint32_t value) noexcept {
    return std::bit_width(value);
}

/// Bits a signed field needs to hold `value`: 0 needs 0, -1 needs 1,
/// 1 needs 2, -2^n needs n + 1.
constexpr int ZoSignedBits(int32_t value) noexcept {
    if (value == 0)
        return 0;
    // A negative value needs the bits of its complement plus the sign bit.
    const uint32_t magnitude = value < 0 ? ~static_cast<uint32_t>(value) : value;
    return std::bit_width(magnitude) + 1;
}

/// Appends bit fields to a byte buffer; Flush() pads to the next byte.
class ZoFBitWriter {
  public:
    explicit ZoFBitWriter(ZoFByteBuffer& out) noexcept : out_(out) {}
    ~ZoFBitWriter() { Flush(); }
    ZoFBitWriter(const ZoFBitWriter&) = delete;
    ZoFBitWriter& operator=(const ZoFBitWriter&) = delete;

    void PutUnsigned(uint32_t value, int bits) {
        // Placements are written by the hundred thousand; this stays inline.
        pending_ = (pending_ << bits) | (value & ((uint64_t{1} << bits) - 1));
        pendingBits_ += bits;
        while (pendingBits_ >= 8) {
            pendingBits_ -= 8;
            out_.PutU8(static_cast<uint8_t>(pending_ >> pendingBits_));
        }
    }
    void PutSigned(int32_t value, int bits) { PutUnsigned(static_cast<uint32_t>(value), bits); }
    void PutFlag(bool flag) { PutUnsigned(flag ? 1 : 0, 1); }
    /// Writes any partial byte, zero padded.
    void Flush();

  private:
    ZoFByteBuffer& out_;
    uint64_t pending_ = 0;
    int pendingBits_ = 0;
};

}  // namespace ZoFlash
