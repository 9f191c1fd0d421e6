#include <gtest/gtest.h>

#include "cli/command_line.h"

namespace {

int RunVimbo(std::vector<std::string> args, const VimboEditorLauncher& launcher = {}) {
    args.insert(args.begin(), "vimbo");
    return VimboRunCommandLine(args, launcher);
}

TEST(CommandLine, HelpAndVersionSucceed) {
    testing::internal::CaptureStdout();
    EXPECT_EQ(RunVimbo({"--help"}), kVimboExitSuccess);
    EXPECT_NE(testing::internal::GetCapturedStdout().find("Usage"), std::string::npos);
    testing::internal::CaptureStdout();
    EXPECT_EQ(RunVimbo({"--version"}), kVimboExitSuccess);
    EXPECT_NE(testing::internal::GetCapturedStdout().find("vimbo "), std::string::npos);
}

TEST(CommandLine, UnknownOptionsAreUsageErrors) {
    testing::internal::CaptureStderr();
    EXPECT_EQ(RunVimbo({"--no-such-option"}), kVimboExitUsage);
    EXPECT_FALSE(testing::internal::GetCapturedStderr().empty());
}

TEST(CommandLine, NoCommandOpensTheEditorWithTheNamedProject) {
    std::string opened = "<not called>";
    const auto launcher = [&](const std::string& file) {
        opened = file;
        return 0;
    };
    EXPECT_EQ(RunVimbo({}, launcher), 0);
    EXPECT_EQ(opened, "");
    EXPECT_EQ(RunVimbo({"Movie.vmb"}, launcher), 0);
    EXPECT_EQ(opened, "Movie.vmb");
}

}  // namespace
