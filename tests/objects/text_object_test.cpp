// The text object in movies: SWF text when whole, clipped glyph outlines as
// mesh pieces, read back with the test SWF reader.
#include <gtest/gtest.h>

#include <cmath>
#include <numeric>

#include "flash/swf_shape.h"
#include "media/swf_movie.h"
#include "objects/text_object.h"
#include "placed_movie.h"

namespace {

using Objects = objects_test::Placed;
using objects_test::PlacedIds;
using objects_test::WritePlaced;

constexpr ZoRect kRect{0, 0, 4000, 2000};  // 200 x 100 pixels
constexpr const char* kHello = R"({\rtf1\ansi{\fonttbl{\f0 Arial;}}\f0\fs48 Hello world\par})";

TeskTextObject TextOf(std::string_view rtf) {
    TeskTextObject text;
    text.GetRichText().SetRTF(rtf);
    return text;
}

/// The filled area a shape's edges enclose, in square twips, with holes
/// subtracted: glyph contours wind one way round and their holes the other.
double EnclosedArea(const SwfTest::Shape& shape) {
    double twice = 0.0;
    double x = 0.0, y = 0.0;
    for (const auto& record : shape.records) {
        if (record.kind == SwfTest::ShapeRecord::Kind::kStyleChange) {
            if (record.moveTo) {
                x = record.moveX;
                y = record.moveY;
            }
            continue;
        }
        double ax = x + record.dx, ay = y + record.dy;
        if (record.kind == SwfTest::ShapeRecord::Kind::kCurved) {
            const double cx = x + record.controlDx, cy = y + record.controlDy;
            ax = cx + record.dx;
            ay = cy + record.dy;
            // The parabolic segment adds two thirds of its control triangle.
            twice += 2.0 / 3.0 * ((cx - x) * (ay - y) - (cy - y) * (ax - x));
        }
        twice += x * ay - y * ax;
        x = ax;
        y = ay;
    }
    return std::abs(twice / 2.0);
}

TEST(TextObject, NewTextTypesArialEighteenInAColourThatStandsOutOnTheMovie) {
    const struct {
        COLORREF background, text;
    } cases[] = {
        {0xFFFFFF, 0x000000},
        {0x000000, 0xFFFFFF},
        {0x7F8080, 0xFF0000},  // only blue is below half
    };
    for (const auto& c : cases) {
        const TeskTextObject text(c.background);
        const ZoTextFormat& typing = *text.GetRichText().FormatAt(0);
        EXPECT_EQ(typing.FontName(), "Arial");
        EXPECT_EQ(typing.PointSize(), 18);
        EXPECT_EQ(typing.Colour(), c.text) << std::hex << c.background;
    }
}

TEST(TextObjectShapes, WholeTextSharesOneFontAndKeepsTheLaidOutAdvances) {
    TeskSWFMovie movie;
    TeskTextObject hello = TextOf(kHello);
    TeskTextObject again = TextOf(kHello);
    const auto written =
        WritePlaced(movie, {hello.MakeShape(movie, kRect), again.MakeShape(movie, kRect)});
    ASSERT_EQ(written.Problems(), "");
    const SwfTest::Movie& read = written.result.movie;
    ASSERT_EQ(read.fonts.size(), 1u) << "texts in one face share its font";
    const SwfTest::Font& font = read.fonts.begin()->second;
    EXPECT_EQ(font.name, "Arial");
    EXPECT_EQ(font.codes, (std::vector<uint16_t>{' ', 'H', 'd', 'e', 'l', 'o', 'r', 'w'}));
    EXPECT_TRUE(font.glyphs.at(0).records.size() <= 1) << "a space has no outline";
    EXPECT_GT(font.glyphs.at(1).records.size(), 4u) << "H has an outline";

    const SwfTest::Text& text = read.texts.at(PlacedIds(read).at(0));
    const ZoTextItem& item = hello.GetRichText().Lines().at(0).items.at(0);
    ASSERT_FALSE(text.records.empty());
    const SwfTest::TextRecord& first = text.records[0];
    EXPECT_EQ(first.height, 32 * 20) << "24 points is an em of 32 pixels";
    EXPECT_EQ(first.x, item.Origin().x * 20);
    EXPECT_EQ(first.y, item.Origin().y * 20);
    ASSERT_EQ(first.glyphs.size(), 11u);
    const int advances = std::accumulate(first.glyphs.begin(), first.glyphs.end(), 0,
                                         [](int sum, const auto& g) { return sum + g.advance; });
    EXPECT_EQ(advances, item.width * 20);
}

TEST(TextObjectShapes, BackgroundsAndUnderlinesMakeALayeredSprite) {
    const struct {
        const char* name;
        COLORREF back;
        const char* rtf;
        std::vector<uint16_t> spriteLayers;  // tag codes by depth; empty: bare text
    } cases[] = {
        {"bare", TeskTextObject::kTransparent, kHello, {}},
        {"background", 0x00FFFF, kHello, {32, 11}},
        {"underline",
         TeskTextObject::kTransparent,
         R"({\rtf1\ansi{\fonttbl{\f0 Arial;}}\f0\ul Hello\par})",
         {11, 32}},
        {"bullet",
         0x00FFFF,
         R"({\rtf1\ansi{\fonttbl{\f0 Arial;}}\f0\pard\bullet Hello\par})",
         {32, 11, 32}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        TeskSWFMovie movie;
        TeskTextObject text = TextOf(c.rtf);
        text.SetBackColour(c.back);
        const auto written = WritePlaced(movie, {text.MakeShape(movie, kRect)});
        ASSERT_EQ(written.Problems(), "");
        const SwfTest::Movie& read = written.result.movie;
        const uint16_t placed = PlacedIds(read).at(0);
        if (c.spriteLayers.empty()) {
            EXPECT_EQ(read.characterTags.at(placed), 11) << "DefineText";
            continue;
        }
        const SwfTest::Sprite& sprite = read.sprites.at(placed);
        std::vector<uint16_t> layers;
        for (const auto& [depth, item] : sprite.timeline.frames.at(0).displayList)
            layers.push_back(read.characterTags.at(item.characterId));
        EXPECT_EQ(layers, c.spriteLayers);
    }
}

// The object rectangle cut into columns × rows cells of two clockwise
// triangles each.
std::vector<TeskTriangle> Mesh(const ZoRect& rect, int columns, int rows) {
    std::vector<TeskTriangle> triangles;
    for (int i = 0; i < columns; ++i) {
        for (int j = 0; j < rows; ++j) {
            const int32_t x0 = rect.left + rect.Width() * i / columns;
            const int32_t x1 = rect.left + rect.Width() * (i + 1) / columns;
            const int32_t y0 = rect.top + rect.Height() * j / rows;
            const int32_t y1 = rect.top + rect.Height() * (j + 1) / rows;
            triangles.push_back({{{x0, y0}, {x1, y0}, {x1, y1}}});
            triangles.push_back({{{x0, y0}, {x1, y1}, {x0, y1}}});
        }
    }
    return triangles;
}

TEST(TextObjectPieces, PiecesTogetherCoverWhatOneTriangleOverEverythingCovers) {
    const char* rtf = R"({\rtf1\ansi{\fonttbl{\f0 Arial;}{\f1 Times New Roman;}})"
                      R"(\f0\fs48 Hello \i\f1 world\par \ul gap\par})";
    TeskSWFMovie movie;
    TeskTextObject text = TextOf(rtf);
    text.PrepareOutput();
    const TeskTriangle everything{{{-9000, -9000}, {30000, -9000}, {-9000, 30000}}};
    const TeskTriangle backwards{{everything[0], everything[2], everything[1]}};
    Objects pieces{text.MakeTriangleShape(movie, kRect, everything),
                   text.MakeTriangleShape(movie, kRect, backwards)};
    for (const TeskTriangle& triangle : Mesh(kRect, 7, 3))
        pieces.push_back(text.MakeTriangleShape(movie, kRect, triangle));
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
    for (const uint16_t id : ids) {
        for (const auto& fill : read.shapes.at(id).fills)
            EXPECT_EQ(fill.colour, (SwfTest::Rgba{0, 0, 0, 255}));
    }
}

TEST(TextObjectPieces, ATriangleAwayFromTheTextGetsOnlyTheBackground) {
    TeskSWFMovie movie;
    TeskTextObject text = TextOf(kHello);
    const TeskTriangle belowText{{{0, 1500}, {4000, 1500}, {4000, 2000}}};
    auto bare = text.MakeTriangleShape(movie, kRect, belowText);
    text.SetBackColour(0x00FF00);
    auto backed = text.MakeTriangleShape(movie, kRect, belowText);
    const auto written = WritePlaced(movie, {bare, backed});
    ASSERT_EQ(written.Problems(), "");
    const SwfTest::Movie& read = written.result.movie;
    const std::vector<uint16_t> ids = PlacedIds(read);
    EXPECT_TRUE(read.shapes.at(ids[0]).Points().empty());
    const SwfTest::Shape& background = read.shapes.at(ids[1]);
    ASSERT_EQ(background.fills.size(), 1u);
    EXPECT_EQ(background.fills[0].colour, (SwfTest::Rgba{0, 255, 0, 255}));
    EXPECT_NEAR(EnclosedArea(background), 4000.0 * 500 / 2, 1.0);
}

TEST(TextObject, DamagedTextAndUnknownFontsStillDraw) {
    const struct {
        const char* name;
        const char* rtf;
        const char* text;
    } cases[] = {
        {"cut off", R"({\rtf1\ansi{\fonttbl{\f0 Arial;}}\f0 Hello {\b wor)", "Hello wor\n"},
        {"unknown face", R"({\rtf1\ansi{\fonttbl{\f0 Nowhere Sans 9;}}\f0 Hello})", "Hello\n"},
        {"not RTF at all", "Hello", "\n"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        TeskTextObject text = TextOf(c.rtf);
        EXPECT_EQ(text.GetRichText().Text(), c.text);
        TeskSWFMovie movie;
        const TeskTriangle everything{{{-9000, -9000}, {30000, -9000}, {-9000, 30000}}};
        const auto written = WritePlaced(movie, {text.MakeShape(movie, kRect),
                                                 text.MakeTriangleShape(movie, kRect, everything)});
        ASSERT_EQ(written.Problems(), "");
        const SwfTest::Movie& read = written.result.movie;
        const bool ink = std::string_view(c.text) != "\n";
        EXPECT_EQ(EnclosedArea(read.shapes.at(PlacedIds(read).at(1))) > 0, ink);
        for (const auto& [id, font] : read.fonts) {
            for (size_t i = 0; i < font.codes.size(); ++i)
                EXPECT_EQ(font.glyphs.at(i).records.empty(), font.codes[i] == ' ') << font.codes[i];
        }
    }
}

}  // namespace
