#pragma once
// Outlines in double precision, in the caller's space (twips, y down): closed
// contours of straight and quadratic segments that can be cut by a directed
// line. Cutting by the edges of a polygon listed clockwise on screen, one
// edge after the other, leaves the shape's intersection with that polygon.
#include <cstdint>
#include <vector>

namespace ZoGeometry {

/// A point in double precision.
struct ZoDoublePoint {
    double x = 0.0;
    double y = 0.0;
    friend bool operator==(const ZoDoublePoint&, const ZoDoublePoint&) = default;
};

/// A bounding rectangle in double precision (left <= right, top <= bottom).
struct ZoDoubleRect {
    double left = 0.0;
    double top = 0.0;
    double right = 0.0;
    double bottom = 0.0;
    friend bool operator==(const ZoDoubleRect&, const ZoDoubleRect&) = default;
};

/// The 2-D affine map x' = a·x + b·y + tx, y' = c·x + d·y + ty.
struct ZoAffineMatrix {
    double a = 1.0;
    double b = 0.0;
    double c = 0.0;
    double d = 1.0;
    double tx = 0.0;
    double ty = 0.0;

    static constexpr ZoAffineMatrix Scale(double sx, double sy) noexcept {
        return {sx, 0.0, 0.0, sy, 0.0, 0.0};
    }
    static constexpr ZoAffineMatrix Translate(double dx, double dy) noexcept {
        return {1.0, 0.0, 0.0, 1.0, dx, dy};
    }
    /// This map followed by `next`.
    constexpr ZoAffineMatrix Then(const ZoAffineMatrix& next) const noexcept {
        return {next.a * a + next.b * c,
                next.a * b + next.b * d,
                next.c * a + next.d * c,
                next.c * b + next.d * d,
                next.a * tx + next.b * ty + next.tx,
                next.c * tx + next.d * ty + next.ty};
    }
    constexpr ZoDoublePoint Apply(ZoDoublePoint p) const noexcept {
        return {a * p.x + b * p.y + tx, c * p.x + d * p.y + ty};
    }
};

/// What a point record ends or starts; the values are the stored kind codes.
enum class ZoPolyPointKind : uint8_t {
    kLinear = 0,            ///< end of a straight segment from the previous point
    kQuadratic = 1,         ///< end of a quadratic segment (control point before it)
    kQuadraticControl = 2,  ///< control point of the following quadratic end point
    kCubic = 3,             ///< end of a cubic segment (never cut)
    kCubicControl1 = 4,
    kCubicControl2 = 5,
    kMove = 6,  ///< start of a contour
};

/// One point record of a contour.
struct ZoPolyPoint {
    ZoDoublePoint point;
    ZoPolyPointKind kind = ZoPolyPointKind::kLinear;
    friend bool operator==(const ZoPolyPoint&, const ZoPolyPoint&) = default;
};

/// A closed contour: after its last point the outline returns to the first
/// with a straight segment.
using ZoPolyContour = std::vector<ZoPolyPoint>;

/// An ordered list of closed contours.
class ZoPolyShape {
  public:
    /// Index of a new empty contour.
    int32_t AddContour();
    /// Appends a point record to `contour`.
    void AddPoint(int32_t contour, ZoPolyPointKind kind, ZoDoublePoint point);
    void RemoveContour(int32_t index);
    void Clear() noexcept { contours_.clear(); }

    int32_t ContourCount() const noexcept { return static_cast<int32_t>(contours_.size()); }
    const ZoPolyContour& Contour(int32_t index) const { return contours_.at(index); }
    const std::vector<ZoPolyContour>& Contours() const noexcept { return contours_; }

    /// Applies `matrix` to every point, control points included.
    void Transform(const ZoAffineMatrix& matrix) noexcept;
    /// The bounds of all points, control points included; all zero when the
    /// shape has no points.
    ZoDoubleRect GetBounds() const noexcept;

    /// Keeps the part of the shape on the right-hand side (on screen, y down)
    /// of the directed line a→b, a ≠ b; points on the line are kept. Returns
    /// true when anything was removed.
    bool Cut(ZoDoublePoint a, ZoDoublePoint b);

    friend bool operator==(const ZoPolyShape&, const ZoPolyShape&) = default;

  private:
    std::vector<ZoPolyContour> contours_;
};

/// The side of `p` with respect to the directed line a→b, scaled by |b − a|:
/// positive on the side a cut removes, zero on the line.
constexpr double ZoLineSide(ZoDoublePoint a, ZoDoublePoint b, ZoDoublePoint p) noexcept {
    return (b.y - a.y) * (p.x - a.x) - (b.x - a.x) * (p.y - a.y);
}

}  // namespace ZoGeometry
