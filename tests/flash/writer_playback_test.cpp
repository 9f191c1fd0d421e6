// What the writer's fills, masks, sprites and colour transforms look like in a
// real player: bytes that validate can still draw the wrong picture.
#include <gtest/gtest.h>

#include "flash/swf_image.h"
#include "flash/swf_movie.h"
#include "flash/swf_shape.h"
#include "flash/swf_sprite.h"
#include "flash/swf_text.h"
#include "platform/zo_exception.h"
#include "playback/pixel_checks.h"
#include "playback/playback_movie.h"

using namespace ZoFlash;

namespace {

constexpr int kPx = 20;  // twips per pixel
const ZoSWFTransformation kIdentity;
const ZoSWFColourTransformation kNoColour;

ZoAutoInterface2<ZoSWFShape> Filled(const ZoSWFColour& colour, const ZoRect& px) {
    auto shape = ZoMakeCounted<ZoSWFShape>();
    shape->SetSolidFill(colour);
    shape->Rectangle({px.left * kPx, px.top * kPx, px.right * kPx, px.bottom * kPx});
    return shape;
}

// On white, 80 x 60 pixels: a 2 x 2 bitmap blown up to 20 x 20 at the top
// left; a green square masked to (20..40, 0..20); a yellow triangle drawn
// clockwise at the top right; a black square turned blue by a colour
// transform inside a sprite at (60, 25); a black-to-white gradient along the
// bottom strip.
void WriteFeatureMovie(const std::filesystem::path& file) {
    ZoSWFMovie movie(file.c_str(), 80, 60, 12, ZoSWFColour(0xFFFFFF, 255));
    ZoSWFFrame* frame = movie.AddScene()->AddFrame();

    auto image = ZoMakeCounted<ZoSWFImage>();
    image->SetBitmapBufferImage(
        {2, 2, {255, 0, 0, 255, 0, 255, 0, 255, 255, 0, 0, 128, 0, 0, 255, 255}}, 0xFFFFFFFF, 0);
    auto picture = ZoMakeCounted<ZoSWFShape>();
    picture->SetClippedBitmapFill(image, 0, 0, 10 * kPx, 10 * kPx);
    picture->Rectangle({0, 0, 20 * kPx, 20 * kPx});
    frame->PlaceObject(picture, nullptr, 1, kIdentity, 0, -1, kNoColour);

    frame->PlaceObjectPermanent(Filled(ZoSWFColour(0, 0, 0, 255), {20, 0, 40, 20}), nullptr, 10,
                                kIdentity, 11, -1, kNoColour);
    frame->PlaceObject(Filled(ZoSWFColour(0, 255, 0, 255), {20, 0, 60, 30}), nullptr, 11, kIdentity,
                       0, -1, kNoColour);

    auto triangle = ZoMakeCounted<ZoSWFShape>();
    triangle->SetSolidFill(ZoSWFColour(255, 255, 0, 255));
    triangle->MoveTo(60 * kPx, 0);
    triangle->LineTo(80 * kPx, 0);
    triangle->LineTo(80 * kPx, 20 * kPx);
    triangle->LineTo(60 * kPx, 0);
    frame->PlaceObject(triangle, nullptr, 12, kIdentity, 0, -1, kNoColour);

    auto sprite = ZoMakeCounted<ZoSWFSprite>();
    sprite->AddFrame()->PlaceObject(Filled(ZoSWFColour(0, 0, 0, 255), {0, 0, 10, 10}), nullptr, 1,
                                    kIdentity, 0, -1, kNoColour);
    ZoSWFTransformation there;
    there.SetTranslate(60 * kPx, 25 * kPx);
    ZoSWFColourTransformation blue;
    blue.SetOffset(0, 0, 255, 0);
    frame->PlaceObject(sprite, nullptr, 13, there, 0, -1, blue);

    auto strip = ZoMakeCounted<ZoSWFShape>();
    strip->SetLinearGradientFill({ZoSWFColour(0, 0, 0, 255), ZoSWFColour(255, 255, 255, 255)},
                                 {0, 50 * kPx}, {80 * kPx, 50 * kPx}, 20.0 * kPx, nullptr);
    strip->Rectangle({0, 40 * kPx, 80 * kPx, 60 * kPx});
    frame->PlaceObject(strip, nullptr, 14, kIdentity, 0, -1, kNoColour);

    if (!movie.WriteMovieFile())
        throw ZoException("cannot write " + file.string());
}

/// Every glyph is a square filling the em, baseline to cap.
class SquareGlyphs : public ZoSWFGlyphSource {
  public:
    bool GetGlyph(const ZoString&, bool, bool, uint8_t, ZoSWFGlyph& glyph) override {
        using Kind = ZoSWFPathCommand::Kind;
        glyph.outline = {{Kind::kMove, {}, {0, -1024}},
                         {Kind::kLine, {}, {1024, -1024}},
                         {Kind::kLine, {}, {1024, 0}},
                         {Kind::kLine, {}, {0, 0}},
                         {Kind::kLine, {}, {0, -1024}}};
        glyph.advance = 1024;
        return true;
    }
};

// On white, 40 x 40 pixels: one 20-pixel glyph in black with its baseline at
// y = 30, from x = 10 to 30.
void WriteTextMovie(const std::filesystem::path& file) {
    ZoSWFMovie movie(file.c_str(), 40, 40, 12, ZoSWFColour(0xFFFFFF, 255));
    auto font = ZoMakeCounted<ZoSWFFont>("Squares", false, false);
    font->SetGlyphSource(std::make_shared<SquareGlyphs>());
    auto text = ZoMakeCounted<ZoSWFText>();
    text->SetRect({0, 0, 40 * kPx, 40 * kPx});
    text->SetFont(font, 20 * kPx, false, ZoSWFColour(0, 0, 0, 255), ZoSWFColour(), 10 * kPx,
                  30 * kPx);
    text->AddCharacter('A', 20 * kPx);
    movie.AddScene()->AddFrame()->PlaceObject(text, nullptr, 1, kIdentity, 0, -1, kNoColour);
    if (!movie.WriteMovieFile())
        throw ZoException("cannot write " + file.string());
}

const playback::PlaybackMovie kFeatures("writer_features", {0}, WriteFeatureMovie);
const playback::PlaybackMovie kText("writer_text", {0}, WriteTextMovie);

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

TEST(WriterPlayback, TextDrawsItsFontsGlyphsAtThePen) {
    const playback::SamplePoint points[] = {{20, 20, {0, 0, 0}},       {12, 12, {0, 0, 0}},
                                            {5, 20, {255, 255, 255}},  {35, 20, {255, 255, 255}},
                                            {20, 35, {255, 255, 255}}, {20, 5, {255, 255, 255}}};
    EXPECT_TRUE(playback::ColoursAt(kText.Frame(0), points, kTolerance));
}

}  // namespace
