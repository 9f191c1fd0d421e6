#include <gtest/gtest.h>

#include <functional>
#include <vector>

#include "geometry/grid_triangulation.h"
#include "geometry/hex_triangulation.h"
#include "geometry/mesh_checks.h"
#include "platform/compiled_file.h"

namespace {

using vimbo_test::TilesUnitSquare;
using vimbo_test::Triangle;
using Corners = std::tuple<TeskPoint2D, TeskPoint2D, TeskPoint2D>;

TeskGridTriangulation Grid(int32_t diagonal, int32_t across, int32_t down) {
    TeskGridTriangulation grid;
    grid.SetDiagonal(diagonal);
    grid.SetAcross(across);
    grid.SetDown(down);
    return grid;
}

TeskHexTriangulation Hex(int32_t across, int32_t down) {
    TeskHexTriangulation hex;
    hex.SetAcross(across);
    hex.SetDown(down);
    return hex;
}

TEST(FixedGridTest, NumbersTrianglesRowByRowTwoPerCell) {
    const TeskGridTriangulation nwse;
    ASSERT_EQ(nwse.GetTriangleCount(), 50);
    EXPECT_EQ(Triangle(nwse, 0, 0), (Corners{{0, 0}, {0.2, 0}, {0.2, 0.2}}));
    EXPECT_EQ(Triangle(nwse, 1, 0), (Corners{{0, 0}, {0.2, 0.2}, {0, 0.2}}));
    EXPECT_EQ(Triangle(nwse, 13, 0), (Corners{{0.2, 0.2}, {0.4, 0.4}, {0.2, 0.4}}));

    const TeskGridTriangulation nesw = Grid(1, 1, 1);
    EXPECT_EQ(Triangle(nesw, 0, 0), (Corners{{1, 1}, {0, 1}, {1, 0}}));
    EXPECT_EQ(Triangle(nesw, 1, 0), (Corners{{0, 0}, {1, 0}, {0, 1}}));
}

TEST(FixedGridTest, HexRowsAlternateAndEndInHalfTriangles) {
    const TeskHexTriangulation hex = Hex(4, 2);
    ASSERT_EQ(hex.GetTriangleCount(), 8);
    const double third = 1.0 / 3.0;
    const double twoThirds = 2.0 / 3.0;
    EXPECT_EQ(Triangle(hex, 0, 0), (Corners{{0, 0}, {third, 0}, {0, 0.5}}));
    EXPECT_EQ(Triangle(hex, 1, 0), (Corners{{twoThirds, 0.5}, {0, 0.5}, {third, 0}}));
    EXPECT_EQ(Triangle(hex, 2, 0), (Corners{{third, 0}, {1, 0}, {twoThirds, 0.5}}));
    EXPECT_EQ(Triangle(hex, 3, 0), (Corners{{1, 0.5}, {twoThirds, 0.5}, {1, 0}}));
    EXPECT_EQ(Triangle(hex, 4, 0), (Corners{{third, 1}, {0, 1}, {0, 0.5}}));

    const TeskHexTriangulation five;
    EXPECT_EQ(Triangle(five, 4, 0), (Corners{{0.75, 0}, {1, 0}, {1, 0.2}}));
    EXPECT_EQ(Hex(1, 1).GetAcross(), 2);
}

TEST(FixedGridTest, EveryGridTilesTheUnitSquareClockwise) {
    for (int32_t across = 1; across <= 12; ++across) {
        for (int32_t down = 1; down <= 12; ++down) {
            SCOPED_TRACE(testing::Message() << across << " x " << down);
            EXPECT_TRUE(TilesUnitSquare(Grid(0, across, down), 0));
            EXPECT_TRUE(TilesUnitSquare(Grid(1, across, down), 0));
            EXPECT_TRUE(TilesUnitSquare(Hex(across + 1, down), 0));
        }
    }
}

TEST(FixedGridTest, ChoosesTheRectangularGridFromBudgetAndAngle) {
    struct Case {
        int32_t angle;
        int32_t diagonal, across, down;
    };
    const Case cases[] = {
        {45, 1, 5, 5},  {135, 0, 5, 5}, {0, 0, 9, 2},   {180, 0, 9, 2},
        {90, 0, 2, 10}, {30, 1, 6, 4},  {-45, 1, 9, 2},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.angle);
        TeskGridTriangulation grid;
        grid.ChooseGrid(50, c.angle, {0, 0, 100, 100});
        EXPECT_EQ(grid.GetDiagonal(), c.diagonal);
        EXPECT_EQ(grid.GetAcross(), c.across);
        EXPECT_EQ(grid.GetDown(), c.down);
    }
}

