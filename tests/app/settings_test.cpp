#include <gtest/gtest.h>
#include <QStandardPaths>

#include "app/app_settings.h"
#include "app/app_test_support.h"
#include "app/recent_file_list.h"

namespace {

using AppTest::Key;
using AppTest::TempSettings;

TEST(RecentFileList, KeepsTheNewestEntriesFirstWithoutDuplicates) {
    struct Case {
        const char* name;
        std::vector<ZoString> added;
        std::vector<ZoString> expected;
    };
    const Case cases[] = {
        {"five opens keep the last four", {"/a", "/b", "/c", "/d", "/e"}, {"/e", "/d", "/c", "/b"}},
        {"reopening moves to the top", {"/a", "/b", "/c", "/a"}, {"/a", "/c", "/b"}},
        {"names differing in case stay apart", {"/a.vmb", "/A.vmb"}, {"/A.vmb", "/a.vmb"}},
    };
    for (const Case& c : cases) {
        TempSettings settings;
        TeskRecentFileList list(settings.Get());
        list.Load();
        for (const ZoString& path : c.added)
            list.Add(path);
        EXPECT_EQ(list.GetEntries(), c.expected) << c.name;

        TeskRecentFileList reread(settings.Get());
        reread.Load();
        EXPECT_EQ(reread.GetEntries(), c.expected) << c.name << " after reading back";
    }
}

TEST(RecentFileList, HonoursAStoredLimitAndDeletesUnusedSlots) {
    TempSettings settings;
    settings.Get().setValue(Key("Recent Files", "Number"), 2);
    settings.Get().setValue(Key("Recent Files", "Recent File3"), "/stale");
    TeskRecentFileList list(settings.Get());
    list.Load();
    EXPECT_EQ(list.GetMax(), 2);
    list.Add("/a");
    list.Add("/b");
    list.Add("/c");
    EXPECT_EQ(list.GetEntries(), (std::vector<ZoString>{"/c", "/b"}));
    EXPECT_EQ(settings.Get().value(Key("Recent Files", "Recent File0")).toString(), "/c");
    EXPECT_FALSE(settings.Get().contains(Key("Recent Files", "Recent File2")));
}

TEST(AppSettings, WindowPlacementAndFoldersRoundTripAndReset) {
    TempSettings settings;
    const TeskWindowPlacement fresh =
        TeskReadWindowPlacement(settings.Get(), kTeskMainWindowSection);
    EXPECT_FALSE(fresh.HasGeometry());
    EXPECT_EQ(TeskReadDialogFolder(settings.Get(), kTeskOpenFolderValue),
              QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation).toStdString());

    TeskWriteWindowPlacement(settings.Get(), kTeskMainWindowSection, {10, 20, 900, 600, 300});
    TeskWriteDialogFolder(settings.Get(), kTeskSaveAsFolderValue, "/projects");
    const TeskWindowPlacement stored =
        TeskReadWindowPlacement(settings.Get(), kTeskMainWindowSection);
    EXPECT_TRUE(stored.HasGeometry());
    EXPECT_EQ(stored.x, 10);
    EXPECT_EQ(stored.height, 600);
    EXPECT_EQ(stored.divider, 300);
    EXPECT_EQ(settings.Get().value(Key("Main Window Settings", "Window x pos")).toInt(), 10);
    EXPECT_EQ(TeskReadDialogFolder(settings.Get(), kTeskSaveAsFolderValue), "/projects");

    TeskResetSettings(settings.Get());
    EXPECT_FALSE(TeskReadWindowPlacement(settings.Get(), kTeskMainWindowSection).HasGeometry());
    EXPECT_TRUE(settings.Get().allKeys().isEmpty());
}

}  // namespace
