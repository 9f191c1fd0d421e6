#include "geometry/matrix_3d.h"

#include <cmath>

namespace {

// A turn in the plane of axes i and j: c on both diagonal places, s at (i, j)
// and −s at (j, i).
template <typename Matrix>
Matrix Turn(std::size_t i, std::size_t j, double radians) noexcept {
    Matrix m;
    m(i, i) = m(j, j) = std::cos(radians);
    m(i, j) = std::sin(radians);
    m(j, i) = -m(i, j);
    return m;
}

// `values` down the diagonal (a scale) or down the last column (a translation).
template <typename Matrix, std::size_t K>
Matrix WithEntries(const std::array<double, K>& values, bool onDiagonal) noexcept {
    Matrix m;
    for (std::size_t i = 0; i < K; ++i)
        m(i, onDiagonal ? i : K) = values[i];
    return m;
}

}  // namespace

TeskMatrix4 TeskMatrix4::Translation(double tx, double ty, double tz) noexcept {
    return WithEntries<TeskMatrix4, 3>({tx, ty, tz}, false);
}

TeskMatrix4 TeskMatrix4::Scale(double sx, double sy, double sz) noexcept {
    return WithEntries<TeskMatrix4, 3>({sx, sy, sz}, true);
}

TeskMatrix4 TeskMatrix4::RotationX(double radians) noexcept {
    return Turn<TeskMatrix4>(1, 2, radians);
}

TeskMatrix4 TeskMatrix4::RotationY(double radians) noexcept {
    return Turn<TeskMatrix4>(2, 0, radians);
}

TeskMatrix4 TeskMatrix4::RotationZ(double radians) noexcept {
    return Turn<TeskMatrix4>(0, 1, radians);
}

TeskPoint3D TeskMatrix4::Transform(const TeskPoint3D& p) const noexcept {
    const std::array<double, 3> v{p.x, p.y, p.z};
    const double w = Row(3, v);
    return {Row(0, v) / w, Row(1, v) / w, Row(2, v) / w};
}

TeskMatrix3 TeskMatrix3::Translation(double tx, double ty) noexcept {
    return WithEntries<TeskMatrix3, 2>({tx, ty}, false);
}

TeskMatrix3 TeskMatrix3::Scale(double sx, double sy) noexcept {
    return WithEntries<TeskMatrix3, 2>({sx, sy}, true);
}

TeskMatrix3 TeskMatrix3::Rotation(double radians) noexcept {
    return Turn<TeskMatrix3>(0, 1, radians);
}

TeskPoint2D TeskMatrix3::Transform(const TeskPoint2D& p) const noexcept {
    const std::array<double, 2> v{p.x, p.y};
    const double w = Row(2, v);
    return {Row(0, v) / w, Row(1, v) / w};
}
