#pragma once
// Vimbo's own folder-tree container. The byte layout is documented in
// docs/project-file-format.md; this class is the only code that knows it.
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/folder_file.h"

/// A 4-character tag as the 32-bit value whose little-endian bytes are the
/// characters in order: ZoFourCC("TSK1") is stored as 'T','S','K','1'.
constexpr uint32_t ZoFourCC(const char (&text)[5]) noexcept {
    return static_cast<uint32_t>(static_cast<uint8_t>(text[0])) |
           static_cast<uint32_t>(static_cast<uint8_t>(text[1])) << 8 |
           static_cast<uint32_t>(static_cast<uint8_t>(text[2])) << 16 |
           static_cast<uint32_t>(static_cast<uint8_t>(text[3])) << 24;
}

/// Bounds that keep a damaged or hostile file from exhausting memory or the
/// stack. Writing beyond them throws too, so every file we write can be read.
struct ZoCompiledFileLimits {
    static constexpr uint64_t kMaxFileBytes = 256u << 20;
    static constexpr uint32_t kMaxDepth = 64;
    static constexpr uint32_t kMaxFolders = 1u << 20;
};

/// A tree of folders kept in memory. Written files are saved through
/// ZoAtomicFile on Close(); read files are loaded and fully validated
/// (magic, type tag, lengths, CRC-32, limits) on Open() before any folder is
/// visible. Without a path the tree lives only in memory: Open(true, true),
/// write, Close(), then ToBytes(), or Open(false, false) to read it back.
class ZoCompiledFile : public ZoFolderFile {
  public:
    /// An in-memory file whose type tag and version are written on save and
    /// whose type tag is demanded on load.
    ZoCompiledFile(uint32_t typeTag, uint32_t version);
    /// A file on disk at `path`.
    ZoCompiledFile(std::filesystem::path path, uint32_t typeTag, uint32_t version);
    ~ZoCompiledFile() override;

    /// Parses and validates `bytes`; the result is open for reading. Throws
    /// ZoException naming what is wrong (bad magic, other type tag, damaged
    /// data, limits exceeded).
    static ZoCompiledFile FromBytes(std::span<const uint8_t> bytes, uint32_t typeTag);
    static ZoCompiledFile FromBytes(std::string_view bytes, uint32_t typeTag);
    ZoCompiledFile(ZoCompiledFile&&) noexcept;
    ZoCompiledFile& operator=(ZoCompiledFile&&) noexcept;

    /// The whole tree in the container layout, header and checksum included.
    std::string ToBytes() const;

    /// Writing starts an empty tree (false when `create` is not set and the
    /// file does not exist). Reading a disk file returns false when it cannot
    /// be read and throws ZoException when it is not a valid container of
    /// this type tag; an in-memory file reads back the tree it holds.
    bool Open(bool forWriting, bool create) override;
    /// Ends the session; a disk file open for writing is saved atomically
    /// (throws ZoException when that fails and leaves the old file intact).
    void Close() override;

    void WriteData(const void* data, uint32_t length) override;
    void ReadData(void* data, uint32_t length) override;
    void ReadData(void* data, uint32_t length, uint32_t& got) override;
    void DescendFolder(const uint32_t* name, bool forWriting, bool mustExist) override;
    void Ascend() override;
    bool GetFirstFolderName(uint32_t& name) override;
    bool GetNextFolderName(uint32_t& name) override;
    bool IsFolderAvailable(uint32_t name) override;
    uint32_t GetVersionNumber() const override;
    uint32_t GetFolderSize() const override;
    void Seek(int64_t offset, int origin) override;

    uint32_t GetTypeTag() const noexcept { return typeTag_; }
    /// How many folders deep the cursor is (0 at the root).
    size_t GetDepth() const noexcept;

    // The tree and the read/write position; private in spirit, named here
    // only so that the file's helpers can build them.
    struct Folder;
    struct Cursor;

  private:
    Cursor& Current();
    const Cursor& Current() const;
    void LoadFrom(std::span<const uint8_t> bytes);
    void ResetCursor();

    std::optional<std::filesystem::path> path_;
    uint32_t typeTag_;
    uint32_t version_;
    std::unique_ptr<Folder> root_;
    std::vector<Cursor> cursors_;
    uint32_t folderCount_ = 1;
    bool open_ = false;
    bool writing_ = false;
};
