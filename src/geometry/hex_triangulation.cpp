#include "geometry/hex_triangulation.h"

#include <algorithm>
#include <cmath>

ZoAutoPtr<TeskTriangulation> TeskHexTriangulation::Clone() const {
    return std::make_unique<TeskHexTriangulation>(*this);
}

void TeskHexTriangulation::GetTriangle(int32_t index, int32_t, TeskPoint2D& a, TeskPoint2D& b,
                                       TeskPoint2D& c) const {
    const int32_t row = index / across_;
    const int32_t column = index % across_;
    const double y0 = double(row) / down_;
    const double y1 = double(row + 1) / down_;
    // Apex positions k / (across − 1), each computed the same way wherever it
    // is used, so that neighbours share their edges exactly.
    const auto apex = [this](int32_t k) { return double(k) / (across_ - 1); };
    const double left = std::max(apex(column - 1), 0.0);
    const double middle = apex(column);
    const double right = std::min(apex(column + 1), 1.0);
    if (row % 2 == column % 2) {
        a = {left, y0};
        b = {right, y0};
        c = {middle, y1};
    } else {
        a = {right, y1};
        b = {left, y1};
        c = {middle, y0};
    }
}

void TeskHexTriangulation::Read(ZoFolderFile& file) {
    ReadFields(file, {{&across_, 5}, {&down_, 5}});
    across_ = BoundedCount(across_, 2);
    down_ = BoundedCount(down_, 1);
}

void TeskHexTriangulation::Write(ZoFolderFile& file) const {
    WriteFields(file, {across_, down_});
}

void TeskHexTriangulation::SetAcross(int32_t across) noexcept {
    across_ = std::max(across, 2);
}

void TeskHexTriangulation::ChooseGrid(int32_t count, const ZoRect& rect) {
    // Half the height of an equilateral triangle of unit side.
    constexpr double k = 0.8660254037844386 / 2.0;
    const bool usable = rect.Width() > 0 && rect.Height() > 0;
    const double width = usable ? rect.Width() : 1.0;
    const double height = usable ? rect.Height() : 1.0;
    const int32_t n = std::max(count, 2);
    across_ = int32_t(std::sqrt(width * n / (height * k)) + 0.5);
    down_ = int32_t(std::sqrt(height * n * k / width) + 0.5);
    // A rectangle too thin for the grid's limits gets a single row (or the
    // narrowest rows) carrying the whole budget.
    if (down_ < 1) {
        down_ = 1;
        across_ = n;
    }
    if (across_ < 2) {
        across_ = 2;
        down_ = std::max(1, n / 2);
    }
}
