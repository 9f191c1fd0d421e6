#pragma once
// Silver files: per-frame results recorded once and compared on every run,
// so that a change in what an effect computes cannot pass unnoticed. Run the
// test with VIMBO_REBASELINE=1 to record them again, then read the diff.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

namespace effect_test {

/// Compares `text` with tests/effects/silver/`name`, or writes it there when
/// VIMBO_REBASELINE=1 is set. The message names the first line that differs.
inline testing::AssertionResult MatchesSilver(const std::string& name, const std::string& text) {
    const auto path = std::filesystem::path(VIMBO_SOURCE_DIR) / "tests/effects/silver" / name;
    const char* rebaseline = std::getenv("VIMBO_REBASELINE");
    if (rebaseline && std::string(rebaseline) == "1") {
        std::ofstream(path, std::ios::binary) << text;
        return testing::AssertionSuccess();
    }
    std::ifstream in(path, std::ios::binary);
    std::istringstream actual(text);
    std::string expected, got;
    for (int line = 1;; ++line) {
        const bool moreExpected = static_cast<bool>(std::getline(in, expected));
        const bool moreActual = static_cast<bool>(std::getline(actual, got));
        if (!moreExpected && !moreActual)
            return testing::AssertionSuccess();
        if (moreExpected != moreActual || expected != got) {
            return testing::AssertionFailure()
                   << path << " line " << line << ": expected \""
                   << (moreExpected ? expected : "<end>") << "\", got \""
                   << (moreActual ? got : "<end>") << "\"";
        }
    }
}

}  // namespace effect_test
