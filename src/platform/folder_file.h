#pragma once
// The folder-file interface that every project-file record is read and
// written through. A file is a tree of folders; each folder holds a byte
// stream and child folders. A child folder is either named by a 4-byte name
// (a uint32, stored little-endian) or unnamed; unnamed children are read back
// in the order they were written.
//
// Reading past the end of a folder's stream, or descending into a folder
// that must exist and does not, throws ZoFileNonFatalException: record
// readers catch it and fall back to their defaults. Anything else that goes
// wrong throws ZoException.
#include <cstdint>
#include <optional>

#include "platform/zo_guid.h"
#include "platform/zo_string.h"

class ZoFolderFile {
  public:
    virtual ~ZoFolderFile() = default;

    /// Opens the file; false when it cannot be opened (or created).
    virtual bool Open(bool forWriting, bool create) = 0;
    virtual void Close() = 0;

    /// Appends to the current folder's stream.
    virtual void WriteData(const void* data, uint32_t length) = 0;
    /// Reads exactly `length` bytes; throws ZoFileNonFatalException (and
    /// consumes nothing) when fewer remain in the current folder.
    virtual void ReadData(void* data, uint32_t length) = 0;
    /// Reads up to `length` bytes and reports how many arrived in `got`.
    virtual void ReadData(void* data, uint32_t length, uint32_t& got) = 0;

    /// Enters a child folder of the current one. `name` null means the next
    /// unnamed folder (in writing order); otherwise the folder with that
    /// 4-byte name. When reading and the folder is absent: with `mustExist`
    /// throws ZoFileNonFatalException; without, enters an empty folder so
    /// that the reads inside it fail softly.
    virtual void DescendFolder(const uint32_t* name, bool forWriting, bool mustExist) = 0;
    /// Leaves the current folder for its parent.
    virtual void Ascend() = 0;

    /// Names of the current folder's named children, in order; false at the end.
    virtual bool GetFirstFolderName(uint32_t& name) = 0;
    virtual bool GetNextFolderName(uint32_t& name) = 0;
    virtual bool IsFolderAvailable(uint32_t name) = 0;

    virtual uint32_t GetVersionNumber() const = 0;
    /// Bytes in the current folder's stream.
    virtual uint32_t GetFolderSize() const = 0;
    /// Moves the read position within the current folder's stream
    /// (origin: SEEK_SET, SEEK_CUR or SEEK_END).
    virtual void Seek(int64_t offset, int origin) = 0;

    // Typed helpers over ReadData / WriteData; all little-endian.
    void WriteInt32(int32_t value);
    void WriteUInt32(uint32_t value);
    void WriteUInt16(uint16_t value);
    void WriteBool(bool value);
    void WriteDouble(double value);
    void WriteGuid(const ZoGuid& guid);
    /// uint32 byte count, then the bytes, no terminator.
    void WriteString(const ZoString& text);

    int32_t ReadInt32();
    uint32_t ReadUInt32();
    uint16_t ReadUInt16();
    /// Any nonzero byte reads as true.
    bool ReadBool();
    double ReadDouble();
    ZoGuid ReadGuid();
    /// Throws ZoFileNonFatalException when the count or the bytes are missing.
    void ReadString(ZoString& text);
};

/// Descends on construction and ascends on destruction, so that a read that
/// throws inside a folder still leaves the file positioned in the parent.
class ZoFolderGuard {
  public:
    /// Enters the next unnamed folder.
    ZoFolderGuard(ZoFolderFile& file, bool forWriting, bool mustExist = true);
    /// Enters the folder named `name`.
    ZoFolderGuard(ZoFolderFile& file, uint32_t name, bool forWriting, bool mustExist = true);
    ZoFolderGuard(const ZoFolderGuard&) = delete;
    ZoFolderGuard& operator=(const ZoFolderGuard&) = delete;
    ~ZoFolderGuard();

  private:
    ZoFolderFile& file_;
};
