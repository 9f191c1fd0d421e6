#pragma once
#include <cstdint>
#include <filesystem>
#include <span>
#include <string_view>

/// Writes a file so that readers only ever see the old file or the complete
/// new one: the bytes go to a hidden temporary beside the target, are flushed
/// to disk, and the temporary is renamed over the target on Commit(). Dropped
/// without Commit(), the temporary is removed and the target is untouched.
class ZoAtomicFile {
  public:
    /// Opens the temporary. Throws ZoException when the folder is missing,
    /// not writable, or `target` names a folder.
    explicit ZoAtomicFile(std::filesystem::path target);
    ZoAtomicFile(const ZoAtomicFile&) = delete;
    ZoAtomicFile& operator=(const ZoAtomicFile&) = delete;
    ~ZoAtomicFile();

    /// Appends bytes. Throws ZoException on a write error.
    void Write(std::span<const uint8_t> bytes);
    void Write(std::string_view bytes);
    /// Flushes, syncs and renames over the target. Throws ZoException.
    void Commit();

    const std::filesystem::path& TemporaryPath() const noexcept { return temporary_; }

  private:
    std::filesystem::path target_;
    std::filesystem::path temporary_;
    int fd_ = -1;
};

/// Writes `bytes` to `target` atomically (see ZoAtomicFile).
void ZoWriteFileAtomically(const std::filesystem::path& target, std::string_view bytes);
