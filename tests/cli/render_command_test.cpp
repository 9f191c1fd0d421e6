#include <gtest/gtest.h>

#include "cli_run.h"
#include "platform/atomic_file.h"
#include "platform/image_codec.h"
#include "support/feature_movies.h"

namespace {

namespace fs = std::filesystem;
using cli_test::CommandResult;
using cli_test::Vimbo;

class RenderCommand : public cli_test::InTempFolder {
  protected:
    void SetUp() override {
        InTempFolder::SetUp();
        SwfTest::WriteFeatureMovie(Path("features.swf"));
    }
};

TEST_F(RenderCommand, DrawsChosenFramesOfAProjectAsPngAndGif) {
    ZoWriteFileAtomically(Path("fade.json"),
                          R"({"width": 100, "height": 50, "frameRate": 10,
                              "effects": [{"effect": "Cross Fade", "timing": {"endTime": 1000}}]})");
    const CommandResult run = Vimbo({"render", Path("fade.json"), "-o", Path("out"), "--frames",
                                     "1,3-4", "--scale", "0.5", "--gif", Path("fade.gif")});
    ASSERT_EQ(run.code, 0) << run.err;
    EXPECT_EQ(run.err, "");
    for (const char* name : {"out/frame_0001.png", "out/frame_0003.png", "out/frame_0004.png"}) {
        const ZoDecodedImage frame = ZoImageCodec::Load(Path(name));
        EXPECT_EQ(frame.width, 50) << name;
        EXPECT_EQ(frame.height, 25) << name;
    }
    EXPECT_FALSE(fs::exists(Path("out/frame_0002.png")));
    const ZoDecodedImage gif = ZoImageCodec::Load(Path("fade.gif"));
    EXPECT_EQ(gif.width, 50);
    EXPECT_EQ(gif.format, ZoImageFormat::Gif);
}

TEST_F(RenderCommand, DrawsAMovieFileAsItPlays) {
    ASSERT_EQ(Vimbo({"render", Path("features.swf"), "-o", Path("out")}).code, 0);
    const ZoDecodedImage frame = ZoImageCodec::Load(Path("out/frame_0001.png"));
    ASSERT_EQ(frame.width, 80);
    EXPECT_EQ(frame.PixelColour(5, 5), 0x0000FFu);    // the bitmap's red pixel
    EXPECT_EQ(frame.PixelColour(65, 30), 0xFF0000u);  // the recoloured sprite, blue
}

TEST_F(RenderCommand, BadInputFailsWithOneLineAndWritesNothing) {
    ZoWriteFileAtomically(Path("junk.swf"), "FWS\x05junk");
    const std::vector<std::vector<std::string>> cases = {
        {"render", Path("missing.swf"), "-o", Path("out")},
        {"render", Path("junk.swf"), "-o", Path("out")},
        {"render", Path("features.swf"), "-o", Path("out"), "--frames", "2"},
        {"render", Path("features.swf"), "-o", Path("out"), "--frames", "1-x"},
        {"render", Path("features.swf"), "-o", Path("out"), "--frames", "0"},
    };
    for (const auto& args : cases) {
        const CommandResult run = Vimbo(args);
        EXPECT_EQ(run.code, 1) << args[1] << " " << args.back();
        EXPECT_EQ(cli_test::LineCount(run.err), 1) << run.err;
        EXPECT_FALSE(fs::exists(Path("out/frame_0001.png")));
    }
}

}  // namespace
