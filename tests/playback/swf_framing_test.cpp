#include <gtest/gtest.h>

#include <functional>

#include "playback/swf_bytes.h"
#include "playback/swf_framing.h"

namespace playback {
namespace {

std::vector<std::uint8_t> TwoFrameMovie() {
    return SwfBytes(80, 60, 12)
        .Background({0, 0, 255})
        .Rectangle(1, 20, 20, {255, 0, 0})
        .Place(1, 1, 10, 10)
        .ShowFrame()
        .Move(1, 30, 30)
        .ShowFrame()
        .Finish();
}

TEST(SwfFraming, AcceptsWellFramedMovie) {
    EXPECT_EQ(CheckSwfFraming(TwoFrameMovie()), "");
}

TEST(SwfFraming, NamesEachFault) {
    struct Case {
        const char* fault;
        std::function<void(std::vector<std::uint8_t>&, std::size_t firstTag)> damage;
        const char* expected;
    };
    const Case cases[] = {
        {"tag one byte longer", [](auto& m, std::size_t at) { m[at] += 1; }, "at byte"},
        {"tag one byte shorter", [](auto& m, std::size_t at) { m[at] -= 1; }, "at byte"},
        {"huge long length", [](auto& m, std::size_t at) { m[at] |= 0x3F; }, "runs past the end"},
        {"last ShowFrame swallows End", [](auto& m, std::size_t) { m[m.size() - 4] = 0x41; },
         "no End tag"},
        {"file longer than its header", [](auto& m, std::size_t) { m.push_back(0); },
         "header says"},
        {"End missing",
         [](auto& m, std::size_t) {
             m.resize(m.size() - 2);
             m[4] -= 2;
         },
         "no End tag"},
        {"bytes after End",
         [](auto& m, std::size_t) {
             m.insert(m.end(), {0, 0});
             m[4] += 2;
         },
         "is followed by 2 more bytes"},
        {"frame count off", [](auto& m, std::size_t at) { m[at - 2] = 3; },
         "header says 3 frames, tags show 2"},
        {"compressed", [](auto& m, std::size_t) { m[0] = 'C'; }, "signature must be FWS"},
        {"cut to a header", [](auto& m, std::size_t) { m.resize(6); }, "too short"},
    };
    for (const Case& c : cases) {
        std::vector<std::uint8_t> movie = TwoFrameMovie();
        c.damage(movie, FirstTagOffset(movie));
        const std::string problem = CheckSwfFraming(movie);
        EXPECT_NE(problem, "") << c.fault;
        EXPECT_NE(problem.find(c.expected), std::string::npos) << c.fault << ": " << problem;
    }
}

}  // namespace
}  // namespace playback
