#include <gtest/gtest.h>

#include <filesystem>
#include <thread>

#include "media/image_path.h"
#include "media/media_test_files.h"
#include "media/resource_manager.h"

namespace {

using MediaTestFiles::NewName;
using MediaTestFiles::SolidPng;
using MediaTestFiles::WriteFile;
using ZoFlash::ZoSWFImage;

ZoAutoInterface2<TeskImageResource> ResourceOf(TeskResourceManager& manager,
                                               const std::filesystem::path& path) {
    return manager.GetImageResource(ZoResourceKey(path.string()));
}

TEST(ImageResource, BuiltInPicturesNeedNoFileAndNeverChange) {
    TeskResourceManager manager;
    for (const char* name : {"<PreviewImage1>", "<PreviewImage2>", "<Other>"}) {
        SCOPED_TRACE(name);
        auto resource = manager.GetImageResource(ZoResourceKey(name));
        auto picture = resource->GetImage();
        ASSERT_TRUE(picture);
        EXPECT_EQ(picture->GetWidth(), 182);
        EXPECT_EQ(picture->GetHeight(), 202);
        EXPECT_FALSE(resource->CheckForChange());
    }
    // Every built-in name but the second picture's shows the first picture.
    auto first = manager.GetImageResource(ZoResourceKey("<PreviewImage1>"))->GetImage();
    auto other = manager.GetImageResource(ZoResourceKey("<Other>"))->GetImage();
    auto second = manager.GetImageResource(ZoResourceKey("<PreviewImage2>"))->GetImage();
    EXPECT_EQ(&first->Picture(), &other->Picture());
    EXPECT_NE(&first->Picture(), &second->Picture());
}

TEST(ImageResource, LoadsOnceAndNoticesAChangedFile) {
    TeskResourceManager manager;
    const auto path = NewName(".png");
    WriteFile(path, SolidPng(4, 3, 0x0000FF, 0x0000FF));
    auto resource = ResourceOf(manager, path);
    auto picture = resource->GetImage();
    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->GetWidth(), 4);
    EXPECT_EQ(resource->GetImage(), picture);
    EXPECT_FALSE(resource->CheckForChange());

    WriteFile(path, SolidPng(5, 2, 0x0000FF, 0x0000FF));
    EXPECT_TRUE(resource->CheckForChange());
    EXPECT_FALSE(resource->CheckForChange());
    picture = resource->GetImage();
    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->GetWidth(), 5);

    // Same size, newer time: a rewrite within the same second still counts.
    WriteFile(path, SolidPng(5, 2, 0x00FF00, 0x00FF00));
    std::filesystem::last_write_time(
        path, std::filesystem::last_write_time(path) + std::chrono::milliseconds(1));
    EXPECT_TRUE(resource->CheckForChange());
    EXPECT_EQ(resource->GetImage()->Picture().PixelColour(1, 1), 0x00FF00u);
}

TEST(ImageResource, AMissingFileIsRetriedAndNoticedWhenItAppears) {
    TeskResourceManager manager;
    const auto path = NewName(".png");
    auto resource = ResourceOf(manager, path);
    EXPECT_FALSE(resource->GetImage());
    EXPECT_FALSE(resource->GetSWFImage(ZoSWFImage::kOutputLossless, kZoNoColour, 0));
    EXPECT_FALSE(resource->CheckForChange());

    WriteFile(path, SolidPng(2, 2, 0, 0));
    EXPECT_TRUE(resource->CheckForChange());
    ASSERT_TRUE(resource->GetImage());

    std::filesystem::remove(path);
    EXPECT_TRUE(resource->CheckForChange());
    EXPECT_FALSE(resource->GetImage());
}

TEST(ImageResource, AFileThatIsNoPictureGivesNothingButIsWatched) {
    TeskResourceManager manager;
    const auto path = NewName(".png");
    WriteFile(path, {'n', 'o', 't', ' ', 'a', ' ', 'p', 'n', 'g'});
    auto resource = ResourceOf(manager, path);
    EXPECT_FALSE(resource->GetImage());
    WriteFile(path, SolidPng(3, 3, 0, 0));
    EXPECT_TRUE(resource->CheckForChange());
    EXPECT_TRUE(resource->GetImage());
}

