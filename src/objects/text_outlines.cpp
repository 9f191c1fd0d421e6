#include "objects/text_outlines.h"

#include <algorithm>
#include <cmath>

#include "flash/swf_shape.h"
#include "objects/text_glyph_walk.h"
#include "platform/zo_units.h"

namespace {

using ZoGeometry::ZoAffineMatrix;
using ZoGeometry::ZoDoublePoint;
using ZoGeometry::ZoDoubleRect;
using ZoGeometry::ZoPolyContour;
using ZoGeometry::ZoPolyPointKind;
using ZoGeometry::ZoPolyShape;

ZoDoublePoint ToDouble(ZoGlyphPoint p) noexcept {
    return {static_cast<double>(p.x), static_cast<double>(p.y)};
}

ZoDoublePoint ToDouble(ZoPoint p) noexcept {
    return {static_cast<double>(p.x), static_cast<double>(p.y)};
}

// Shapes are written in whole twips, truncated toward zero.
ZoPoint ToTwips(ZoDoublePoint p) noexcept {
    return {static_cast<int32_t>(p.x), static_cast<int32_t>(p.y)};
}

ZoPolyShape ToPolyShape(const ZoGlyphOutline& outline) {
    ZoPolyShape shape;
    int32_t contour = -1;
    for (const ZoGlyphSegment& segment : outline) {
        switch (segment.kind) {
            case ZoGlyphSegmentKind::Move:
                contour = shape.AddContour();
                shape.AddPoint(contour, ZoPolyPointKind::kMove, ToDouble(segment.end));
                break;
            case ZoGlyphSegmentKind::Line:
                shape.AddPoint(contour, ZoPolyPointKind::kLinear, ToDouble(segment.end));
                break;
            case ZoGlyphSegmentKind::Quadratic:
                shape.AddPoint(contour, ZoPolyPointKind::kQuadraticControl,
                               ToDouble(segment.control));
                shape.AddPoint(contour, ZoPolyPointKind::kQuadratic, ToDouble(segment.end));
                break;
        }
    }
    return shape;
}

// The face's underline stroke under the pen's path from `pen` to `endX`;
// FreeType gives the stroke's centre line, font units growing upwards.
ZoPolyShape Underline(const ZoFontFace& face, double scale, ZoPoint pen, int32_t endX) {
    const double thickness = std::max(face.UnderlineThicknessUnits(), 1) * scale;
    const double top = pen.y - face.UnderlinePositionUnits() * scale - thickness / 2;
    const double left = pen.x, right = endX, bottom = top + thickness;
    ZoPolyShape shape;
    const int32_t contour = shape.AddContour();
    shape.AddPoint(contour, ZoPolyPointKind::kMove, {left, top});
    shape.AddPoint(contour, ZoPolyPointKind::kLinear, {right, top});
    shape.AddPoint(contour, ZoPolyPointKind::kLinear, {right, bottom});
    shape.AddPoint(contour, ZoPolyPointKind::kLinear, {left, bottom});
    return shape;
}

// The bullet's disc, from eight quadratic arcs of 45 degrees, as the whole
// text draws it.
ZoPolyShape Disc(const ZoRect& square) {
    const double cx = (square.left + square.right) / 2.0, cy = (square.top + square.bottom) / 2.0;
    const double rx = square.Width() / 2.0, ry = square.Height() / 2.0;
    const double step = std::acos(-1.0) / 4, reach = 1 / std::cos(step / 2);
    const auto at = [&](double angle, double scale) -> ZoDoublePoint {
        return {cx + std::cos(angle) * rx * scale, cy + std::sin(angle) * ry * scale};
    };
    ZoPolyShape shape;
    const int32_t contour = shape.AddContour();
    shape.AddPoint(contour, ZoPolyPointKind::kMove, at(0, 1));
    for (int i = 0; i < 8; ++i) {
        shape.AddPoint(contour, ZoPolyPointKind::kQuadraticControl, at((i + 0.5) * step, reach));
        shape.AddPoint(contour, ZoPolyPointKind::kQuadratic, at((i + 1) * step, 1));
    }
    return shape;
}

ZoDoubleRect Union(const ZoDoubleRect& a, const ZoDoubleRect& b) noexcept {
    return {std::min(a.left, b.left), std::min(a.top, b.top), std::max(a.right, b.right),
            std::max(a.bottom, b.bottom)};
}

bool Meet(const ZoDoubleRect& a, const ZoDoubleRect& b) noexcept {
    return a.left <= b.right && b.left <= a.right && a.top <= b.bottom && b.top <= a.bottom;
}

struct Corners {
    ZoDoublePoint a, b, c;
};

// Cutting keeps the right-hand side of each edge, which is the inside of a
// triangle running clockwise on screen; a triangle given the other way round
// is turned, and one without area cuts everything away.
std::optional<Corners> ClockwiseCorners(const TeskTriangle& triangle) noexcept {
    Corners corners{ToDouble(triangle[0]), ToDouble(triangle[1]), ToDouble(triangle[2])};
    const auto& [a, b, c] = corners;
    const double turn = (b.x - a.x) * (c.y - b.y) - (b.y - a.y) * (c.x - b.x);
    if (turn == 0.0)
        return std::nullopt;
    if (turn < 0.0)
        std::swap(corners.b, corners.c);
    return corners;
}

ZoDoubleRect BoundsOf(const Corners& t) noexcept {
    return {std::min({t.a.x, t.b.x, t.c.x}), std::min({t.a.y, t.b.y, t.c.y}),
            std::max({t.a.x, t.b.x, t.c.x}), std::max({t.a.y, t.b.y, t.c.y})};
}

void DrawContour(ZoFlash::ZoSWFShape& shape, const ZoPolyContour& contour) {
    if (contour.size() < 3)
        return;
    const ZoPoint start = ToTwips(contour.front().point);
    shape.MoveTo(start);
    ZoPoint control;
    for (size_t i = 1; i < contour.size(); ++i) {
        const ZoPoint point = ToTwips(contour[i].point);
        switch (contour[i].kind) {
            case ZoPolyPointKind::kQuadraticControl:
                control = point;
                break;
            case ZoPolyPointKind::kQuadratic:
                shape.CurveTo(control, point);
                break;
            default:
                shape.LineTo(point);
                break;
        }
    }
    shape.LineTo(start);
}

}  // namespace

