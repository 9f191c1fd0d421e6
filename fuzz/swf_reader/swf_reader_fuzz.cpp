// The test reader must turn any bytes into a list of problems, never crash:
// tests rely on it to judge files the writer got wrong.
#include <cstddef>
#include <cstdint>
#include <span>

#include "support/swf_reader.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const SwfTest::Validation result = SwfTest::ValidateSwf(std::span(data, size));
    (void)result;
    return 0;
}
