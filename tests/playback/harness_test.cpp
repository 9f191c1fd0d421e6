// Checks the playback harness itself on movies built byte by byte: the frame
// schedule, exact colours at known places, and identical pixels run after run.
#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <iterator>

#include "flash/swf_button.h"
#include "flash/swf_frame.h"
#include "flash/swf_movie.h"
#include "flash/swf_shape.h"
#include "platform/zo_exception.h"
#include "playback/capture_batch.h"
#include "playback/pixel_checks.h"
#include "playback/playback_movie.h"
#include "playback/swf_bytes.h"

namespace playback {
namespace {

constexpr Rgb kBlue{0, 0, 255};
constexpr Rgb kRed{255, 0, 0};
// Red with its red channel halved and 64 added to green.
constexpr Rgb kTransformedRed{128, 64, 0};
constexpr int kTolerance = 2;

// A red square that moves right in the second frame over a blue stage, and a
// second one below it drawn through a colour transform. The movie loops, so
// frames 2 and 3 repeat frames 0 and 1.
std::vector<std::uint8_t> MovingSquareMovie() {
    ColourTransform transform;
    transform.multiply[0] = 128;
    transform.add[1] = 64;
    return SwfBytes(80, 60, 12)
        .Background(kBlue)
        .Rectangle(1, 20, 20, kRed)
        .Place(1, 1, 10, 10)
        .Place(2, 1, 10, 35, transform)
        .ShowFrame()
        .Move(1, 40, 10)
        .ShowFrame()
        .Finish();
}

// The same movie through our SWF writer, which must play pixel for pixel alike.
void WriteMovingSquareWithZoFlash(const std::filesystem::path& file) {
    using namespace ZoFlash;
    constexpr int kTwips = 20;
    ZoSWFMovie movie(file.c_str(), 80, 60, 12, ZoSWFColour(kBlue.r, kBlue.g, kBlue.b, 255));
    auto square = ZoMakeCounted<ZoSWFShape>();
    square->SetSolidFill(ZoSWFColour(kRed.r, kRed.g, kRed.b, 255));
    square->Rectangle({0, 0, 20 * kTwips, 20 * kTwips});
    ZoSWFColourTransformation transform;
    transform.SetScale(0.5, 1, 1, 1);
    transform.SetOffset(0, 64, 0, 0);
    ZoSWFScene* scene = movie.AddScene();
    for (int left : {10, 40}) {
        ZoSWFTransformation moving;
        moving.SetTranslate(left * kTwips, 10 * kTwips);
        ZoSWFTransformation below;
        below.SetTranslate(10 * kTwips, 35 * kTwips);
        ZoSWFFrame* frame = scene->AddFrame();
        frame->PlaceObject(square, nullptr, 1, moving, 0, -1, ZoSWFColourTransformation());
        frame->PlaceObject(square, nullptr, 2, below, 0, -1, transform);
    }
    if (!movie.WriteMovieFile()) {
        throw ZoException("cannot write " + file.string());
    }
}

constexpr const char* kLinkTarget = "http://vimbo.invalid/clicked";

// A red square over the left half of the stage that opens kLinkTarget when
// clicked, as a published movie's link button does.
void WriteLinkButtonMovie(const std::filesystem::path& file) {
    using namespace ZoFlash;
    ZoSWFMovie movie(file.c_str(), 80, 60, 12, ZoSWFColour(kBlue.r, kBlue.g, kBlue.b, 255));
    auto square = ZoMakeCounted<ZoSWFShape>();
    square->SetSolidFill(ZoSWFColour(kRed.r, kRed.g, kRed.b, 255));
    square->Rectangle({0, 0, 40 * 20, 60 * 20});
    auto button = ZoMakeCounted<ZoSWFButton>();
    button->AddObject(kZoButtonUp | kZoButtonOver | kZoButtonDown | kZoButtonHitTest, square, 1,
                      ZoSWFTransformation(), ZoSWFColourTransformation());
    const int release = button->AddActionRecord(kZoButtonOverDownToOverUp);
    ZoAutoPtr2<ZoFActionRecord> getUrl = std::make_unique<ZoFGetURLAction>(kLinkTarget, "_blank");
    button->GetActionList(release).AddActionRecord(getUrl);
    movie.AddScene()->AddFrame()->PlaceObject(button, nullptr, 1, ZoSWFTransformation(), 0, -1,
                                              ZoSWFColourTransformation());
    if (!movie.WriteMovieFile()) {
        throw ZoException("cannot write " + file.string());
    }
}

// The first tag (SetBackgroundColor) claims one byte more than it has.
std::vector<std::uint8_t> MisframedMovie() {
    std::vector<std::uint8_t> movie = MovingSquareMovie();
    movie[FirstTagOffset(movie)] += 1;
    return movie;
}

void WriteFile(const std::filesystem::path& file, const std::vector<std::uint8_t>& bytes) {
    std::ofstream(file, std::ios::binary)
        .write(reinterpret_cast<const char*>(bytes.data()),
               static_cast<std::streamsize>(bytes.size()));
}

MovieWriter Writes(std::vector<std::uint8_t> (*make)()) {
    return [make](const std::filesystem::path& file) { WriteFile(file, make()); };
}

const PlaybackMovie kMovingSquare("moving_square", {0, 1, 2, 3}, Writes(&MovingSquareMovie));
const PlaybackMovie kWrittenSquare("moving_square_zoflash", {0, 1, 2, 3},
                                   &WriteMovingSquareWithZoFlash);
// A click beside the button opens nothing; one on it opens the link once.
const PlaybackMovie kLinkButton("link_button", {0}, &WriteLinkButtonMovie,
                                {{0, 60, 30}, {1, 20, 30}});
const PlaybackMovie kMisframed("misframed", {0}, Writes(&MisframedMovie));

std::string ReadText(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

TEST(Harness, EachFlushRunsExactlyOneFrame) {
    struct Case {
        int frame;
        Rgb left;   // inside the square's first place
        Rgb right;  // inside its second place
    };
    for (const Case& c :
         {Case{0, kRed, kBlue}, Case{1, kBlue, kRed}, Case{2, kRed, kBlue}, Case{3, kBlue, kRed}}) {
        const SamplePoint points[] = {
            {20, 20, c.left}, {50, 20, c.right}, {12, 12, c.left},
            {27, 27, c.left}, {42, 12, c.right}, {57, 27, c.right},
            {2, 2, kBlue},    {77, 57, kBlue},   {20, 45, kTransformedRed},
        };
        EXPECT_TRUE(ColoursAt(kMovingSquare.Frame(c.frame), points, kTolerance))
            << "frame " << c.frame;
    }
}

TEST(Harness, SquareEdgesLandOnThePixelGrid) {
    // Edges on whole pixels are sharp: the pixels just outside are background.
    const SamplePoint points[] = {{9, 20, kBlue}, {10, 20, kRed}, {29, 20, kRed}, {30, 20, kBlue},
                                  {20, 9, kBlue}, {20, 10, kRed}, {20, 29, kRed}, {20, 30, kBlue}};
    EXPECT_TRUE(ColoursAt(kMovingSquare.Frame(0), points, kTolerance));
}

TEST(Harness, CapturingTheSameFramesTwiceGivesIdenticalPngs) {
    const std::filesystem::path again =
        kMovingSquare.FrameFile(0).parent_path().parent_path().parent_path() / "again";
    std::filesystem::remove_all(again);
    const std::vector<int> frames{0, 1, 2, 3};
    const BatchReport report = RunCaptureBatch({{kMovingSquare.File(), frames, again, {}}}, again);
    ASSERT_EQ(report.error, "");
    ASSERT_EQ(report.jobs.size(), 1u);
    EXPECT_EQ(report.jobs[0].errors, std::vector<std::string>{});
    for (int frame : frames) {
        const std::string first = ReadText(kMovingSquare.FrameFile(frame));
        EXPECT_FALSE(first.empty());
        EXPECT_EQ(ReadText(report.jobs[0].frames.at(frame)), first) << "frame " << frame;
    }
}

TEST(Harness, FramesMatchTheStoredOnes) {
    const std::filesystem::path stored =
        std::filesystem::path(VIMBO_SOURCE_DIR) / "tests" / "playback" / "frames";
    for (int frame : {0, 1}) {
        EXPECT_TRUE(MatchesStoredFrame(kMovingSquare.FrameFile(frame),
                                       stored / ("moving_square_" + std::to_string(frame) + ".png"),
                                       kTolerance, 0));
    }
}

TEST(Harness, OurWriterPlaysLikeTheHandMadeMovie) {
    for (int frame : {0, 1, 2, 3}) {
        EXPECT_TRUE(
            FramesMatch(kWrittenSquare.Frame(frame), kMovingSquare.Frame(frame), kTolerance, 0))
            << "frame " << frame;
    }
}

TEST(Harness, ClickOnLinkButtonOpensItsUrlOnce) {
    const SamplePoint points[] = {{20, 30, kRed}, {60, 30, kBlue}};
    EXPECT_TRUE(ColoursAt(kLinkButton.Frame(0), points, kTolerance));
    EXPECT_EQ(kLinkButton.OpenedUrls(), std::vector<std::string>{kLinkTarget});
}

TEST(Harness, ReportsTheRendererAndTimings) {
    const BatchReport& batch = PlaybackMovie::Batch();
    EXPECT_EQ(batch.renderer, "webgl");
    EXPECT_EQ(kMovingSquare.Report().renderer, batch.renderer);
    EXPECT_FALSE(batch.browserVersion.empty());
    EXPECT_EQ(batch.ruffleVersion, "0.6.0");
    EXPECT_GT(batch.totalMs, 0);
    EXPECT_GE(batch.totalMs, batch.browserStartMs + kMovingSquare.Report().loadMs);
}

TEST(Harness, MisframedMovieIsAFailure) {
    const std::vector<std::string> problems = kMisframed.Problems();
    ASSERT_FALSE(problems.empty());
    EXPECT_NE(problems.front().find("invalid SWF"), std::string::npos) << problems.front();
    EXPECT_THROW(kMisframed.FrameFile(0), PlaybackError);
}

TEST(Harness, AskingForAFrameNotCapturedIsAnError) {
    try {
        kMovingSquare.FrameFile(7);
        ADD_FAILURE() << "frame 7 was never captured";
    } catch (const PlaybackError& error) {
        EXPECT_NE(std::string(error.what()).find("frame 7 was not captured"), std::string::npos)
            << error.what();
    }
}

TEST(Harness, ChromiumThatCannotStartIsOneClearLine) {
    const std::filesystem::path work =
        std::filesystem::temp_directory_path() / "vimbo_playback_no_chromium";
    ::setenv("VIMBO_CHROMIUM", "/nonexistent/chromium", 1);
    const BatchReport report = RunCaptureBatch({{kMovingSquare.File(), {0}, work, {}}}, work);
    ::unsetenv("VIMBO_CHROMIUM");
    std::filesystem::remove_all(work);
    EXPECT_NE(report.error.find("Chromium (/nonexistent/chromium) did not start"),
              std::string::npos)
        << report.error;
    EXPECT_EQ(report.error.find('\n'), std::string::npos) << report.error;
}

}  // namespace
}  // namespace playback