TeskTextOutlines::TeskTextOutlines(const std::vector<ZoTextLine>& lines, const ZoRect& objectRect)
    : objectRect_(objectRect) {
    TeskForEachItem(lines, objectRect, [this](const ZoTextItem& item, const TeskItemStart& start) {
        AddItem(item, start);
    });
}

void TeskTextOutlines::AddItem(const ZoTextItem& item, const TeskItemStart& start) {
    Group group;
    group.colour = item.format->Colour();
    if (start.bullet)
        AddGlyph(group, Disc(*start.bullet));
    const ZoFontFace& face = item.font->Face();
    const double scale =
        static_cast<double>(ZoPixelsToTwips(item.font->PixelSize())) / face.UnitsPerEm();
    const ZoPoint pen = start.pen;
    int32_t x = pen.x;
    TeskForEachGlyph(item, [&](char32_t character, int32_t advance) {
        ZoPolyShape outline = ToPolyShape(face.Outline(character));
        // Font units grow upwards from the baseline; twips grow downwards.
        outline.Transform(ZoAffineMatrix{scale, 0.0, 0.0, -scale, static_cast<double>(x),
                                         static_cast<double>(pen.y)});
        AddGlyph(group, std::move(outline));
        x += advance;
    });
    if (item.format->IsUnderlined() && x != pen.x)
        AddGlyph(group, Underline(face, scale, pen, x));
    if (!group.glyphs.empty())
        groups_.push_back(std::move(group));
}

void TeskTextOutlines::AddGlyph(Group& group, ZoPolyShape outline) {
    // Blanks such as spaces have no outline, only their advance.
    if (outline.ContourCount() == 0)
        return;
    const ZoDoubleRect bounds = outline.GetBounds();
    group.bounds = group.glyphs.empty() ? bounds : Union(group.bounds, bounds);
    group.glyphs.push_back({std::move(outline), bounds});
}

void TeskTextOutlines::AddPiece(ZoFlash::ZoSWFShape& shape, const TeskTriangle& triangle,
                                std::optional<COLORREF> fill) const {
    const auto corners = ClockwiseCorners(triangle);
    if (!corners)
        return;
    const auto& [a, b, c] = *corners;
    const ZoDoubleRect box = BoundsOf(*corners);
    for (const Group& group : groups_) {
        if (!Meet(group.bounds, box))
            continue;
        for (const Glyph& glyph : group.glyphs) {
            if (!Meet(glyph.bounds, box))
                continue;
            ZoPolyShape piece = glyph.outline;
            piece.Cut(a, b);
            piece.Cut(b, c);
            piece.Cut(c, a);
            if (piece.ContourCount() == 0)
                continue;
            if (fill != group.colour) {
                shape.SetSolidFill(group.colour, 255);
                fill = group.colour;
            }
            for (const ZoPolyContour& contour : piece.Contours())
                DrawContour(shape, contour);
        }
    }
}
