// What the objects put into movies, read back with the test SWF reader.
#include <gtest/gtest.h>

#include "flash/swf_shape.h"
#include "media/swf_movie.h"
#include "objects/graduated_object.h"
#include "objects/image_object.h"
#include "objects/solid_object.h"
#include "placed_movie.h"

namespace {

using Outline = std::vector<std::pair<int32_t, int32_t>>;
using Shapes = objects_test::Placed;
using objects_test::WritePlaced;

constexpr ZoRect kRect{0, 0, 2000, 1000};
constexpr uint8_t kSolidFill = 0x00, kLinearFill = 0x10, kRadialFill = 0x12,
                  kTiledBitmapFill = 0x40, kClippedBitmapFill = 0x41;

/// The shapes of the first frame, bottom first.
std::vector<SwfTest::Shape> ShapesOf(const SwfTest::WrittenMovie& written) {
    std::vector<SwfTest::Shape> shapes;
    for (const uint16_t id : objects_test::PlacedIds(written.result.movie))
        shapes.push_back(written.result.movie.shapes.at(id));
    return shapes;
}

/// The move-to point followed by the end of every edge.
Outline OutlineOf(const SwfTest::Shape& shape) {
    Outline outline;
    for (const auto& record : shape.records)
        if (record.moveTo) {
            outline.emplace_back(record.moveX, record.moveY);
            break;
        }
    const auto points = shape.Points();
    outline.insert(outline.end(), points.begin(), points.end());
    return outline;
}

Outline RectangleOutline(const ZoRect& r) {
    return {{r.left, r.top},
            {r.right, r.top},
            {r.right, r.bottom},
            {r.left, r.bottom},
            {r.left, r.top}};
}

/// True when the outline is the rectangle's corners in clockwise order,
/// starting anywhere and closed back to its start.
bool IsClosedRectangle(const Outline& outline, const ZoRect& r) {
    if (outline.size() != 5 || outline.front() != outline.back())
        return false;
    Outline corners = RectangleOutline(r);
    corners.pop_back();
    for (size_t shift = 0; shift < corners.size(); ++shift) {
        Outline rotated = corners;
        std::rotate(rotated.begin(), rotated.begin() + shift, rotated.end());
        if (std::equal(rotated.begin(), rotated.end(), outline.begin()))
            return true;
    }
    return false;
}

TEST(SolidObjectShapes, WholeShapeAndTrianglePieces) {
    TeskSWFMovie movie;
    TeskSolidObject solid;
    const Shapes shapes{
        solid.MakeShape(movie, kRect),
        solid.MakeTriangleShape(movie, kRect, {{{3000, 0}, {4000, 0}, {3000, 900}}}),
        solid.MakeTriangleShape(movie, kRect, {{{-9000, -9000}, {30000, -9000}, {-9000, 30000}}}),
    };
    const auto written = WritePlaced(movie, shapes);
    ASSERT_EQ(written.Problems(), "");
    const auto read = ShapesOf(written);
    for (const auto& shape : read) {
        ASSERT_EQ(shape.fills.size(), 1u);
        EXPECT_EQ(shape.fills[0].type, kSolidFill);
        EXPECT_EQ(shape.fills[0].colour, (SwfTest::Rgba{0x00, 0x80, 0x80, 255}));
        EXPECT_TRUE(shape.lines.empty());
    }
    EXPECT_EQ(OutlineOf(read[0]), RectangleOutline(kRect));
    EXPECT_TRUE(read[1].Points().empty()) << "a piece outside the rectangle has no edges";
    EXPECT_TRUE(IsClosedRectangle(OutlineOf(read[2]), kRect));
}

TEST(GraduatedObjectShapes, FillsFollowTheStops) {
    TeskSWFMovie movie;
    TeskGraduatedObject single, linear, radial;
    ASSERT_TRUE(single.SetStops({{0x00FF00, 255}}, {40}));
    ASSERT_TRUE(linear.SetStops({{0x0000FF, 255}, {0xFF0000, 255}}, {10, 200}));
    ASSERT_TRUE(radial.SetStops({{0x0000FF, 255}, {0xFF0000, 255}}, {0, 255}));
    radial.SetGradientType(kTeskRadialGradient);
    const ZoRect square{0, 0, 2000, 2000};
    const Shapes shapes{
        single.MakeShape(movie, square),
        linear.MakeShape(movie, square),
        radial.MakeShape(movie, square),
        linear.MakeTriangleShape(movie, square, {{{0, 0}, {2000, 0}, {0, 2000}}}),
    };
    const auto written = WritePlaced(movie, shapes);
    ASSERT_EQ(written.Problems(), "");
    const auto read = ShapesOf(written);
    ASSERT_EQ(read.size(), 4u);

    EXPECT_EQ(read[0].fills.at(0).type, kSolidFill);
    EXPECT_EQ(read[0].fills.at(0).colour, (SwfTest::Rgba{0, 255, 0, 255}));

    const SwfTest::Rgba red{255, 0, 0, 255}, blue{0, 0, 255, 255};
    using Stops = std::vector<std::pair<uint8_t, SwfTest::Rgba>>;
    EXPECT_EQ(read[1].fills.at(0).type, kLinearFill);
    EXPECT_EQ(read[1].fills.at(0).gradient, (Stops{{10, red}, {200, blue}}));
    // Radial stops run from the centre out: reversed and mirrored.
    EXPECT_EQ(read[2].fills.at(0).type, kRadialFill);
    EXPECT_EQ(read[2].fills.at(0).gradient, (Stops{{0, blue}, {255, red}}));

    // A piece shares the gradient of the whole rectangle.
    EXPECT_EQ(read[3].fills.at(0).type, kLinearFill);
    EXPECT_TRUE(read[3].fills.at(0).matrix.SameValues(read[1].fills.at(0).matrix));
    EXPECT_EQ(OutlineOf(read[3]), (Outline{{0, 0}, {2000, 0}, {0, 2000}, {0, 0}}));
}

TEST(ImageObjectShapes, OneBitmapPerPictureForEveryShapeOfAMovie) {
    TeskSWFMovie movie;
    TeskImageObject stretched;
    TeskImageObject pinned("<PreviewImage1>");
    pinned.SetPlacement(kTeskFixedTopLeft);
    TeskImageObject tiled("<PreviewImage2>");
    tiled.SetPlacement(kTeskTiled);
    const ZoRect large{0, 0, 6000, 6000};
    const Shapes shapes{
        stretched.MakeShape(movie, large),
        stretched.MakeTriangleShape(movie, large, {{{0, 0}, {6000, 0}, {0, 6000}}}),
        pinned.MakeShape(movie, large),
        pinned.MakeTriangleShape(movie, large, {{{0, 0}, {6000, 0}, {0, 6000}}}),
        tiled.MakeShape(movie, large),
    };
    const auto written = WritePlaced(movie, shapes);
    ASSERT_EQ(written.Problems(), "");
    const auto& bitmaps = written.result.movie.bitmaps;
    ASSERT_EQ(bitmaps.size(), 2u) << "one definition per picture";
    const auto read = ShapesOf(written);
    const uint16_t first = read[0].fills.at(0).bitmapId;
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(read[i].fills.at(0).type, kClippedBitmapFill) << i;
        EXPECT_EQ(read[i].fills.at(0).bitmapId, first) << i;
    }
    EXPECT_EQ(bitmaps.at(first).width, 182);
    EXPECT_EQ(bitmaps.at(first).height, 202);

