#include "objects/graduated_object.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <numbers>

#include "flash/swf_shape.h"
#include "objects/field_visitor.h"
#include "objects/triangle_piece.h"
#include "platform/folder_file.h"
#include "platform/zo_exception.h"
#include "platform/zo_units.h"

using ZoFlash::ZoSWFColour;

namespace {

constexpr ZoSWFColour kBlue(0, 0, 255, 255);
constexpr ZoSWFColour kBlack(0, 0, 0, 255);

uint32_t MillisecondTicks() {
    using namespace std::chrono;
    return static_cast<uint32_t>(
        duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count());
}

bool ValidStops(size_t colourCount, const std::vector<int32_t>& positions) {
    if (colourCount != positions.size() || colourCount < 1 ||
        colourCount > TeskGraduatedObject::kMaxStops)
        return false;
    int32_t previous = 0;
    for (int32_t position : positions) {
        if (position < previous || position > TeskGraduatedObject::kMaxPosition)
            return false;
        previous = position;
    }
    return true;
}

}  // namespace

std::pair<ZoPoint, ZoPoint> TeskLinearGradientLine(const ZoRect& rect, int32_t angleDegrees) {
    const double a = angleDegrees * kZoDegreesToRadians;
    const int32_t hw = rect.Width() / 2;
    const int32_t hh = rect.Height() / 2;
    const double beta = std::atan2(double(hw), double(hh));
    const double d = std::sqrt(double(hw) * hw + double(hh) * hh);
    // The projection's half length only depends on the direction's angle to
    // the axes, so fold it into 0..pi/2.
    double t = std::fmod(a, std::numbers::pi);
    if (t > std::numbers::pi / 2)
        t = std::numbers::pi - t;
    const double half = std::cos(std::numbers::pi / 2 - beta - t) * d;
    const double dx = std::cos(a) * half;
    const double dy = std::sin(a) * half;
    auto at = [&](double x, double y) {
        return ZoPoint{static_cast<int32_t>(x + rect.left), static_cast<int32_t>(y + rect.top)};
    };
    return {at(hw - dx, hh - dy), at(hw + dx, hh + dy)};
}

TeskGraduatedObject::TeskGraduatedObject()
    : TeskObject(kTeskGraduatedObject), random_(MillisecondTicks()) {
    ResetToDefaults();
}

void TeskGraduatedObject::ResetToDefaults() {
    colours_ = {kBlue, kBlack};
    positions_ = {0, kMaxPosition};
    gradientType_ = kTeskLinearGradient;
    angle_ = 0;
    selected_ = 0;
}

bool TeskGraduatedObject::SetStops(std::vector<ZoSWFColour> colours,
                                   std::vector<int32_t> positions) {
    if (!ValidStops(colours.size(), positions))
        return false;
    colours_ = std::move(colours);
    positions_ = std::move(positions);
    selected_ = std::min(selected_, colours_.size() - 1);
    return true;
}

bool TeskGraduatedObject::AddColour() {
    if (colours_.size() >= kMaxStops)
        return false;
    // Gap i lies before stop i; the last gap runs from the last stop to 255.
    size_t widest = 0;
    int32_t widestStart = 0;
    int32_t widestSize = -1;
    for (size_t i = 0; i <= positions_.size(); ++i) {
        const int32_t start = i == 0 ? 0 : positions_[i - 1];
        const int32_t end = i == positions_.size() ? kMaxPosition : positions_[i];
        if (end - start > widestSize) {
            widest = i;
            widestStart = start;
            widestSize = end - start;
        }
    }
    const auto colour = static_cast<COLORREF>(random_.Next() / 32767.0 * 16777215.0);
    positions_.insert(positions_.begin() + widest, widestStart + widestSize / 2);
    colours_.insert(colours_.begin() + widest, ZoSWFColour(colour, 255));
    selected_ = widest;
    return true;
}

bool TeskGraduatedObject::RemoveColour(size_t index) {
    if (colours_.size() < 2 || index >= colours_.size())
        return false;
    colours_.erase(colours_.begin() + index);
    positions_.erase(positions_.begin() + index);
    if (selected_ > index)
        --selected_;  // stay on the same stop
    selected_ = std::min(selected_, colours_.size() - 1);
    return true;
}

ZoAutoPtr<TeskObject> TeskGraduatedObject::Clone() const {
    return std::make_unique<TeskGraduatedObject>(*this);
}

