#include <gtest/gtest.h>

#include <sys/wait.h>
#include <unistd.h>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <thread>

#include "platform/compiled_file.h"
#include "platform/temp_folder.h"
#include "platform/zo_exception.h"

namespace {

namespace fs = std::filesystem;

constexpr uint32_t kTag = ZoFourCC("TSK1");
constexpr uint32_t kVersion = 0x01000000;

// An independent bitwise CRC-32 (the zlib polynomial), so crafted files do not
// borrow the checksum from the code under test.
uint32_t ReferenceCrc32(std::string_view bytes) {
    uint32_t crc = 0xFFFFFFFFu;
    for (const char c : bytes) {
        crc ^= static_cast<uint8_t>(c);
        for (int bit = 0; bit < 8; ++bit)
            crc = (crc >> 1) ^ (0xEDB88320u & (0u - (crc & 1u)));
    }
    return ~crc;
}

std::string U32(uint32_t value) {
    std::string out;
    for (int shift = 0; shift < 32; shift += 8)
        out.push_back(static_cast<char>(value >> shift));
    return out;
}

// A whole container around `body`, with a correct length and checksum.
std::string Wrap(const std::string& body, uint32_t tag = kTag) {
    std::string out("ZoCF\r\n\x1a\n", 8);
    out += U32(1) + U32(tag) + U32(kVersion) + U32(static_cast<uint32_t>(body.size())) + body;
    return out + U32(ReferenceCrc32(out));
}

std::string FolderRecord(const std::string& data, uint32_t childCount,
                         std::optional<uint32_t> name = std::nullopt) {
    return std::string(1, name ? '\x01' : '\x00') + U32(name.value_or(0)) +
           U32(static_cast<uint32_t>(data.size())) + data + U32(childCount);
}

// The shape of a small project: a named identifier folder, a settings folder
// with a nested unnamed folder, and a list of unnamed folders.
ZoCompiledFile SampleFile() {
    ZoCompiledFile file(kTag, kVersion);
    EXPECT_TRUE(file.Open(true, true));
    {
        ZoFolderGuard id(file, 1u, true);
        file.WriteUInt32(0xBF954E1B);
    }
    {
        ZoFolderGuard settings(file, 2u, true);
        file.WriteInt32(-400);
        ZoFolderGuard publish(file, true);
        file.WriteString("movie.swf");
    }
    ZoFolderGuard list(file, 3u, true);
    for (int i = 0; i < 3; ++i) {
        ZoFolderGuard effect(file, true);
        file.WriteInt32(i);
    }
    return file;
}

TEST(CompiledFile, UnnamedFoldersReadBackInWritingOrderAndBytesRoundTrip) {
    auto written = SampleFile();
    const std::string bytes = written.ToBytes();
    auto file = ZoCompiledFile::FromBytes(bytes, kTag);
    EXPECT_EQ(file.GetVersionNumber(), kVersion);
    EXPECT_EQ(file.ToBytes(), bytes);
    {
        ZoFolderGuard list(file, 3u, false);
        for (int i = 0; i < 3; ++i) {
            ZoFolderGuard effect(file, false);
            EXPECT_EQ(file.ReadInt32(), i);
        }
        EXPECT_THROW(file.DescendFolder(nullptr, false, true), ZoFileNonFatalException);
    }
    // Named folders are found by name whatever order they are asked for in.
    {
        ZoFolderGuard settings(file, 2u, false);
        EXPECT_EQ(file.ReadInt32(), -400);
        ZoFolderGuard publish(file, false);
        ZoString location;
        file.ReadString(location);
        EXPECT_EQ(location, "movie.swf");
    }
    ZoFolderGuard id(file, 1u, false);
    EXPECT_EQ(file.ReadUInt32(), 0xBF954E1Bu);
}

TEST(CompiledFile, TypedValuesKeepTheirExactBytes) {
    ZoCompiledFile file(kTag, kVersion);
    ASSERT_TRUE(file.Open(true, true));
    const ZoGuid guid = *ZoGuid::Parse("{BF954E1B-8A79-4008-BD31-F81D15884DC2}");
    const std::string withNul("a\0b", 3);
    file.WriteInt32(-2);
    file.WriteUInt16(0xBEEF);
    file.WriteBool(true);
    file.WriteDouble(-0.1);
    file.WriteGuid(guid);
    file.WriteString(withNul);
    file.Close();

    ASSERT_TRUE(file.Open(false, false));
    ASSERT_EQ(file.GetFolderSize(), 4u + 2 + 1 + 8 + 16 + 4 + 3);
    uint8_t head[7];
    file.ReadData(head, sizeof head);
    const uint8_t expected[7] = {0xFE, 0xFF, 0xFF, 0xFF, 0xEF, 0xBE, 0x01};
    EXPECT_EQ(std::memcmp(head, expected, sizeof head), 0);
    EXPECT_EQ(file.ReadDouble(), -0.1);
    EXPECT_EQ(file.ReadGuid(), guid);
    ZoString text;
    file.ReadString(text);
    EXPECT_EQ(text, withNul);
    file.Seek(4, SEEK_SET);
    EXPECT_EQ(file.ReadUInt16(), 0xBEEF);
    file.Seek(-3, SEEK_END);
    EXPECT_EQ(file.ReadBool(), true);  // 'a'
    EXPECT_THROW(file.Seek(1, SEEK_END), ZoFileNonFatalException);
}

TEST(CompiledFile, ShortReadsThrowSoftlyAndConsumeNothing) {
    ZoCompiledFile file(kTag, kVersion);
    ASSERT_TRUE(file.Open(true, true));
    file.WriteUInt16(7);
    file.WriteUInt32(0xFFFFFFFF);  // a string count far beyond the folder
    file.Close();
    ASSERT_TRUE(file.Open(false, false));
    EXPECT_THROW(file.ReadDouble(), ZoFileNonFatalException);
    EXPECT_EQ(file.ReadUInt16(), 7);
    ZoString text = "kept";
    EXPECT_THROW(file.ReadString(text), ZoFileNonFatalException);
    EXPECT_EQ(text, "kept");
    uint8_t rest[8];
    uint32_t got = 99;
    file.ReadData(rest, sizeof rest, got);
    EXPECT_EQ(got, 0u);
}

TEST(CompiledFile, MissingFolders) {
    auto file = ZoCompiledFile::FromBytes(SampleFile().ToBytes(), kTag);
    uint32_t absent = 9;
    EXPECT_THROW(file.DescendFolder(&absent, false, true), ZoFileNonFatalException);
    EXPECT_EQ(file.GetDepth(), 0u);

    // Without mustExist the reader lands in an empty folder, and leaving it
    // returns to the parent at the same position.
    ZoFolderGuard list(file, 3u, false);
    {
        ZoFolderGuard empty(file, absent, false, false);
        EXPECT_EQ(file.GetFolderSize(), 0u);
        EXPECT_THROW(file.ReadInt32(), ZoFileNonFatalException);
    }
    ZoFolderGuard first(file, false);
    EXPECT_EQ(file.ReadInt32(), 0);
}

TEST(CompiledFile, NamedFoldersAreListedAndReenteredWhenWritten) {
    ZoCompiledFile file(kTag, kVersion);
    ASSERT_TRUE(file.Open(true, true));
    for (const uint32_t name : {5u, 2u, 5u}) {
        ZoFolderGuard folder(file, name, true);
        file.WriteBool(true);
    }
    { ZoFolderGuard unnamed(file, true); }
    file.Close();
    ASSERT_TRUE(file.Open(false, false));
    std::vector<uint32_t> names;
    for (uint32_t name = 0, more = file.GetFirstFolderName(name); more;
         more = file.GetNextFolderName(name)) {
        names.push_back(name);
    }
    EXPECT_EQ(names, (std::vector<uint32_t>{5, 2}));
    EXPECT_TRUE(file.IsFolderAvailable(2));
    EXPECT_FALSE(file.IsFolderAvailable(3));
    ZoFolderGuard five(file, 5u, false);
    EXPECT_EQ(file.GetFolderSize(), 2u);
}

TEST(CompiledFile, GuardAscendsWhenAReadThrowsAndNeverThrowsItself) {
    auto file = ZoCompiledFile::FromBytes(SampleFile().ToBytes(), kTag);
    try {
        ZoFolderGuard list(file, 3u, false);
        ZoFolderGuard effect(file, false);
        file.ReadDouble();
    } catch (const ZoFileNonFatalException&) {
    }
    EXPECT_EQ(file.GetDepth(), 0u);
    // A guard whose folder was left behind its back must not throw on exit.
    EXPECT_NO_THROW({
        ZoFolderGuard list(file, 3u, false);
        file.Ascend();
    });
    EXPECT_THROW(file.Ascend(), ZoException);
}

TEST(CompiledFile, EveryTruncationAndBitFlipIsRejected) {
    const std::string bytes = SampleFile().ToBytes();
    for (size_t length = 0; length < bytes.size(); ++length)
        EXPECT_THROW(ZoCompiledFile::FromBytes(bytes.substr(0, length), kTag), ZoException)
            << "truncated to " << length;
    for (size_t bit = 0; bit < bytes.size() * 8; ++bit) {
        std::string flipped = bytes;
        flipped[bit / 8] = static_cast<char>(flipped[bit / 8] ^ (1 << (bit % 8)));
        EXPECT_THROW(ZoCompiledFile::FromBytes(flipped, kTag), ZoException) << "bit " << bit;
    }
    EXPECT_THROW(ZoCompiledFile::FromBytes(bytes + '\0', kTag), ZoException);
}

TEST(CompiledFile, HostileButWellChecksummedFilesAreRejected) {
    std::string deep;
    for (uint32_t i = 0; i <= ZoCompiledFileLimits::kMaxDepth + 1; ++i)
        deep += FolderRecord("", 1);
    const struct {
        const char* what;
        std::string bytes;
        const char* message;
    } cases[] = {
        {"other type tag", Wrap(FolderRecord("", 0), ZoFourCC("RIFF")), "'RIFF' data, not 'TSK1'"},
        {"not a container", std::string(64, 'x'), "not a Vimbo project file"},
        {"child count beyond the data", Wrap(FolderRecord("", 0xFFFFFFFF)), "more children"},
        {"stream beyond the data", Wrap(std::string(1, '\0') + U32(0) + U32(0x7FFFFFFF) + U32(0)),
         "past the end"},
        {"nesting too deep", Wrap(deep), "too deeply"},
        {"named root", Wrap(FolderRecord("", 0, 4)), "root folder"},
        {"unnamed folder with a name", Wrap(std::string(1, '\0') + U32(3) + U32(0) + U32(0)),
         "carries a name"},
        {"duplicate names",
         Wrap(FolderRecord("", 2) + FolderRecord("", 0, 7) + FolderRecord("", 0, 7)),
         "share a name"},
        {"unknown folder kind", Wrap(std::string(1, '\x02') + U32(0) + U32(0) + U32(0)),
         "folder kind"},
        {"bytes after the tree", Wrap(FolderRecord("", 0) + "zz"), "after the last folder"},
    };
    for (const auto& c : cases) {
        try {
            ZoCompiledFile::FromBytes(c.bytes, kTag);
            ADD_FAILURE() << c.what << " was accepted";
        } catch (const ZoException& error) {
            EXPECT_NE(std::string(error.what()).find(c.message), std::string::npos)
                << c.what << ": " << error.what();
        }
    }
    // The same crafting with a sound tree is accepted, so the cases above fail
    // for their own reason and not because of the wrapping.
    auto sound = ZoCompiledFile::FromBytes(
        Wrap(FolderRecord("ab", 2) + FolderRecord("", 0, 7) + FolderRecord("c", 0)), kTag);
    EXPECT_TRUE(sound.IsFolderAvailable(7));
    EXPECT_EQ(sound.GetFolderSize(), 2u);
}

TEST(CompiledFile, WritingBeyondTheDepthLimitThrows) {
    ZoCompiledFile file(kTag, kVersion);
    ASSERT_TRUE(file.Open(true, true));
    for (uint32_t i = 0; i < ZoCompiledFileLimits::kMaxDepth; ++i)
        file.DescendFolder(nullptr, true, false);
    EXPECT_THROW(file.DescendFolder(nullptr, true, false), ZoException);
    // What could be written can be read back.
    EXPECT_NO_THROW(ZoCompiledFile::FromBytes(file.ToBytes(), kTag));
}

class CompiledFileOnDisk : public TempFolderTest {
  protected:
    void SaveSample(uint32_t payloadBytes) {
        ZoCompiledFile file(target_, kTag, kVersion);
        ASSERT_TRUE(file.Open(true, true));
        file.WriteData(std::string(payloadBytes, 'p').data(), payloadBytes);
        file.Close();
    }

