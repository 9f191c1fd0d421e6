#include "support/feature_movies.h"

#include "flash/swf_image.h"
#include "flash/swf_movie.h"
#include "flash/swf_shape.h"
#include "flash/swf_sprite.h"
#include "flash/swf_text.h"
#include "platform/zo_exception.h"

using namespace ZoFlash;

namespace SwfTest {
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

}  // namespace

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

namespace {

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

}  // namespace

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

}  // namespace SwfTest
