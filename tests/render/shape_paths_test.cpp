#include "render/shape_paths.h"

#include <gtest/gtest.h>

using namespace ZoRender;

namespace {

ShapeRecord Style(int fill0, int fill1, int x, int y) {
    ShapeRecord r;
    r.moveTo = true;
    r.moveX = x;
    r.moveY = y;
    r.fill0 = fill0;
    r.fill1 = fill1;
    return r;
}

ShapeRecord Line(int dx, int dy) {
    ShapeRecord r;
    r.kind = ShapeRecord::Kind::kStraight;
    r.dx = dx;
    r.dy = dy;
    return r;
}

int Contours(const Path& path) {
    int n = 0;
    for (const PathCommand& c : path)
        n += c.kind == PathCommand::Kind::kClose;
    return n;
}

// Two squares side by side that share their middle edge, drawn as players
// expect from other tools: each edge once, with a fill on each side where
// there is one. Each fill must still come out as one closed contour.
TEST(ShapePaths, JoinsEdgesOfBothSidesIntoClosedContours) {
    Shape shape;
    shape.fills.resize(2);
    shape.records = {Style(0, 1, 0, 0),   Line(10, 0),  Style(2, 1, 10, 0), Line(0, 10),
                     Style(0, 1, 10, 10), Line(-10, 0), Line(0, -10),       Style(0, 2, 10, 0),
                     Line(10, 0),         Line(0, 10),  Line(-10, 0)};
    const ShapePaths paths = BuildShapePaths(shape);
    ASSERT_EQ(paths.fills.size(), 2u);
    for (const Path& fill : paths.fills) {
        EXPECT_EQ(Contours(fill), 1);
        ASSERT_EQ(fill.size(), 6u);  // move, four sides, close
        EXPECT_EQ(fill[0].x, fill[4].x);
        EXPECT_EQ(fill[0].y, fill[4].y);
    }
    EXPECT_TRUE(paths.lines.empty());
}

}  // namespace
