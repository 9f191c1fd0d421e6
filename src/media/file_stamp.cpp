#include "media/file_stamp.h"

#include <filesystem>

ZoFileStamp ZoFileStamp::Of(const ZoString& path) {
    std::error_code error;
    const std::filesystem::path file(path);
    const auto size = std::filesystem::file_size(file, error);
    if (error)
        return {State::kMissing, 0, 0};
    const auto time = std::filesystem::last_write_time(file, error);
    if (error)
        return {State::kMissing, 0, 0};
    return {State::kFound, static_cast<uint64_t>(size),
            static_cast<int64_t>(time.time_since_epoch().count())};
}
