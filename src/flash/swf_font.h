#pragma once
#include <array>
#include <cstdint>
#include <memory>
#include <vector>

#include "flash/swf_entity.h"
#include "platform/zo_rect.h"
#include "platform/zo_string.h"

namespace ZoFlash {

/// One step of a glyph outline.
struct ZoSWFPathCommand {
    enum class Kind : uint8_t { kMove, kLine, kCurve };
    Kind kind = Kind::kMove;
    ZoPoint control;  // curves only
    ZoPoint to;
};

/// A glyph in font units: a 1024-unit em square, baseline at y = 0, y down.
struct ZoSWFGlyph {
    std::vector<ZoSWFPathCommand> outline;
    int advance = 0;
};

/// Where glyph outlines come from (the text layer supplies one backed by
/// the system's fonts).
class ZoSWFGlyphSource {
  public:
    virtual ~ZoSWFGlyphSource() = default;
    /// Fills `glyph` for byte `code` of the named face; false when the face
    /// has no such glyph (it is then written empty).
    virtual bool GetGlyph(const ZoString& face, bool bold, bool italic, uint8_t code,
                          ZoSWFGlyph& glyph) = 0;
};

/// A font whose glyph definitions the writer produces itself, written as
/// one DefineFont2 holding the glyphs the movie's texts use.
class ZoSWFFont : public ZoSWFEntity {
  public:
    ZoSWFFont(const char* name, bool bold, bool italic);
    ~ZoSWFFont() override;

    virtual void Write(ZoSWFFile& file);

    void SetGlyphSource(std::shared_ptr<ZoSWFGlyphSource> source) { source_ = std::move(source); }
    /// Records that a text uses `code`.
    void UseCharacter(uint8_t code) noexcept { used_[code] = true; }
    /// Index of `code` among the glyphs written; -1 when not used.
    int GetGlyphIndex(uint8_t code) const noexcept;

    const ZoString& GetName() const noexcept { return name_; }
    bool IsBold() const noexcept { return bold_; }
    bool IsItalic() const noexcept { return italic_; }

  private:
    ZoString name_;
    bool bold_, italic_;
    std::array<bool, 256> used_{};
    std::shared_ptr<ZoSWFGlyphSource> source_;
};

}  // namespace ZoFlash
