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
        {K(K::kById, "", 7), K(K::kById, "other name", 7), true},
        {K(K::kById, "", 7), K(K::kById, "", 8), false},
        {K(K::kByName, "x", 1), K(K::kByName, "x", 2), true},
        {K(K::kByNameAndId, "x", 1), K(K::kByNameAndId, "x", 2), false},
        {K(K::kByNameAndId, "x", 1), K(K::kByName, "x", 1), false},
        {K(), K(K::kEmpty, "x", 3), true},
    };
    for (const auto& c : cases)
        EXPECT_EQ(c.a == c.b, c.equal) << c.a.GetName() << " / " << c.b.GetName();
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
        {"<PreviewImage2>", "/home/u/project", "<PreviewImage2>"},
        {"/home/u/project/a.png", "", "/home/u/project/a.png"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(TeskRelativeImagePath(c.path, c.folder), c.stored) << c.path;
    EXPECT_EQ(TeskFullImagePath("pics/a.png", "/home/u/project"), "/home/u/project/pics/a.png");
    EXPECT_EQ(TeskFullImagePath("/abs/a.png", "/p"), "/abs/a.png");
    EXPECT_EQ(TeskFullImagePath("<Anything>", "/p"), "<Anything>");
    EXPECT_EQ(TeskFullImagePath("", "/p"), "");
}

}  // namespace
