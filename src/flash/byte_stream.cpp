#include "flash/byte_stream.h"

#include <algorithm>
#include <cstring>

#include "platform/zo_exception.h"

namespace ZoFlash {
namespace {

std::span<const uint8_t> LittleEndian(uint8_t (&out)[4], uint32_t v, size_t size) noexcept {
    for (size_t i = 0; i < size; ++i)
        out[i] = static_cast<uint8_t>(v >> (8 * i));
    return {out, size};
}

}  // namespace

void ZoFMemorySink::Append(std::span<const uint8_t> bytes) {
    bytes_.insert(bytes_.end(), bytes.begin(), bytes.end());
}

void ZoFMemorySink::Overwrite(size_t offset, std::span<const uint8_t> bytes) {
    if (offset > bytes_.size() || bytes.size() > bytes_.size() - offset)
        throw ZoException("Bytes beyond the end of a memory sink cannot be overwritten.");
    std::copy(bytes.begin(), bytes.end(), bytes_.begin() + static_cast<ptrdiff_t>(offset));
}

void ZoFByteBuffer::PutU32(uint32_t v) {
    uint8_t b[4];
    PutBytes(LittleEndian(b, v, 4));
}

void ZoFByteBuffer::PutString(std::string_view text) {
    PutBytes({reinterpret_cast<const uint8_t*>(text.data()), text.size()});
    PutU8(0);
}

void ZoFByteBuffer::PatchU16(size_t offset, uint16_t v) {
    if (offset > size_ || size_ - offset < 2)
        throw ZoException("Bytes beyond the end of a buffer cannot be patched.");
    uint8_t b[4];
    std::memcpy(data_.get() + offset, LittleEndian(b, v, 2).data(), 2);
}

void ZoFByteBuffer::PatchU32(size_t offset, uint32_t v) {
    if (offset > size_ || size_ - offset < 4)
        throw ZoException("Bytes beyond the end of a buffer cannot be patched.");
    uint8_t b[4];
    std::memcpy(data_.get() + offset, LittleEndian(b, v, 4).data(), 4);
}

void ZoFByteBuffer::Reserve(size_t size) {
    if (size <= capacity_)
        return;
    auto data = std::make_unique_for_overwrite<uint8_t[]>(size);
    if (size_ > 0)
        std::memcpy(data.get(), data_.get(), size_);
    data_ = std::move(data);
    capacity_ = size;
}

void ZoFByteBuffer::Grow(size_t more) {
    Reserve(std::max({size_ + more, 2 * capacity_, size_t{64}}));
}

ZoFFileStream::ZoFFileStream(ZoFByteSink& sink)
    : sink_(sink), buffer_(std::make_unique_for_overwrite<uint8_t[]>(kBufferSize)) {}

void ZoFFileStream::PutU32(uint32_t v) {
    uint8_t b[4];
    PutBytes(LittleEndian(b, v, 4));
}

void ZoFFileStream::PutLarge(std::span<const uint8_t> bytes) {
    Flush();
    if (bytes.size() >= kBufferSize) {
        // Pictures go to the sink as they are, without a detour.
        sink_.Append(bytes);
        sent_ += bytes.size();
        return;
    }
    std::memcpy(buffer_.get(), bytes.data(), bytes.size());
    used_ = bytes.size();
}

void ZoFFileStream::Flush() {
    if (used_ == 0)
        return;
    sink_.Append(std::span<const uint8_t>(buffer_.get(), used_));
    sent_ += used_;
    used_ = 0;
}

void ZoFFileStream::Patch(size_t offset, std::span<const uint8_t> bytes) {
    if (offset > Size() || bytes.size() > Size() - offset)
        throw ZoException("Bytes beyond the end of an SWF stream cannot be patched.");
    if (offset < sent_) {
        const size_t n = std::min(bytes.size(), sent_ - offset);
        sink_.Overwrite(offset, bytes.first(n));
        bytes = bytes.subspan(n);
        offset += n;
    }
    std::memcpy(buffer_.get() + (offset - sent_), bytes.data(), bytes.size());
}

void ZoFFileStream::PatchU16(size_t offset, uint16_t v) {
    uint8_t b[4];
    Patch(offset, LittleEndian(b, v, 2));
}

void ZoFFileStream::PatchU32(size_t offset, uint32_t v) {
    uint8_t b[4];
    Patch(offset, LittleEndian(b, v, 4));
}

}  // namespace ZoFlash
