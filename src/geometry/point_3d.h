#pragma once
// Points of the 3D effects: twips relative to the centre of the object
// rectangle, x to the right, y down the screen, z towards the viewer. The
// screen is the plane z = 0.
#include <cmath>

/// A point or direction in 3D space.
struct TeskPoint3D {
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;

    friend constexpr TeskPoint3D operator-(const TeskPoint3D& p, const TeskPoint3D& q) noexcept {
        return {p.x - q.x, p.y - q.y, p.z - q.z};
    }
    friend bool operator==(const TeskPoint3D&, const TeskPoint3D&) = default;
};

constexpr TeskPoint3D TeskCross(const TeskPoint3D& a, const TeskPoint3D& b) noexcept {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

constexpr double TeskDot(const TeskPoint3D& a, const TeskPoint3D& b) noexcept {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

inline double TeskLength(const TeskPoint3D& p) noexcept {
    return std::sqrt(TeskDot(p, p));
}

/// `p` scaled to length 1; a zero vector stays as it is.
inline TeskPoint3D TeskNormalise(const TeskPoint3D& p) noexcept {
    const double length = TeskLength(p);
    if (length == 0.0)
        return p;
    return {p.x / length, p.y / length, p.z / length};
}
