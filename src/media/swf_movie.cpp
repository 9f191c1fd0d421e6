#include "media/swf_movie.h"

#include "media/swf_resource_manager.h"

TeskSWFMovie::TeskSWFMovie()
    : ZoFlash::ZoSWFMovie("", 640, 480, 25, ZoFlash::ZoSWFColour(0, 0, 0, 255)),
      resources_(std::make_unique<TeskSWFResourceManager>(this)) {}

TeskSWFMovie::~TeskSWFMovie() {
    // The resources refer to the movie, so they go first.
    resources_.reset();
}
