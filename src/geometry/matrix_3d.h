#pragma once
// Row-major matrices of doubles applied to column vectors, with the result
// divided by its last component: 4 × 4 for points in 3D space, 3 × 3 for the
// plane. Rotations use c = cos θ, s = sin θ in the rows below; θ in radians.
#include <array>
#include <cstddef>

#include "geometry/point_2d.h"
#include "geometry/point_3d.h"

/// What the 3D and the plane matrices share: elements, identity, composition.
template <std::size_t N>
class TeskSquareMatrix {
  public:
    /// The identity.
    constexpr TeskSquareMatrix() noexcept {
        for (std::size_t i = 0; i < N; ++i)
            m_[i * N + i] = 1.0;
    }
    double operator()(std::size_t row, std::size_t column) const noexcept {
        return m_[row * N + column];
    }
    double& operator()(std::size_t row, std::size_t column) noexcept {
        return m_[row * N + column];
    }
    friend bool operator==(const TeskSquareMatrix&, const TeskSquareMatrix&) = default;

  protected:
    /// This becomes next · this, so that `next` acts after it.
    void Compose(const TeskSquareMatrix& next) noexcept {
        std::array<double, N * N> product{};
        for (std::size_t row = 0; row < N; ++row) {
            for (std::size_t column = 0; column < N; ++column) {
                for (std::size_t k = 0; k < N; ++k)
                    product[row * N + column] += next.m_[row * N + k] * m_[k * N + column];
            }
        }
        m_ = product;
    }
    /// The row `row` applied to (v, 1).
    template <typename Vector>
    double Row(std::size_t row, const Vector& v) const noexcept {
        double sum = m_[row * N + N - 1];
        for (std::size_t k = 0; k + 1 < N; ++k)
            sum += m_[row * N + k] * v[k];
        return sum;
    }

  private:
    std::array<double, N * N> m_{};
};

/// A 3D transformation: translation in the fourth column, projective row last.
class TeskMatrix4 : public TeskSquareMatrix<4> {
  public:
    static TeskMatrix4 Translation(double tx, double ty, double tz) noexcept;
    static TeskMatrix4 Scale(double sx, double sy, double sz) noexcept;
    /// Rows (1, 0, 0), (0, c, s), (0, −s, c).
    static TeskMatrix4 RotationX(double radians) noexcept;
    /// Rows (c, 0, −s), (0, 1, 0), (s, 0, c).
    static TeskMatrix4 RotationY(double radians) noexcept;
    /// Rows (c, s, 0), (−s, c, 0), (0, 0, 1).
    static TeskMatrix4 RotationZ(double radians) noexcept;

    /// Makes `next` act after this matrix: this becomes next · this.
    TeskMatrix4& Apply(const TeskMatrix4& next) noexcept {
        Compose(next);
        return *this;
    }
    /// The transformed point, divided by its w.
    TeskPoint3D Transform(const TeskPoint3D& p) const noexcept;
};

/// A transformation of the plane in homogeneous coordinates (x, y, 1).
class TeskMatrix3 : public TeskSquareMatrix<3> {
  public:
    static TeskMatrix3 Translation(double tx, double ty) noexcept;
    static TeskMatrix3 Scale(double sx, double sy) noexcept;
    /// About the origin: rows (c, s), (−s, c).
    static TeskMatrix3 Rotation(double radians) noexcept;

    /// Makes `next` act after this matrix: this becomes next · this.
    TeskMatrix3& Apply(const TeskMatrix3& next) noexcept {
        Compose(next);
        return *this;
    }
    /// The transformed point, divided by its third component.
    TeskPoint2D Transform(const TeskPoint2D& p) const noexcept;
};
