#pragma once
#include "objects/object.h"
#include "platform/zo_colour.h"

/// An object that fills its rectangle with one colour.
class TeskSolidObject : public TeskObject {
  public:
    /// Teal: red 0, green 128, blue 128.
    static constexpr COLORREF kDefaultColour = 0x808000;

    explicit TeskSolidObject(COLORREF colour = kDefaultColour) noexcept
        : TeskObject(kTeskSolidObject), colour_(colour) {}

    COLORREF GetColour() const noexcept { return colour_; }
    void SetColour(COLORREF colour) noexcept { colour_ = colour; }

    ZoAutoPtr<TeskObject> Clone() const override;
    bool CanFillPieces() const override { return true; }
    ZoAutoInterface2<ZoFlash::ZoSWFShape> MakeTriangleShape(TeskSWFMovie& movie,
                                                            const ZoRect& objectRect,
                                                            const TeskTriangle& triangle) override;
    ZoAutoInterface2<ZoFlash::ZoSWFObject> MakeShape(TeskSWFMovie& movie,
                                                     const ZoRect& objectRect) override;
    /// A colour has no size of its own.
    bool GetNaturalSize(ZoSize& size) const override;
    void Read(ZoFolderFile& file) override;
    void Write(ZoFolderFile& file) const override;
    void VisitFields(TeskFieldVisitor& visitor) override;

  private:
    ZoAutoInterface2<ZoFlash::ZoSWFShape> MakeFill() const;

    COLORREF colour_;
};
