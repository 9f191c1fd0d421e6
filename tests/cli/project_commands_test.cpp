#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "cli/command_line.h"
#include "platform/atomic_file.h"
#include "platform/temp_directory.h"
#include "support/swf_reader.h"

namespace {

namespace fs = std::filesystem;

struct CommandResult {
    int code;
    std::string out;
    std::string err;
};

CommandResult Vimbo(std::vector<std::string> args) {
    args.insert(args.begin(), "vimbo");
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    const int code = VimboRunCommandLine(args, {});
    std::string out = testing::internal::GetCapturedStdout();
    return {code, out, testing::internal::GetCapturedStderr()};
}

std::string ReadAll(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

class ProjectCommands : public ::testing::Test {
  protected:
    void SetUp() override {
        folder_ = ZoMakeTempFileName("");
        fs::create_directories(folder_);
    }
    std::string Path(const char* name) const { return (folder_ / name).string(); }

    fs::path folder_;
};

TEST_F(ProjectCommands, DumpOfABuildBuildsTheSameBytes) {
    ZoWriteFileAtomically(Path("in.json"),
                          R"({"width": 640, "linkEnabled": true,
                              "effects": [{"effect": "Cross Fade", "returnHold": 250,
                                           "endObject": {"kind": "Solid Colour"}}]})");
    ASSERT_EQ(Vimbo({"build", Path("in.json"), "-o", Path("a.vmb")}).code, 0);
    const CommandResult dump = Vimbo({"dump", Path("a.vmb")});
    ASSERT_EQ(dump.code, 0) << dump.err;
    EXPECT_NE(dump.out.find("\"width\": 640,\n"), std::string::npos);
    EXPECT_NE(dump.out.find("\"returnHold\": 250"), std::string::npos);
    EXPECT_EQ(dump.out.back(), '\n');

    ZoWriteFileAtomically(Path("dump.json"), dump.out);
    ASSERT_EQ(Vimbo({"build", Path("dump.json"), "-o", Path("b.vmb")}).code, 0);
    EXPECT_EQ(ReadAll(Path("b.vmb")), ReadAll(Path("a.vmb")));
    EXPECT_EQ(Vimbo({"dump", Path("b.vmb")}).out, dump.out);
    // A JSON project dumps the same as the project file built from it.
    EXPECT_EQ(Vimbo({"dump", Path("dump.json")}).out, dump.out);
}

TEST_F(ProjectCommands, FailuresPrintOneLineAndLeaveNoOutput) {
    ZoWriteFileAtomically(Path("bad.json"), R"({"effects": [{"effect": "Wobble"}]})");
    ZoWriteFileAtomically(Path("broken.json"), R"({"width": )");
    ZoWriteFileAtomically(Path("text.vmb"), "not a project");
    ZoWriteFileAtomically(Path("taken.vmb"), "keep me");
    const struct {
        std::vector<std::string> args;
        int code;
        std::string message;
    } cases[] = {
        {{"dump", Path("absent.vmb")}, kVimboExitFailure, "does not exist"},
        {{"dump", Path("text.vmb")}, kVimboExitFailure, "not a Vimbo project file"},
        {{"build", Path("bad.json"), "-o", Path("out.vmb")},
         kVimboExitFailure,
         "Key 'effects[0].effect' names no effect: 'Wobble'"},
        {{"build", Path("broken.json"), "-o", Path("out.vmb")},
         kVimboExitFailure,
         "cannot be parsed"},
        {{"build", Path("bad.json"), "-o", Path("taken.vmb")},
         kVimboExitFailure,
         "already exists; use --force"},
        {{"build", Path("bad.json")}, kVimboExitUsage, "--output is required"},
        {{"dump"}, kVimboExitUsage, "project is required"},
    };
    for (const auto& c : cases) {
        const CommandResult run = Vimbo(c.args);
        EXPECT_EQ(run.code, c.code) << c.args[0] << " " << c.args.back();
        EXPECT_NE(run.err.find(c.message), std::string::npos) << run.err;
        if (c.code == kVimboExitFailure) {
            EXPECT_EQ(std::count(run.err.begin(), run.err.end(), '\n'), 1) << run.err;
        }
    }
    EXPECT_FALSE(fs::exists(Path("out.vmb")));
    EXPECT_EQ(ReadAll(Path("taken.vmb")), "keep me");
    EXPECT_EQ(std::distance(fs::directory_iterator(folder_), {}), 4);
}

TEST_F(ProjectCommands, ForceReplacesAnExistingOutput) {
    ZoWriteFileAtomically(Path("in.json"), R"({"effects": [{"effect": "Cross Fade"}]})");
    ZoWriteFileAtomically(Path("out.vmb"), "old");
    EXPECT_EQ(Vimbo({"build", Path("in.json"), "-o", Path("out.vmb"), "--force"}).code, 0);
    EXPECT_EQ(Vimbo({"dump", Path("out.vmb")}).code, 0);
}

TEST_F(ProjectCommands, PublishWritesTheMovieAndItsPageAndNamesThem) {
    ZoWriteFileAtomically(Path("in.json"), R"({"effects": [{"effect": "Cross Fade"}]})");
    const CommandResult run = Vimbo({"publish", Path("in.json"), "-o", Path("movie"), "--html"});
    ASSERT_EQ(run.code, 0) << run.err;
    EXPECT_EQ(run.out, Path("movie.swf") + "\n" + Path("movie.html") + "\n");
    const std::string swf = ReadAll(Path("movie.swf"));
    const std::vector<uint8_t> bytes(swf.begin(), swf.end());
    EXPECT_TRUE(SwfTest::ValidateSwf(bytes).problems.empty());
    EXPECT_NE(ReadAll(Path("movie.html")).find("VALUE=\"movie.swf\""), std::string::npos);

    // Publishing again needs --force, and then gives the same bytes.
    const CommandResult again = Vimbo({"publish", Path("in.json"), "-o", Path("movie.swf")});
    EXPECT_EQ(again.code, kVimboExitFailure);
    EXPECT_NE(again.err.find("already exists; use --force"), std::string::npos) << again.err;
    ASSERT_EQ(Vimbo({"publish", Path("in.json"), "-o", Path("movie.swf"), "--force"}).code, 0);
    EXPECT_EQ(ReadAll(Path("movie.swf")), swf);
}

TEST_F(ProjectCommands, PublishWithoutAProjectGivesTheNewDocumentsWave) {
    ASSERT_EQ(Vimbo({"publish", "-o", Path("new.swf")}).code, 0);
    const std::string swf = ReadAll(Path("new.swf"));
    const SwfTest::Validation result =
        SwfTest::ValidateSwf(std::vector<uint8_t>(swf.begin(), swf.end()));
    EXPECT_TRUE(result.problems.empty()) << result.problems.front();
    EXPECT_EQ(result.movie.frameCount, 24);
    EXPECT_EQ(result.movie.frameSize.xMax, 3640);
    EXPECT_EQ(result.movie.frameSize.yMax, 4040);
    EXPECT_EQ(result.movie.frameRate, 12 << 8);
    const auto& actions = result.movie.timeline.frames.at(0).actions;
    ASSERT_EQ(actions.size(), 1u);
    EXPECT_EQ(actions[0].url, "FSCommand:showmenu");
    EXPECT_EQ(actions[0].target, "false");
}

TEST_F(ProjectCommands, PublishFailuresLeaveNothingBehind) {
    ZoWriteFileAtomically(Path("in.json"), R"({"effects": [{"effect": "Cross Fade"}]})");
    ZoWriteFileAtomically(Path("page.html"), "keep me");
    fs::create_directories(Path("folder.swf"));
    const struct {
        std::vector<std::string> args;
        std::string message;
    } cases[] = {
        {{"-o", Path("missing/movie.swf")}, "does not exist"},
        {{"-o", Path("folder.swf")}, "is a folder, not a file"},
        {{"-o", Path("folder")}, "is a folder, not a file"},
        {{"-o", "/proc/movie.swf"}, "Cannot write to"},
        {{"-o", Path("page.swf"), "--html"}, "page.html' already exists; use --force"},
        {{Path("absent.json"), "-o", Path("movie.swf")}, "does not exist"},
    };
    for (const auto& c : cases) {
        std::vector<std::string> args{"publish"};
        if (c.args.size() == 2)
            args.push_back(Path("in.json"));
        args.insert(args.end(), c.args.begin(), c.args.end());
        const CommandResult run = Vimbo(args);
        EXPECT_EQ(run.code, kVimboExitFailure) << run.out;
        EXPECT_NE(run.err.find(c.message), std::string::npos) << run.err;
        EXPECT_EQ(std::count(run.err.begin(), run.err.end(), '\n'), 1) << run.err;
    }
    EXPECT_EQ(ReadAll(Path("page.html")), "keep me");
    EXPECT_EQ(std::distance(fs::directory_iterator(folder_), {}), 3);
}

}  // namespace
