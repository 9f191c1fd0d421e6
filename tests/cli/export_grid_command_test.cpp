#include <gtest/gtest.h>

#include "cli_run.h"
#include "platform/atomic_file.h"

namespace {

namespace fs = std::filesystem;
using cli_test::ReadAll;

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

class ExportGrid : public cli_test::InTempFolder {
  protected:
    void SetUp() override {
        InTempFolder::SetUp();
        ZoWriteFileAtomically(Path("morph.json"), kProject);
        ZoWriteFileAtomically(Path("wave.json"), R"({"effects": [{"effect": "Wave"}]})");
    }
    static cli_test::CommandResult Run(std::vector<std::string> args) {
        args.insert(args.begin(), "export-grid");
        return cli_test::Vimbo(args);
    }
};

TEST_F(ExportGrid, WritesTheFirstMorphsRootGridAsTheHeader) {
    const std::string expected =
        ReadAll(fs::path(VIMBO_SOURCE_DIR) / "tests/cli/expected_morph_preset.txt");
    for (const std::vector<std::string>& choice : {std::vector<std::string>{}, {"--effect", "2"}}) {
        std::vector<std::string> args = {Path("morph.json"), "-o", Path("out.h"), "--force"};
        args.insert(args.end(), choice.begin(), choice.end());
        const auto run = Run(args);
        ASSERT_EQ(run.code, kVimboExitSuccess) << run.err;
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
        const auto run = Run(c.args);
        EXPECT_EQ(run.code, kVimboExitFailure);
        EXPECT_NE(run.err.find(c.message), std::string::npos) << run.err;
        EXPECT_EQ(cli_test::LineCount(run.err), 1) << run.err;
    }
    EXPECT_FALSE(fs::exists(Path("new.h")));
    EXPECT_EQ(ReadAll(Path("taken.h")), "keep me");
}

}  // namespace
