// Shapes, bitmaps, fonts, texts, buttons and sprites as they come out of a
// movie.
#include <gtest/gtest.h>

#include <cmath>

#include "flash/swf_button.h"
#include "flash/swf_image.h"
#include "flash/swf_movie.h"
#include "flash/swf_resource_manager.h"
#include "flash/swf_shape.h"
#include "flash/swf_sprite.h"
#include "flash/swf_text.h"
#include "platform/zo_exception.h"
#include "support/movie_check.h"

using namespace ZoFlash;

namespace {

const ZoSWFTransformation kIdentity;
const ZoSWFColourTransformation kNoColour;

/// Writes a one-frame movie that places `objects` at depths 1, 2, ...
SwfTest::WrittenMovie PlaceAll(std::vector<ZoAutoInterface2<ZoSWFObject>> objects) {
    ZoSWFMovie movie("", 100, 100, 12, ZoSWFColour());
    ZoSWFFrame* frame = movie.AddScene()->AddFrame();
    int depth = 1;
    for (auto& object : objects)
        frame->PlaceObject(object, nullptr, depth++, kIdentity, 0, -1, kNoColour);
    SwfTest::WrittenMovie written = SwfTest::WriteAndValidate(movie);
    EXPECT_EQ(written.Problems(), "");
    return written;
}

/// Glyphs as squares whose size grows with the code, so each is distinct.
class SquareGlyphs : public ZoSWFGlyphSource {
  public:
    bool GetGlyph(const ZoString&, bool, bool, uint8_t code, ZoSWFGlyph& glyph) override {
        if (code == 'X')
            return false;
        const int s = code * 4;
        glyph.outline = {{ZoSWFPathCommand::Kind::kMove, {}, {0, -s}},
                         {ZoSWFPathCommand::Kind::kLine, {}, {s, -s}},
                         {ZoSWFPathCommand::Kind::kCurve, {s + 50, -s / 2}, {s, 0}},
                         {ZoSWFPathCommand::Kind::kLine, {}, {0, 0}},
                         {ZoSWFPathCommand::Kind::kLine, {}, {0, -s}}};
        glyph.advance = s;
        return true;
    }
};

class TestImage : public ZoSWFImage {
  public:
    using ZoSWFImage::MakeJPEGTag;
};

}  // namespace

TEST(Shape, StylesAndBoundsComeFromTheCallsMade) {
    auto shape = ZoMakeCounted<ZoSWFShape>();
    shape->SetSolidFill(0x332211, 128);
    shape->Rectangle({-20, -40, 200, 100});
    shape->SetSolidFill(ZoSWFColour(0x11, 0x22, 0x33, 128));  // the same style again
    shape->SetLine(40, ZoSWFColour(1, 2, 3, 4));
    shape->MoveTo(0, 0);
    shape->CurveTo({100, 300}, {200, 0});
    const SwfTest::WrittenMovie w = PlaceAll({shape});
    const SwfTest::Shape& s = w.result.movie.shapes.at(1);
    ASSERT_EQ(s.fills.size(), 1u);
    EXPECT_EQ(s.fills[0].colour, (SwfTest::Rgba{0x11, 0x22, 0x33, 128}));
    ASSERT_EQ(s.lines.size(), 1u);
    EXPECT_EQ(s.lines[0].width, 40);
    EXPECT_EQ(s.bounds, (SwfTest::Rect{-40, 220, -60, 320}));
    const auto points = s.Points();
    ASSERT_EQ(points.size(), 5u);
    EXPECT_EQ(points[3], std::make_pair(-20, -40));  // the rectangle closes
    EXPECT_EQ(points[4], std::make_pair(200, 0));
    EXPECT_EQ(s.records.front().fill0, 1);
}

