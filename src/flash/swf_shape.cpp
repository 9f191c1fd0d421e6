#include "flash/swf_shape.h"

#include <algorithm>
#include <cmath>

#include "flash/swf_file.h"
#include "flash/swf_image.h"
#include "flash/swf_transformation.h"
#include "platform/zo_exception.h"
#include "platform/zo_string.h"

namespace ZoFlash {
namespace {

// The gradient square spans -16384..16384 twips before its matrix.
constexpr double kGradientSquare = 32768.0;

ZoFMatrixRecord MatrixOf(double a, double b, double c, double d, double tx, double ty) {
    ZoSWFTransformation t;
    t.AppendMatrix(a, b, c, d, tx, ty);
    return t.ToRecord();
}

std::vector<ZoFGradientRecord> GradientStops(const std::vector<ZoSWFColour>& colours,
                                             const std::vector<int>* ratios) {
    if (colours.empty() || colours.size() > 8)
        throw ZoException("A gradient needs 1 to 8 colours.");
    if (ratios && ratios->size() != colours.size())
        throw ZoException("A gradient needs one ratio per colour.");
    std::vector<ZoFGradientRecord> stops;
    const int n = static_cast<int>(colours.size());
    for (int i = 0; i < n; ++i) {
        const int ratio = ratios ? (*ratios)[i] : (n == 1 ? 0 : i * 255 / (n - 1));
        stops.push_back({static_cast<uint8_t>(std::clamp(ratio, 0, 255)), colours[i].ToRecord()});
    }
    return stops;
}

// The largest factor by which `value` may grow and stay within `limit`.
int64_t RoomFor(int64_t value, int64_t limit) noexcept {
    return value == 0 ? limit : limit / (value < 0 ? -value : value);
}

bool HasMatrix(const ZoFFillStyle& fill) noexcept {
    return fill.type != ZoFFillStyle::Type::kSolid;
}

// The mapping followed by an enlargement by `factor`: every term grows.
ZoFMatrixRecord Magnified(ZoFMatrixRecord m, int factor) noexcept {
    for (int32_t* raw : {&m.scaleX.raw, &m.scaleY.raw, &m.rotateSkew0.raw, &m.rotateSkew1.raw,
                         &m.translateX.value, &m.translateY.value})
        *raw *= factor;
    m.hasScale = m.scaleX.raw != 65536 || m.scaleY.raw != 65536;
    m.hasRotate = m.rotateSkew0.raw != 0 || m.rotateSkew1.raw != 0;
    return m;
}

}  // namespace

struct ZoSWFShape::Command {
    enum class Kind : uint8_t { kMove, kLine, kCurve };
    Kind kind;
    int fill = -1, line = -1;  // kMove: -1 leaves the style unchanged
    ZoPoint control, to;
};

ZoSWFShape::ZoSWFShape() = default;
ZoSWFShape::~ZoSWFShape() = default;

int ZoSWFShape::AddFill(ZoFFillStyle style, ZoAutoInterface2<ZoSWFImage> image) {
    for (size_t i = 0; i < fills_.size(); ++i)
        if (fills_[i] == style && fillImages_[i] == image)
            return static_cast<int>(i) + 1;
    fills_.push_back(std::move(style));
    fillImages_.push_back(std::move(image));
    return static_cast<int>(fills_.size());
}

void ZoSWFShape::SetSolidFill(unsigned long colourref, int alpha) {
    SetSolidFill(ZoSWFColour(colourref, static_cast<unsigned char>(std::clamp(alpha, 0, 255))));
}

void ZoSWFShape::SetSolidFill(const ZoSWFColour& colour) {
    ZoFFillStyle style;
    style.colour = colour.ToRecord();
    currentFill_ = AddFill(std::move(style), nullptr);
}

void ZoSWFShape::SetGradientFill(ZoFFillStyle::Type type, std::vector<ZoSWFColour>&& colours,
                                 const ZoFMatrixRecord& matrix, const std::vector<int>* ratios) {
    ZoFFillStyle style;
    style.type = type;
    style.matrix = matrix;
    style.gradient = GradientStops(colours, ratios);
    currentFill_ = AddFill(std::move(style), nullptr);
}

void ZoSWFShape::SetLinearGradientFill(std::vector<ZoSWFColour> colours, const ZoPoint& from,
                                       const ZoPoint& to, double extent,
                                       const std::vector<int>* ratios) {
    const double vx = to.x - from.x, vy = to.y - from.y;
    const double length = std::max(std::hypot(vx, vy), 1.0);
    const double across = (extent > 0 ? extent : length) / kGradientSquare;
    // x of the square runs along from -> to, y across it by `extent`.
    const double ux = vx == 0 && vy == 0 ? 1.0 : vx / length, uy = vy / length;
    const ZoFMatrixRecord m = MatrixOf(vx / kGradientSquare, -uy * across, vy / kGradientSquare,
                                       ux * across, (from.x + to.x) / 2.0, (from.y + to.y) / 2.0);
    SetGradientFill(ZoFFillStyle::Type::kLinearGradient, std::move(colours), m, ratios);
}

void ZoSWFShape::SetRadialGradientFill(std::vector<ZoSWFColour> colours, const ZoPoint& from,
                                       const ZoPoint& to, double radius,
                                       const std::vector<int>* ratios) {
    if (!(radius > 0))
        radius = std::max(std::hypot(to.x - from.x, to.y - from.y) / 2, 1.0);
    const double scale = radius / (kGradientSquare / 2);
    const ZoFMatrixRecord m =
        MatrixOf(scale, 0, 0, scale, (from.x + to.x) / 2.0, (from.y + to.y) / 2.0);
    SetGradientFill(ZoFFillStyle::Type::kRadialGradient, std::move(colours), m, ratios);
}

void ZoSWFShape::SetBitmapFill(ZoFFillStyle::Type type, const ZoAutoInterface2<ZoSWFImage>& image,
                               double x, double y, double scaleX, double scaleY) {
    if (!image)
        throw ZoException("A bitmap fill needs an image.");
    ZoFFillStyle style;
    style.type = type;
    style.matrix = MatrixOf(scaleX, 0, 0, scaleY, x, y);
    currentFill_ = AddFill(std::move(style), image);
}

void ZoSWFShape::SetClippedBitmapFill(const ZoAutoInterface2<ZoSWFImage>& image, double x, double y,
                                      double scaleX, double scaleY) {
    SetBitmapFill(ZoFFillStyle::Type::kClippedBitmap, image, x, y, scaleX, scaleY);
}

void ZoSWFShape::SetTiledBitmapFill(const ZoAutoInterface2<ZoSWFImage>& image, double x, double y,
                                    double scaleX, double scaleY) {
    SetBitmapFill(ZoFFillStyle::Type::kRepeatingBitmap, image, x, y, scaleX, scaleY);
}

void ZoSWFShape::SetLine(int width, const ZoSWFColour& colour) {
    if (width < 0 || width > 0xFFFF)
        throw ZoException("A line width must lie between 0 and 65535 twips.");
    const ZoFLineStyle style{static_cast<uint16_t>(width), colour.ToRecord()};
    auto found = std::find(lines_.begin(), lines_.end(), style);
    if (found == lines_.end())
        found = lines_.insert(lines_.end(), style);
    currentLine_ = static_cast<int>(found - lines_.begin()) + 1;
}

void ZoSWFShape::SetNoLine() {
    currentLine_ = 0;
}

void ZoSWFShape::ResetStyles() {
    currentFill_ = 0;
    currentLine_ = 0;
}

void ZoSWFShape::MoveTo(int x, int y) {
    // A style index is written only when it differs from the one in force,
    // which starts as 0 (none) for both.
    Command c{Command::Kind::kMove, -1, -1, {}, {x, y}};
    if (currentFill_ != writtenFill_)
        c.fill = writtenFill_ = currentFill_;
    if (currentLine_ != writtenLine_)
        c.line = writtenLine_ = currentLine_;
    commands_.push_back(c);
    pen_ = c.to;
}

bool ZoSWFShape::StyleChanged() const noexcept {
    return currentFill_ != writtenFill_ || currentLine_ != writtenLine_;
}

void ZoSWFShape::LineTo(int x, int y) {
    if (StyleChanged())
        MoveTo(pen_.x, pen_.y);
    if (ZoPoint{x, y} == pen_)
        return;
    Include(pen_.x, pen_.y);
    Include(x, y);
    commands_.push_back({Command::Kind::kLine, -1, -1, {}, {x, y}});
    pen_ = {x, y};
    ++edgeCount_;
}

void ZoSWFShape::CurveTo(ZoPoint control, ZoPoint anchor) {
    if (StyleChanged())
        MoveTo(pen_.x, pen_.y);
    Include(pen_.x, pen_.y);
    Include(control.x, control.y);
    Include(anchor.x, anchor.y);
    commands_.push_back({Command::Kind::kCurve, -1, -1, control, anchor});
    pen_ = anchor;
    ++edgeCount_;
}

void ZoSWFShape::Rectangle(const ZoRect& rect) {
    MoveTo(rect.left, rect.top);
    LineTo(rect.right, rect.top);
    LineTo(rect.right, rect.bottom);
    LineTo(rect.left, rect.bottom);
    LineTo(rect.left, rect.top);
}

void ZoSWFShape::Include(int x, int y) {
    ZoCheckedTwips(x);
    ZoCheckedTwips(y);
    if (!hasBounds_) {
        bounds_ = {x, y, x, y};
        hasBounds_ = true;
        return;
    }
    bounds_.left = std::min(bounds_.left, x);
    bounds_.top = std::min(bounds_.top, y);
    bounds_.right = std::max(bounds_.right, x);
    bounds_.bottom = std::max(bounds_.bottom, y);
}

int ZoSWFShape::LargestMagnification(int32_t extent) const noexcept {
    if (commands_.empty())
        return 1;
    int64_t room = extent;
    for (const Command& c : commands_) {
        for (int32_t v : {c.to.x, c.to.y, c.control.x, c.control.y})
            room = std::min(room, RoomFor(v, extent));
    }
    for (const ZoFLineStyle& line : lines_)
        room = std::min(room, RoomFor(line.width, 0xFFFF));
    for (const ZoFFillStyle& fill : fills_) {
        if (!HasMatrix(fill))
            continue;
        const ZoFMatrixRecord& m = fill.matrix;
        for (int32_t v : {m.scaleX.raw, m.scaleY.raw, m.rotateSkew0.raw, m.rotateSkew1.raw,
                          m.translateX.value, m.translateY.value})
            room = std::min(room, RoomFor(v, kZoSWFMaxSignedField));
    }
    return static_cast<int>(std::max<int64_t>(room, 1));
}

void ZoSWFShape::Magnify(int factor) {
    if (factor < 1 || factor > LargestMagnification(static_cast<int32_t>(kZoSWFMaxSignedField)))
        throw ZoException(ZoFormat("A shape cannot be magnified %d times.", factor));
    const auto grown = [factor](ZoPoint p) { return ZoPoint{p.x * factor, p.y * factor}; };
    for (Command& c : commands_) {
        c.control = grown(c.control);
        c.to = grown(c.to);
    }
    pen_ = grown(pen_);
    bounds_ = {bounds_.left * factor, bounds_.top * factor, bounds_.right * factor,
               bounds_.bottom * factor};
    for (ZoFLineStyle& line : lines_)
        line.width = static_cast<uint16_t>(line.width * factor);
    for (ZoFFillStyle& fill : fills_) {
        if (HasMatrix(fill))
            fill.matrix = Magnified(fill.matrix, factor);
    }
}

ZoRect ZoSWFShape::GetBounds() const noexcept {
    if (!hasBounds_)
        return {};
    int widest = 0;
    for (const ZoFLineStyle& line : lines_)
        widest = std::max<int>(widest, line.width);
    ZoRect r = bounds_;
    r.left -= widest / 2;
    r.top -= widest / 2;
    r.right += (widest + 1) / 2;
    r.bottom += (widest + 1) / 2;
    return r;
}

ZoAutoPtr2<ZoFDefineShapeTag> ZoSWFShape::BuildDefinitionTag(int characterId) const {
    std::vector<ZoFFillStyle> fills = fills_;
    for (size_t i = 0; i < fills.size(); ++i)
        if (fillImages_[i])
            fills[i].bitmapId = static_cast<uint16_t>(fillImages_[i]->GetCharacterID());
    auto shape = std::make_unique<ZoFShape>(ZoUnsignedBits(static_cast<uint32_t>(fills.size())),
                                            ZoUnsignedBits(static_cast<uint32_t>(lines_.size())));
    ZoPoint pen;
    for (const Command& c : commands_) {
        switch (c.kind) {
            case Command::Kind::kMove: {
                ZoAutoPtr2<ZoFShapeRecord> record = std::make_unique<ZoFShapeStyleChangeRecord>(
                    c.fill, -1, c.line, c.kind == Command::Kind::kMove, c.to.x, c.to.y);
                shape->AddRecord(record);
                break;
            }
            case Command::Kind::kLine:
                shape->AddLine(c.to.x - pen.x, c.to.y - pen.y);
                break;
            case Command::Kind::kCurve:
                shape->AddCurve(c.control.x - pen.x, c.control.y - pen.y, c.to.x - c.control.x,
                                c.to.y - c.control.y);
                break;
        }
        pen = c.to;
    }
    return std::make_unique<ZoFDefineShapeTag>(characterId, GetBounds(), std::move(fills), lines_,
                                               std::move(shape));
}

void ZoSWFShape::Write(ZoSWFFile& file) {
    for (const auto& image : fillImages_)
        if (image)
            file.Define(*image);
    const ZoAutoPtr2<ZoFDefineShapeTag> tag = BuildDefinitionTag(ClaimCharacterID(file));
    file.AddDefinitionTag(tag.get());
}

void ZoSWFShape::InitialiseForRewriting() {
    ZoSWFObject::InitialiseForRewriting();
    for (const auto& image : fillImages_)
        if (image)
            image->InitialiseForRewriting();
}

}  // namespace ZoFlash
