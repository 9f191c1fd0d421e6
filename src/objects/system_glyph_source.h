#pragma once
// DefineFont2 glyphs drawn from the system's fonts: the same faces text
// layout measures with, so the player shows the characters where the layout
// put them.
#include <memory>

#include "flash/swf_font.h"

class TeskSystemGlyphSource : public ZoFlash::ZoSWFGlyphSource {
  public:
    /// One source serves every movie: it keeps nothing between calls.
    static std::shared_ptr<TeskSystemGlyphSource> Shared();

    /// The Windows-1252 character `code` of the face that fontconfig gives
    /// for (face, bold, italic), unknown families falling back as layout
    /// does; false when that face has no such character.
    bool GetGlyph(const ZoString& face, bool bold, bool italic, uint8_t code,
                  ZoFlash::ZoSWFGlyph& glyph) override;
};
