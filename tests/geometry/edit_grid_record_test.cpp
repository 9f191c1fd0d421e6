#include <gtest/gtest.h>

#include <fstream>
#include <functional>
#include <sstream>

#include "geometry/edit_grid_triangulation.h"
#include "platform/compiled_file.h"
#include "platform/temp_directory.h"

namespace {

using GridNode = TeskEditGridTriangulation::GridNode;

constexpr uint32_t kTag = ZoFourCC("TSK1");

// Whole trees compare equal: sizes, every point bit for bit, diagonals and
// children, recursively.
::testing::AssertionResult SameTree(const GridNode& a, const GridNode& b) {
    if (a.across != b.across || a.down != b.down || a.pointSetCount != b.pointSetCount)
        return ::testing::AssertionFailure() << "sizes differ";
    if (a.points != b.points)
        return ::testing::AssertionFailure() << "points differ";
    for (size_t i = 0; i < a.cells.size(); ++i) {
        const GridNode::Cell& p = a.cells[i];
        const GridNode::Cell& q = b.cells[i];
        if (p.diagonal != q.diagonal || bool(p.child) != bool(q.child))
            return ::testing::AssertionFailure() << "cell " << i << " differs";
        if (p.child) {
            if (auto same = SameTree(*p.child, *q.child); !same)
                return same;
            if (q.child->parent != &b)
                return ::testing::AssertionFailure() << "cell " << i << "'s child lost its parent";
        }
    }
    return ::testing::AssertionSuccess();
}

ZoCompiledFile Written(const std::function<void(ZoFolderFile&)>& write) {
    ZoCompiledFile file(kTag, 1);
    EXPECT_TRUE(file.Open(true, true));
    write(file);
    file.Close();
    EXPECT_TRUE(file.Open(false, false));
    return file;
}

TEST(EditGridRecordTest, RoundTripsASplitTreeExactly) {
    TeskEditGridTriangulation grid;
    grid.Root().Resize(5, 4);
    grid.Root().SplitCell(2, 1)->Resize(3, 2);
    grid.Root().CellAt(4, 3).diagonal = false;
    TeskPoint2D p{0.31, 0.27};
    ASSERT_TRUE(grid.MovePoint(7, 1, p));
    p = {0.48, 0.4};
    ASSERT_TRUE(grid.MovePoint(30 + 3, 0, p));  // the child's first inner point

    ZoCompiledFile file = Written([&](ZoFolderFile& out) { grid.Write(out); });
    TeskEditGridTriangulation read(3);
    read.Read(file);
    EXPECT_EQ(read.GetPointSetCount(), 2);
    EXPECT_TRUE(SameTree(read.Root(), grid.Root()));
    EXPECT_EQ(file.GetDepth(), 0u);
}

// A record of one set and a 1 × 1 root written field by field, so that
// damaged variants can leave pieces out.
void WriteSingleCell(ZoFolderFile& file, bool withFlags, bool splitWithoutChild,
                     int32_t corners = 4) {
    ZoFolderGuard triangulation(file, true);
    file.WriteInt32(1);
    ZoFolderGuard node(file, true);
    file.WriteInt32(1);
    file.WriteInt32(1);
    for (int32_t i = 0; i < corners; ++i) {
        file.WriteDouble(i % 2);
        file.WriteDouble(i / 2);
    }
    if (withFlags)
        file.WriteInt32(splitWithoutChild ? 3 : 1);
}

TEST(EditGridRecordTest, DamagedRecordsGiveDefaultsNeverAHalfTree) {
    struct Case {
        const char* name;
        std::function<void(ZoFolderFile&)> write;
        int32_t sets, triangles;
        bool diagonal;  // of the first cell
    };
    const Case cases[] = {
        {"whole", [](ZoFolderFile& f) { WriteSingleCell(f, true, false); }, 1, 2, true},
        {"cell flags missing", [](ZoFolderFile& f) { WriteSingleCell(f, false, false); }, 1, 2,
         false},
        {"points cut short", [](ZoFolderFile& f) { WriteSingleCell(f, true, false, 3); }, 2, 32,
         true},
        {"split cell without its child", [](ZoFolderFile& f) { WriteSingleCell(f, true, true); }, 2,
         32, true},
        {"no record at all", [](ZoFolderFile&) {}, 2, 32, true},
        {"absurd sizes",
         [](ZoFolderFile& f) {
             ZoFolderGuard triangulation(f, true);
             f.WriteInt32(2);
             ZoFolderGuard node(f, true);
             f.WriteInt32(1 << 20);
             f.WriteInt32(1 << 20);
         },
         2, 32, true},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        ZoCompiledFile file = Written(c.write);
        TeskEditGridTriangulation grid(3);
        grid.Root().Resize(7, 7);
        grid.Read(file);
        EXPECT_EQ(grid.GetPointSetCount(), c.sets);
        EXPECT_EQ(grid.GetTriangleCount(), c.triangles);
        EXPECT_EQ(grid.Root().cells[0].diagonal, c.diagonal);
        EXPECT_TRUE(grid.IsValid());
        EXPECT_EQ(file.GetDepth(), 0u);
    }
}

TEST(EditGridPresetTest, PresetIsAValidFiveByFiveMorph) {
    TeskEditGridTriangulation grid;
    grid.Root().SplitCell(0, 0);
    grid.ApplyPreset();
    EXPECT_EQ(grid.GetPointCount(), 36);
    EXPECT_EQ(grid.GetTriangleCount(), 50);
    EXPECT_TRUE(grid.IsValid());
    EXPECT_EQ(grid.GetPoint(1 * 6 + 1, 0), (TeskPoint2D{0.118012, 0.0726257}));
    EXPECT_EQ(grid.GetPoint(1 * 6 + 5, 1), (TeskPoint2D{1.0, 0.0335196}));
    EXPECT_EQ(grid.GetPoint(5 * 6 + 2, 1), (TeskPoint2D{0.4, 1.0}));

    EXPECT_NE(
        grid.PresetHeaderText().find("\t\t{ { 0.118012, 0.0726257 }, { 0.149068, 0.0614525 } },\n"),
        ZoString::npos);
}

TEST(EditGridPresetTest, HeaderTextOfASingleCell) {
    TeskEditGridTriangulation grid;
    grid.Root().Resize(1, 1);
    grid.Root().ReverseDiagonal(0, 0);
    EXPECT_EQ(grid.PresetHeaderText(),
              "//\n// TeskMorphPreset.h\n//\n\n"
              "#ifndef __TESK_MORPH_PRESET_H__\n#define __TESK_MORPH_PRESET_H__\n#pragma once\n\n"
              "static const int s_morph_preset_x_divisions = 1;\n"
              "static const int s_morph_preset_y_divisions = 1;\n"
              "static const double s_morph_preset_points[2][2][2][2] = {\n"
              "\t{\n"
              "\t\t{ { 0, 0 }, { 0, 0 } },\n"
              "\t\t{ { 1, 0 }, { 1, 0 } },\n"
              "\t},\n"
              "\t{\n"
              "\t\t{ { 0, 1 }, { 0, 1 } },\n"
              "\t\t{ { 1, 1 }, { 1, 1 } },\n"
              "\t},\n"
              "\t};\n"
              "static const bool s_morph_preset_diagonals[1][1] = {\n"
              "\t{false, },\n"
              "\t};\n"
              "#endif\n");
}

TEST(EditGridPresetTest, ExportWritesTheHeaderOrNothing) {
    TeskEditGridTriangulation grid;
    grid.ApplyPreset();
    const auto path = ZoMakeTempFileName(".h");
    ASSERT_TRUE(grid.ExportPresetHeader(path));
    std::ifstream in(path, std::ios::binary);
    std::stringstream text;
    text << in.rdbuf();
    EXPECT_EQ(text.str(), grid.PresetHeaderText());

    const auto nowhere = ZoProcessTempDirectory() / "no such folder" / "TeskMorphPreset.h";
    EXPECT_FALSE(grid.ExportPresetHeader(nowhere));
    EXPECT_FALSE(std::filesystem::exists(nowhere.parent_path()));
}

}  // namespace
