// Pure geometry of object fills: triangle pieces, gradient lines, picture
// placement and the colour keyed out of pictures.
#include <gtest/gtest.h>

#include <algorithm>

#include "media/reference_image.h"
#include "objects/graduated_object.h"
#include "objects/image_object.h"
#include "objects/image_placement.h"
#include "objects/triangle_piece.h"

namespace {

/// True when `actual` is `expected` started at some vertex.
bool IsRotationOf(const std::vector<ZoPoint>& actual, const std::vector<ZoPoint>& expected) {
    if (actual.size() != expected.size())
        return false;
    if (expected.empty())
        return true;
    for (size_t shift = 0; shift < expected.size(); ++shift) {
        auto rotated = expected;
        std::rotate(rotated.begin(), rotated.begin() + shift, rotated.end());
        if (rotated == actual)
            return true;
    }
    return false;
}

TEST(TrianglePiece, IsTheTriangleCutToTheRectangle) {
    struct Case {
        const char* name;
        ZoRect rect;
        TeskTriangle triangle;
        std::vector<ZoPoint> expected;
    } cases[] = {
        {"wholly outside", {0, 0, 2000, 1000}, {{{3000, 0}, {4000, 0}, {3000, 1000}}}, {}},
        {"covering: exactly the rectangle",
         {0, 0, 2000, 1000},
         {{{-10000, -10000}, {30000, -10000}, {-10000, 30000}}},
         {{0, 0}, {2000, 0}, {2000, 1000}, {0, 1000}}},
        {"overhanging two sides",
         {0, 0, 100, 100},
         {{{50, -50}, {150, 50}, {50, 150}}},
         {{50, 0}, {100, 0}, {100, 100}, {50, 100}}},
        {"fractions truncate toward zero",
         {-100, -100, 100, 100},
         {{{-300, -100}, {0, -100}, {-300, 150}}},
         {{-100, -100}, {0, -100}, {-100, -16}}},
        {"touching one corner only", {0, 0, 100, 100}, {{{100, 100}, {200, 100}, {100, 200}}}, {}},
        {"empty rectangle", {0, 0, 0, 100}, {{{-10, -10}, {50, -10}, {-10, 50}}}, {}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const auto piece = TeskClipTriangle(c.rect, c.triangle);
        EXPECT_TRUE(IsRotationOf(piece, c.expected)) << piece.size() << " vertices";
    }
}

TEST(GraduatedObject, LinearGradientLineSpansTheProjectionOfTheRectangle) {
    struct Case {
        ZoRect rect;
        int32_t angle;
        ZoPoint from, to;
    } cases[] = {
        {{0, 0, 200, 200}, 0, {0, 100}, {200, 100}},
        {{0, 0, 200, 200}, 45, {0, 0}, {200, 200}},
        {{0, 0, 200, 200}, 90, {100, 0}, {100, 200}},
        {{0, 0, 6000, 4000}, 45, {500, -499}, {5500, 4500}},
        {{0, 0, 200, 200}, 405, {0, 0}, {200, 200}},
        {{-3000, -2000, 3000, 2000}, 0, {-3000, 0}, {3000, 0}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << "angle " << c.angle << " width " << c.rect.Width());
        const auto [from, to] = TeskLinearGradientLine(c.rect, c.angle);
        EXPECT_EQ(from, c.from);
        EXPECT_EQ(to, c.to);
    }
}

TEST(GraduatedObject, AddingGoesIntoTheWidestGapAndStopsAtEight) {
    TeskGraduatedObject gradient;
    ASSERT_TRUE(gradient.AddColour());
    EXPECT_EQ(gradient.GetPositions(), (std::vector<int32_t>{0, 127, 255}));
    EXPECT_EQ(gradient.GetSelected(), 1u);
    EXPECT_EQ(gradient.GetColours()[1].GetAlpha(), 255);

    // 127..255 is one wider than 0..127.
    ASSERT_TRUE(gradient.AddColour());
    EXPECT_EQ(gradient.GetPositions(), (std::vector<int32_t>{0, 127, 191, 255}));
    // The first of equal gaps wins.
    ASSERT_TRUE(gradient.SetStops({{0, 255}, {0, 255}, {0, 255}}, {0, 100, 200}));
    ASSERT_TRUE(gradient.AddColour());
    EXPECT_EQ(gradient.GetPositions(), (std::vector<int32_t>{0, 50, 100, 200}));
    // Gaps before the first stop and after the last count too.
    ASSERT_TRUE(gradient.SetStops({{0, 255}, {0, 255}}, {200, 220}));
    ASSERT_TRUE(gradient.AddColour());
    EXPECT_EQ(gradient.GetPositions(), (std::vector<int32_t>{100, 200, 220}));
    EXPECT_EQ(gradient.GetSelected(), 0u);

    while (gradient.GetColours().size() < TeskGraduatedObject::kMaxStops)
        ASSERT_TRUE(gradient.AddColour());
    EXPECT_FALSE(gradient.AddColour());
    EXPECT_TRUE(std::is_sorted(gradient.GetPositions().begin(), gradient.GetPositions().end()));
}

TEST(GraduatedObject, RemovingKeepsTheSelectionOnAStop) {
    struct Case {
        size_t selected, removed, selectedAfter;
    } cases[] = {
        {1, 1, 1},  // the next stop moves under the selection
        {2, 2, 1},  // the last stop went: select the new last
        {2, 0, 1},  // an earlier stop went: stay on the same stop
        {0, 2, 0},
    };
    for (const auto& c : cases) {
        TeskGraduatedObject gradient;
        ASSERT_TRUE(gradient.AddColour());
        gradient.SetSelected(c.selected);
        ASSERT_TRUE(gradient.RemoveColour(c.removed));
        EXPECT_EQ(gradient.GetSelected(), c.selectedAfter) << c.selected << " " << c.removed;
        EXPECT_EQ(gradient.GetColours().size(), gradient.GetPositions().size());
    }
    TeskGraduatedObject single;
    ASSERT_TRUE(single.RemoveColour(0));
    EXPECT_FALSE(single.RemoveColour(0));
    EXPECT_FALSE(single.RemoveColour(5));
}

TEST(ImagePlacement, PlacedRectangles) {
    // 300 x 200 pixels, a picture of 100 x 50: dx = 4000, dy = 3000 twips.
    // Each column and each row once, off the diagonal too.
    const ZoRect movie{0, 0, 6000, 4000};
    struct Case {
        int32_t placement;
        ZoRect expected;
    } cases[] = {
        {kTeskFixedTopLeft, {0, 0, 2000, 1000}},
        {kTeskFixedTopRight, {4000, 0, 6000, 1000}},
        {kTeskFixedCentre, {2000, 1500, 4000, 2500}},
        {kTeskFixedBottomLeft, {0, 3000, 2000, 4000}},
        {kTeskFixedBottomCentre, {2000, 3000, 4000, 4000}},
        {kTeskTiled, movie},
        {kTeskStretch, movie},
        {kTeskStretchKeepAspect, {0, 500, 6000, 3500}},
        {12, movie},
        {-1, movie},
    };
    for (const auto& c : cases)
        EXPECT_EQ(TeskPlacedRectangle(c.placement, movie, 100, 50), c.expected) << c.placement;
}

TEST(ImagePlacement, OddOverhangsAndCentredRectangles) {
    // A picture one twip wider than the rectangle: -1 halves toward zero.
    EXPECT_EQ(TeskPlacedRectangle(kTeskFixedTopCentre, {0, 0, 19, 40}, 1, 1),
              (ZoRect{0, 0, 20, 20}));
    // Fixed placements are measured from the origin, not from the corner.
    EXPECT_EQ(TeskPlacedRectangle(kTeskFixedTopLeft, {-3000, -2000, 3000, 2000}, 100, 50),
              (ZoRect{0, 0, 2000, 1000}));
    // Keeping the aspect of a tall picture in a wide rectangle.
    EXPECT_EQ(TeskPlacedRectangle(kTeskStretchKeepAspect, {-3000, -2000, 3000, 2000}, 50, 100),
              (ZoRect{-1000, -2000, 1000, 2000}));
}

ZoDecodedImage Picture(COLORREF corner, bool hasAlpha, COLORREF fileKey) {
    ZoDecodedImage picture;
    picture.width = 2;
    picture.height = 1;
    picture.rgba = {ZoGetRed(corner), ZoGetGreen(corner), ZoGetBlue(corner), 255, 9, 9, 9, 255};
    picture.hasAlpha = hasAlpha;
    picture.transparentColour = fileKey;
    return picture;
}

TEST(ImagePlacement, EffectiveTransparentColour) {
    const COLORREF corner = 0x112233, chosen = 0x00FF00, fileKey = 0x0000FF;
    ZoReferenceImage plain(Picture(corner, false, kZoNoColour));
    ZoReferenceImage alpha(Picture(corner, true, kZoNoColour));
    ZoReferenceImage keyed(Picture(corner, false, fileKey));
    struct Case {
        const char* name;
        const ZoReferenceImage* picture;
        bool use, automatic;
        COLORREF expected;
    } cases[] = {
        {"the file's own key wins", &keyed, false, false, fileKey},
        {"alpha needs no key", &alpha, true, true, kZoNoColour},
        {"not asked for", &plain, false, true, kZoNoColour},
        {"automatic takes the corner", &plain, true, true, corner},
        {"the user's colour", &plain, true, false, chosen},
        {"no picture: the user's colour", nullptr, true, true, chosen},
        {"no picture, not asked for", nullptr, false, false, kZoNoColour},
    };
    for (const auto& c : cases)
        EXPECT_EQ(TeskEffectiveTransparentColour(c.picture, c.use, c.automatic, chosen), c.expected)
            << c.name;
}

}  // namespace
