#include <gtest/gtest.h>

#include <vector>

#include "geometry/grid_triangulation.h"
#include "geometry/hex_triangulation.h"
#include "platform/compiled_file.h"

namespace {

constexpr uint32_t kTag = ZoFourCC("TSK1");

// A file holding one unnamed folder with `values` in it, open for reading;
// no folder at all when `values` is empty.
ZoCompiledFile FileWithRecord(const std::vector<int32_t>& values) {
    ZoCompiledFile file(kTag, 1);
    EXPECT_TRUE(file.Open(true, true));
    if (!values.empty()) {
        ZoFolderGuard folder(file, true);
        for (int32_t value : values)
            file.WriteInt32(value);
    }
    file.Close();
    EXPECT_TRUE(file.Open(false, false));
    return file;
}

TeskGridTriangulation SampleGrid() {
    TeskGridTriangulation grid;
    grid.SetDiagonal(1);
    grid.SetAcross(7);
    grid.SetDown(3);
    return grid;
}

TeskHexTriangulation SampleHex() {
    TeskHexTriangulation hex;
    hex.SetAcross(9);
    hex.SetDown(4);
    return hex;
}

// The sample grid's record followed by the sample hex grid's, open for reading.
ZoCompiledFile SampleFile() {
    ZoCompiledFile file(kTag, 1);
    EXPECT_TRUE(file.Open(true, true));
    SampleGrid().Write(file);
    SampleHex().Write(file);
    file.Close();
    EXPECT_TRUE(file.Open(false, false));
    return file;
}

TEST(FixedGridRecordTest, WritesItsFieldsInOrderAndReadsThemBack) {
    ZoCompiledFile file = SampleFile();
    for (const std::vector<int32_t>& fields : {std::vector{1, 7, 3}, std::vector{9, 4}}) {
        ZoFolderGuard folder(file, false);
        EXPECT_EQ(file.GetFolderSize(), 4 * fields.size());
        for (int32_t field : fields)
            EXPECT_EQ(file.ReadInt32(), field);
    }
    EXPECT_EQ(file.GetDepth(), 0u);

    file = SampleFile();
    TeskGridTriangulation grid;
    TeskHexTriangulation hex;
    grid.Read(file);
    hex.Read(file);
    EXPECT_EQ((std::vector{grid.GetDiagonal(), grid.GetAcross(), grid.GetDown()}),
              (std::vector{1, 7, 3}));
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
        TeskGridTriangulation grid;
        grid.SetDiagonal(7);
        grid.SetAcross(30);
        grid.SetDown(40);
        ZoCompiledFile gridFile = FileWithRecord(c.record);
        grid.Read(gridFile);
        EXPECT_EQ(grid.GetDiagonal(), c.diagonal);
        EXPECT_EQ(grid.GetAcross(), c.across);
        EXPECT_EQ(grid.GetDown(), c.down);
        EXPECT_EQ(gridFile.GetDepth(), 0u);

        TeskHexTriangulation hex;
        hex.SetAcross(30);
        hex.SetDown(40);
        ZoCompiledFile hexFile = FileWithRecord(c.record);
        hex.Read(hexFile);
        EXPECT_EQ(hex.GetAcross(), c.hexAcross);
        EXPECT_EQ(hex.GetDown(), c.hexDown);
    }
}

}  // namespace
