#pragma once
// One call for tests that build movies: write in memory, parse, validate.
#include <string>
#include <vector>

#include "flash/swf_movie.h"
#include "support/swf_reader.h"

namespace SwfTest {

/// The written bytes and what the validator found in them.
struct WrittenMovie {
    std::vector<uint8_t> bytes;
    Validation result;
    /// The problems, one a line ("" when none), for assertion messages.
    std::string Problems() const;
};

/// Writes `movie` into memory and validates it.
WrittenMovie WriteAndValidate(ZoFlash::ZoSWFMovie& movie);

}  // namespace SwfTest
