#pragma once
// Action records: the little byte code of frame and button actions.
#include <cstdint>
#include <vector>

#include "flash/byte_stream.h"
#include "platform/zo_auto_ptr.h"
#include "platform/zo_string.h"

namespace ZoFlash {

/// One SWF action record.
class ZoFActionRecord {
  public:
    explicit ZoFActionRecord(uint8_t code) noexcept : code_(code) {}
    virtual ~ZoFActionRecord() = default;
    /// Appends the record (code, and length plus data when it has data).
    virtual void Write(ZoFByteBuffer& out) const;
    /// Bytes of the data that follows the length field.
    virtual int GetDataLength() const { return 0; }
    /// True for codes 0x80 and above, which carry a length and data.
    bool HasData() const noexcept { return code_ >= 0x80; }
    /// A one-line human-readable description, for diagnostics.
    virtual ZoString GetDescriptionLine(int indent) const;
    uint8_t GetCode() const noexcept { return code_; }

  protected:
    /// Appends the data after the length field.
    virtual void WriteData(ZoFByteBuffer&) const {}

  private:
    uint8_t code_;
};

/// Well-known action codes.
inline constexpr uint8_t kZoActionStop = 0x07;
inline constexpr uint8_t kZoActionGetURL = 0x83;

/// The GetURL action (code 0x83): url and target strings.
class ZoFGetURLAction : public ZoFActionRecord {
  public:
    ZoFGetURLAction(std::string_view url, std::string_view target);
    int GetDataLength() const override;
    ZoString GetDescriptionLine(int indent) const override;
    const ZoString& GetURL() const noexcept { return url_; }
    const ZoString& GetTarget() const noexcept { return target_; }

  protected:
    void WriteData(ZoFByteBuffer& out) const override;

  private:
    ZoString url_, target_;
};

/// An ordered list of owned action records.
class ZoFActionList {
  public:
    /// Takes the record out of `record`.
    void AddActionRecord(ZoAutoPtr2<ZoFActionRecord>& record);
    void AddActionRecord(ZoAutoPtr2<ZoFActionRecord>&& record);
    bool IsEmpty() const noexcept { return records_.empty(); }
    size_t GetCount() const noexcept { return records_.size(); }
    const ZoFActionRecord& Get(size_t index) const { return *records_[index]; }
    /// Appends every record followed by ActionEndFlag (0).
    void Write(ZoFByteBuffer& out) const;
    /// Moves every record to the end of `other`.
    void TransferTo(ZoFActionList& other);

  private:
    std::vector<ZoAutoPtr2<ZoFActionRecord>> records_;
};

}  // namespace ZoFlash