    const fs::path target_ = folder_ / "movie.vmb";
};

TEST_F(CompiledFileOnDisk, SavesAndLoadsThroughTheFile) {
    ZoCompiledFile missing(target_, kTag, kVersion);
    EXPECT_FALSE(missing.Open(false, false));
    EXPECT_FALSE(missing.Open(true, false));
    SaveSample(10);
    ZoCompiledFile file(target_, kTag, kVersion);
    ASSERT_TRUE(file.Open(false, false));
    EXPECT_EQ(file.GetFolderSize(), 10u);
    EXPECT_EQ(file.ToBytes(), ReadAll(target_));
    ZoCompiledFile other(target_, ZoFourCC("XXXX"), kVersion);
    EXPECT_THROW(other.Open(false, false), ZoException);
}

TEST_F(CompiledFileOnDisk, ASaveKilledMidWriteLeavesTheOldFileIntact) {
    SaveSample(16);
    const std::string old = ReadAll(target_);
    // Kill points from "as soon as the temporary exists" to well into the write.
    for (const int delayMicroseconds : {0, 1000, 5000}) {
        const pid_t child = fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            SaveSample(16u << 20);
            _exit(0);
        }
        // The temporary is the folder's second file.
        while (FileCount() < 2 && waitpid(child, nullptr, WNOHANG) == 0)
            std::this_thread::yield();
        std::this_thread::sleep_for(std::chrono::microseconds(delayMicroseconds));
        kill(child, SIGKILL);
        int status = 0;
        waitpid(child, &status, 0);
        ASSERT_TRUE(WIFSIGNALED(status)) << "the child finished before it was killed";
        EXPECT_EQ(ReadAll(target_), old) << "killed after " << delayMicroseconds << " us";
        for (const auto& entry : fs::directory_iterator(folder_)) {
            if (entry.path() != target_)
                fs::remove(entry.path());
        }
    }
}

}  // namespace
