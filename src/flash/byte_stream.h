#pragma once
// Output plumbing: tags are encoded into a ZoFFileStream (growable, chunked so
// that a large movie never needs one huge reallocation) and the finished bytes
// leave through a ZoFByteSink.
#include <cstddef>
#include <cstdint>
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
};

/// A sink that keeps everything in memory (tests, previews, benchmarks).
class ZoFMemorySink : public ZoFByteSink {
  public:
    void Append(std::span<const uint8_t> bytes) override;
    const std::vector<uint8_t>& Bytes() const noexcept { return bytes_; }
    std::vector<uint8_t> TakeBytes() noexcept { return std::move(bytes_); }

  private:
    std::vector<uint8_t> bytes_;
};

/// Little-endian byte writer into a contiguous buffer; used for tag bodies.
class ZoFByteBuffer {
  public:
    void PutU8(uint8_t v) { bytes_.push_back(v); }
    void PutU16(uint16_t v);
    void PutU32(uint32_t v);
    void PutBytes(std::span<const uint8_t> bytes);
    /// A zero-terminated string (action and name fields).
    void PutString(std::string_view text);
    void PatchU16(size_t offset, uint16_t v);
    void PatchU32(size_t offset, uint32_t v);
    void Clear() noexcept { bytes_.clear(); }
    size_t Size() const noexcept { return bytes_.size(); }
    std::span<const uint8_t> Bytes() const noexcept { return bytes_; }
    std::vector<uint8_t>& Storage() noexcept { return bytes_; }

  private:
    std::vector<uint8_t> bytes_;
};

/// The file being written: appended in fixed-size chunks, patched in place
/// (header length and frame count), then emptied into a sink.
class ZoFFileStream {
  public:
    ZoFFileStream();
    ZoFFileStream(const ZoFFileStream&) = delete;
    ZoFFileStream& operator=(const ZoFFileStream&) = delete;

    void PutU8(uint8_t v);
    void PutU16(uint16_t v);
    void PutU32(uint32_t v);
    void PutBytes(std::span<const uint8_t> bytes);
    void PatchU16(size_t offset, uint16_t v);
    void PatchU32(size_t offset, uint32_t v);
    size_t Size() const noexcept { return size_; }
    /// Sends every byte to `sink` in order.
    void CopyTo(ZoFByteSink& sink) const;

  private:
    void PatchByte(size_t offset, uint8_t v);
    static constexpr size_t kChunkSize = size_t{1} << 16;
    std::vector<std::unique_ptr<uint8_t[]>> chunks_;
    size_t size_ = 0;
};

}  // namespace ZoFlash
