#include <gtest/gtest.h>

#include "platform/atomic_file.h"
#include "platform/temp_folder.h"
#include "platform/zo_exception.h"

namespace {

namespace fs = std::filesystem;

using AtomicFileTest = TempFolderTest;

TEST_F(AtomicFileTest, CommitReplacesAndLeavesNoTemporary) {
    const fs::path target = folder_ / "movie.swf";
    ZoWriteFileAtomically(target, "old");
    ZoWriteFileAtomically(target, "new contents");
    EXPECT_EQ(ReadAll(target), "new contents");
    EXPECT_EQ(FileCount(), 1u);
}

TEST_F(AtomicFileTest, AbandonedWriteLeavesTheOldFileUntouched) {
    const fs::path target = folder_ / "movie.swf";
    ZoWriteFileAtomically(target, "old");
    {
        ZoAtomicFile file(target);
        file.Write("half of a new");
    }
    EXPECT_EQ(ReadAll(target), "old");
    EXPECT_EQ(FileCount(), 1u);
}

TEST_F(AtomicFileTest, BadTargetsThrowAndCreateNothing) {
    EXPECT_THROW(ZoAtomicFile(folder_ / "missing" / "a.swf"), ZoException);
    EXPECT_THROW(ZoAtomicFile{folder_}, ZoException);
    EXPECT_EQ(FileCount(), 0u);
}

TEST(TempDirectory, NamesAreFreshAndInsideTheProcessFolder) {
    const fs::path a = ZoMakeTempFileName(".swf");
    const fs::path b = ZoMakeTempFileName(".swf");
    EXPECT_NE(a, b);
    EXPECT_EQ(a.parent_path(), ZoProcessTempDirectory());
    EXPECT_EQ(a.extension(), ".swf");
    EXPECT_TRUE(fs::is_directory(ZoProcessTempDirectory()));
}

}  // namespace