TEST(ImageResource, SWFImagesAreKeptPerOutputTypeColourAndTolerance) {
    TeskResourceManager manager;
    const auto path = NewName(".png");
    WriteFile(path, SolidPng(2, 2, 0, 0));
    auto resource = ResourceOf(manager, path);
    auto base = resource->GetSWFImage(ZoSWFImage::kOutputLossless, 0x0000FF, 10);
    ASSERT_TRUE(base);
    EXPECT_EQ(resource->GetSWFImage(ZoSWFImage::kOutputLossless, 0x0000FF, 10), base);
    EXPECT_NE(resource->GetSWFImage(ZoSWFImage::kOutputLossless, 0x0000FF, 11), base);
    EXPECT_NE(resource->GetSWFImage(ZoSWFImage::kOutputLossless, 0x0000FE, 10), base);
    EXPECT_NE(resource->GetSWFImage(ZoSWFImage::kOutputLossless, kZoNoColour, 10), base);
    EXPECT_NE(resource->GetSWFImage(ZoSWFImage::kOutputJPEG, 0x0000FF, 10), base);

    // A change drops the encodings with the picture.
    WriteFile(path, SolidPng(3, 2, 0, 0));
    ASSERT_TRUE(resource->CheckForChange());
    auto fresh = resource->GetSWFImage(ZoSWFImage::kOutputLossless, 0x0000FF, 10);
    ASSERT_TRUE(fresh);
    EXPECT_NE(fresh, base);
    int width = 0, height = 0;
    fresh->GetSize(width, height);
    EXPECT_EQ(width, 3);
}

TEST(ResourceManager, OneResourcePerFullPath) {
    TeskResourceManager manager;
    const auto path = NewName(".png");
    const ZoString folder = path.parent_path().string();
    TeskSetProjectFolder(folder);
    auto relative = manager.GetImageResource(ZoResourceKey(path.filename().string()));
    auto absolute = manager.GetImageResource(ZoResourceKey(path.string()));
    TeskSetProjectFolder("");
    EXPECT_EQ(relative, absolute);
    EXPECT_EQ(relative->GetKey().GetName(), path.string());
    EXPECT_EQ(manager.GetResourceCount(), 1u);
    EXPECT_EQ(manager.FindResource(ZoResourceKey(path.string())).Get(), relative.Get());
    EXPECT_FALSE(manager.FindResource(ZoResourceKey(path.filename().string())));
}

TEST(ResourceManager, TrimmingEvictsTheLeastRecentlyUsedResourcesNobodyHolds) {
    TeskResourceManager manager;
    std::vector<std::filesystem::path> paths;
    for (int i = 0; i < 4; ++i) {
        paths.push_back(NewName(".png"));
        WriteFile(paths.back(), SolidPng(64, 64, 0, 0));  // 16 KiB of pixels each
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

    // Nothing is evicted while everything fits.
    manager.SetMemoryBudget(ZoResourceManager::kDefaultMemoryBudget);
    ResourceOf(manager, paths[2]);
    manager.TrimCache();
    EXPECT_EQ(manager.GetResourceCount(), 3u);
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

TEST(ResourceManager, IdleChecksReportEachChangeToTheRegisteredTargets) {
    TeskResourceManager manager;
    const auto a = NewName(".png"), b = NewName(".png");
    WriteFile(a, SolidPng(2, 2, 0, 0));
    WriteFile(b, SolidPng(2, 2, 0, 0));
    ResourceOf(manager, a)->GetImage();
    ResourceOf(manager, b)->GetImage();
    RecordingTarget window, closed;
    manager.AddTarget(&window);
    manager.AddTarget(&closed);
    manager.RemoveTarget(&closed);

    WriteFile(b, SolidPng(3, 3, 0, 0));
    manager.CheckNextResource();  // a: unchanged
    EXPECT_TRUE(window.changed.empty());
    manager.CheckNextResource();  // b
    EXPECT_EQ(window.changed, std::vector<ZoString>{b.string()});
    // The round has ended; the next one waits for its time.
    WriteFile(a, SolidPng(3, 3, 0, 0));
    manager.CheckNextResource();
    EXPECT_EQ(window.changed.size(), 1u);
    EXPECT_TRUE(closed.changed.empty());
}

TEST(ResourceManager, RemovingTheResourceUnderTheCheckMovesTheCheckOn) {
    TeskResourceManager manager;
    const auto a = NewName(".png"), b = NewName(".png");
    WriteFile(a, SolidPng(2, 2, 0, 0));
    WriteFile(b, SolidPng(2, 2, 0, 0));
    auto first = ResourceOf(manager, a);
    auto second = ResourceOf(manager, b);
    first->GetImage();
    second->GetImage();
    RecordingTarget window;
    manager.AddTarget(&window);
    manager.CheckNextResource();  // checks a, then points at b
    manager.RemoveResource(second.Get());
    WriteFile(a, SolidPng(3, 3, 0, 0));
    manager.CheckNextResource();  // at the end of the round: waits
    EXPECT_TRUE(window.changed.empty());
    EXPECT_EQ(manager.GetResourceCount(), 1u);
}

}  // namespace