TEST(Shape, GradientSquareRunsFromTheFirstPointToTheSecond) {
    struct Case {
        bool radial;
        ZoPoint from, to;
        double size;
    } cases[] = {{false, {0, 0}, {0, 1000}, 1000.0},
                 {false, {-300, 200}, {900, -400}, 5000.0},
                 {true, {0, 0}, {2000, 1000}, 1118.0}};
    for (const Case& c : cases) {
        auto shape = ZoMakeCounted<ZoSWFShape>();
        const std::vector<ZoSWFColour> colours = {ZoSWFColour(0, 0, 0, 0),
                                                  ZoSWFColour(255, 255, 255, 255)};
        if (c.radial)
            shape->SetRadialGradientFill(colours, c.from, c.to, c.size, nullptr);
        else
            shape->SetLinearGradientFill(colours, c.from, c.to, c.size, nullptr);
        shape->Rectangle({0, 0, 10, 10});
        const SwfTest::WrittenMovie w = PlaceAll({shape});
        const SwfTest::FillStyle& f = w.result.movie.shapes.at(1).fills.at(0);
        EXPECT_EQ(f.type, c.radial ? 0x12 : 0x10);
        ASSERT_EQ(f.gradient.size(), 2u);
        EXPECT_EQ(f.gradient[1].first, 255);
        auto map = [&](double x, double y) {
            return std::make_pair(f.matrix.A() * x + f.matrix.B() * y + f.matrix.translateX,
                                  f.matrix.C() * x + f.matrix.D() * y + f.matrix.translateY);
        };
        const double cx = (c.from.x + c.to.x) / 2.0, cy = (c.from.y + c.to.y) / 2.0;
        if (c.radial) {
            EXPECT_NEAR(map(16384, 0).first, cx + c.size, 1.0);
            EXPECT_NEAR(map(0, 0).second, cy, 0.5);
        } else {
            EXPECT_NEAR(map(-16384, 0).first, c.from.x, 1.0);
            EXPECT_NEAR(map(-16384, 0).second, c.from.y, 1.0);
            EXPECT_NEAR(map(16384, 0).first, c.to.x, 1.0);
            EXPECT_NEAR(map(16384, 0).second, c.to.y, 1.0);
        }
    }
}

// Magnifying stops where the farthest point (here a curve's control point,
// 300), a line (65535 / width) or a fill mapping (2^30 / its largest term)
// would leave its range.
TEST(Shape, MagnificationStopsWherePointsLinesOrFillsWouldNotFit) {
    const struct {
        ZoPoint gradientEnd;  // the square's 32768 twips onto this
        int lineWidth, largest;
    } cases[] = {{{0, 1000}, 40, 65536 / 300},
                 {{0, 1000}, 4000, 0xFFFF / 4000},
                 {{0, 4000000}, 40, static_cast<int>(kZoSWFMaxSignedField / 8000000)}};
    for (const auto& c : cases) {
        auto shape = ZoMakeCounted<ZoSWFShape>();
        shape->SetLinearGradientFill({ZoSWFColour(0, 0, 0, 0), ZoSWFColour(255, 255, 255, 255)},
                                     {0, 0}, c.gradientEnd, 1000.0, nullptr);
        shape->SetLine(c.lineWidth, ZoSWFColour(1, 2, 3, 4));
        shape->MoveTo(-20, 40);
        shape->CurveTo({100, 300}, {-20, 40});
        EXPECT_EQ(shape->LargestMagnification(65536), c.largest);
        EXPECT_THROW(shape->Magnify(shape->LargestMagnification(kZoSWFMaxSignedField) + 1),
                     ZoException);
    }
}

