#include "geometry/grid_triangulation.h"

#include <algorithm>
#include <cmath>

#include "platform/zo_units.h"

ZoAutoPtr<TeskTriangulation> TeskGridTriangulation::Clone() const {
    return std::make_unique<TeskGridTriangulation>(*this);
}

void TeskGridTriangulation::GetTriangle(int32_t index, int32_t, TeskPoint2D& a, TeskPoint2D& b,
                                        TeskPoint2D& c) const {
    const int32_t row = index / (2 * across_);
    const int32_t column = (index % (2 * across_)) / 2;
    const bool secondHalf = index % 2 != 0;
    const TeskPoint2D topLeft{double(column) / across_, double(row) / down_};
    const TeskPoint2D bottomRight{double(column + 1) / across_, double(row + 1) / down_};
    const TeskPoint2D topRight{bottomRight.x, topLeft.y};
    const TeskPoint2D bottomLeft{topLeft.x, bottomRight.y};
    if (diagonal_ == kNorthWestSouthEast) {
        a = topLeft;
        b = secondHalf ? bottomRight : topRight;
        c = secondHalf ? bottomLeft : bottomRight;
    } else if (diagonal_ == kNorthEastSouthWest) {
        a = secondHalf ? topLeft : bottomRight;
        b = secondHalf ? topRight : bottomLeft;
        c = secondHalf ? bottomLeft : topRight;
    }
}

void TeskGridTriangulation::Read(ZoFolderFile& file) {
    ReadFields(file, {{&diagonal_, kNorthWestSouthEast}, {&across_, 5}, {&down_, 5}});
    across_ = BoundedCount(across_, 1);
    down_ = BoundedCount(down_, 1);
}

void TeskGridTriangulation::Write(ZoFolderFile& file) const {
    WriteFields(file, {diagonal_, across_, down_});
}

void TeskGridTriangulation::ChooseGrid(int32_t count, int32_t angle, const ZoRect& rect) {
    // Cells are about 1/slope as high as wide, so that their diagonals run
    // along the angle; the slope is kept within 1:4 either way.
    const int32_t a = angle % 180;
    double slope = 0.0;
    if (a == 0 || a == 90) {
        diagonal_ = kNorthWestSouthEast;
        slope = a == 0 ? 0.25 : 4.0;
    } else if (a < 90) {
        diagonal_ = kNorthEastSouthWest;
        slope = std::tan(a * kZoDegreesToRadians);
    } else {
        diagonal_ = kNorthWestSouthEast;
        slope = -std::tan(a * kZoDegreesToRadians);
    }
    slope = std::clamp(slope, 0.25, 4.0);

    // An empty rectangle or budget has no shape to follow: size as a square.
    const double width = rect.Width() > 0 && rect.Height() > 0 ? rect.Width() : 1.0;
    const double height = rect.Width() > 0 && rect.Height() > 0 ? rect.Height() : 1.0;
    const double n = std::max(count, 1);
    int32_t across = std::max(1, int32_t(std::sqrt(width * 0.5 * n / (height * slope)) + 0.5));
    int32_t down = std::max(1, int32_t(std::sqrt(height * 0.5 * n * slope / width) + 0.5));
    if (2 * across * down > count) {
        if (across > 1)
            --across;
        if (2 * across * down > count && down > 1)
            --down;
    } else {
        if ((2 * across + 2) * down <= count)
            ++across;
        if (2 * across * (down + 1) <= count)
            ++down;
    }
    // On a very long, thin rectangle raising a side to one cell can leave far
    // more triangles than asked for; the long side gives them back.
    while (2 * across * down > count && across * down > 1) {
        if (across >= down)
            --across;
        else
            --down;
    }
    across_ = across;
    down_ = down;
}