ZoAutoInterface2<ZoFlash::ZoSWFShape> TeskGraduatedObject::MakeFill(const ZoRect& rect) const {
    auto shape = ZoMakeCounted<ZoFlash::ZoSWFShape>();
    if (colours_.size() == 1) {
        shape->SetSolidFill(colours_.front());
        return shape;
    }
    std::vector<int> ratios(positions_.begin(), positions_.end());
    if (gradientType_ == kTeskRadialGradient) {
        // The player's radial gradient starts at the centre; ours starts on
        // the circle through the corners.
        std::vector<ZoSWFColour> reversed(colours_.rbegin(), colours_.rend());
        std::reverse(ratios.begin(), ratios.end());
        for (int& ratio : ratios)
            ratio = kMaxPosition - ratio;
        const double radius = std::hypot(double(rect.Width()), double(rect.Height())) / 2;
        shape->SetRadialGradientFill(reversed, rect.TopLeft(), rect.BottomRight(), radius, &ratios);
        return shape;
    }
    const auto [from, to] = TeskLinearGradientLine(rect, angle_);
    shape->SetLinearGradientFill(colours_, from, to, 2.0 * rect.Width() + 2.0 * rect.Height(),
                                 &ratios);
    return shape;
}

ZoAutoInterface2<ZoFlash::ZoSWFObject> TeskGraduatedObject::MakeShape(TeskSWFMovie&,
                                                                      const ZoRect& objectRect) {
    auto shape = MakeFill(objectRect);
    shape->Rectangle(objectRect);
    return shape;
}

ZoAutoInterface2<ZoFlash::ZoSWFShape> TeskGraduatedObject::MakeTriangleShape(
    TeskSWFMovie&, const ZoRect& objectRect, const TeskTriangle& triangle) {
    auto shape = MakeFill(objectRect);
    TeskOutlineTrianglePiece(*shape, objectRect, triangle);
    return shape;
}

bool TeskGraduatedObject::GetNaturalSize(ZoSize& size) const {
    size = {};
    return false;
}

void TeskGraduatedObject::Read(ZoFolderFile& file) {
    try {
        ZoFolderGuard record(file, false);
        const int32_t count = file.ReadInt32();
        if (count < 1 || count > static_cast<int32_t>(kMaxStops))
            throw ZoFileNonFatalException("graduated colour: bad stop count");
        std::vector<ZoSWFColour> colours;
        std::vector<int32_t> positions;
        for (int32_t i = 0; i < count; ++i) {
            colours.emplace_back(file.ReadUInt32(), 255);
            positions.push_back(file.ReadInt32());
        }
        const int32_t type = file.ReadInt32();
        const int32_t angle = file.ReadInt32();
        if (!SetStops(std::move(colours), std::move(positions)))
            throw ZoFileNonFatalException("graduated colour: stops out of order");
        gradientType_ = type;
        angle_ = angle;
    } catch (const ZoFileNonFatalException&) {
        ResetToDefaults();
    }
}

void TeskGraduatedObject::Write(ZoFolderFile& file) const {
    ZoFolderGuard record(file, true);
    file.WriteInt32(static_cast<int32_t>(colours_.size()));
    for (size_t i = 0; i < colours_.size(); ++i) {
        file.WriteUInt32(colours_[i].GetCOLORREF());
        file.WriteInt32(positions_[i]);
    }
    file.WriteInt32(gradientType_);
    file.WriteInt32(angle_);
}

void TeskGraduatedObject::MatchListLengths() {
    const size_t count =
        std::clamp<size_t>(std::min(colours_.size(), positions_.size()), 1, kMaxStops);
    colours_.resize(count, kBlack);
    positions_.resize(count, kMaxPosition);
    std::sort(positions_.begin(), positions_.end());
    for (int32_t& position : positions_)
        position = std::clamp(position, 0, kMaxPosition);
    selected_ = std::min(selected_, count - 1);
}

void TeskGraduatedObject::VisitFields(TeskFieldVisitor& visitor) {
    visitor.List(
        "colours", colours_.size(), [this](size_t size) { colours_.resize(size); },
        [this, &visitor](size_t index) {
            COLORREF colour = colours_[index].GetCOLORREF();
            visitor.Colour("colour", colour);
            if (visitor.IsReading())
                colours_[index] = ZoSWFColour(colour, 255);
        });
    visitor.List(
        "positions", positions_.size(), [this](size_t size) { positions_.resize(size); },
        [this, &visitor](size_t index) { visitor.Field("position", positions_[index]); });
    visitor.Field("gradientType", gradientType_);
    visitor.Field("angle", angle_);
    if (visitor.IsReading())
        MatchListLengths();
}
