// Each example is what a designer would run: `vimbo build` to a project
// file, `vimbo dump` of it, and `vimbo publish` of both, whose movies must be
// valid and the same.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "cli/command_line.h"
#include "platform/temp_directory.h"
#include "support/swf_reader.h"

namespace {

namespace fs = std::filesystem;

std::vector<fs::path> Examples() {
    std::vector<fs::path> found;
    for (const auto& entry : fs::directory_iterator(fs::path(VIMBO_SOURCE_DIR) / "examples")) {
        if (entry.path().extension() == ".json")
            found.push_back(entry.path());
    }
    std::sort(found.begin(), found.end());
    return found;
}

std::string ReadAll(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

void RunVimbo(std::vector<std::string> args, std::string* out = nullptr) {
    args.insert(args.begin(), "vimbo");
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    const int code = VimboRunCommandLine(args, {});
    const std::string printed = testing::internal::GetCapturedStdout();
    const std::string errors = testing::internal::GetCapturedStderr();
    ASSERT_EQ(code, 0) << args[1] << ": " << errors;
    if (out)
        *out = printed;
}

class Example : public ::testing::TestWithParam<fs::path> {};

TEST_P(Example, BuildsDumpsAndPublishesToAValidMovie) {
    const fs::path json = GetParam();
    const fs::path folder = ZoMakeTempFileName("");
    fs::create_directories(folder);
    // A project file names its pictures relative to its own folder, so they
    // go beside it, as they lie beside the JSON projects.
    fs::copy(json.parent_path() / "pictures", folder / "pictures", fs::copy_options::recursive);
    const fs::path project = folder / "example.vmb";
    ASSERT_NO_FATAL_FAILURE(RunVimbo({"build", json.string(), "-o", project.string()}));
    std::string fromJson, fromProject;
    ASSERT_NO_FATAL_FAILURE(RunVimbo({"dump", json.string()}, &fromJson));
    ASSERT_NO_FATAL_FAILURE(RunVimbo({"dump", project.string()}, &fromProject));
    EXPECT_EQ(fromProject, fromJson);

    ASSERT_NO_FATAL_FAILURE(
        RunVimbo({"publish", json.string(), "-o", (folder / "a.swf").string(), "--html"}));
    ASSERT_NO_FATAL_FAILURE(
        RunVimbo({"publish", project.string(), "-o", (folder / "b.swf").string()}));
    const std::string movie = ReadAll(folder / "a.swf");
    EXPECT_EQ(ReadAll(folder / "b.swf"), movie);
    const std::vector<uint8_t> bytes(movie.begin(), movie.end());
    const SwfTest::Validation validation = SwfTest::ValidateSwf(bytes);
    for (const std::string& problem : validation.problems)
        ADD_FAILURE() << problem;
    EXPECT_GT(validation.movie.frameCount, 0);
    EXPECT_TRUE(fs::is_regular_file(folder / "a.html"));
}

std::string ExampleName(const ::testing::TestParamInfo<fs::path>& info) {
    std::string name = info.param.stem().string();
    std::replace_if(
        name.begin(), name.end(), [](char c) { return !std::isalnum(c); }, '_');
    return name;
}

INSTANTIATE_TEST_SUITE_P(Examples, Example, ::testing::ValuesIn(Examples()), ExampleName);

}  // namespace
