// Cutting a poly shape by a directed line. The work happens on copies of the
// contours whose points carry flags; the shape is rebuilt from them at the end.
//
// Sides are compared exactly: a point is on the line only when its side is
// exactly 0 or when the cut itself put it there. Points the cut computes
// (crossings of straight segments, de Casteljau split points) are flagged
// instead of being measured again, so rounding never moves them off the line.
#include <algorithm>
#include <cmath>
#include <utility>

#include "geometry/poly_shape.h"

namespace ZoGeometry {
namespace {

enum CutFlag : uint16_t {
    kBoundary = 0x200,  // on the cutting line
    kStart = 0x400,     // the outline enters the kept side here
    kEnd = 0x800,       // the outline leaves the kept side here
};

struct CutPoint {
    ZoPolyPoint record;
    uint16_t flags = 0;
    double side = 0.0;  // ZoLineSide; 0 for boundary points

    bool Is(CutFlag flag) const noexcept { return (flags & flag) != 0; }
    bool OffLine() const noexcept { return !Is(kBoundary) && side != 0.0; }
};
using CutContour = std::vector<CutPoint>;

enum class Fate { kKeep, kDelete, kCross };

bool IsControl(ZoPolyPointKind kind) noexcept {
    return kind == ZoPolyPointKind::kQuadraticControl || kind == ZoPolyPointKind::kCubicControl1 ||
           kind == ZoPolyPointKind::kCubicControl2;
}

ZoDoublePoint Lerp(ZoDoublePoint p, ZoDoublePoint q, double t) noexcept {
    return {p.x + (q.x - p.x) * t, p.y + (q.y - p.y) * t};
}

bool InOpenUnit(double t) noexcept {
    return t > 0.0 && t < 1.0;
}

double Bernstein(double s0, double s1, double s2, double t) noexcept {
    const double u = 1.0 - t;
    return s0 * u * u + 2.0 * s1 * t * u + s2 * t * t;
}

// The one root in (0, 1) when s0 and s2 have opposite signs; used when the
// closed formula loses it to rounding.
double BisectCrossing(double s0, double s1, double s2) noexcept {
    double lo = 0.0;
    double hi = 1.0;
    for (int i = 0; i < 64; ++i) {
        const double mid = 0.5 * (lo + hi);
        if ((Bernstein(s0, s1, s2, mid) < 0.0) == (s0 < 0.0))
            lo = mid;
        else
            hi = mid;
    }
    return 0.5 * (lo + hi);
}

// Where the root of the linear Bernstein polynomial p·(1 − t) + q·t lies,
// when it changes sign inside (0, 1).
std::vector<double> LinearCrossing(double p, double q) {
    if ((p < 0.0 && q > 0.0) || (p > 0.0 && q < 0.0))
        return {p / (p - q)};
    return {};
}

// Parameters in (0, 1), ascending, at which a quadratic whose end points and
// control point have sides s0, s2 and s1 crosses the line. A curve that only
// touches the line (a double root) does not cross it, so it gives nothing.
std::vector<double> QuadraticCrossings(double s0, double s1, double s2) {
    // An end point on the line factors out of the Bernstein form exactly.
    if (s0 == 0.0)
        return LinearCrossing(2.0 * s1, s2);
    if (s2 == 0.0)
        return LinearCrossing(s0, 2.0 * s1);
    const double a = s0 - 2.0 * s1 + s2;
    const double b = 2.0 * (s1 - s0);
    std::vector<double> roots;
    if (a == 0.0) {
        roots.push_back(-s0 / b);
    } else {
        const double discriminant = b * b - 4.0 * a * s0;
        if (discriminant > 0.0) {
            // The stable pair of formulas: no cancellation between b and the root.
            const double q = -0.5 * (b + std::copysign(std::sqrt(discriminant), b));
            roots = {q / a, s0 / q};
        }
    }
    std::erase_if(roots, [](double t) { return !InOpenUnit(t); });
    std::sort(roots.begin(), roots.end());
    // End points on opposite sides cross once, on the same side an even
    // number of times; rounding near a tangent must not break that parity.
    if ((s0 < 0.0) != (s2 < 0.0)) {
        if (roots.size() != 1)
            roots = {BisectCrossing(s0, s1, s2)};
    } else if (roots.size() != 2 || roots[0] == roots[1]) {
        roots.clear();
    }
    return roots;
}

class Cutter {
  public:
    Cutter(ZoDoublePoint a, ZoDoublePoint b) noexcept : a_(a), b_(b) {}

    bool Run(std::vector<ZoPolyContour>& contours);

  private:
    struct Piece {
        size_t contour = 0;
        size_t start = 0;  // index of its start point in the cut contour
        size_t end = 0;
        int next = -1;  // the piece its end point is joined to along the line
        bool used = false;
    };

