// Effect records through the in-memory project-file container: what is
// written comes back, and damaged or older records fall back as they should.
#include <gtest/gtest.h>

#include <functional>

#include "effects/cross_fade_effect.h"
#include "effects/wave_effect.h"
#include "objects/solid_object.h"
#include "platform/compiled_file.h"

namespace {

/// Writes with `write`, then reopens the same tree for reading with `read`.
void WriteThenRead(const std::function<void(ZoFolderFile&)>& write,
                   const std::function<void(ZoFolderFile&)>& read) {
    ZoCompiledFile file(ZoFourCC("TSK1"), 0x01000000);
    ASSERT_TRUE(file.Open(true, true));
    {
        ZoFolderGuard root(file, true);
        write(file);
    }
    file.Close();
    ASSERT_TRUE(file.Open(false, false));
    {
        ZoFolderGuard root(file, false);
        read(file);
    }
    file.Close();
}

// Rounding and the expansion are chosen anew on every reading.
TEST(TeskEffectRecord, WaveLeavesItsUnstoredGridSettingsOut) {
    TeskWaveEffect written;
    TeskGridEffect::GridSettings grid;
    grid.chooseGrid = false;
    grid.maxTriangles = 120;
    grid.gridType = 3;
    grid.across = 7;
    grid.down = 11;
    grid.roundPoints = true;
    grid.expand = 99;
    written.SetGridSettings(grid, nullptr);

    TeskWaveEffect read;
    WriteThenRead([&](ZoFolderFile& f) { written.Write(f); },
                  [&](ZoFolderFile& f) { read.Read(f); });
    grid.roundPoints = false;
    grid.expand = 20;
    EXPECT_EQ(read.GetGridSettings(), grid);
}

/// Hand-made records: the common folder as a default effect writes it, with
/// `timing` replaced, then whatever `rest` writes into the effect's folder.
void WriteCrossFadeRecord(ZoFolderFile& f, const std::vector<int32_t>& timing,
                          const std::function<void(ZoFolderFile&)>& rest) {
    ZoFolderGuard own(f, true);
    {
        ZoFolderGuard common(f, true);
        {
            ZoFolderGuard reserved(f, true);
            f.WriteUInt32(0x2222);
            for (int32_t v : {5, 6, 7, 8})
                f.WriteInt32(v);
        }
        ZoFolderGuard timingFolder(f, true);
        for (int32_t v : timing)
            f.WriteInt32(v);
    }
    rest(f);
}

TEST(TeskEffectRecord, CrossFadeFallsBackAsAWholeButToleratesMissingHolds) {
    const auto objects = [](ZoFolderFile& f) {
        const TeskSolidObject red(0x0000FF), green(0x00FF00);
        WriteObject(f, &red);
        WriteObject(f, &green);
    };
    struct Case {
        const char* name;
        std::vector<int32_t> timing;
        std::function<void(ZoFolderFile&)> rest;
        TeskEffect::Timing expectTiming;
        bool expectReturn;
        int32_t expectHold;
    };
    const std::vector<Case> cases = {
        {"older file without holds",
         {0, 0, 1500},
         [&](ZoFolderFile& f) {
             objects(f);
             f.WriteBool(true);
             f.WriteInt32(250);
         },
         {0, 0, 1500, 0, 0},
         true,
         250},
        {"return hold missing",
         {0, 0, 1500, 10, 20},
         [&](ZoFolderFile& f) {
             objects(f);
             f.WriteBool(true);
         },
         {},
         false,
         0},
        {"timing cut short", {0, 0}, [&](ZoFolderFile& f) { objects(f); }, {}, false, 0},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        TeskCrossFadeEffect fade;
        fade.SetReturnHold(999, nullptr);
        WriteThenRead([&](ZoFolderFile& f) { WriteCrossFadeRecord(f, c.timing, c.rest); },
                      [&](ZoFolderFile& f) { fade.Read(f); });
        EXPECT_EQ(fade.GetTiming(), c.expectTiming);
        EXPECT_EQ(fade.GetReturnToStart(), c.expectReturn);
        EXPECT_EQ(fade.GetReturnHold(), c.expectHold);
        const bool complete = c.expectReturn;
        EXPECT_EQ(fade.GetReservedBlock().reservedFlags, complete ? 0x2222u : 0x1111u);
        EXPECT_EQ(dynamic_cast<TeskSolidObject*>(fade.GetEndObject()) != nullptr, complete);
    }
}

TEST(TeskEffectRecord, GridAndLightingPartsFallBackOnTheirOwn) {
    const auto writeGridAndLighting = [](ZoFolderFile& f, int settingsFields, int lightingFields,
                                         bool useLighting) {
        ZoFolderGuard threeD(f, true);
        {
            ZoFolderGuard grid(f, true);
            TeskWaveEffect().TeskEffect::Write(f);
            ZoFolderGuard settings(f, true);
            f.WriteBool(false);
            for (int i = 0; i < settingsFields - 1; ++i)
                f.WriteInt32(2);
        }
        for (int i = 0; i < lightingFields; ++i)
            f.WriteInt32(1);
        if (useLighting)
            f.WriteBool(false);
    };
    struct Case {
        const char* name;
        int settingsFields, lightingFields;
        bool writesUseLighting;
        bool gridRead, lightingRead, useLighting;
    };
    for (const Case& c : {Case{"complete", 5, 8, true, true, true, false},
                          Case{"older file without useLighting", 5, 8, false, true, true, true},
                          Case{"grid settings short", 3, 8, true, false, true, false},
                          Case{"lighting short", 5, 4, false, true, false, true}}) {
        SCOPED_TRACE(c.name);
        TeskWaveEffect wave;
        WriteThenRead(
            [&](ZoFolderFile& f) {
                ZoFolderGuard own(f, true);
                writeGridAndLighting(f, c.settingsFields, c.lightingFields, c.writesUseLighting);
                const TeskSolidObject object(0x00FFFF);
                WriteObject(f, &object);
                for (int32_t v : {20, 30, 40, 1})
                    f.WriteInt32(v);
            },
            [&](ZoFolderFile& f) { wave.Read(f); });
        EXPECT_EQ(wave.GetGridSettings().across == 2, c.gridRead);
        EXPECT_EQ(wave.GetGridSettings().chooseGrid, !c.gridRead);
        EXPECT_EQ(wave.GetLighting().brightness == 1, c.lightingRead);
        EXPECT_EQ(wave.GetLighting().useLighting, c.useLighting);
        // The wave's own fields follow the 3D folder and are read regardless.
        EXPECT_EQ(wave.GetWavelength(), 20);
        EXPECT_EQ(wave.GetWaveStyle(), TeskWaveEffect::kPulse);
    }
}

}  // namespace
