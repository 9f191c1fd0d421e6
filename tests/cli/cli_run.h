#pragma once
// Runs `vimbo` in this process, on files in a temporary folder of the test's own.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "cli/command_line.h"
#include "platform/temp_directory.h"

namespace cli_test {

struct CommandResult {
    int code;
    std::string out;
    std::string err;
};

/// The exit code and what `vimbo args...` printed.
inline CommandResult Vimbo(std::vector<std::string> args) {
    args.insert(args.begin(), "vimbo");
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    const int code = VimboRunCommandLine(args, {});
    std::string out = testing::internal::GetCapturedStdout();
    return {code, out, testing::internal::GetCapturedStderr()};
}

inline long LineCount(const std::string& text) {
    return std::count(text.begin(), text.end(), '\n');
}

inline std::string ReadAll(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

class InTempFolder : public ::testing::Test {
  protected:
    void SetUp() override {
        folder_ = ZoMakeTempFileName("");
        std::filesystem::create_directories(folder_);
    }
    std::string Path(const char* name) const { return (folder_ / name).string(); }

    std::filesystem::path folder_;
};

}  // namespace cli_test