    // Rectangle edges are the usual cutting lines and callers truncate to
    // whole twips: a crossing computed as 99.999… would lose a twip, so on
    // an axis-parallel line the crossing takes the line's coordinate exactly.
    ZoDoublePoint OntoLine(ZoDoublePoint p) const noexcept {
        if (a_.y == b_.y)
            p.y = a_.y;
        if (a_.x == b_.x)
            p.x = a_.x;
        return p;
    }
    CutPoint Measure(const ZoPolyPoint& record) const noexcept {
        return {record, 0, ZoLineSide(a_, b_, record.point)};
    }
    CutContour Intersect(const ZoPolyContour& contour) const;
    void EmitStraight(const CutPoint& from, const ZoPolyPoint& to, CutContour& out) const;
    void EmitQuadratic(const CutPoint& from, const ZoPolyPoint& control, const ZoPolyPoint& to,
                       CutContour& out) const;
    static Fate Classify(CutContour& contour);
    void CollectPieces(size_t index, const CutContour& contour);
    void JoinAlongLine(const std::vector<CutContour>& cut);
    ZoPolyContour TakeLoop(size_t first, const std::vector<CutContour>& cut);

    ZoDoublePoint a_;
    ZoDoublePoint b_;
    std::vector<Piece> pieces_;
};

// Copies a contour, putting a boundary point wherever a straight or quadratic
// segment crosses the line and flagging segment start points that lie on it.
CutContour Cutter::Intersect(const ZoPolyContour& contour) const {
    CutContour out;
    const size_t n = contour.size();
    for (size_t i = 0; i < n;) {
        CutPoint from = Measure(contour[i]);
        size_t j = i + 1;
        if (IsControl(from.record.kind)) {
            out.push_back(from);
            i = j;
            continue;
        }
        const bool quadratic = j + 1 < n && contour[j].kind == ZoPolyPointKind::kQuadraticControl &&
                               contour[j + 1].kind == ZoPolyPointKind::kQuadratic;
        if (quadratic) {
            EmitQuadratic(from, contour[j], contour[j + 1], out);
            i = j + 1;
            continue;
        }
        if (j < n && IsControl(contour[j].kind)) {
            // Cubic segments are never produced by our callers and are not cut.
            out.push_back(from);
            for (; j < n && IsControl(contour[j].kind); ++j)
                out.push_back(Measure(contour[j]));
            i = j;
            continue;
        }
        EmitStraight(from, contour[j < n ? j : 0], out);
        i = j;
    }
    return out;
}

void Cutter::EmitStraight(const CutPoint& from, const ZoPolyPoint& to, CutContour& out) const {
    CutPoint start = from;
    if (start.side == 0.0)
        start.flags |= kBoundary;
    out.push_back(start);
    const double endSide = ZoLineSide(a_, b_, to.point);
    const std::vector<double> crossing = LinearCrossing(from.side, endSide);
    if (crossing.empty())
        return;
    const ZoDoublePoint at = OntoLine(Lerp(from.record.point, to.point, crossing.front()));
    out.push_back({{at, ZoPolyPointKind::kLinear}, kBoundary, 0.0});
}

void Cutter::EmitQuadratic(const CutPoint& from, const ZoPolyPoint& control, const ZoPolyPoint& to,
                           CutContour& out) const {
    CutPoint start = from;
    if (start.side == 0.0)
        start.flags |= kBoundary;
    out.push_back(start);
    const double controlSide = ZoLineSide(a_, b_, control.point);
    const double endSide = ZoLineSide(a_, b_, to.point);
    ZoDoublePoint p0 = from.record.point;
    ZoDoublePoint p1 = control.point;
    double done = 0.0;
    for (double t : QuadraticCrossings(from.side, controlSide, endSide)) {
        // Split what is left of the curve (p0, p1, to) at t, by de Casteljau.
        const double u = (t - done) / (1.0 - done);
        const ZoDoublePoint left = Lerp(p0, p1, u);
        const ZoDoublePoint right = Lerp(p1, to.point, u);
        const ZoDoublePoint split = OntoLine(Lerp(left, right, u));
        out.push_back(Measure({left, ZoPolyPointKind::kQuadraticControl}));
        out.push_back({{split, ZoPolyPointKind::kQuadratic}, kBoundary, 0.0});
        p0 = split;
        p1 = right;
        done = t;
    }
    out.push_back(Measure({p1, ZoPolyPointKind::kQuadraticControl}));
}

// Flags where the outline passes between the sides. Along a stretch of the
// outline that runs on the line, the start goes to the last boundary point
// of the stretch and the end to the first, so each passage is flagged once.
Fate Cutter::Classify(CutContour& contour) {
    const size_t n = contour.size();
    const auto reference =
        std::find_if(contour.begin(), contour.end(), [](const CutPoint& p) { return p.OffLine(); });
    if (reference == contour.end())
        return Fate::kDelete;
    size_t starts = 0;
    size_t ends = 0;
    for (size_t k = 0; k < n; ++k) {
        if (!contour[k].Is(kBoundary))
            continue;
        bool firstOfStretch = true;
        size_t before = (k + n - 1) % n;
        for (; !contour[before].OffLine(); before = (before + n - 1) % n)
            firstOfStretch = firstOfStretch && !contour[before].Is(kBoundary);
        bool lastOfStretch = true;
        size_t after = (k + 1) % n;
        for (; !contour[after].OffLine(); after = (after + 1) % n)
            lastOfStretch = lastOfStretch && !contour[after].Is(kBoundary);
        const double sideBefore = contour[before].side;
        const double sideAfter = contour[after].side;
        if (sideBefore > 0.0 && sideAfter < 0.0 && lastOfStretch) {
            contour[k].flags |= kStart;
            ++starts;
        } else if (sideBefore < 0.0 && sideAfter > 0.0 && firstOfStretch) {
            contour[k].flags |= kEnd;
            ++ends;
        }
    }
    if (starts == 0 && ends == 0)
        return reference->side < 0.0 ? Fate::kKeep : Fate::kDelete;
    return starts == ends ? Fate::kCross : Fate::kDelete;
}

// A piece runs from a start point to the next end point; whatever lies
// between an end point and the next start point is on the removed side.
void Cutter::CollectPieces(size_t index, const CutContour& contour) {
    const size_t n = contour.size();
    for (size_t k = 0; k < n; ++k) {
        if (!contour[k].Is(kStart))
            continue;
        size_t end = k;
        while (!contour[end].Is(kEnd))
            end = (end + 1) % n;
        pieces_.push_back({index, k, end});
    }
}

// Pairs the pieces' ends in their order along the line, first with second,
// third with fourth: that is where the kept region runs along the line.
// Ordering by the projection onto the line's direction gives the same pairs
// as ordering by x (or y for a vertical line), without the instability of
// nearly vertical lines.
void Cutter::JoinAlongLine(const std::vector<CutContour>& cut) {
    struct OnLine {
        double along;
        size_t piece;
        bool isStart;
    };
    std::vector<OnLine> points;
    const ZoDoublePoint direction{b_.x - a_.x, b_.y - a_.y};
    auto along = [&](const ZoDoublePoint& p) {
        return (p.x - a_.x) * direction.x + (p.y - a_.y) * direction.y;
    };
    for (size_t i = 0; i < pieces_.size(); ++i) {
        const CutContour& contour = cut[pieces_[i].contour];
        points.push_back({along(contour[pieces_[i].start].record.point), i, true});
        points.push_back({along(contour[pieces_[i].end].record.point), i, false});
    }
    std::stable_sort(points.begin(), points.end(),
                     [](const OnLine& p, const OnLine& q) { return p.along < q.along; });
    for (size_t i = 0; i + 1 < points.size(); i += 2) {
        const OnLine& p = points[i];
        const OnLine& q = points[i + 1];
        // Contours wound against each other's sense could pair two starts;
        // such pieces are closed on themselves instead.
        if (!p.isStart && q.isStart)
            pieces_[p.piece].next = static_cast<int>(q.piece);
        else if (p.isStart && !q.isStart)
            pieces_[q.piece].next = static_cast<int>(p.piece);
    }
}

// Follows pieces and their partners until the outline returns to `first`.
ZoPolyContour Cutter::TakeLoop(size_t first, const std::vector<CutContour>& cut) {
    ZoPolyContour loop;
    for (int current = static_cast<int>(first); current >= 0 && !pieces_[current].used;
         current = pieces_[current].next) {
        Piece& piece = pieces_[current];
        piece.used = true;
        const CutContour& contour = cut[piece.contour];
        for (size_t k = piece.start;; k = (k + 1) % contour.size()) {
            ZoPolyPoint record = contour[k].record;
            // The segment into a start point runs along the line: straight.
            if (k == piece.start || record.kind == ZoPolyPointKind::kMove)
                record.kind = ZoPolyPointKind::kLinear;
            loop.push_back(record);
            if (k == piece.end)
                break;
        }
    }
    loop.front().kind = ZoPolyPointKind::kMove;
    return loop;
}

bool EnclosesNothing(const ZoPolyContour& contour) {
    if (contour.size() < 3)
        return true;
    return std::all_of(contour.begin(), contour.end(),
                       [&](const ZoPolyPoint& p) { return p.point == contour.front().point; });
}

bool Cutter::Run(std::vector<ZoPolyContour>& contours) {
    std::vector<CutContour> cut;
    std::vector<Fate> fates;
    for (const ZoPolyContour& contour : contours) {
        cut.push_back(Intersect(contour));
        fates.push_back(Classify(cut.back()));
        if (fates.back() == Fate::kCross)
            CollectPieces(cut.size() - 1, cut.back());
    }
    JoinAlongLine(cut);

    std::vector<ZoPolyContour> result;
    bool changed = false;
    for (size_t i = 0; i < contours.size(); ++i) {
        if (fates[i] == Fate::kKeep) {
            result.push_back(std::move(contours[i]));
            continue;
        }
        changed = true;
        for (size_t p = 0; p < pieces_.size(); ++p) {
            if (pieces_[p].contour != i || pieces_[p].used)
                continue;
            ZoPolyContour loop = TakeLoop(p, cut);
            if (!EnclosesNothing(loop))
                result.push_back(std::move(loop));
        }
    }
    contours = std::move(result);
    return changed;
}

}  // namespace

bool ZoPolyShape::Cut(ZoDoublePoint a, ZoDoublePoint b) {
    return Cutter(a, b).Run(contours_);
}

}  // namespace ZoGeometry
