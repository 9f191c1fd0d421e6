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

    /// `bits` from 0 to 32.
    void PutUnsigned(uint32_t value, int bits) {
        // Placements are written by the hundred thousand: fields gather in a
        // word and whole bytes in a small array, which reaches the buffer in
        // one piece.
        if (pendingBits_ > 32)
            SpillWord();
        pending_ = (pending_ << bits) | (value & ((uint64_t{1} << bits) - 1));
        pendingBits_ += bits;
    }
    void PutSigned(int32_t value, int bits) { PutUnsigned(static_cast<uint32_t>(value), bits); }
    void PutFlag(bool flag) { PutUnsigned(flag ? 1 : 0, 1); }
    /// Writes any partial byte, zero padded, and hands everything over.
    void Flush();

  private:
    void MakeRoom(size_t bytes) {
        if (ready_ + bytes > sizeof(bytes_)) {
            out_.PutBytes({bytes_, ready_});
            ready_ = 0;
        }
    }
    void SpillWord() {
        MakeRoom(4);
        const auto word = static_cast<uint32_t>(pending_ >> (pendingBits_ - 32));
        for (int shift = 24; shift >= 0; shift -= 8)
            bytes_[ready_++] = static_cast<uint8_t>(word >> shift);
        pendingBits_ -= 32;
    }
    ZoFByteBuffer& out_;
    uint64_t pending_ = 0;
    int pendingBits_ = 0;
    uint8_t bytes_[32];
    size_t ready_ = 0;  // whole bytes waiting in bytes_
};

}  // namespace ZoFlash
