#include <gtest/gtest.h>

#include "cli_run.h"
#include "platform/atomic_file.h"
#include "platform/image_codec.h"
#include "support/swf_reader.h"

namespace {

namespace fs = std::filesystem;
using cli_test::CommandResult;
using cli_test::LineCount;
using cli_test::ReadAll;
using cli_test::Vimbo;
using ProjectCommands = cli_test::InTempFolder;

SwfTest::Movie ValidMovie(const std::string& path) {
    const std::string swf = ReadAll(path);
    const SwfTest::Validation result =
        SwfTest::ValidateSwf(std::vector<uint8_t>(swf.begin(), swf.end()));
    for (const std::string& problem : result.problems)
        ADD_FAILURE() << problem;
    return result.movie;
}

TEST_F(ProjectCommands, DumpOfABuildBuildsTheSameBytesOverAnOldFile) {
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
    ZoWriteFileAtomically(Path("b.vmb"), "old");
    ASSERT_EQ(Vimbo({"build", Path("dump.json"), "-o", Path("b.vmb"), "--force"}).code, 0);
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
            EXPECT_EQ(LineCount(run.err), 1) << run.err;
        }
    }
    EXPECT_FALSE(fs::exists(Path("out.vmb")));
    EXPECT_EQ(ReadAll(Path("taken.vmb")), "keep me");
    EXPECT_EQ(std::distance(fs::directory_iterator(folder_), {}), 4);
}

TEST_F(ProjectCommands, PublishWritesTheMovieAndItsPageAndNamesThem) {
    ZoWriteFileAtomically(Path("in.json"), R"({"effects": [{"effect": "Cross Fade"}]})");
    const CommandResult run = Vimbo({"publish", Path("in.json"), "-o", Path("movie"), "--html"});
    ASSERT_EQ(run.code, 0) << run.err;
    EXPECT_EQ(run.out, Path("movie.swf") + "\n" + Path("movie.html") + "\n");
    ValidMovie(Path("movie.swf"));
    const std::string swf = ReadAll(Path("movie.swf"));
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
    const SwfTest::Movie movie = ValidMovie(Path("new.swf"));
    EXPECT_EQ(movie.frameCount, 24);
    EXPECT_EQ(movie.frameSize.xMax, 3640);  // not a loaded project's 400 x 300
    EXPECT_EQ(movie.frameSize.yMax, 4040);
}

TEST_F(ProjectCommands, PublishFindsPicturesBesideTheProjectFromAnyFolder) {
    fs::create_directories(Path("pictures"));
    ZoWriteFileAtomically(Path("pictures/p.png"),
                          std::string(ZoBuiltInPictureFile("<PreviewImage1>")));
    ZoWriteFileAtomically(Path("in.json"), R"({"effects": [{"effect": "Wave",
        "object": {"kind": "Image", "fileName": "pictures/p.png"}}]})");
    const fs::path previous = fs::current_path();
    std::string movies[2];
    int i = 0;
    for (const auto& [folder, project] :
         {std::pair{fs::path("/"), Path("in.json")}, std::pair{folder_, std::string("in.json")}}) {
        fs::current_path(folder);
        const std::string movie = Path(i == 0 ? "a.swf" : "b.swf");
        const CommandResult run = Vimbo({"publish", project, "-o", movie});
        EXPECT_EQ(run.code, 0) << run.err;
        EXPECT_EQ(run.err, "");
        EXPECT_EQ(ValidMovie(movie).bitmaps.size(), 1u) << folder;
        movies[i++] = ReadAll(movie);
    }
    fs::current_path(previous);
    EXPECT_EQ(movies[0], movies[1]);
}

TEST_F(ProjectCommands, PublishWarnsOfEachBadPictureAndLeavesItsObjectEmpty) {
    ZoWriteFileAtomically(Path("damaged.png"), "\x89PNG\r\n\x1a\n and then nothing");
    fs::create_directories(Path("folder.png"));
    // A fixed placement needs the picture's size, which a bad picture lacks.
    ZoWriteFileAtomically(Path("in.json"), R"({
        "foregroundObject": {"kind": "Image", "fileName": "missing.png"},
        "backgroundObject": {"kind": "Image", "fileName": "damaged.png"},
        "effects": [{"effect": "Cross Fade",
            "startObject": {"kind": "Image", "fileName": "folder.png", "placement": 9},
            "endObject": {"kind": "Solid Colour"}}]})");
    const CommandResult run = Vimbo({"publish", Path("in.json"), "-o", Path("movie.swf")});
    ASSERT_EQ(run.code, 0) << run.err;
    const std::string messages[] = {
        "Image file 'folder.png' used by the effect cannot be read: The file '",
        "Image file 'missing.png' used for the foreground object cannot be found.\nSelect "
        "Foreground Object",
        "Image file 'damaged.png' used for the background object cannot be read: The PNG "
        "picture is corrupt or truncated",
    };
    size_t from = 0;
    for (const std::string& message : messages) {
        from = run.err.find(message, from);
        EXPECT_NE(from, std::string::npos) << message << "\nin:\n" << run.err;
    }
    const SwfTest::Movie movie = ValidMovie(Path("movie.swf"));
    EXPECT_TRUE(movie.bitmaps.empty());
    EXPECT_GT(movie.frameCount, 0);
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
        EXPECT_EQ(LineCount(run.err), 1) << run.err;
    }
    EXPECT_EQ(ReadAll(Path("page.html")), "keep me");
    EXPECT_EQ(std::distance(fs::directory_iterator(folder_), {}), 3);
}

}  // namespace
