#pragma once
// What is remembered of a picture file to notice when it changes on disk.
#include <cstdint>

#include "platform/zo_string.h"

/// A file's size and modification time, or the fact that it is missing.
struct ZoFileStamp {
    enum class State : uint8_t { kUnknown, kMissing, kFound };

    State state = State::kUnknown;
    uint64_t size = 0;
    /// Modification time in the file system's own ticks (full resolution, so
    /// a rewrite within the same second is still noticed).
    int64_t time = 0;

    /// The stamp of the file at `path` now; kMissing when it cannot be read.
    static ZoFileStamp Of(const ZoString& path);

    bool IsFound() const noexcept { return state == State::kFound; }
    friend bool operator==(const ZoFileStamp&, const ZoFileStamp&) = default;
};
