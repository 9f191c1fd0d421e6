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
        // word that goes to the buffer 32 bits at a time.
        if (pendingBits_ > 32) {
            PutBigEndian(out_.Append(4), pending_ >> (pendingBits_ - 32), 4);
            pendingBits_ -= 32;
        }
        pending_ = (pending_ << bits) | (value & ((uint64_t{1} << bits) - 1));
        pendingBits_ += bits;
    }
    void PutSigned(int32_t value, int bits) { PutUnsigned(static_cast<uint32_t>(value), bits); }
    void PutFlag(bool flag) { PutUnsigned(flag ? 1 : 0, 1); }
    /// Writes the bits still pending, the last byte zero padded.
    void Flush() {
        if (pendingBits_ == 0)
            return;
        const auto bytes = static_cast<size_t>(pendingBits_ + 7) / 8;
        PutBigEndian(out_.Append(bytes), pending_ << (bytes * 8 - pendingBits_), bytes);
        pending_ = 0;
        pendingBits_ = 0;
    }

  private:
    // The low `bytes` bytes of `value`, most significant first.
    static void PutBigEndian(uint8_t* at, uint64_t value, size_t bytes) noexcept {
        for (size_t i = 0; i < bytes; ++i)
            at[i] = static_cast<uint8_t>(value >> (8 * (bytes - 1 - i)));
    }
    ZoFByteBuffer& out_;
    uint64_t pending_ = 0;
    int pendingBits_ = 0;
};

}  // namespace ZoFlash
