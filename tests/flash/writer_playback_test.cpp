// What the writer's fills, masks, sprites and colour transforms look like in a
// real player: bytes that validate can still draw the wrong picture.
#include <gtest/gtest.h>

#include <tuple>

#include "flash/swf_movie.h"
#include "flash/swf_shape.h"
#include "playback/pixel_checks.h"
#include "playback/playback_movie.h"
#include "support/feature_movies.h"

using namespace ZoFlash;
using SwfTest::WriteFeatureMovie;
using SwfTest::WriteTextMovie;

namespace {

// One depth: a half transparent red box, swapped for an opaque blue one
// further right.
void WriteSwapMovie(const std::filesystem::path& file) {
    ZoSWFMovie movie(file.c_str(), 40, 20, 12, ZoSWFColour(0xFFFFFF, 255));
    ZoSWFScene* scene = movie.AddScene();
    ZoSWFColourTransformation faded;
    faded.SetScale(1, 1, 1, 0.5);
    ZoSWFTransformation right;
    right.SetTranslate(400, 0);
    for (const auto& [red, matrix, colour] :
         {std::tuple{255, ZoSWFTransformation(), faded}, {0, right, ZoSWFColourTransformation()}}) {
        auto box = ZoMakeCounted<ZoSWFShape>();
        box->SetSolidFill(ZoSWFColour(red, 0, 255 - red, 255));
        box->Rectangle({0, 0, 400, 400});
        scene->AddFrame()->PlaceObject(box, nullptr, 1, matrix, 0, -1, colour);
    }
    movie.WriteMovieFile();
}

const playback::PlaybackMovie kFeatures("writer_features", {0}, WriteFeatureMovie);
const playback::PlaybackMovie kText("writer_text", {0}, WriteTextMovie);
const playback::PlaybackMovie kSwap("writer_swap", {0, 1}, WriteSwapMovie);

constexpr int kTolerance = 4;

TEST(WriterPlayback, BitmapPixelsArePlacedAndAlphaBlends) {
    const playback::SamplePoint points[] = {
        {5, 5, {255, 0, 0}}, {15, 5, {0, 255, 0}}, {5, 15, {255, 127, 127}}, {15, 15, {0, 0, 255}}};
    EXPECT_TRUE(playback::ColoursAt(kFeatures.Frame(0), points, kTolerance));
}

TEST(WriterPlayback, MaskClipsTheDepthsAboveIt) {
    const playback::SamplePoint points[] = {
        {30, 10, {0, 255, 0}}, {50, 10, {255, 255, 255}}, {30, 25, {255, 255, 255}}};
    EXPECT_TRUE(playback::ColoursAt(kFeatures.Frame(0), points, kTolerance));
}

TEST(WriterPlayback, ClockwiseTriangleIsFilled) {
    const playback::SamplePoint points[] = {{77, 3, {255, 255, 0}}, {63, 17, {255, 255, 255}}};
    EXPECT_TRUE(playback::ColoursAt(kFeatures.Frame(0), points, kTolerance));
}

TEST(WriterPlayback, SpriteIsPlacedAndRecoloured) {
    const playback::SamplePoint points[] = {{65, 30, {0, 0, 255}}, {75, 30, {255, 255, 255}}};
    EXPECT_TRUE(playback::ColoursAt(kFeatures.Frame(0), points, kTolerance));
}

TEST(WriterPlayback, GradientRunsFromTheFirstPointToTheSecond) {
    const playback::SamplePoint points[] = {
        {1, 50, {0, 0, 0}}, {40, 50, {128, 128, 128}}, {78, 50, {255, 255, 255}}};
    EXPECT_TRUE(playback::ColoursAt(kFeatures.Frame(0), points, 12));
}

TEST(WriterPlayback, ASwappedObjectShowsWithItsOwnMatrixAndColour) {
    const playback::SamplePoint faded[] = {{5, 5, {255, 127, 127}}, {25, 5, {255, 255, 255}}};
    EXPECT_TRUE(playback::ColoursAt(kSwap.Frame(0), faded, kTolerance));
    const playback::SamplePoint moved[] = {{5, 5, {255, 255, 255}}, {25, 5, {0, 0, 255}}};
    EXPECT_TRUE(playback::ColoursAt(kSwap.Frame(1), moved, kTolerance));
}

TEST(WriterPlayback, TextDrawsItsFontsGlyphsAtThePen) {
    const playback::SamplePoint points[] = {{20, 20, {0, 0, 0}},       {12, 12, {0, 0, 0}},
                                            {5, 20, {255, 255, 255}},  {35, 20, {255, 255, 255}},
                                            {20, 35, {255, 255, 255}}, {20, 5, {255, 255, 255}}};
    EXPECT_TRUE(playback::ColoursAt(kText.Frame(0), points, kTolerance));
}

}  // namespace
