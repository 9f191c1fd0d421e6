#pragma once
#include <vector>

#include "flash/swf_resource_manager.h"
#include "media/swf_image.h"

class TeskSWFMovie;

/// The system's per-movie resources: the font cache of the base, plus the
/// cache of images that shapes of this movie share.
class TeskSWFResourceManager : public ZoFlash::ZoSWFResourceManager {
  public:
    explicit TeskSWFResourceManager(TeskSWFMovie* movie);
    ~TeskSWFResourceManager() override;

    /// This movie's bitmap of the picture `name` (a full path or built-in
    /// name) with `transparencyColour` keyed out within `tolerance`: one per
    /// picture and settings, however many shapes of the movie fill with it.
    /// Empty when the picture cannot be loaded.
    ZoAutoInterface2<ZoFlash::ZoSWFImage> GetImage(const ZoString& name,
                                                   unsigned long transparencyColour, int tolerance);

  private:
    std::vector<ZoAutoInterface2<TeskSWFImage>> images_;
};
