#include "geometry/edit_grid_triangulation.h"

#include <gtest/gtest.h>

#include <random>

#include "geometry/mesh_checks.h"
#include "platform/compiled_file.h"

namespace {

using GridNode = TeskEditGridTriangulation::GridNode;
using vimbo_test::TilesUnitSquare;
using vimbo_test::Triangle;
using Corners = std::tuple<TeskPoint2D, TeskPoint2D, TeskPoint2D>;

TeskEditGridTriangulation Grid(int32_t across, int32_t down) {
    TeskEditGridTriangulation grid;
    grid.Root().Resize(across, down);
    return grid;
}

// Splits root cell (c, r) into 2 × 2 the way the editor does.
GridNode& Split(TeskEditGridTriangulation& grid, int32_t c, int32_t r) {
    GridNode* child = grid.Root().SplitCell(c, r);
    child->Resize(2, 2);
    return *child;
}

void ExpectNear(const Corners& actual, const Corners& expected) {
    const auto& [a, b, c] = actual;
    const auto& [p, q, r] = expected;
    for (const auto& [got, want] : {std::pair{a, p}, std::pair{b, q}, std::pair{c, r}}) {
        EXPECT_NEAR(got.x, want.x, 1e-15);
        EXPECT_NEAR(got.y, want.y, 1e-15);
    }
}

// The grid's record as bytes of a project file.
std::string RecordOf(const TeskEditGridTriangulation& grid) {
    ZoCompiledFile file(ZoFourCC("TSK1"), 1);
    file.Open(true, true);
    grid.Write(file);
    file.Close();
    return file.ToBytes();
}

// The grid as a project file stores and loads it.
TeskEditGridTriangulation StoredAndLoaded(const TeskEditGridTriangulation& grid) {
    ZoCompiledFile file = ZoCompiledFile::FromBytes(RecordOf(grid), ZoFourCC("TSK1"));
    file.Open(false, false);
    TeskEditGridTriangulation loaded;
    loaded.Read(file);
    return loaded;
}

double AreaOf(const TeskTriangulation& mesh, int32_t set) {
    double area = 0.0;
    for (int32_t i = 0; i < mesh.GetTriangleCount(); ++i) {
        const auto [a, b, c] = Triangle(mesh, i, set);
        area += TeskWinding(a, b, c) / 2.0;
    }
    return area;
}

// The tree's own invariants: children's corners sit on their cells' corners,
// the root's corners on the unit square's and its border points on its edges.
::testing::AssertionResult WellFormed(const GridNode& node) {
    for (int32_t s = 0; s < node.pointSetCount; ++s) {
        if (!node.parent) {
            for (int32_t c = 0; c <= node.across; ++c) {
                if (node.At(c, 0, s).y != 0.0 || node.At(c, node.down, s).y != 1.0)
                    return ::testing::AssertionFailure() << "column " << c << " left the border";
            }
            for (int32_t r = 0; r <= node.down; ++r) {
                if (node.At(0, r, s).x != 0.0 || node.At(node.across, r, s).x != 1.0)
                    return ::testing::AssertionFailure() << "row " << r << " left the border";
            }
        }
        for (int32_t r = 0; r < node.down; ++r) {
            for (int32_t c = 0; c < node.across; ++c) {
                const GridNode* child = node.CellAt(c, r).child.get();
                if (!child)
                    continue;
                if (child->parent != &node)
                    return ::testing::AssertionFailure()
                           << "child of " << c << ", " << r << " has another parent";
                const bool fitted =
                    child->At(0, 0, s) == node.At(c, r, s) &&
                    child->At(child->across, 0, s) == node.At(c + 1, r, s) &&
                    child->At(0, child->down, s) == node.At(c, r + 1, s) &&
                    child->At(child->across, child->down, s) == node.At(c + 1, r + 1, s);
                if (!fitted)
                    return ::testing::AssertionFailure()
                           << "child of " << c << ", " << r << " is off its cell in set " << s;
                if (auto inner = WellFormed(*child); !inner)
                    return inner;
            }
        }
    }
    return ::testing::AssertionSuccess();
}

TEST(EditGridTest, CountsPointsTrianglesAndLines) {
    struct Case {
        const char* name;
        int32_t across, down;
        bool split;
        int32_t points, triangles, lines;
    };
    const Case cases[] = {
        {"new grid", 4, 4, false, 25, 32, 44},
        {"morph grid", 5, 5, false, 36, 50, 69},
        {"morph grid with a split cell", 5, 5, true, 41, 56, 76},
        {"single cell", 1, 1, false, 4, 2, 5},
        {"one row", 3, 1, false, 8, 6, 2 + 0 + 3 + 4},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        TeskEditGridTriangulation grid =
            c.across == 4 ? TeskEditGridTriangulation() : Grid(c.across, c.down);
        if (c.split)
            Split(grid, 2, 3);
        EXPECT_EQ(grid.GetPointSetCount(), 2);
        EXPECT_EQ(grid.GetPointCount(), c.points);
        EXPECT_EQ(grid.GetTriangleCount(), c.triangles);
        EXPECT_EQ(grid.GetLineCount(), c.lines);
        for (int32_t set = 0; set < 2; ++set) {
            // A split cell's border points are T-junctions to its neighbours.
            if (c.split) {
                EXPECT_NEAR(AreaOf(grid, set), 1.0, 1e-12);
            } else {
                EXPECT_TRUE(TilesUnitSquare(grid, set));
            }
        }
    }
}

TEST(EditGridTest, NumbersAChildsOwnPointsAfterTheParentsSkippingItsCorners) {
    TeskEditGridTriangulation grid = Grid(5, 5);
    Split(grid, 1, 0);
    // Cell (1, 0) spans x 0.2..0.4 and y 0..0.2; its 3 × 3 child adds the
    // edge midpoints and the centre.
    const TeskPoint2D expected[] = {{0.3, 0.0}, {0.2, 0.1}, {0.3, 0.1}, {0.4, 0.1}, {0.3, 0.2}};
    for (int32_t i = 0; i < 5; ++i) {
        EXPECT_NEAR(grid.GetPoint(36 + i, 1).x, expected[i].x, 1e-15) << i;
        EXPECT_NEAR(grid.GetPoint(36 + i, 1).y, expected[i].y, 1e-15) << i;
    }
    EXPECT_EQ(grid.GetPoint(41, 0), TeskPoint2D{});

    // The split cell's triangles come in its place, in the child's order.
    ExpectNear(Triangle(grid, 1, 0), {{0, 0}, {0.2, 0}, {0.2, 0.2}});
    ExpectNear(Triangle(grid, 2, 0), {{0.2, 0}, {0.3, 0.1}, {0.2, 0.1}});
    ExpectNear(Triangle(grid, 10, 0), {{0.4, 0}, {0.6, 0.2}, {0.4, 0.2}});
}

TEST(EditGridTest, MovesArePlacedSlidOrRefused) {
    struct Case {
        const char* name;
        int32_t index;  // in a 5 × 5 grid: index = c + 6·r
        TeskPoint2D target;
        bool placed;
        TeskPoint2D result;
    };
    const Case cases[] = {
        {"corner stays", 0, {0.1, 0.1}, false, {0, 0}},
        {"top border point slides", 2, {0.5, 0.3}, false, {0.5, 0}},
        {"left border point slides", 12, {0.2, 0.3}, false, {0, 0.3}},
        {"slide past the edge's end is refused", 24, {-1, 3}, false, {0, 0.8}},
        {"slide that would fold is refused", 2, {0.9, 0}, false, {0.4, 0}},
        {"inner point moves", 14, {0.45, 0.35}, true, {0.45, 0.35}},
        {"inner point across its neighbour is refused", 14, {0.7, 0.4}, false, {0.4, 0.4}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        TeskEditGridTriangulation grid = Grid(5, 5);
        TeskPoint2D point = c.target;
        EXPECT_EQ(grid.MovePoint(c.index, 0, point), c.placed);
        EXPECT_NEAR(point.x, c.result.x, 1e-15);
        EXPECT_NEAR(point.y, c.result.y, 1e-15);
        EXPECT_EQ(grid.GetPoint(c.index, 0), point);
        EXPECT_TRUE(grid.IsValid());
        EXPECT_EQ(grid.GetPoint(c.index, 1), Grid(5, 5).GetPoint(c.index, 1));
    }
}

TEST(EditGridTest, MovingACellCornerRefitsTheChildAndKeepsItValid) {
    TeskEditGridTriangulation grid = Grid(5, 5);
    Split(grid, 1, 1);
    TeskPoint2D corner{0.45, 0.45};  // the cell's bottom-right corner, point (2, 2)
    EXPECT_TRUE(grid.MovePoint(14, 0, corner));
    EXPECT_TRUE(WellFormed(grid.Root()));
    // The child's bottom edge midpoint moved with its line.
    const GridNode& child = *grid.Root().CellAt(1, 1).child;
    EXPECT_NEAR(child.At(1, 2, 0).x, (0.2 + 0.45) / 2, 1e-15);
    EXPECT_NEAR(child.At(1, 2, 0).y, (0.4 + 0.45) / 2, 1e-15);
    EXPECT_NEAR(AreaOf(grid, 0), 1.0, 1e-12);

    // Unchecked placement still keeps the child on its cell.
    grid.SetPoint(14, 0, {0.35, 0.3});
    EXPECT_TRUE(WellFormed(grid.Root()));
}

TEST(EditGridTest, InsertsAndDeletesColumnsAndRows) {
    TeskEditGridTriangulation grid = Grid(5, 5);
    GridNode& root = grid.Root();
    Split(grid, 2, 1);
    root.CellAt(2, 3).diagonal = false;
    TeskPoint2D moved{0.5, 0.45};
    ASSERT_TRUE(grid.MovePoint(3 + 6 * 2, 1, moved));

    // The new point column halves the cut cells; the old cells move right.
    root.InsertColumn(2);
    ASSERT_EQ(root.across, 6);
    for (int32_t r = 0; r <= 5; ++r)
        EXPECT_EQ(root.At(3, r, 1), (root.At(2, r, 1) + root.At(4, r, 1)) * 0.5) << r;
    EXPECT_FALSE(root.CellAt(2, 1).child);
    EXPECT_TRUE(root.CellAt(2, 3).diagonal);
    EXPECT_TRUE(root.CellAt(3, 1).child);
    EXPECT_FALSE(root.CellAt(3, 3).diagonal);
    EXPECT_EQ(grid.GetTriangleCount(), 2 * 6 * 5 + 6);

    root.InsertRow(0);
    EXPECT_TRUE(root.CellAt(3, 2).child);
    // A merged cell keeps the right-hand (lower) cell's child and loses the other's.
    root.DeleteColumn(2);
    EXPECT_TRUE(root.CellAt(2, 2).child);
    root.DeleteRow(1);
    EXPECT_TRUE(root.CellAt(2, 1).child);
    EXPECT_TRUE(WellFormed(root));
    root.DeleteColumn(2);
    EXPECT_FALSE(root.CellAt(2, 1).child);
    EXPECT_EQ(root.across * 10 + root.down, 45);

    TeskEditGridTriangulation single = Grid(1, 1);
    single.Root().DeleteColumn(0);
    single.Root().DeleteRow(0);
    EXPECT_EQ(single.GetTriangleCount(), 2);

    // A full node grows no further, so that what is saved loads again.
    const int32_t largest = GridNode::kLargestSide;
    TeskEditGridTriangulation full = Grid(largest + 5, largest);
    full.Root().InsertColumn(3);
    full.Root().InsertRow(3);
    EXPECT_EQ(full.GetTriangleCount(), 2 * largest * largest);
    EXPECT_EQ(RecordOf(StoredAndLoaded(full)), RecordOf(full));
}

TEST(EditGridTest, DiagonalsAndSplitsNeverFoldTheMesh) {
    TeskEditGridTriangulation grid = Grid(2, 1);
    GridNode& root = grid.Root();
    // Pulling the top middle point to (0.2, 0.8) makes the left cell a dart
    // that only its top-right-to-bottom-left cut can triangulate.
    grid.SetPoint(1, 0, {0.2, 0.8});
    ASSERT_FALSE(grid.IsValid());
    root.ReverseDiagonal(0, 0);
    EXPECT_FALSE(root.CellAt(0, 0).diagonal);
    ASSERT_TRUE(grid.IsValid());
    root.ReverseDiagonal(0, 0);
    EXPECT_FALSE(root.CellAt(0, 0).diagonal) << "flipping back would fold";
    root.ReverseDiagonal(1, 0);
    EXPECT_FALSE(root.CellAt(1, 0).diagonal) << "either cut suits the right cell";

    // A fresh child is cut the other way and folds; dropping it again leaves
    // the cell with the cut that works.
    root.SplitCell(0, 0);
    EXPECT_FALSE(grid.IsValid());
    EXPECT_TRUE(root.UnsplitCell(0, 0));
    EXPECT_FALSE(root.CellAt(0, 0).diagonal);
    root.CellAt(0, 0).diagonal = true;
    root.SplitCell(0, 0);
    EXPECT_TRUE(root.UnsplitCell(0, 0));
    EXPECT_FALSE(root.CellAt(0, 0).diagonal);
    EXPECT_EQ(grid.GetTriangleCount(), 4);
}

TEST(EditGridTest, HitTestFindsTheCellOrTheChildCell) {
    TeskEditGridTriangulation grid = Grid(5, 5);
    GridNode& child = Split(grid, 3, 2);
    struct Case {
        TeskPoint2D p;
        const GridNode* node;
        int32_t c, r;
    };
    const Case cases[] = {
        {{0.05, 0.05}, &grid.Root(), 0, 0}, {{0.5, 0.3}, &grid.Root(), 2, 1},
        {{0.65, 0.45}, &child, 0, 0},       {{0.75, 0.55}, &child, 1, 1},
        {{1.0, 1.0}, &grid.Root(), 4, 4},   {{1.2, 0.5}, nullptr, 0, 0},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << c.p.x << ", " << c.p.y);
        GridNode* node = nullptr;
        int32_t column = -1;
        int32_t row = -1;
        EXPECT_EQ(grid.HitTest(c.p, 0, node, column, row), c.node != nullptr);
        if (c.node) {
            EXPECT_EQ(node, c.node);
            EXPECT_EQ(column, c.c);
            EXPECT_EQ(row, c.r);
        }
    }
}

// Random edits, seeded: checked operations never fold the mesh and every
// operation keeps the tree well formed. Inserting or deleting lines is not
// checked and may fold a skewed grid; the editor's answer is to even it out.
TEST(EditGridPropertyTest, RandomEditsKeepTheGridValidSeed4242) {
    std::mt19937 random(4242);
    const auto uniform = [&](double lo, double hi) {
        return std::uniform_real_distribution(lo, hi)(random);
    };
    const auto pick = [&](int32_t n) { return std::uniform_int_distribution(0, n - 1)(random); };
    TeskEditGridTriangulation grid = Grid(4, 3);
    GridNode& root = grid.Root();
    int refused = 0;
    for (int step = 0; step < 3000; ++step) {
        SCOPED_TRACE(step);
        const int32_t c = pick(root.across);
        const int32_t r = pick(root.down);
        bool checked = true;
        switch (pick(8)) {
            case 0:
            case 1:
            case 2: {
                const int32_t index = pick(grid.GetPointCount());
                const int32_t set = pick(2);
                const TeskPoint2D from = grid.GetPoint(index, set);
                TeskPoint2D to{from.x + uniform(-0.2, 0.2), from.y + uniform(-0.2, 0.2)};
                const TeskPoint2D asked = to;
                const bool placed = grid.MovePoint(index, set, to);
                refused += placed ? 0 : 1;
                EXPECT_EQ(grid.GetPoint(index, set), to);
                if (placed) {
                    EXPECT_EQ(to, asked);
                }
                break;
            }
            case 3:
                root.ReverseDiagonal(c, r);
                break;
            case 4:
                checked = false;
                if (!root.CellAt(c, r).child)
                    root.SplitCell(c, r)->Resize(1 + pick(3), 1 + pick(3));
                break;
            case 5:
                EXPECT_TRUE(root.UnsplitCell(c, r));
                break;
            case 6:
                checked = false;
                if (root.across < 8 && pick(2))
                    root.InsertColumn(c);
                else if (root.down < 8)
                    root.InsertRow(r);
                break;
            case 7:
                checked = false;
                if (pick(2))
                    root.DeleteColumn(std::min(c, root.across - 2));
                else
                    root.DeleteRow(std::min(r, root.down - 2));
                break;
        }
        ASSERT_TRUE(WellFormed(root));
        if (checked) {
            ASSERT_TRUE(grid.IsValid());
        } else if (!grid.IsValid()) {
            grid.ResetUniform();
            ASSERT_TRUE(grid.IsValid());
        }
        for (int32_t set = 0; set < 2; ++set)
            ASSERT_NEAR(AreaOf(grid, set), 1.0, 1e-9);
        if (step % 100 == 0) {
            const TeskEditGridTriangulation loaded = StoredAndLoaded(grid);
            ASSERT_EQ(RecordOf(loaded), RecordOf(grid));
            ASSERT_EQ(loaded.GetPointCount(), grid.GetPointCount());
            ASSERT_TRUE(WellFormed(loaded.Root()));
        }
    }
    EXPECT_GT(refused, 0);
}

}  // namespace
