#pragma once
// Laid-out text as filled outlines, so that every piece of a mesh can carry
// its own part of the characters as an ordinary shape.
#include <optional>
#include <vector>

#include "geometry/poly_shape.h"
#include "objects/object.h"
#include "objects/text_glyph_walk.h"
#include "platform/zo_colour.h"
#include "text/text_layout.h"

class TeskTextOutlines {
  public:
    /// The outlines of every character of `lines`, its underlines and bullets,
    /// with the page's top-left corner at `objectRect`'s, in twips.
    TeskTextOutlines(const std::vector<ZoTextLine>& lines, const ZoRect& objectRect);

    /// The rectangle the outlines were laid into.
    const ZoRect& GetObjectRect() const noexcept { return objectRect_; }

    /// Adds to `shape` the parts of the outlines inside `triangle`, each in
    /// its text colour. `fill` is the colour of the fill `shape` already has,
    /// if any. Outlines are clipped by the triangle only, not by the object
    /// rectangle.
    void AddPiece(ZoFlash::ZoSWFShape& shape, const TeskTriangle& triangle,
                  std::optional<COLORREF> fill) const;

  private:
    struct Glyph {
        ZoGeometry::ZoPolyShape outline;
        ZoGeometry::ZoDoubleRect bounds;
    };
    /// The glyphs of one laid-out item: one colour, and one box around them
    /// all so that most pieces skip the whole item at once.
    struct Group {
        COLORREF colour = 0;
        ZoGeometry::ZoDoubleRect bounds;
        std::vector<Glyph> glyphs;
    };

    void AddItem(const ZoTextItem& item, const TeskItemStart& start);
    static void AddGlyph(Group& group, ZoGeometry::ZoPolyShape outline);

    ZoRect objectRect_;
    std::vector<Group> groups_;
};
