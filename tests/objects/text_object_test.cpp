// The text object in movies: SWF text when whole, clipped glyph outlines as
// mesh pieces, read back with the test SWF reader.
#include <gtest/gtest.h>

#include <cmath>
#include <numeric>

#include "flash/swf_shape.h"
#include "objects/text_object.h"
#include "placed_movie.h"

namespace {

using objects_test::PlacedIds;
using objects_test::WritePlaced;

constexpr ZoRect kRect{0, 0, 4000, 2000};  // 200 x 100 pixels
constexpr TeskTriangle kEverything{{{-9000, -9000}, {30000, -9000}, {-9000, 30000}}};

TeskTextObject TextOf(std::string_view rtf, COLORREF back = TeskTextObject::kTransparent) {
    TeskTextObject text;
    text.GetRichText().SetRTF(rtf);
    text.SetBackColour(back);
    return text;
}

/// The filled area a shape's edges enclose, in square twips, with holes
/// subtracted: glyph contours wind one way round and their holes the other.
double EnclosedArea(const SwfTest::Shape& shape) {
    double twice = 0.0, x = 0.0, y = 0.0;
    for (const auto& record : shape.records) {
        if (record.kind == SwfTest::ShapeRecord::Kind::kStyleChange) {
            x = record.moveTo ? record.moveX : x;
            y = record.moveTo ? record.moveY : y;
            continue;
        }
        const bool curved = record.kind == SwfTest::ShapeRecord::Kind::kCurved;
        const double cx = x + record.controlDx, cy = y + record.controlDy;
        const double ax = (curved ? cx : x) + record.dx, ay = (curved ? cy : y) + record.dy;
        // A parabolic segment adds two thirds of its control triangle.
        if (curved)
            twice += 2.0 / 3.0 * ((cx - x) * (ay - y) - (cy - y) * (ax - x));
        twice += x * ay - y * ax;
        x = ax;
        y = ay;
    }
    return std::abs(twice / 2.0);
}

TEST(TextObjectShapes, WholeTextSharesFontsKeepsTheLayoutAndLayersItsDecorations) {
    const char* hello = R"({\rtf1\ansi{\fonttbl{\f0 Arial;}}\f0\fs48 Hello world\par})";
    const char* bullet = R"({\rtf1\ansi{\fonttbl{\f0 Arial;}}\f0\pard\bullet\ul Hello\par})";
    TeskSWFMovie movie;
    TeskTextObject bare = TextOf(hello), backed = TextOf(hello, 0x00FFFF);
    TeskTextObject decorated = TextOf(bullet);
    const auto written =
        WritePlaced(movie, {bare.MakeShape(movie, kRect), backed.MakeShape(movie, kRect),
                            decorated.MakeShape(movie, kRect)});
    ASSERT_EQ(written.Problems(), "");
    const SwfTest::Movie& read = written.result.movie;
    ASSERT_EQ(read.fonts.size(), 1u) << "texts in one face share its font";
    const SwfTest::Font& font = read.fonts.begin()->second;
    EXPECT_EQ(font.name, "Arial");
    EXPECT_EQ(font.codes, (std::vector<uint16_t>{' ', 'H', 'd', 'e', 'l', 'o', 'r', 'w'}));
    EXPECT_GT(font.glyphs.at(1).records.size(), 4u) << "H has an outline";

    const std::vector<uint16_t> placed = PlacedIds(read);
    const SwfTest::TextRecord& first = read.texts.at(placed[0]).records.at(0);
    const ZoTextItem& item = bare.GetRichText().Lines().at(0).items.at(0);
    EXPECT_EQ(first.height, 32 * 20) << "24 points is an em of 32 pixels";
    EXPECT_EQ(first.x, item.Origin().x * 20);
    EXPECT_EQ(first.y, item.Origin().y * 20);
    ASSERT_EQ(first.glyphs.size(), 11u);
    EXPECT_EQ(std::accumulate(first.glyphs.begin(), first.glyphs.end(), 0,
                              [](int sum, const auto& g) { return sum + g.advance; }),
              item.width * 20);

    // Tag codes by depth: background shape, text, underline-and-bullet shape.
    const auto layers = [&](uint16_t sprite) {
        std::vector<uint16_t> codes;
        for (const auto& [depth, placement] :
             read.sprites.at(sprite).timeline.frames.at(0).displayList)
            codes.push_back(read.characterTags.at(placement.characterId));
        return codes;
    };
    EXPECT_EQ(layers(placed[1]), (std::vector<uint16_t>{32, 11}));
    EXPECT_EQ(layers(placed[2]), (std::vector<uint16_t>{11, 32}));
}

TEST(TextObjectPieces, PiecesTogetherCoverWhatOneTriangleOverEverythingCovers) {
    TeskSWFMovie movie;
    TeskTextObject text = TextOf(R"({\rtf1\ansi{\fonttbl{\f0 Arial;}{\f1 Times New Roman;}})"
                                 R"(\f0\fs48 Hello \i\f1 world\par\pard\bullet\ul gap\par})");
    text.PrepareOutput();
    objects_test::Placed pieces{
        text.MakeTriangleShape(movie, kRect, kEverything),
        text.MakeTriangleShape(movie, kRect, {{kEverything[0], kEverything[2], kEverything[1]}})};
    // Seven by three cells of two clockwise triangles each.
    for (int32_t x0 = 0, x1 = 600; x0 < kRect.right; x0 = x1, x1 = std::min(x1 + 600, 4000)) {
        for (int32_t y0 = 0; y0 < kRect.bottom; y0 += 700) {
            const int32_t y1 = std::min(y0 + 700, kRect.bottom);
            pieces.push_back(
                text.MakeTriangleShape(movie, kRect, {{{x0, y0}, {x1, y0}, {x1, y1}}}));
            pieces.push_back(
                text.MakeTriangleShape(movie, kRect, {{{x0, y0}, {x1, y1}, {x0, y1}}}));
        }
    }
    text.ReleaseOutput();
    const auto written = WritePlaced(movie, pieces);
    ASSERT_EQ(written.Problems(), "");

    const SwfTest::Movie& read = written.result.movie;
    const std::vector<uint16_t> ids = PlacedIds(read);
    const double whole = EnclosedArea(read.shapes.at(ids[0]));
    EXPECT_GT(whole, 20 * 20 * 300.0) << "a few hundred square pixels of ink";
    EXPECT_NEAR(EnclosedArea(read.shapes.at(ids[1])), whole, whole * 1e-6)
        << "a triangle given anticlockwise cuts the same";
    double sum = 0.0;
    for (size_t i = 2; i < ids.size(); ++i)
        sum += EnclosedArea(read.shapes.at(ids[i]));
    // Whole-twip truncation along the cut edges costs a little area.
    EXPECT_NEAR(sum, whole, whole * 0.01);
}

TEST(TextObject, DamagedTextAndUnknownFontsStillDraw) {
    const struct {
        const char* rtf;
        const char* text;
    } cases[] = {
        {R"({\rtf1\ansi{\fonttbl{\f0 Arial;}}\f0 Hello {\b wor)", "Hello wor\n"},
        {R"({\rtf1\ansi{\fonttbl{\f0 Nowhere Sans 9;}}\f0 Hello})", "Hello\n"},
        {"Hello, not RTF", "\n"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.rtf);
        TeskTextObject text = TextOf(c.rtf, 0x00FF00);
        EXPECT_EQ(text.GetRichText().Text(), c.text);
        TeskSWFMovie movie;
        const auto written = WritePlaced(
            movie,
            {text.MakeShape(movie, kRect), text.MakeTriangleShape(movie, kRect, kEverything)});
        ASSERT_EQ(written.Problems(), "");
        const SwfTest::Movie& read = written.result.movie;
        const double background = 4000.0 * 2000.0;
        EXPECT_EQ(EnclosedArea(read.shapes.at(PlacedIds(read).at(1))) != background,
                  std::string_view(c.text) != "\n");
        for (const auto& [id, font] : read.fonts) {
            for (size_t i = 0; i < font.codes.size(); ++i)
                EXPECT_EQ(font.glyphs.at(i).records.empty(), font.codes[i] == ' ') << font.codes[i];
        }
    }
}

}  // namespace