TEST(Image, LosslessBitmapIsPremultipliedCompressedAndDefinedBeforeItsShape) {
    auto image = ZoMakeCounted<ZoSWFImage>();
    image->SetBitmapBufferImage({2, 1, {255, 0, 0, 128, 10, 20, 30, 255}}, 0xFFFFFFFF, 0);
    auto a = ZoMakeCounted<ZoSWFShape>(), b = ZoMakeCounted<ZoSWFShape>();
    for (auto& shape : {a, b}) {
        shape->SetClippedBitmapFill(image, -1.0, -1.0, 20.0, 20.0);
        shape->Rectangle({0, 0, 40, 20});
    }
    const SwfTest::WrittenMovie w = PlaceAll({a, b});
    const auto& movie = w.result.movie;
    ASSERT_EQ(movie.bitmaps.size(), 1u);
    const SwfTest::Bitmap& bitmap = movie.bitmaps.begin()->second;
    EXPECT_EQ(bitmap.code, 36);
    EXPECT_EQ(bitmap.pixels, (std::vector<uint8_t>{128, 128, 0, 0, 255, 10, 20, 30}));
    EXPECT_EQ(movie.definitionOrder.front(), bitmap.id);
    const SwfTest::FillStyle& fill = movie.shapes.at(a->GetCharacterID()).fills.at(0);
    EXPECT_EQ(fill.type, 0x41);
    EXPECT_EQ(fill.bitmapId, bitmap.id);
    EXPECT_EQ(fill.matrix.scaleX, 20 * 65536);
    EXPECT_EQ(fill.matrix.translateX, -1);
}

TEST(Image, JPEGDataMustBeCompleteAndFilesNeedADecoder) {
    const std::vector<uint8_t> jpeg = {0xFF, 0xD8, 0x01, 0x02, 0xFF, 0xD9};
    EXPECT_EQ(TestImage::MakeJPEGTag(3, jpeg)->GetJPEG2Size(), 6u);
    const std::vector<uint8_t> cut = {0xFF, 0xD8, 0x01, 0x02};
    EXPECT_THROW(TestImage::MakeJPEGTag(3, cut), ZoException);
    auto file = ZoMakeCounted<ZoSWFImage>();
    file->SetFileImage(ZoSWFImage::kOutputLossless, "picture.png", 0xFFFFFFFF, 0);
    auto shape = ZoMakeCounted<ZoSWFShape>();
    shape->SetTiledBitmapFill(file, 0, 0, 20, 20);
    shape->Rectangle({0, 0, 20, 20});
    ZoSWFMovie movie("", 10, 10, 12, ZoSWFColour());
    movie.AddScene()->AddFrame()->PlaceObject(shape, nullptr, 1, kIdentity, 0, -1, kNoColour);
    ZoFMemorySink sink;
    EXPECT_THROW(movie.WriteMovie(sink), ZoException);
    EXPECT_THROW(ZoSWFImage().SetBitmapBufferImage({2, 2, {1, 2, 3}}, 0, 0), ZoException);
}

