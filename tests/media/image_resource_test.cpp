#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <thread>

#include "media/image_path.h"
#include "media/media_test_files.h"
#include "media/resource_manager.h"
#include "platform/temp_folder.h"

namespace {

using MediaTestFiles::SolidPng;
using ZoFlash::ZoSWFImage;

using ImageResource = TempFolderTest;
using ResourceManager = TempFolderTest;

ZoAutoInterface2<TeskImageResource> ResourceOf(TeskResourceManager& manager,
                                               const std::filesystem::path& path) {
    return manager.GetImageResource(ZoResourceKey(path.string()));
}

TEST_F(ImageResource, BuiltInPicturesNeedNoFileAndNeverChange) {
    TeskResourceManager manager;
    auto picture = [&](const char* name) {
        auto resource = manager.GetImageResource(ZoResourceKey(name));
        EXPECT_FALSE(resource->CheckForChange());
        return resource->GetImage();
    };
    const auto first = picture("<PreviewImage1>"), second = picture("<PreviewImage2>");
    ASSERT_TRUE(first && second);
    EXPECT_EQ(first->GetWidth(), 182);
    EXPECT_EQ(first->GetHeight(), 202);
    // Every built-in name but the second picture's shows the first picture.
    EXPECT_EQ(&picture("<Other>")->Picture(), &first->Picture());
    EXPECT_NE(&second->Picture(), &first->Picture());
}

TEST_F(ImageResource, NoticesChangedMissingAndReappearingFiles) {
    TeskResourceManager manager;
    const auto path = folder_ / "a.png";
    auto resource = ResourceOf(manager, path);
    EXPECT_FALSE(resource->GetImage());
    EXPECT_FALSE(resource->CheckForChange());

    Write(path, SolidPng(4, 3, 0x0000FF));
    EXPECT_TRUE(resource->CheckForChange());
    auto picture = resource->GetImage();
    ASSERT_TRUE(picture);
    EXPECT_EQ(resource->GetImage(), picture) << "loaded once";
    EXPECT_FALSE(resource->CheckForChange());

    // Same size, newer time: a rewrite within the same second still counts.
    Write(path, SolidPng(4, 3, 0x00FF00));
    std::filesystem::last_write_time(
        path, std::filesystem::last_write_time(path) + std::chrono::milliseconds(1));
    EXPECT_TRUE(resource->CheckForChange());
    EXPECT_EQ(resource->GetImage()->Picture().PixelColour(1, 1), 0x00FF00u);

    std::filesystem::remove(path);
    EXPECT_TRUE(resource->CheckForChange());
    EXPECT_FALSE(resource->GetImage());
}

TEST_F(ImageResource, AFailedLoadSaysWhyAndIsTriedAgainOnlyOnceTheFileChanges) {
    TeskResourceManager manager;
    const auto path = folder_ / "a.png";
    const std::vector<uint8_t> good = SolidPng(4, 3, 0x0000FF);
    std::vector<uint8_t> damaged = good;
    std::fill(damaged.begin() + 33, damaged.end(), uint8_t{0});  // all but the header
    Write(path, damaged);
    auto resource = ResourceOf(manager, path);
    EXPECT_FALSE(resource->GetImage());
    EXPECT_NE(resource->GetLoadError().find("corrupt or truncated"), std::string::npos)
        << resource->GetLoadError();

    // Same size and time: taken for the same damaged file, not decoded again.
    const auto time = std::filesystem::last_write_time(path);
    Write(path, good);
    std::filesystem::last_write_time(path, time);
    EXPECT_FALSE(resource->GetImage());
    std::filesystem::last_write_time(path, time + std::chrono::milliseconds(1));
    ASSERT_TRUE(resource->GetImage());
    EXPECT_EQ(resource->GetLoadError(), "");

    std::filesystem::resize_file(path, 0);
    ASSERT_TRUE(resource->CheckForChange());
    EXPECT_FALSE(resource->GetImage());
    EXPECT_NE(resource->GetLoadError(), "");
}

TEST_F(ImageResource, SWFImagesAreKeptPerOutputTypeColourAndTolerance) {
    TeskResourceManager manager;
    const auto path = folder_ / "a.png";
    Write(path, SolidPng(2, 2, 0));
    auto resource = ResourceOf(manager, path);
    auto base = resource->GetSWFImage(ZoSWFImage::kOutputLossless, 0x0000FF, 10);
    ASSERT_TRUE(base);
    EXPECT_EQ(resource->GetSWFImage(ZoSWFImage::kOutputLossless, 0x0000FF, 10), base);
    EXPECT_NE(resource->GetSWFImage(ZoSWFImage::kOutputLossless, 0x0000FF, 11), base);
    EXPECT_NE(resource->GetSWFImage(ZoSWFImage::kOutputLossless, kZoNoColour, 10), base);
    EXPECT_NE(resource->GetSWFImage(ZoSWFImage::kOutputJPEG, 0x0000FF, 10), base);

    // A change drops the encodings with the picture.
    Write(path, SolidPng(3, 2, 0));
    ASSERT_TRUE(resource->CheckForChange());
    auto fresh = resource->GetSWFImage(ZoSWFImage::kOutputLossless, 0x0000FF, 10);
    ASSERT_TRUE(fresh);
    int width = 0, height = 0;
    fresh->GetSize(width, height);
    EXPECT_EQ(width, 3);
}

TEST_F(ResourceManager, OneResourcePerFullPath) {
    TeskResourceManager manager;
    const auto path = folder_ / "a.png";
    TeskSetProjectFolder(path.parent_path().string());
    auto relative = manager.GetImageResource(ZoResourceKey(path.filename().string()));
    TeskSetProjectFolder("");
    EXPECT_EQ(relative, ResourceOf(manager, path));
    EXPECT_EQ(manager.GetResourceCount(), 1u);
}

TEST_F(ResourceManager, TrimmingEvictsTheLeastRecentlyUsedResourcesNobodyHolds) {
    TeskResourceManager manager;
    std::vector<std::filesystem::path> paths;
    for (int i = 0; i < 4; ++i) {
        paths.push_back(folder_ / (std::to_string(i) + ".png"));
        Write(paths.back(), SolidPng(64, 64, 0));  // 16 KiB of pixels each
        ResourceOf(manager, paths.back())->GetImage();
        // Uses are told apart by millisecond ticks.
        std::this_thread::sleep_for(std::chrono::milliseconds(3));
    }
    auto held = ResourceOf(manager, paths[0]);  // the oldest, but in use
    ResourceOf(manager, paths[1]);              // used again: now the newest
    manager.SetMemoryBudget(2 * 64 * 64 * 4 + 1024);
    manager.TrimCache();
    EXPECT_EQ(manager.GetResourceCount(), 2u);
    EXPECT_TRUE(manager.FindResource(ZoResourceKey(paths[0].string()), true));
    EXPECT_TRUE(manager.FindResource(ZoResourceKey(paths[1].string()), true));
}

class RecordingTarget : public ZoEditor::ZoEditUpdateTarget {
  public:
    void OnUpdate(ZoEditor::ZoUpdateHintList& hints) override {
        bool reversed = false;
        for (int i = 0; i < hints.GetCount(); ++i)
            if (auto* hint = dynamic_cast<ZoResourceChangedUpdateHint*>(hints.GetHint(i, reversed)))
                changed.push_back(hint->GetResource()->GetKey().GetName());
    }
    std::vector<ZoString> changed;
};

TEST_F(ResourceManager, IdleChecksReportEachChangeToTheRegisteredTargets) {
    TeskResourceManager manager;
    const auto a = folder_ / "a.png", b = folder_ / "b.png";
    for (const auto& path : {a, b}) {
        Write(path, SolidPng(2, 2, 0));
        ResourceOf(manager, path)->GetImage();
    }
    RecordingTarget window, closed;
    manager.AddTarget(&window);
    manager.AddTarget(&closed);
    manager.RemoveTarget(&closed);

    Write(b, SolidPng(3, 3, 0));
    manager.CheckNextResource();  // a: unchanged
    EXPECT_TRUE(window.changed.empty());
    manager.CheckNextResource();  // b
    EXPECT_EQ(window.changed, std::vector<ZoString>{b.string()});
    // The round has ended; the next one waits for its time.
    Write(a, SolidPng(3, 3, 0));
    manager.CheckNextResource();
    EXPECT_EQ(window.changed.size(), 1u);
    EXPECT_TRUE(closed.changed.empty());
}

}  // namespace
