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

ZoCompiledFile Written(const std::function<void(ZoFolderFile&)>& write) {
    ZoCompiledFile file(kTag, 1);
    EXPECT_TRUE(file.Open(true, true));
    write(file);
    file.Close();
    EXPECT_TRUE(file.Open(false, false));
    return file;
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

TEST(EditGridPresetTest, ExportWritesTheValidPresetsHeaderOrNothing) {
    TeskEditGridTriangulation grid;
    grid.Root().SplitCell(0, 0);
    grid.ApplyPreset();
    EXPECT_EQ(grid.GetTriangleCount(), 50);
    EXPECT_TRUE(grid.IsValid());
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
