#include "flash/byte_stream.h"

#include <algorithm>
#include <cstring>

namespace ZoFlash {

void ZoFMemorySink::Append(std::span<const uint8_t> bytes) {
    bytes_.insert(bytes_.end(), bytes.begin(), bytes.end());
}

void ZoFByteBuffer::PutU16(uint16_t v) {
    bytes_.push_back(static_cast<uint8_t>(v));
    bytes_.push_back(static_cast<uint8_t>(v >> 8));
}

void ZoFByteBuffer::PutU32(uint32_t v) {
    PutU16(static_cast<uint16_t>(v));
    PutU16(static_cast<uint16_t>(v >> 16));
}

void ZoFByteBuffer::PutBytes(std::span<const uint8_t> bytes) {
    bytes_.insert(bytes_.end(), bytes.begin(), bytes.end());
}

void ZoFByteBuffer::PutString(std::string_view text) {
    bytes_.insert(bytes_.end(), text.begin(), text.end());
    bytes_.push_back(0);
}

void ZoFByteBuffer::PatchU16(size_t offset, uint16_t v) {
    bytes_.at(offset + 1) = static_cast<uint8_t>(v >> 8);
    bytes_[offset] = static_cast<uint8_t>(v);
}

void ZoFByteBuffer::PatchU32(size_t offset, uint32_t v) {
    bytes_.at(offset + 3) = static_cast<uint8_t>(v >> 24);
    for (int i = 0; i < 3; ++i)
        bytes_[offset + i] = static_cast<uint8_t>(v >> (8 * i));
}

ZoFFileStream::ZoFFileStream() = default;

void ZoFFileStream::PutU8(uint8_t v) {
    PutBytes(std::span<const uint8_t>(&v, 1));
}

void ZoFFileStream::PutU16(uint16_t v) {
    const uint8_t b[2] = {static_cast<uint8_t>(v), static_cast<uint8_t>(v >> 8)};
    PutBytes(b);
}

void ZoFFileStream::PutU32(uint32_t v) {
    const uint8_t b[4] = {static_cast<uint8_t>(v), static_cast<uint8_t>(v >> 8),
                          static_cast<uint8_t>(v >> 16), static_cast<uint8_t>(v >> 24)};
    PutBytes(b);
}

void ZoFFileStream::PutBytes(std::span<const uint8_t> bytes) {
    const size_t used = size_ % kChunkSize;
    if (used != 0 && bytes.size() <= kChunkSize - used) {
        // Most tags are a few bytes and fit the chunk in hand.
        std::copy(bytes.begin(), bytes.end(), chunks_.back().get() + used);
        size_ += bytes.size();
        return;
    }
    while (!bytes.empty()) {
        const size_t offset = size_ % kChunkSize;
        if (offset == 0 && size_ / kChunkSize == chunks_.size())
            chunks_.push_back(std::make_unique_for_overwrite<uint8_t[]>(kChunkSize));
        const size_t n = std::min(bytes.size(), kChunkSize - offset);
        std::memcpy(chunks_[size_ / kChunkSize].get() + offset, bytes.data(), n);
        size_ += n;
        bytes = bytes.subspan(n);
    }
}

void ZoFFileStream::PatchByte(size_t offset, uint8_t v) {
    chunks_.at(offset / kChunkSize)[offset % kChunkSize] = v;
}

void ZoFFileStream::PatchU16(size_t offset, uint16_t v) {
    PatchByte(offset, static_cast<uint8_t>(v));
    PatchByte(offset + 1, static_cast<uint8_t>(v >> 8));
}

void ZoFFileStream::PatchU32(size_t offset, uint32_t v) {
    for (int i = 0; i < 4; ++i)
        PatchByte(offset + i, static_cast<uint8_t>(v >> (8 * i)));
}

void ZoFFileStream::CopyTo(ZoFByteSink& sink) const {
    size_t left = size_;
    for (const auto& chunk : chunks_) {
        const size_t n = std::min(left, kChunkSize);
        sink.Append(std::span<const uint8_t>(chunk.get(), n));
        left -= n;
    }
}

}  // namespace ZoFlash
