#include "flash/bit_writer.h"

namespace ZoFlash {

void ZoFBitWriter::Flush() {
    if (pendingBits_ > 0)
        out_.PutU8(static_cast<uint8_t>(pending_ << (8 - pendingBits_)));
    pending_ = 0;
    pendingBits_ = 0;
}

}  // namespace ZoFlash
