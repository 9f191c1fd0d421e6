#pragma once
// Output plumbing: tags are encoded into a ZoFFileStream, which hands the
// bytes to a ZoFByteSink whenever its buffer fills, so a movie of any size
// costs the writer one buffer. Tag bodies are assembled in a ZoFByteBuffer.
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <span>
#include <string_view>
#include <vector>

namespace ZoFlash {

/// Receives finished bytes: a file, a memory buffer, a counter.
class ZoFByteSink {
  public:
    virtual ~ZoFByteSink() = default;
    virtual void Append(std::span<const uint8_t> bytes) = 0;
    /// Replaces bytes appended earlier, `offset` bytes from the start. The
    /// header's file length is only known once everything else has gone.
    virtual void Overwrite(size_t offset, std::span<const uint8_t> bytes) = 0;
};

/// A sink that keeps everything in memory (tests, previews, benchmarks).
class ZoFMemorySink : public ZoFByteSink {
  public:
    void Append(std::span<const uint8_t> bytes) override;
    /// Throws ZoException when the range was never appended.
    void Overwrite(size_t offset, std::span<const uint8_t> bytes) override;
    const std::vector<uint8_t>& Bytes() const noexcept { return bytes_; }
    std::vector<uint8_t> TakeBytes() noexcept { return std::move(bytes_); }

  private:
    std::vector<uint8_t> bytes_;
};

/// Little-endian byte writer into a contiguous buffer; used for tag bodies
/// and the encoded placements of frames. Appends are inline: records are
/// written a few bytes at a time, hundreds of thousands of times.
class ZoFByteBuffer {
  public:
    ZoFByteBuffer() noexcept = default;
    ZoFByteBuffer(const ZoFByteBuffer&) = delete;
    ZoFByteBuffer& operator=(const ZoFByteBuffer&) = delete;

    void PutU8(uint8_t v) {
        if (size_ == capacity_)
            Grow(1);
        data_[size_++] = v;
    }
    void PutU16(uint16_t v) {
        const uint8_t b[2] = {static_cast<uint8_t>(v), static_cast<uint8_t>(v >> 8)};
        PutBytes(b);
    }
    void PutU32(uint32_t v);
    void PutBytes(std::span<const uint8_t> bytes) {
        if (bytes.size() > capacity_ - size_)
            Grow(bytes.size());
        if (!bytes.empty())
            std::memcpy(data_.get() + size_, bytes.data(), bytes.size());
        size_ += bytes.size();
    }
    /// Appends `count` bytes for the caller to fill in; the pointer is
    /// valid until the next append.
    uint8_t* Append(size_t count) {
        if (count > capacity_ - size_)
            Grow(count);
        uint8_t* at = data_.get() + size_;
        size_ += count;
        return at;
    }
    /// A zero-terminated string (action and name fields).
    void PutString(std::string_view text);
    void PatchU16(size_t offset, uint16_t v);
    void PatchU32(size_t offset, uint32_t v);
    void Clear() noexcept { size_ = 0; }
    void Reserve(size_t size);
    size_t Size() const noexcept { return size_; }
    std::span<const uint8_t> Bytes() const noexcept { return {data_.get(), size_}; }

  private:
    void Grow(size_t more);
    std::unique_ptr<uint8_t[]> data_;
    size_t size_ = 0;
    size_t capacity_ = 0;
};

/// The file being written, on its way to a sink: appended bytes wait in a
/// fixed buffer that is sent whenever it fills; patches reach bytes still
/// waiting directly and those already sent through the sink's Overwrite.
class ZoFFileStream {
  public:
    explicit ZoFFileStream(ZoFByteSink& sink);
    ZoFFileStream(const ZoFFileStream&) = delete;
    ZoFFileStream& operator=(const ZoFFileStream&) = delete;

    void PutU8(uint8_t v) { PutBytes({&v, 1}); }
    void PutU16(uint16_t v) {
        const uint8_t b[2] = {static_cast<uint8_t>(v), static_cast<uint8_t>(v >> 8)};
        PutBytes(b);
    }
    void PutU32(uint32_t v);
    void PutBytes(std::span<const uint8_t> bytes) {
        if (bytes.size() > kBufferSize - used_) {
            PutLarge(bytes);
            return;
        }
        if (!bytes.empty())
            std::memcpy(buffer_.get() + used_, bytes.data(), bytes.size());
        used_ += bytes.size();
    }
    void PatchU16(size_t offset, uint16_t v);
    void PatchU32(size_t offset, uint32_t v);
    /// Bytes put so far, sent or waiting.
    size_t Size() const noexcept { return sent_ + used_; }
    /// Sends the waiting bytes to the sink.
    void Flush();

  private:
    void PutLarge(std::span<const uint8_t> bytes);
    void Patch(size_t offset, std::span<const uint8_t> bytes);
    static constexpr size_t kBufferSize = size_t{1} << 16;
    ZoFByteSink& sink_;
    std::unique_ptr<uint8_t[]> buffer_;
    size_t used_ = 0;  // bytes waiting in buffer_
    size_t sent_ = 0;  // bytes already with the sink
};

}  // namespace ZoFlash
