#pragma once
#include <utility>
#include <vector>

#include "flash/swf_colour.h"
#include "objects/object.h"
#include "platform/zo_random.h"

/// How the stops of a graduated object spread over its rectangle.
enum TeskGradientType : int32_t {
    kTeskLinearGradient = 0,
    kTeskRadialGradient = 1,
};

/// The two ends of a linear gradient at `angleDegrees` over `rect`: the
/// projection of the rectangle on that direction, through its centre.
std::pair<ZoPoint, ZoPoint> TeskLinearGradientLine(const ZoRect& rect, int32_t angleDegrees);

/// An object that fills its rectangle with a linear or radial gradient of
/// one to eight colour stops.
class TeskGraduatedObject : public TeskObject {
  public:
    static constexpr size_t kMaxStops = 8;
    static constexpr int32_t kMaxPosition = 255;

    /// Blue at 0 to black at 255, linear, angle 0.
    TeskGraduatedObject();

    const std::vector<ZoFlash::ZoSWFColour>& GetColours() const noexcept { return colours_; }
    const std::vector<int32_t>& GetPositions() const noexcept { return positions_; }
    /// Replaces the stops; false (nothing changed) unless there are 1 to 8 of
    /// them, one position per colour, in increasing order within 0..255.
    bool SetStops(std::vector<ZoFlash::ZoSWFColour> colours, std::vector<int32_t> positions);
    void SetColour(size_t index, ZoFlash::ZoSWFColour colour) { colours_.at(index) = colour; }
    int32_t GetGradientType() const noexcept { return gradientType_; }
    void SetGradientType(int32_t type) noexcept { gradientType_ = type; }
    int32_t GetAngle() const noexcept { return angle_; }
    void SetAngle(int32_t degrees) noexcept { angle_ = degrees; }

    /// The stop the object page is editing.
    size_t GetSelected() const noexcept { return selected_; }
    void SetSelected(size_t index) noexcept { selected_ = index; }
    /// Adds a randomly coloured stop in the middle of the widest gap and
    /// selects it; false when there are already eight stops.
    bool AddColour();
    /// Removes stop `index`; false when it is the only stop or out of range.
    bool RemoveColour(size_t index);

    ZoAutoPtr<TeskObject> Clone() const override;
    bool CanFillPieces() const override { return true; }
    ZoAutoInterface2<ZoFlash::ZoSWFShape> MakeTriangleShape(TeskSWFMovie& movie,
                                                            const ZoRect& objectRect,
                                                            const TeskTriangle& triangle) override;
    ZoAutoInterface2<ZoFlash::ZoSWFObject> MakeShape(TeskSWFMovie& movie,
                                                     const ZoRect& objectRect) override;
    /// A gradient has no size of its own.
    bool GetNaturalSize(ZoSize& size) const override;
    void Read(ZoFolderFile& file) override;
    void Write(ZoFolderFile& file) const override;
    void VisitFields(TeskFieldVisitor& visitor) override;

  private:
    /// The gradient over `rect`, every piece of a mesh sharing it.
    ZoAutoInterface2<ZoFlash::ZoSWFShape> MakeFill(const ZoRect& rect) const;
    void ResetToDefaults();
    /// Keeps the two lists the same length after a visitor resized one.
    void MatchListLengths();

    std::vector<ZoFlash::ZoSWFColour> colours_;
    std::vector<int32_t> positions_;
    int32_t gradientType_ = kTeskLinearGradient;
    int32_t angle_ = 0;
    size_t selected_ = 0;
    ZoMsvcRandom random_;
};
