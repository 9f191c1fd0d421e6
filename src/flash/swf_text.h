#pragma once
#include <vector>

#include "flash/swf_colour.h"
#include "flash/swf_entity.h"
#include "flash/swf_font.h"
#include "flash/swf_shape.h"
#include "platform/zo_rect.h"

namespace ZoFlash {

/// Static text in a rectangle, written as DefineText with glyphs of its
/// fonts. Positions and sizes in twips.
class ZoSWFText : public ZoSWFObject {
  public:
    ZoSWFText();
    ~ZoSWFText() override;

    /// The text's bounds.
    void SetRect(const ZoRect& rect) noexcept { rect_ = rect; }
    const ZoRect& GetRect() const noexcept { return rect_; }
    /// Starts a text record with this font, height and colour at pen
    /// position (x, y) on the baseline. With `underline` the characters
    /// that follow are underlined in `underlineColour` on the decoration
    /// shape.
    void SetFont(ZoAutoInterface2<ZoSWFFont> font, int height, bool underline,
                 const ZoSWFColour& colour, const ZoSWFColour& underlineColour, int x, int y);
    /// Starts a new text record at (x, y) keeping the style.
    void MovePosition(int x, int y);
    /// Appends glyph `c`, advancing the pen by `advance`. Throws ZoException
    /// before any SetFont.
    void AddCharacter(char c, int advance);
    /// A bullet mark (a filled circle) in `rect`.
    void DrawBullet(const ZoRect& rect, const ZoSWFColour& colour);
    /// Underlines and bullets, to be placed separately; null when none.
    ZoAutoInterface2<ZoSWFShape> GetDecorationShape();

    void Write(ZoSWFFile& file) override;
    void InitialiseForRewriting() override;

  private:
    struct Glyph {
        uint8_t code;
        int advance;
    };
    struct Run {
        ZoAutoInterface2<ZoSWFFont> font;
        int height;
        ZoSWFColour colour;
        int x, y;
        std::vector<Glyph> glyphs;
    };
    void EndUnderline();
    ZoSWFShape& Decoration();

    ZoRect rect_;
    std::vector<Run> runs_;
    bool underline_ = false;
    ZoSWFColour underlineColour_;
    int underlineStart_ = 0, penX_ = 0;
    ZoAutoInterface2<ZoSWFShape> decoration_;
};

}  // namespace ZoFlash
