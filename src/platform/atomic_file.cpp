#include "platform/atomic_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "platform/zo_exception.h"
#include "platform/zo_guid.h"

namespace {

ZoException FileError(const char* what, const std::filesystem::path& path) {
    return ZoException(ZoFormat("%s '%s': %s", what, path.c_str(), std::strerror(errno)));
}

}  // namespace

ZoAtomicFile::ZoAtomicFile(std::filesystem::path target) : target_(std::move(target)) {
    std::error_code error;
    if (std::filesystem::is_directory(target_, error)) {
        throw ZoException(ZoFormat("'%s' is a folder, not a file", target_.c_str()));
    }
    const auto folder = target_.has_parent_path() ? target_.parent_path() : ".";
    if (!std::filesystem::is_directory(folder, error)) {
        throw ZoException(ZoFormat("The folder '%s' does not exist", folder.c_str()));
    }
    // Beside the target, so the final rename never crosses file systems.
    temporary_ = folder / ("." + target_.filename().string() + "." +
                           ZoGuid::NewRandom().ToString().substr(1, 8) + ".part");
    fd_ = ::open(temporary_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0644);
    if (fd_ < 0)
        throw FileError("Cannot write to", target_);
}

ZoAtomicFile::~ZoAtomicFile() {
    if (fd_ >= 0) {
        ::close(fd_);
        ::unlink(temporary_.c_str());
    }
}

void ZoAtomicFile::Write(std::span<const uint8_t> bytes) {
    Write(std::string_view(reinterpret_cast<const char*>(bytes.data()), bytes.size()));
}

void ZoAtomicFile::Write(std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = ::write(fd_, bytes.data(), bytes.size());
        if (written < 0) {
            if (errno == EINTR)
                continue;
            throw FileError("Cannot write to", target_);
        }
        bytes.remove_prefix(static_cast<size_t>(written));
    }
}

void ZoAtomicFile::Commit() {
    if (::fsync(fd_) != 0)
        throw FileError("Cannot write to", target_);
    const int fd = fd_;
    fd_ = -1;
    if (::close(fd) != 0) {
        ::unlink(temporary_.c_str());
        throw FileError("Cannot write to", target_);
    }
    if (::rename(temporary_.c_str(), target_.c_str()) != 0) {
        const int saved = errno;
        ::unlink(temporary_.c_str());
        errno = saved;
        throw FileError("Cannot replace", target_);
    }
}

void ZoWriteFileAtomically(const std::filesystem::path& target, std::string_view bytes) {
    ZoAtomicFile file(target);
    file.Write(bytes);
    file.Commit();
}
