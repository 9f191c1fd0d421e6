#include "geometry/poly_shape.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <random>
#include <vector>

#include "geometry/shape_measure.h"

namespace {

using vimbo_test::SignedArea;
using vimbo_test::Winding;
using ZoGeometry::ZoAffineMatrix;
using ZoGeometry::ZoDoublePoint;
using ZoGeometry::ZoDoubleRect;
using ZoGeometry::ZoLineSide;
using ZoGeometry::ZoPolyContour;
using ZoGeometry::ZoPolyPointKind;
using ZoGeometry::ZoPolyShape;

void AddPolygon(ZoPolyShape& shape, const std::vector<ZoDoublePoint>& points) {
    const int32_t contour = shape.AddContour();
    for (size_t i = 0; i < points.size(); ++i)
        shape.AddPoint(contour, i == 0 ? ZoPolyPointKind::kMove : ZoPolyPointKind::kLinear,
                       points[i]);
}

// Clockwise on screen (y down), like every mesh triangle.
ZoPolyShape Square(double size) {
    ZoPolyShape shape;
    AddPolygon(shape, {{0, 0}, {size, 0}, {size, size}, {0, size}});
    return shape;
}

// The parabola from (0, 0) over the apex (5, −5) to (10, 0), closed by its chord.
ZoPolyShape Arch() {
    ZoPolyShape shape;
    const int32_t contour = shape.AddContour();
    shape.AddPoint(contour, ZoPolyPointKind::kMove, {0, 0});
    shape.AddPoint(contour, ZoPolyPointKind::kQuadraticControl, {5, -10});
    shape.AddPoint(contour, ZoPolyPointKind::kQuadratic, {10, 0});
    return shape;
}

ZoPolyShape CutCopy(ZoPolyShape shape, ZoDoublePoint a, ZoDoublePoint b) {
    shape.Cut(a, b);
    return shape;
}

TEST(PolyShapeTest, CutsPolygonsByStraightLines) {
    // A step whose middle edge lies on y = 5, with material on both sides:
    // the outline runs along the line between the sides and is cut there once.
    ZoPolyShape step;
    AddPolygon(step, {{0, 0}, {10, 0}, {10, 5}, {15, 5}, {15, 10}, {0, 10}});
    struct Case {
        const char* name;
        const ZoPolyShape& shape;
        ZoDoublePoint a, b;
        double area;
        ZoDoubleRect bounds;
    };
    const ZoPolyShape square = Square(10);
    const Case cases[] = {
        {"keeps the top half", square, {10, 5}, {0, 5}, 50, {0, 0, 10, 5}},
        {"keeps the bottom half", square, {0, 5}, {10, 5}, 50, {0, 5, 10, 10}},
        {"keeps the left half", square, {5, 0}, {5, 10}, 50, {0, 0, 5, 10}},
        {"keeps a corner triangle", square, {5, 0}, {0, 5}, 12.5, {0, 0, 5, 5}},
        {"cuts through two corners", square, {0, 0}, {10, 10}, 50, {0, 0, 10, 10}},
        {"runs along an edge, inside kept", square, {0, 0}, {10, 0}, 100, {0, 0, 10, 10}},
        {"runs along an edge, inside removed", square, {10, 0}, {0, 0}, 0, {}},
        {"touches a corner only", square, {-5, 5}, {5, -5}, 100, {0, 0, 10, 10}},
        {"step, below its middle edge", step, {0, 5}, {20, 5}, 75, {0, 5, 15, 10}},
        {"step, above its middle edge", step, {20, 5}, {0, 5}, 50, {0, 0, 10, 5}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const ZoPolyShape cut = CutCopy(c.shape, c.a, c.b);
        EXPECT_NEAR(SignedArea(cut), c.area, 1e-12);
        EXPECT_EQ(cut.GetBounds(), c.bounds);
        EXPECT_EQ(cut.ContourCount(), c.area > 0 ? 1 : 0);
    }
}

TEST(PolyShapeTest, LineThatMissesKeepsOrRemovesTheWhole) {
    const ZoPolyShape square = Square(10);
    ZoPolyShape kept = square;
    EXPECT_FALSE(kept.Cut({100, -20}, {100, 20}));
    EXPECT_EQ(kept, square);

    ZoPolyShape removed = square;
    EXPECT_TRUE(removed.Cut({100, 20}, {100, -20}));
    EXPECT_EQ(removed.ContourCount(), 0);
}

TEST(PolyShapeTest, QuadraticCutAtItsApexSplitsIntoTwoCurvesMeetingOnTheLine) {
    const ZoPolyShape left = CutCopy(Arch(), {5, -20}, {5, 10});
    const ZoPolyShape right = CutCopy(Arch(), {5, 10}, {5, -20});
    ASSERT_EQ(left.ContourCount(), 1);
    ASSERT_EQ(right.ContourCount(), 1);

    const auto curveEndingOnTheLine = [](const ZoPolyContour& contour) {
        for (size_t i = 1; i < contour.size(); ++i) {
            if (contour[i].kind == ZoPolyPointKind::kQuadratic &&
                contour[i].point == ZoDoublePoint{5, -5})
                return contour[i - 1].point;
        }
        return ZoDoublePoint{-1, -1};
    };
    EXPECT_EQ(curveEndingOnTheLine(left.Contour(0)), (ZoDoublePoint{2.5, -5}));
    EXPECT_EQ(right.GetBounds(), (ZoDoubleRect{5, -5, 10, 0}));
    const double whole = 2.0 / 3.0 * 50.0;
    EXPECT_NEAR(SignedArea(left), whole / 2.0, 1e-12);
    EXPECT_NEAR(SignedArea(right), whole / 2.0, 1e-12);
}

TEST(PolyShapeTest, TransformAppliesScaleThenTranslationToEveryPoint) {
    ZoPolyShape shape = Arch();
    shape.Transform(ZoAffineMatrix::Scale(2, 3).Then(ZoAffineMatrix::Translate(100, 200)));
    EXPECT_EQ(shape.GetBounds(), (ZoDoubleRect{100, 170, 120, 200}));
    EXPECT_EQ(ZoPolyShape{}.GetBounds(), ZoDoubleRect{});
}

// Random shapes that stay simple: star polygons around the origin, whose
// vertices advance in angle, optionally with a hole or with curved edges
// whose control points stay inside the same angular wedge.
class RandomShapes {
  public:
    explicit RandomShapes(uint32_t seed) : random_(seed) {}

    ZoPolyShape Star(bool curved, bool ring) {
        ZoPolyShape shape;
        AddStar(shape, curved, 0.6, 1.0, false);
        if (ring)
            AddStar(shape, curved, 0.2, 0.4, true);
        return shape;
    }

    // A line through a random point near the shape, in a random direction.
    std::pair<ZoDoublePoint, ZoDoublePoint> Line() {
        const ZoDoublePoint p{Uniform(-1.1, 1.1), Uniform(-1.1, 1.1)};
        const double angle = Uniform(0.0, 2.0 * std::numbers::pi);
        return {p, {p.x + std::cos(angle), p.y + std::sin(angle)}};
    }

    double Uniform(double lo, double hi) { return std::uniform_real_distribution(lo, hi)(random_); }

  private:
    ZoDoublePoint Polar(double angle, double radius) {
        return {radius * std::cos(angle), radius * std::sin(angle)};
    }

    void AddStar(ZoPolyShape& shape, bool curved, double rMin, double rMax, bool reversed) {
        const int n = std::uniform_int_distribution(12, 20)(random_);
        const double step = 2.0 * std::numbers::pi / n;
        const int32_t contour = shape.AddContour();
        // Increasing angles run clockwise on screen because y grows downwards.
        const double sense = reversed ? -1.0 : 1.0;
        double previous = 0.0;
        for (int i = 0; i < n; ++i) {
            const double angle = sense * (i + Uniform(-0.3, 0.3)) * step;
            if (curved && i > 0) {
                const double control = previous + Uniform(0.2, 0.8) * (angle - previous);
                shape.AddPoint(contour, ZoPolyPointKind::kQuadraticControl,
                               Polar(control, Uniform(rMin, rMax)));
            }
            previous = angle;
            const auto kind = i == 0   ? ZoPolyPointKind::kMove
                              : curved ? ZoPolyPointKind::kQuadratic
                                       : ZoPolyPointKind::kLinear;
            shape.AddPoint(contour, kind, Polar(angle, Uniform(rMin, rMax)));
        }
    }

    std::mt19937 random_;
};

struct ShapeKind {
    const char* name;
    bool curved;
    bool ring;
};
constexpr ShapeKind kShapeKinds[] = {
    {"star", false, false},
    {"ring", false, true},
    {"curved star", true, false},
    {"curved ring", true, true},
};

// The kept and removed parts add up to the whole, lie on their sides of the
// line, and (for straight edges, which the winding count follows) hold every
// inside point exactly once.
TEST(PolyShapeCutPropertyTest, KeptAndRemovedPartsSplitTheWholeSeed1123) {
    RandomShapes random(1123);
    for (const ShapeKind& kind : kShapeKinds) {
        SCOPED_TRACE(kind.name);
        for (int trial = 0; trial < 200; ++trial) {
            SCOPED_TRACE(trial);
            const ZoPolyShape whole = random.Star(kind.curved, kind.ring);
            const auto [a, b] = random.Line();
            const ZoPolyShape kept = CutCopy(whole, a, b);
            const ZoPolyShape removed = CutCopy(whole, b, a);
            ASSERT_NEAR(SignedArea(kept) + SignedArea(removed), SignedArea(whole), 1e-9);
            for (const ZoPolyContour& contour : kept.Contours()) {
                // A hole the line misses stays a hole, wound the other way.
                if (!kind.ring) {
                    EXPECT_GT(SignedArea(contour), 0.0);
                }
                for (const auto& record : contour) {
                    if (record.kind != ZoPolyPointKind::kQuadraticControl) {
                        EXPECT_LE(ZoLineSide(a, b, record.point), 1e-12);
                    }
                }
            }
            for (int sample = 0; sample < 100 && !kind.curved; ++sample) {
                const ZoDoublePoint p{random.Uniform(-1.05, 1.05), random.Uniform(-1.05, 1.05)};
                if (std::abs(ZoLineSide(a, b, p)) < 1e-9)
                    continue;
                const bool inKept = Winding(kept, p) != 0;
                const bool inRemoved = Winding(removed, p) != 0;
                ASSERT_EQ(Winding(whole, p) != 0, inKept || inRemoved);
                ASSERT_FALSE(inKept && inRemoved);
                if (inKept) {
                    ASSERT_LT(ZoLineSide(a, b, p), 0.0);
                }
            }
        }
    }
}

}  // namespace
