#pragma once
// A font face read with FreeType, and that face scaled to a pixel size. The
// scaled font answers what text layout asks of a screen font: ascent, descent
// and whole-pixel advance widths at 96 logical pixels per inch. Glyph outlines
// stay in font units (y up) so that callers scale them once, as they need.
//
// FreeType objects are not thread-safe; every call into FreeType goes through
// one process-wide mutex, so two compilations on two threads can lay out text.
#include <cstdint>
#include <memory>
#include <mutex>
#include <unordered_map>
#include <vector>

#include "platform/zo_string.h"

/// Segment kinds of a glyph outline.
enum class ZoGlyphSegmentKind : uint8_t {
    Move,       ///< starts a contour at `end`
    Line,       ///< straight segment to `end`
    Quadratic,  ///< quadratic Bézier through `control` to `end`
};

/// A point in font units, y growing upwards.
struct ZoGlyphPoint {
    int32_t x = 0;
    int32_t y = 0;
    friend bool operator==(const ZoGlyphPoint&, const ZoGlyphPoint&) = default;
};

struct ZoGlyphSegment {
    ZoGlyphSegmentKind kind = ZoGlyphSegmentKind::Move;
    ZoGlyphPoint control;  ///< only for Quadratic
    ZoGlyphPoint end;
};

/// Closed contours; each begins with a Move and returns to it implicitly.
using ZoGlyphOutline = std::vector<ZoGlyphSegment>;

class ZoScaledFont;

/// One face file (family, bold, italic), unscaled.
class ZoFontFace : public std::enable_shared_from_this<ZoFontFace> {
  public:
    /// Opens face `index` of the font file at `path`; throws ZoException when
    /// FreeType cannot read it.
    ZoFontFace(const ZoString& path, int32_t index);
    ~ZoFontFace();
    ZoFontFace(const ZoFontFace&) = delete;
    ZoFontFace& operator=(const ZoFontFace&) = delete;

    const ZoString& Path() const noexcept { return path_; }
    const ZoString& Family() const noexcept { return family_; }
    bool IsBold() const noexcept { return bold_; }
    bool IsItalic() const noexcept { return italic_; }

    int32_t UnitsPerEm() const noexcept { return unitsPerEm_; }
    /// Distance above and below the baseline that a line of this face needs
    /// (the Windows ascent and descent of the OS/2 table when present).
    int32_t AscentUnits() const noexcept { return ascent_; }
    int32_t DescentUnits() const noexcept { return descent_; }
    /// Underline position (negative: below the baseline) and thickness.
    int32_t UnderlinePositionUnits() const noexcept { return underlinePosition_; }
    int32_t UnderlineThicknessUnits() const noexcept { return underlineThickness_; }

    bool HasGlyph(char32_t character) const;
    /// Unhinted advance width in font units; 0 for a character the face lacks.
    int32_t AdvanceUnits(char32_t character) const;
    /// The glyph's contours; empty for a blank glyph such as a space or for a
    /// character the face lacks.
    ZoGlyphOutline Outline(char32_t character) const;

    /// This face at an em size of `pixels` (clamped to 1..16384); shared while
    /// anyone holds it.
    std::shared_ptr<const ZoScaledFont> AtPixelSize(int32_t pixels);

  private:
    friend class ZoScaledFont;
    struct FreeTypeFace;

    // Cached per (size, character) for the life of the face, so that every
    // layout after the first measures from memory.
    int32_t HintedAdvancePixels(int32_t pixels, char32_t character) const;

    ZoString path_;
    ZoString family_;
    bool bold_ = false;
    bool italic_ = false;
    int32_t unitsPerEm_ = 0;
    int32_t ascent_ = 0;
    int32_t descent_ = 0;
    int32_t underlinePosition_ = 0;
    int32_t underlineThickness_ = 0;
    std::unique_ptr<FreeTypeFace> face_;
    mutable std::mutex advancesMutex_;
    mutable std::unordered_map<uint64_t, int32_t> advances_;
    std::mutex sizesMutex_;
    // Weak, so that a scaled font (which keeps its face alive) makes no cycle.
    std::unordered_map<int32_t, std::weak_ptr<const ZoScaledFont>> sizes_;
};

/// A face at one em size in pixels; metrics rounded to whole pixels the way a
/// screen font reports them.
class ZoScaledFont {
  public:
    ZoScaledFont(std::shared_ptr<ZoFontFace> face, int32_t pixels);

    const ZoFontFace& Face() const noexcept { return *face_; }
    int32_t PixelSize() const noexcept { return pixels_; }
    int32_t Ascent() const noexcept { return ascent_; }
    int32_t Descent() const noexcept { return descent_; }
    /// Ascent + descent: the height of a line of this font.
    int32_t Height() const noexcept { return ascent_ + descent_; }
    /// Hinted advance width in whole pixels.
    int32_t Advance(char32_t character) const;

  private:
    std::shared_ptr<ZoFontFace> face_;
    int32_t pixels_;
    int32_t ascent_;
    int32_t descent_;
};
