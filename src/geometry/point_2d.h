#pragma once
// Points of the triangulations, in the unit square of an object: (0, 0) is
// its top-left corner, (1, 1) its bottom-right, y grows downwards.

/// A point in unit space.
struct TeskPoint2D {
    double x = 0.0;
    double y = 0.0;

    constexpr TeskPoint2D& operator+=(const TeskPoint2D& p) noexcept {
        x += p.x;
        y += p.y;
        return *this;
    }
    constexpr TeskPoint2D& operator-=(const TeskPoint2D& p) noexcept {
        x -= p.x;
        y -= p.y;
        return *this;
    }
    friend constexpr TeskPoint2D operator+(TeskPoint2D p, const TeskPoint2D& q) noexcept {
        return p += q;
    }
    friend constexpr TeskPoint2D operator-(TeskPoint2D p, const TeskPoint2D& q) noexcept {
        return p -= q;
    }
    friend constexpr TeskPoint2D operator*(const TeskPoint2D& p, double s) noexcept {
        return {p.x * s, p.y * s};
    }
    friend constexpr TeskPoint2D operator*(double s, const TeskPoint2D& p) noexcept {
        return p * s;
    }
    friend bool operator==(const TeskPoint2D&, const TeskPoint2D&) = default;
};

/// p·(1 − t) + q·t.
constexpr TeskPoint2D TeskBlend(const TeskPoint2D& p, const TeskPoint2D& q, double t) noexcept {
    return p * (1.0 - t) + q * t;
}

/// The z component of u × v.
constexpr double TeskCross(const TeskPoint2D& u, const TeskPoint2D& v) noexcept {
    return u.x * v.y - u.y * v.x;
}

/// (b − a) × (c − b): strictly positive for a triangle that runs clockwise on
/// screen, which every triangle handed out by a triangulation does.
constexpr double TeskWinding(const TeskPoint2D& a, const TeskPoint2D& b,
                             const TeskPoint2D& c) noexcept {
    return TeskCross(b - a, c - b);
}