    // Stretched: the bitmap spans the rectangle, a twip up and left.
    const auto& stretch = read[0].fills[0].matrix;
    EXPECT_NEAR(stretch.A(), 6000.0 / 182, 1e-4);
    EXPECT_NEAR(stretch.D(), 6000.0 / 202, 1e-4);
    EXPECT_EQ(stretch.translateX, -1);
    EXPECT_EQ(OutlineOf(read[0]), RectangleOutline(large));
    // Pinned: the shape and its pieces shrink to the picture's own size.
    EXPECT_NEAR(read[2].fills[0].matrix.A(), 20.0, 1e-4);
    const ZoRect picture{0, 0, 182 * 20, 202 * 20};
    EXPECT_EQ(OutlineOf(read[2]), RectangleOutline(picture));
    for (const auto& [x, y] : OutlineOf(read[3])) {
        EXPECT_LE(x, picture.right);
        EXPECT_LE(y, picture.bottom);
    }
    EXPECT_EQ(read[4].fills.at(0).type, kTiledBitmapFill);
    EXPECT_NE(read[4].fills.at(0).bitmapId, first);
    EXPECT_EQ(OutlineOf(read[4]), RectangleOutline(large));
}

TEST(ImageObjectShapes, AMissingPictureLeavesTheShapeUnfilled) {
    TeskSWFMovie movie;
    TeskImageObject missing("/nonexistent/vimbo/picture.png");
    ZoSize size{1, 1};
    EXPECT_FALSE(missing.GetNaturalSize(size));
    const auto written = WritePlaced(movie, {missing.MakeShape(movie, kRect)});
    ASSERT_EQ(written.Problems(), "");
    EXPECT_TRUE(written.result.movie.bitmaps.empty());
    EXPECT_TRUE(ShapesOf(written).at(0).fills.empty());

    TeskImageObject builtIn("<PreviewImage2>");
    ASSERT_TRUE(builtIn.GetNaturalSize(size));
    EXPECT_EQ(size, (ZoSize{182, 202}));
}

}  // namespace
