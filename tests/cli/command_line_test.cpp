#include <gtest/gtest.h>

#include "cli_run.h"

namespace {

using cli_test::Vimbo;

TEST(CommandLine, HelpVersionAndUnknownOptions) {
    const struct {
        std::string option;
        int code;
        const char* out;  // in what went to stdout, or else to stderr
        const char* err;
    } cases[] = {
        {"--help", kVimboExitSuccess, "Usage", ""},
        {"--version", kVimboExitSuccess, "vimbo ", ""},
        {"--no-such-option", kVimboExitUsage, "", "--no-such-option"},
    };
    for (const auto& c : cases) {
        const cli_test::CommandResult run = Vimbo({c.option});
        EXPECT_EQ(run.code, c.code) << c.option;
        EXPECT_NE(run.out.find(c.out), std::string::npos) << run.out;
        EXPECT_NE(run.err.find(c.err), std::string::npos) << run.err;
    }
}

TEST(CommandLine, NoCommandOpensTheEditorWithTheNamedProject) {
    std::string opened = "<not called>";
    const auto launcher = [&](const std::string& file) {
        opened = file;
        return 0;
    };
    EXPECT_EQ(VimboRunCommandLine({"vimbo"}, launcher), 0);
    EXPECT_EQ(opened, "");
    EXPECT_EQ(VimboRunCommandLine({"vimbo", "Movie.vmb"}, launcher), 0);
    EXPECT_EQ(opened, "Movie.vmb");
}

}  // namespace
