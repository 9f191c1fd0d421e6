#pragma once
#include "flash/swf_resource_manager.h"

class TeskSWFMovie;

/// The system's per-movie resources: the font cache of the base, plus the
/// cache of images that shapes of this movie share.
class TeskSWFResourceManager : public ZoFlash::ZoSWFResourceManager {
  public:
    explicit TeskSWFResourceManager(TeskSWFMovie* movie);
    ~TeskSWFResourceManager() override;

    // The image cache (GetImage) lives here, beside the inherited font cache.
};
