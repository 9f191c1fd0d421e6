#include <gtest/gtest.h>

#include "media/image_path.h"
#include "media/resource_key.h"

namespace {

TEST(ResourceKey, EqualityFollowsTheKind) {
    using K = ZoResourceKey;
    struct Case {
        K a, b;
        bool equal;
    } cases[] = {
        {K("a.png"), K("a.png"), true},
        {K("a.png"), K("A.png"), false},
        {K("a.png"), K("a.png "), false},
        {K(K::kById, "", 7), K(K::kById, "other name", 7), true},
        {K(K::kById, "", 7), K(K::kById, "", 8), false},
        {K(K::kByName, "x", 1), K(K::kByName, "x", 2), true},
        {K(K::kByNameAndId, "x", 1), K(K::kByNameAndId, "x", 2), false},
        {K(K::kByNameAndId, "x", 1), K(K::kByNameAndId, "y", 1), false},
        {K(K::kByNameAndId, "x", 1), K(K::kByName, "x", 1), false},
        {K(), K(), true},
        {K(), K(K::kEmpty, "x", 3), true},
    };
    for (const auto& c : cases)
        EXPECT_EQ(c.a == c.b, c.equal) << c.a.GetName() << " / " << c.b.GetName();
}

TEST(ResourceKey, EmptyWhenTheKindLacksItsParts) {
    using K = ZoResourceKey;
    EXPECT_TRUE(K().IsEmpty());
    EXPECT_TRUE(K(4, "x", 1).IsEmpty());
    EXPECT_TRUE(K(K::kByName, "", 1).IsEmpty());
    EXPECT_TRUE(K(K::kById, "x", K::kNoId).IsEmpty());
    EXPECT_TRUE(K(K::kByNameAndId, "x", K::kNoId).IsEmpty());
    EXPECT_TRUE(K(K::kByNameAndId, "", 3).IsEmpty());
    EXPECT_FALSE(K("x").IsEmpty());
    EXPECT_FALSE(K(K::kById, "", 0).IsEmpty());
}

TEST(ResourceKey, HashDoublesAndAddsEachByte) {
    using K = ZoResourceKey;
    EXPECT_EQ(K("ab").Hash(), 'a' * 2u + 'b');
    // Id bytes in memory order (little-endian): 1, 0, 0, 0 -> 1 * 8.
    EXPECT_EQ(K(K::kById, "", 1).Hash(), 8u);
    EXPECT_EQ(K(K::kByNameAndId, "a", 1).Hash(), 'a' * 16u + 8u);
    // Bytes above 127 count as unsigned.
    EXPECT_EQ(K("\xff").Hash(), 255u);
    // Long names wrap modulo 2^32 instead of overflowing.
    EXPECT_EQ(K(std::string(40, '\x01')).Hash(), 0xFFFFFFFFu);
}

TEST(ImagePath, StoredNamesAndFullPaths) {
    struct Case {
        const char* path;
        const char* folder;
        const char* stored;
    } cases[] = {
        {"/home/u/project/pics/a.png", "/home/u/project", "pics/a.png"},
        {"/home/u/project/pics/a.png", "/home/u/project/", "pics/a.png"},
        {"/HOME/U/Project/a.png", "/home/u/project", "a.png"},
        {"/home/u/projects/a.png", "/home/u/project", "/home/u/projects/a.png"},
        {"/elsewhere/a.png", "/home/u/project", "/elsewhere/a.png"},
        {"<PreviewImage2>", "/home/u/project", "<PreviewImage2>"},
        {"/home/u/project/a.png", "", "/home/u/project/a.png"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.path);
        const ZoString stored = TeskRelativeImagePath(c.path, c.folder);
        EXPECT_EQ(stored, c.stored);
        if (*c.folder && ZoToLowerAscii(c.path) == c.path) {
            EXPECT_EQ(TeskFullImagePath(stored, c.folder), c.path);
        }
    }
    EXPECT_EQ(TeskFullImagePath("", "/p"), "");
    EXPECT_EQ(TeskFullImagePath("<Anything>", "/p"), "<Anything>");
    EXPECT_EQ(TeskFullImagePath("a.png", ""), "a.png");
}

}  // namespace
