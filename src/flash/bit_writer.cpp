#include "flash/bit_writer.h"

namespace ZoFlash {

void ZoFBitWriter::Flush() {
    MakeRoom(8);
    for (; pendingBits_ >= 8; pendingBits_ -= 8)
        bytes_[ready_++] = static_cast<uint8_t>(pending_ >> (pendingBits_ - 8));
    if (pendingBits_ > 0)
        bytes_[ready_++] = static_cast<uint8_t>(pending_ << (8 - pendingBits_));
    out_.PutBytes({bytes_, ready_});
    pending_ = 0;
    pendingBits_ = 0;
    ready_ = 0;
}

}  // namespace ZoFlash