TEST(FixedGridTest, ChosenGridsStayNearTheBudget) {
    const ZoRect rects[] = {
        {0, 0, 100, 100}, {0, 0, 6400, 4800}, {100, 50, 300, 1000}, {0, 0, 5000, 200}};
    for (const ZoRect& rect : rects) {
        for (int32_t budget = 8; budget <= 200; budget += 3) {
            for (int32_t angle : {0, 30, 45, 90, 120, 170}) {
                SCOPED_TRACE(testing::Message() << rect.Width() << " x " << rect.Height()
                                                << ", budget " << budget << ", angle " << angle);
                TeskGridTriangulation grid;
                grid.ChooseGrid(budget, angle, rect);
                EXPECT_GE(grid.GetAcross(), 1);
                EXPECT_GE(grid.GetDown(), 1);
                EXPECT_LE(grid.GetTriangleCount(), budget);
                EXPECT_GE(grid.GetTriangleCount(), budget / 2);
            }
            TeskHexTriangulation hex;
            hex.ChooseGrid(budget, rect);
            EXPECT_GE(hex.GetAcross(), 2);
            EXPECT_GE(hex.GetDown(), 1);
            // Rounding a count of one or two rows can halve or double it.
            EXPECT_LE(hex.GetTriangleCount(), budget * 2);
            EXPECT_GE(hex.GetTriangleCount(), budget / 2);
            EXPECT_TRUE(TilesUnitSquare(hex, 0));
        }
    }
    TeskHexTriangulation hex;
    hex.ChooseGrid(50, {0, 0, 100, 100});
    EXPECT_EQ(hex.GetAcross(), 11);
    EXPECT_EQ(hex.GetDown(), 5);
}

constexpr uint32_t kTag = ZoFourCC("TSK1");

std::string Bytes(const std::function<void(ZoFolderFile&)>& write) {
    ZoCompiledFile file(kTag, 1);
    EXPECT_TRUE(file.Open(true, true));
    write(file);
    file.Close();
    return file.ToBytes();
}

// One unnamed folder holding `values`; no folder at all when there are none.
std::string RawRecord(const std::vector<int32_t>& values) {
    return Bytes([&](ZoFolderFile& file) {
        if (values.empty())
            return;
        ZoFolderGuard folder(file, true);
        for (int32_t value : values)
            file.WriteInt32(value);
    });
}

// `grid` after reading `bytes`, which must leave no folder open.
template <typename Grid>
Grid ReadFrom(const std::string& bytes, Grid grid) {
    ZoCompiledFile file = ZoCompiledFile::FromBytes(bytes, kTag);
    EXPECT_TRUE(file.Open(false, false));
    grid.Read(file);
    EXPECT_EQ(file.GetDepth(), 0u);
    return grid;
}

TEST(FixedGridRecordTest, WritesItsFieldsInOrderAndReadsThemBack) {
    EXPECT_EQ(Bytes([](ZoFolderFile& f) { Grid(1, 7, 3).Write(f); }), RawRecord({1, 7, 3}));
    EXPECT_EQ(Bytes([](ZoFolderFile& f) { Hex(9, 4).Write(f); }), RawRecord({9, 4}));
    const TeskGridTriangulation grid = ReadFrom(RawRecord({1, 7, 3}), TeskGridTriangulation());
    EXPECT_EQ((std::vector{grid.GetDiagonal(), grid.GetAcross(), grid.GetDown()}),
              (std::vector{1, 7, 3}));
    const TeskHexTriangulation hex = ReadFrom(RawRecord({9, 4}), TeskHexTriangulation());
    EXPECT_EQ((std::vector{hex.GetAcross(), hex.GetDown()}), (std::vector{9, 4}));
}

TEST(FixedGridRecordTest, ShortOrDamagedRecordsFallBackToDefaults) {
    struct Case {
        const char* name;
        std::vector<int32_t> record;
        int32_t diagonal, across, down;  // the rectangular grid's reading
        int32_t hexAcross, hexDown;      // the hexagonal grid's reading
    };
    const Case cases[] = {
        {"missing folder", {}, 0, 5, 5, 5, 5},
        {"one field", {1}, 1, 5, 5, 2, 5},
        {"two fields", {1, 8}, 1, 8, 5, 2, 8},
        {"counts too small", {0, 0, -4}, 0, 1, 1, 2, 1},
        {"counts too large", {1, 1 << 30, 7}, 1, 10000, 7, 2, 10000},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const TeskGridTriangulation grid = ReadFrom(RawRecord(c.record), Grid(7, 30, 40));
        EXPECT_EQ(grid.GetDiagonal(), c.diagonal);
        EXPECT_EQ(grid.GetAcross(), c.across);
        EXPECT_EQ(grid.GetDown(), c.down);
        const TeskHexTriangulation hex = ReadFrom(RawRecord(c.record), Hex(30, 40));
        EXPECT_EQ(hex.GetAcross(), c.hexAcross);
        EXPECT_EQ(hex.GetDown(), c.hexDown);
    }
}

}  // namespace
