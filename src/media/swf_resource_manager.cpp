#include "media/swf_resource_manager.h"

#include "media/swf_movie.h"

TeskSWFResourceManager::TeskSWFResourceManager(TeskSWFMovie* movie)
    : ZoFlash::ZoSWFResourceManager(movie) {}

TeskSWFResourceManager::~TeskSWFResourceManager() {
    // The images go before the fonts of the base.
    images_.clear();
}