TEST(Text, FontsAreSharedPerMovieAndHoldTheGlyphsTextsUse) {
    ZoSWFMovie movie("", 100, 100, 12, ZoSWFColour());
    ZoSWFResourceManager resources(&movie);
    resources.SetGlyphSource(std::make_shared<SquareGlyphs>());
    auto font = resources.GetFont("Arial", false, false);
    EXPECT_EQ(resources.GetFont("Arial", false, false), font);
    EXPECT_FALSE(resources.GetFont("Arial", true, false) == font);

    auto hello = ZoMakeCounted<ZoSWFText>(), world = ZoMakeCounted<ZoSWFText>();
    hello->SetRect({0, 0, 2000, 400});
    hello->SetFont(font, 240, false, ZoSWFColour(0x0000FF, 255), ZoSWFColour(), 20, 200);
    for (char c : std::string("hello"))
        hello->AddCharacter(c, 100);
    world->SetFont(resources.GetFont("Arial", false, false), 240, false, ZoSWFColour(),
                   ZoSWFColour(), 0, 0);
    for (char c : std::string("wX"))
        world->AddCharacter(c, -30);
    ZoSWFFrame* frame = movie.AddScene()->AddFrame();
    frame->PlaceObject(hello, nullptr, 1, kIdentity, 0, -1, kNoColour);
    frame->PlaceObject(world, nullptr, 2, kIdentity, 0, -1, kNoColour);
    const SwfTest::WrittenMovie w = SwfTest::WriteAndValidate(movie);
    ASSERT_EQ(w.Problems(), "");

    ASSERT_EQ(w.result.movie.fonts.size(), 1u);
    const SwfTest::Font& f = w.result.movie.fonts.begin()->second;
    EXPECT_EQ(f.name, "Arial");
    EXPECT_EQ(f.codes, (std::vector<uint16_t>{'X', 'e', 'h', 'l', 'o', 'w'}));
    EXPECT_TRUE(f.glyphs[0].records.empty());  // the source has no 'X'
    EXPECT_EQ(f.glyphs[1].Points().size(), 4u);
    const SwfTest::Text& t = w.result.movie.texts.at(hello->GetCharacterID());
    EXPECT_EQ(t.bounds, (SwfTest::Rect{0, 2000, 0, 400}));
    ASSERT_EQ(t.records.size(), 1u);
    EXPECT_EQ(*t.records[0].fontId, f.id);
    EXPECT_EQ(*t.records[0].x, 20);
    EXPECT_EQ(*t.records[0].height, 240);
    std::string decoded;
    for (const SwfTest::GlyphEntry& g : t.records[0].glyphs)
        decoded += static_cast<char>(f.codes.at(g.index));
    EXPECT_EQ(decoded, "hello");
    EXPECT_EQ(w.result.movie.texts.at(world->GetCharacterID()).records[0].glyphs[1].advance, -30);
}

TEST(Text, UnderlinesAndBulletsGoToTheDecorationShape) {
    auto font = ZoMakeCounted<ZoSWFFont>("Serif", false, true);
    auto text = ZoMakeCounted<ZoSWFText>();
    EXPECT_THROW(text->AddCharacter('a', 10), ZoException);
    text->SetFont(font, 320, false, ZoSWFColour(), ZoSWFColour(), 0, 400);
    text->AddCharacter('a', 100);
    EXPECT_FALSE(text->GetDecorationShape());
    text->SetFont(font, 320, true, ZoSWFColour(), ZoSWFColour(0x00FF00, 255), 100, 400);
    for (int i = 0; i < 300; ++i)  // more glyphs than one text record holds
        text->AddCharacter('b', 50);
    text->DrawBullet({-200, 200, -100, 300}, ZoSWFColour(0xFF0000, 255));
    auto decoration = text->GetDecorationShape();
    ASSERT_TRUE(decoration);
    const ZoRect bounds = decoration->GetBounds();
    EXPECT_EQ(bounds.left, -200);
    EXPECT_EQ(bounds.right, 100 + 300 * 50);
    const SwfTest::WrittenMovie w = PlaceAll({text, decoration});
    const SwfTest::Text& t = w.result.movie.texts.at(text->GetCharacterID());
    ASSERT_EQ(t.records.size(), 3u);
    EXPECT_EQ(t.records[1].glyphs.size(), 255u);
    EXPECT_EQ(*t.records[2].x, 100 + 255 * 50);
    EXPECT_EQ(w.result.movie.shapes.at(decoration->GetCharacterID()).fills.size(), 2u);
}

