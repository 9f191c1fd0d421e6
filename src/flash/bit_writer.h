#pragma once
// Bit-packed fields, most significant bit first, as every SWF record that is
// not byte aligned stores them.
#include <cstdint>

#include "flash/byte_stream.h"

namespace ZoFlash {

/// Bits an unsigned field needs to hold `value` (0 needs 0 bits).
int ZoUnsignedBits(uint32_t value) noexcept;
/// Bits a signed field needs to hold `value`: 0 needs 0, -1 needs 1,
/// 1 needs 2, -2^n needs n + 1.
int ZoSignedBits(int32_t value) noexcept;

/// Appends bit fields to a byte buffer; Flush() pads to the next byte.
class ZoFBitWriter {
  public:
    explicit ZoFBitWriter(ZoFByteBuffer& out) noexcept : out_(out) {}
    ~ZoFBitWriter() { Flush(); }
    ZoFBitWriter(const ZoFBitWriter&) = delete;
    ZoFBitWriter& operator=(const ZoFBitWriter&) = delete;

    void PutUnsigned(uint32_t value, int bits);
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
