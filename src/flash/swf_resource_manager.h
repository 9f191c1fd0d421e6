#pragma once
#include <memory>
#include <vector>

#include "flash/swf_font.h"
#include "platform/zo_string.h"

namespace ZoFlash {

class ZoSWFMovie;

/// Per-movie cache of fonts: every text of a movie that asks for the same
/// face and style gets the same font entity, so the file holds one
/// DefineFont2 per font.
class ZoSWFResourceManager {
  public:
    explicit ZoSWFResourceManager(ZoSWFMovie* movie);
    ZoSWFResourceManager(const ZoSWFResourceManager&) = delete;
    ZoSWFResourceManager& operator=(const ZoSWFResourceManager&) = delete;
    virtual ~ZoSWFResourceManager();

    /// The shared font of (name, bold, italic); names compare exactly.
    ZoAutoInterface2<ZoSWFFont> GetFont(const ZoString& name, bool bold, bool italic);
    /// Outlines for fonts made from now on.
    void SetGlyphSource(std::shared_ptr<ZoSWFGlyphSource> source) { source_ = std::move(source); }
    ZoSWFMovie* GetMovie() const noexcept { return movie_; }

  private:
    ZoSWFMovie* movie_;
    std::shared_ptr<ZoSWFGlyphSource> source_;
    std::vector<ZoAutoInterface2<ZoSWFFont>> fonts_;
};

}  // namespace ZoFlash
