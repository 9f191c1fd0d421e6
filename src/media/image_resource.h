#pragma once
// One picture shared by every image object that names it: loaded once,
// reloaded when its file changes, and encoded for SWF once per transparent
// colour and tolerance.
#include <mutex>
#include <vector>

#include "media/file_stamp.h"
#include "media/reference_image.h"
#include "media/resource.h"
#include "media/swf_image.h"

/// A picture file or built-in picture, keyed by its full path or name.
class TeskImageResource : public ZoResource {
  public:
    explicit TeskImageResource(ZoResourceKey key) : ZoResource(std::move(key)) {}

    /// The picture, loaded on first use; empty when it cannot be loaded (the
    /// next call tries again).
    ZoAutoInterface2<ZoReferenceImage> GetImage();
    /// Why the last attempt to load the picture failed, one sentence fit to
    /// show; empty after a successful load.
    ZoString GetLoadError();
    /// The SWF bitmap of the picture for (type, colour, tolerance), made once
    /// and kept; empty when the picture cannot be loaded.
    ZoAutoInterface2<TeskSWFImage> GetSWFImage(ZoFlash::ZoSWFImage::ImageOutputType type,
                                               COLORREF colour, int32_t tolerance);

    /// Picture bytes plus every cached encoding.
    int32_t GetMemorySize() override;
    /// Compares the file's size and time with those of the last load; on a
    /// change drops the picture and its encodings and answers true.
    bool CheckForChange() override;

  private:
    bool IsBuiltIn() const noexcept;
    /// Loads the picture; called with the lock held.
    ZoAutoInterface2<ZoReferenceImage> LoadLocked();
    ZoAutoInterface2<ZoReferenceImage> GetImageLocked();

    std::mutex lock_;
    ZoAutoInterface2<ZoReferenceImage> image_;
    ZoString loadError_;
    std::vector<ZoAutoInterface2<TeskSWFImage>> swfImages_;
    ZoFileStamp stamp_;
};