TEST(Button, HitAreaWithGetURLOnRelease) {
    auto hit = ZoMakeCounted<ZoSWFShape>();
    hit->SetSolidFill(0x000000, 255);
    hit->Rectangle({0, 0, 2000, 2000});
    auto button = ZoMakeCounted<ZoSWFButton>();
    button->AddObject(kZoButtonHitTest, hit, 1, kIdentity, kNoColour);
    const int release = button->AddActionRecord(kZoButtonOverDownToOverUp);
    button->GetActionList(release).AddActionRecord(
        std::make_unique<ZoFGetURLAction>("http://example.com/", "_blank"));
    const int press = button->AddActionRecord(0x80);
    button->GetActionList(press).AddActionRecord(std::make_unique<ZoFActionRecord>(kZoActionStop));
    EXPECT_THROW(button->GetActionList(2), ZoException);

    ZoSWFMovie movie("", 100, 100, 12, ZoSWFColour());
    movie.AddScene()->AddFrame()->PlaceObjectPermanent(button, nullptr, 10001, kIdentity, 0, -1,
                                                       kNoColour);
    const SwfTest::WrittenMovie w = SwfTest::WriteAndValidate(movie);
    ASSERT_EQ(w.Problems(), "");
    const SwfTest::Button& b = w.result.movie.buttons.at(button->GetCharacterID());
    ASSERT_EQ(b.records.size(), 1u);
    EXPECT_EQ(b.records[0].states, 8);
    EXPECT_EQ(b.records[0].characterId, hit->GetCharacterID());
    ASSERT_EQ(b.conditions.size(), 2u);
    EXPECT_EQ(b.conditions[0].conditions, 8);
    ASSERT_EQ(b.conditions[0].actions.size(), 1u);
    EXPECT_EQ(b.conditions[0].actions[0].url, "http://example.com/");
    EXPECT_EQ(b.conditions[0].actions[0].target, "_blank");
    EXPECT_EQ(b.conditions[1].actions[0].code, kZoActionStop);
}

TEST(Sprite, FramesAreWrittenInsideItsDefinitionBeforeFirstUse) {
    auto triangle = ZoMakeCounted<ZoSWFShape>();
    triangle->SetSolidFill(0xFF0000, 255);
    triangle->MoveTo(0, 0);
    triangle->LineTo(100, 0);
    triangle->LineTo(0, 100);
    triangle->LineTo(0, 0);
    auto mask = ZoMakeCounted<ZoSWFShape>();
    mask->SetSolidFill(0, 255);
    mask->Rectangle({0, 0, 50, 50});
    auto sprite = ZoMakeCounted<ZoSWFSprite>();
    sprite->AddFrame()->PlaceObjectPermanent(mask, nullptr, 1, kIdentity, 2, -1, kNoColour);
    sprite->GetFrame(0)->PlaceObject(triangle, "piece", 2, kIdentity, 0, -1, kNoColour);
    ZoSWFTransformation moved;
    moved.SetTranslate(10, 0);
    sprite->AddFrame()->PlaceObject(triangle, "piece", 2, moved, 0, -1, kNoColour);
    sprite->GetLastFrame()->SetStopFrame();

    ZoSWFMovie movie("", 100, 100, 12, ZoSWFColour());
    ZoSWFScene* scene = movie.AddScene();
    scene->AddFrame();
    scene->AddFrame()->PlaceObject(sprite, nullptr, 1, kIdentity, 0, -1, kNoColour);
    scene->AddFrame()->PlaceObject(sprite, nullptr, 2, kIdentity, 0, -1, kNoColour);
    const SwfTest::WrittenMovie w = SwfTest::WriteAndValidate(movie);
    ASSERT_EQ(w.Problems(), "");
    ASSERT_EQ(w.result.movie.sprites.size(), 1u);
    const SwfTest::Sprite& s = w.result.movie.sprites.at(sprite->GetCharacterID());
    EXPECT_EQ(s.frameCount, 2);
    EXPECT_EQ(s.timeline.frames[1].displayList.at(1).clipDepth, 2);
    EXPECT_EQ(s.timeline.frames[1].displayList.at(2).matrix.translateX, 10);
    EXPECT_EQ(s.timeline.frames[1].displayList.at(2).name, "piece");
    EXPECT_EQ(s.timeline.frames[1].actions.at(0).code, kZoActionStop);
    EXPECT_TRUE(w.result.movie.timeline.frames[0].displayList.empty());
    EXPECT_EQ(w.result.movie.definitionOrder.back(), sprite->GetCharacterID());
    // The sprite moved to another depth: removed at the old one.
    EXPECT_EQ(w.result.movie.timeline.frames[2].displayList.count(1), 0u);
}
