#pragma once
#include <vector>

#include "flash/swf_colour.h"
#include "flash/swf_entity.h"
#include "flash/swf_tags.h"
#include "platform/zo_rect.h"

namespace ZoFlash {

class ZoSWFImage;

/// A shape in twips, written as one DefineShape3 whose fill and line style
/// arrays are built from the style calls made.
class ZoSWFShape : public ZoSWFObject {
  public:
    ZoSWFShape();
    ~ZoSWFShape() override;

    /// The fill used for subsequent edges.
    void SetSolidFill(unsigned long colourref, int alpha);
    void SetSolidFill(const ZoSWFColour& colour);
    /// Gradient stops `colours` at `ratios` (0..255; null spreads them
    /// evenly), the gradient running from `from` to `to`; `extent` is the
    /// gradient's width across that line (twips).
    void SetLinearGradientFill(std::vector<ZoSWFColour> colours, const ZoPoint& from,
                               const ZoPoint& to, double extent, const std::vector<int>* ratios);
    /// Radial gradient centred between `from` and `to`, first stop at the
    /// centre and last on the circle of `radius` twips.
    void SetRadialGradientFill(std::vector<ZoSWFColour> colours, const ZoPoint& from,
                               const ZoPoint& to, double radius, const std::vector<int>* ratios);
    /// Bitmap fill scaled by (scaleX, scaleY) twips per image pixel and
    /// translated to (x, y) twips; clipped or repeating.
    void SetClippedBitmapFill(const ZoAutoInterface2<ZoSWFImage>& image, double x, double y,
                              double scaleX, double scaleY);
    void SetTiledBitmapFill(const ZoAutoInterface2<ZoSWFImage>& image, double x, double y,
                            double scaleX, double scaleY);
    /// An outline of `width` twips for subsequent edges.
    void SetLine(int width, const ZoSWFColour& colour);
    /// No outline for subsequent edges (the default).
    void SetNoLine();
    /// Forgets the current fill and line.
    void ResetStyles();

    /// Absolute twips.
    void MoveTo(int x, int y);
    void MoveTo(ZoPoint p) { MoveTo(p.x, p.y); }
    void LineTo(int x, int y);
    void LineTo(ZoPoint p) { LineTo(p.x, p.y); }
    /// Quadratic curve through `control` to `anchor`.
    void CurveTo(ZoPoint control, ZoPoint anchor);
    /// A closed rectangle path with the current fill.
    void Rectangle(const ZoRect& rect);

    /// The largest whole factor by which Magnify may enlarge
    /// the shape while every point drawn stays within `extent` twips of the
    /// origin and every line width and fill mapping fits its record; 1 when
    /// nothing is drawn or nothing more fits.
    int LargestMagnification(int32_t extent) const noexcept;
    /// Enlarges everything drawn, line widths and fill mappings by `factor`
    /// about the origin: placed scaled by 1 / factor it looks as before, and
    /// the placement's scale and rotate terms need fewer bits. Throws
    /// ZoException when something would no longer fit its record.
    void Magnify(int factor);

    /// Bounds of every point drawn, widened by half the widest line;
    /// empty before drawing.
    ZoRect GetBounds() const noexcept;
    bool IsEmpty() const noexcept { return edgeCount_ == 0; }

    /// The DefineShape3 tag of this shape with `characterId`; bitmap fills
    /// refer to their images' ids in the file being written.
    ZoAutoPtr2<ZoFDefineShapeTag> BuildDefinitionTag(int characterId) const;

    void Write(ZoSWFFile& file) override;
    void InitialiseForRewriting() override;

  private:
    struct Command;
    int AddFill(ZoFFillStyle style, ZoAutoInterface2<ZoSWFImage> image);
    void SetGradientFill(ZoFFillStyle::Type type, std::vector<ZoSWFColour>&& colours,
                         const ZoFMatrixRecord& matrix, const std::vector<int>* ratios);
    void SetBitmapFill(ZoFFillStyle::Type type, const ZoAutoInterface2<ZoSWFImage>& image, double x,
                       double y, double scaleX, double scaleY);
    void Include(int x, int y);
    bool StyleChanged() const noexcept;

    std::vector<ZoFFillStyle> fills_;
    std::vector<ZoAutoInterface2<ZoSWFImage>> fillImages_;  // per fill; null if none
    std::vector<ZoFLineStyle> lines_;
    std::vector<Command> commands_;
    int currentFill_ = 0, currentLine_ = 0;  // 1-based; 0 none
    int writtenFill_ = 0, writtenLine_ = 0;  // in force at the last edge
    ZoPoint pen_;
    ZoRect bounds_;
    bool hasBounds_ = false;
    int edgeCount_ = 0;
};

}  // namespace ZoFlash
