#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "cli/command_line.h"
#include "platform/atomic_file.h"
#include "platform/temp_directory.h"

namespace {

namespace fs = std::filesystem;

std::string ReadAll(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

// A wave, then a morph over a 2 × 1 grid with a split cell, whose header is
// tests/cli/expected_morph_preset.txt (written out by hand from the format).
constexpr const char* kProject = R"({"effects": [{"effect": "Wave"}, {"effect": "Morph",
    "triangulation": {"across": 2, "down": 1, "diagonals": [true, false],
        "points": [{"x": 0, "y": 0, "endX": 0, "endY": 0},
                   {"x": 0.3333333333, "y": 0, "endX": 0.7, "endY": 0},
                   {"x": 1, "y": 0, "endX": 1, "endY": 0},
                   {"x": 0, "y": 1, "endX": 0, "endY": 1},
                   {"x": 0.6, "y": 1, "endX": 0.25, "endY": 1},
                   {"x": 1, "y": 1, "endX": 1, "endY": 1}],
        "splits": [{"column": 0, "row": 0, "across": 2, "down": 2}]}}]})";

class ExportGrid : public ::testing::Test {
  protected:
    void SetUp() override {
        folder_ = ZoMakeTempFileName("");
        fs::create_directories(folder_);
        ZoWriteFileAtomically(Path("morph.json"), kProject);
        ZoWriteFileAtomically(Path("wave.json"), R"({"effects": [{"effect": "Wave"}]})");
    }
    std::string Path(const char* name) const { return (folder_ / name).string(); }
    // The exit code, and what went to stderr.
    std::pair<int, std::string> Run(std::vector<std::string> args) const {
        args.insert(args.begin(), {"vimbo", "export-grid"});
        testing::internal::CaptureStderr();
        const int code = VimboRunCommandLine(args, {});
        return {code, testing::internal::GetCapturedStderr()};
    }

    fs::path folder_;
};

TEST_F(ExportGrid, WritesTheFirstMorphsRootGridAsTheHeader) {
    const std::string expected =
        ReadAll(fs::path(VIMBO_SOURCE_DIR) / "tests/cli/expected_morph_preset.txt");
    for (const std::vector<std::string>& choice : {std::vector<std::string>{}, {"--effect", "2"}}) {
        std::vector<std::string> args = {Path("morph.json"), "-o", Path("out.h"), "--force"};
        args.insert(args.end(), choice.begin(), choice.end());
        const auto [code, err] = Run(args);
        ASSERT_EQ(code, kVimboExitSuccess) << err;
        EXPECT_EQ(ReadAll(Path("out.h")), expected);
    }
}

TEST_F(ExportGrid, BadInputFailsWithOneLineAndWritesNothing) {
    ZoWriteFileAtomically(Path("taken.h"), "keep me");
    const struct {
        std::vector<std::string> args;
        std::string message;
    } cases[] = {
        {{Path("wave.json"), "-o", Path("new.h")}, "no morph effect"},
        {{Path("morph.json"), "--effect", "1", "-o", Path("new.h")}, "a Wave effect, not a morph"},
        {{Path("morph.json"), "--effect", "3", "-o", Path("new.h")}, "the project has 2 effects"},
        {{Path("morph.json"), "--effect", "0", "-o", Path("new.h")}, "There is no effect 0"},
        {{Path("absent.json"), "-o", Path("new.h")}, "absent.json"},
        {{Path("morph.json"), "-o", Path("taken.h")}, "use --force"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.message);
        const auto [code, err] = Run(c.args);
        EXPECT_EQ(code, kVimboExitFailure);
        EXPECT_NE(err.find(c.message), std::string::npos) << err;
        EXPECT_EQ(std::count(err.begin(), err.end(), '\n'), 1) << err;
    }
    EXPECT_FALSE(fs::exists(Path("new.h")));
    EXPECT_EQ(ReadAll(Path("taken.h")), "keep me");
}

}  // namespace
