#include "platform/temp_directory.h"

#include <unistd.h>

#include <atomic>
#include <system_error>

#include "platform/zo_exception.h"
#include "platform/zo_guid.h"

namespace {

class ProcessTempDirectory {
  public:
    ProcessTempDirectory() {
        std::error_code error;
        const auto base = std::filesystem::temp_directory_path(error);
        if (error)
            throw ZoException("No temporary folder is available: " + error.message());
        path_ = base / ("vimbo-" + std::to_string(::getpid()) + "-" +
                        ZoGuid::NewRandom().ToString().substr(1, 8));
        std::filesystem::create_directories(path_, error);
        if (error)
            throw ZoException("Cannot create " + path_.string() + ": " + error.message());
    }
    ~ProcessTempDirectory() {
        std::error_code ignored;  // nothing to report to during exit
        std::filesystem::remove_all(path_, ignored);
    }
    const std::filesystem::path& Path() const noexcept { return path_; }

  private:
    std::filesystem::path path_;
};

}  // namespace

const std::filesystem::path& ZoProcessTempDirectory() {
    static const ProcessTempDirectory directory;
    return directory.Path();
}

std::filesystem::path ZoMakeTempFileName(std::string_view extension) {
    static std::atomic<uint64_t> counter{0};
    return ZoProcessTempDirectory() /
           (ZoFormat("t%llu", static_cast<unsigned long long>(++counter)) + ZoString(extension));
}
