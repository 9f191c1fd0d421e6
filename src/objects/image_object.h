#pragma once
#include "media/resource_key.h"
#include "objects/object.h"
#include "platform/zo_colour.h"

/// How a picture is sized and positioned in the object rectangle.
enum TeskImagePlacement : int32_t {
    kTeskFixedTopLeft = 0,
    kTeskFixedTopCentre = 1,
    kTeskFixedTopRight = 2,
    kTeskFixedCentreLeft = 3,
    kTeskFixedCentre = 4,
    kTeskFixedCentreRight = 5,
    kTeskFixedBottomLeft = 6,
    kTeskFixedBottomCentre = 7,
    kTeskFixedBottomRight = 8,
    kTeskTiled = 9,
    kTeskStretch = 10,
    kTeskStretchKeepAspect = 11,
};

/// A picture file, or a built-in picture, placed in the object rectangle,
/// optionally with one colour keyed out.
class TeskImageObject : public TeskObject {
  public:
    static constexpr const char* kDefaultFileName = "<PreviewImage1>";

    /// `fileName` is stored as given: a built-in name, a path relative to
    /// the project folder, or an absolute path.
    explicit TeskImageObject(ZoString fileName = kDefaultFileName);

    const ZoResourceKey& GetFileName() const noexcept { return fileName_; }
    /// Keeps built-in names as they are and paths inside the project folder
    /// relative to it, so a project folder can move with its pictures.
    void SetFileName(const ZoString& path);
    /// The picture's path for loading: relative names resolved against the
    /// project folder.
    ZoString GetFullPath() const;

    COLORREF GetTransparentColour() const noexcept { return transparentColour_; }
    void SetTransparentColour(COLORREF colour) noexcept { transparentColour_ = colour; }
    int32_t GetTolerance() const noexcept { return tolerance_; }
    void SetTolerance(int32_t tolerance) noexcept { tolerance_ = tolerance; }
    bool GetUseTransparent() const noexcept { return useTransparent_; }
    void SetUseTransparent(bool use) noexcept { useTransparent_ = use; }
    bool GetAutoTransparent() const noexcept { return autoTransparent_; }
    void SetAutoTransparent(bool automatic) noexcept { autoTransparent_ = automatic; }
    int32_t GetPlacement() const noexcept { return placement_; }
    void SetPlacement(int32_t placement) noexcept { placement_ = placement; }

    ZoAutoPtr<TeskObject> Clone() const override;
    bool CanFillPieces() const override { return true; }
    ZoAutoInterface2<ZoFlash::ZoSWFShape> MakeTriangleShape(TeskSWFMovie& movie,
                                                            const ZoRect& objectRect,
                                                            const TeskTriangle& triangle) override;
    ZoAutoInterface2<ZoFlash::ZoSWFObject> MakeShape(TeskSWFMovie& movie,
                                                     const ZoRect& objectRect) override;
    /// The picture's pixel size; false when it cannot be loaded.
    bool GetNaturalSize(ZoSize& size) const override;
    void Read(ZoFolderFile& file) override;
    void Write(ZoFolderFile& file) const override;
    void VisitFields(TeskFieldVisitor& visitor) override;

  private:
    /// The picture's fill for `rect`, narrowing `rect` to the part the
    /// picture covers. Without a picture the shape has no fill.
    ZoAutoInterface2<ZoFlash::ZoSWFShape> MakeFill(TeskSWFMovie& movie, ZoRect& rect) const;

    ZoResourceKey fileName_;
    COLORREF transparentColour_ = 0;
    int32_t tolerance_ = 0;
    bool useTransparent_ = false;
    bool autoTransparent_ = false;
    int32_t placement_ = kTeskStretch;
};
