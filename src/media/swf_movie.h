#pragma once
#include "flash/swf_movie.h"
#include "platform/zo_auto_ptr.h"

class TeskSWFResourceManager;

/// The system's movie: 640 x 480 pixels at 25 frames per second on opaque
/// black until the compiler sets the document's values, with its own
/// resource manager.
class TeskSWFMovie : public ZoFlash::ZoSWFMovie {
  public:
    TeskSWFMovie();
    /// Destroys the resource manager before the movie.
    ~TeskSWFMovie() override;

    TeskSWFResourceManager& GetResourceManager() noexcept { return *resources_; }

  private:
    ZoAutoPtr<TeskSWFResourceManager> resources_;
};
