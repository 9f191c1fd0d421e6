#include "effects/animation_path.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "objects/field_visitor.h"
#include "platform/folder_file.h"

namespace {

// The control points of a curve of degree 1 to 3 (the first degree + 1 used).
using Control = std::array<TeskPoint2D, 4>;

// Halving a curve this often leaves pieces far shorter than a twip.
constexpr int kMaxSplits = 24;

double Distance(const TeskPoint2D& a, const TeskPoint2D& b) noexcept {
    return std::hypot(b.x - a.x, b.y - a.y);
}

double PolygonLength(const Control& c, int degree) noexcept {
    double length = 0.0;
    for (int i = 0; i < degree; ++i)
        length += Distance(c[i], c[i + 1]);
    return length;
}

// De Casteljau's construction at `t`.
TeskPoint2D PointAt(Control c, int degree, double t) noexcept {
    for (int level = degree; level > 0; --level) {
        for (int i = 0; i < level; ++i)
            c[i] = TeskBlend(c[i], c[i + 1], t);
    }
    return c[0];
}

// The two halves of the curve, split at 0.5 by de Casteljau's construction.
void Halve(const Control& c, int degree, Control& left, Control& right) noexcept {
    Control work = c;
    left[0] = work[0];
    right[degree] = work[degree];
    for (int level = 1; level <= degree; ++level) {
        for (int i = 0; i <= degree - level; ++i)
            work[i] = TeskBlend(work[i], work[i + 1], 0.5);
        left[level] = work[0];
        right[degree - level] = work[degree - level];
    }
}

// Halves the curve until its control polygon is within `tolerance` of its
// chord, then sums the polygons.
double LengthWithin(const Control& c, int degree, double tolerance, int splits) noexcept {
    const double polygon = PolygonLength(c, degree);
    if (polygon - Distance(c[0], c[degree]) <= tolerance || splits == kMaxSplits)
        return polygon;
    Control left, right;
    Halve(c, degree, left, right);
    return LengthWithin(left, degree, tolerance, splits + 1) +
           LengthWithin(right, degree, tolerance, splits + 1);
}

// How many nodes after a node of `kind` its segment's curve runs through.
int DegreeOf(int32_t kind) noexcept {
    switch (kind) {
        case TeskAnimationPath::kLine:
            return 1;
        case TeskAnimationPath::kQuadratic:
            return 2;
        case TeskAnimationPath::kCubic:
            return 3;
        default:
            return 0;
    }
}

}  // namespace

void TeskAnimationPath::InsertNode(int32_t index, int32_t kind, TeskPoint2D point) {
    nodes_.insert(nodes_.begin() + index, PathNode{kind, point, 0.0});
    for (PathKey& key : keys_) {
        if (key.node >= index)
            ++key.node;
    }
    prepared_ = false;
}

void TeskAnimationPath::RemoveNode(int32_t index) {
    nodes_.erase(nodes_.begin() + index);
    for (PathKey& key : keys_) {
        if (key.node > index)
            --key.node;
    }
    prepared_ = false;
}

void TeskAnimationPath::InsertKey(int32_t index, int32_t node, double time) {
    keys_.insert(keys_.begin() + index, PathKey{node, time, 0.0});
    prepared_ = false;
}

void TeskAnimationPath::RemoveKey(int32_t index) {
    keys_.erase(keys_.begin() + index);
    prepared_ = false;
}

void TeskAnimationPath::AppendArc(TeskPoint2D start, TeskPoint2D end, TeskPoint2D centre,
                                  bool clockwise) {
    // The handle length that makes a cubic closest to a quarter circle.
    constexpr double kappa = 0.5522847498;
    const int32_t countBefore = GetNodeCount();
    int32_t added = 3;
    if (!nodes_.empty() && nodes_.back().point == start) {
        nodes_.back().kind = kCubic;
    } else {
        nodes_.push_back({kCubic, start, 0.0});
        added = 4;
    }
    const TeskPoint2D a = start - centre, b = end - centre;
    const double turn = clockwise ? 1.0 : -1.0;
    nodes_.push_back({kFirstControl, {start.x - turn * kappa * a.y, start.y + turn * kappa * a.x}});
    nodes_.push_back({kSecondControl, {end.x + turn * kappa * b.y, end.y - turn * kappa * b.x}});
    nodes_.push_back({kLine, end, 0.0});
    for (PathKey& key : keys_) {
        if (key.node >= countBefore - 1)
            key.node += added;
    }
    prepared_ = false;
}

TeskPoint2D TeskAnimationPath::PointOf(int32_t index) const noexcept {
    if (nodes_.empty())
        return {};
    return nodes_[static_cast<size_t>(std::clamp(index, 0, GetNodeCount() - 1))].point;
}

double TeskAnimationPath::CurveLength(int32_t first, int32_t degree) const noexcept {
    Control c;
    for (int32_t i = 0; i <= degree; ++i)
        c[i] = PointOf(first + i);
    // The tolerance stays that of the whole curve at every split.
    return LengthWithin(c, degree, 0.01 * PolygonLength(c, degree), 0);
}

TeskPoint2D TeskAnimationPath::CurvePoint(int32_t first, int32_t degree,
                                          double parameter) const noexcept {
    Control c;
    for (int32_t i = 0; i <= degree; ++i)
        c[i] = PointOf(first + i);
    return PointAt(c, degree, parameter);
}

void TeskAnimationPath::Prepare() {
    size_t k = 0;
    if (!keys_.empty())
        keys_[0].span = 0.0;
    for (int32_t i = 0; i + 1 < GetNodeCount(); ++i) {
        if (k + 1 < keys_.size() && keys_[k + 1].node == i)
            keys_[++k].span = 0.0;
        PathNode& node = nodes_[static_cast<size_t>(i)];
        const int degree = DegreeOf(node.kind);
        if (degree > 0)
            node.length = CurveLength(i, degree);
        else if (node.kind == kEnd)
            node.length = 0.0;
        if (!keys_.empty())
            keys_[k].span += node.length;
        // The control points belong to the segment just measured.
        i += std::max(degree - 1, 0);
    }
    prepared_ = true;
}

TeskPoint2D TeskAnimationPath::PointAlong(const PathKey& from, const PathKey& to,
                                          double along) const noexcept {
    for (int32_t i = from.node; i < to.node && i >= 0 && i < GetNodeCount(); ++i) {
        const PathNode& node = nodes_[static_cast<size_t>(i)];
        const int degree = DegreeOf(node.kind);
        if (degree == 0)
            continue;
        if (along < node.length)
            return CurvePoint(i, degree, along / node.length);
        along -= node.length;
        i += degree - 1;
    }
    return PointOf(to.node);
}

TeskPoint2D TeskAnimationPath::Evaluate(double time) const {
    if (!prepared_) {
        TeskAnimationPath prepared = *this;
        prepared.Prepare();
        return prepared.Evaluate(time);
    }
    if (keys_.size() < 2)
        return PointOf(keys_.empty() ? 0 : keys_[0].node);
    size_t k = 0;
    while (k + 2 < keys_.size() && time > keys_[k + 1].time)
        ++k;
    const PathKey& from = keys_[k];
    const PathKey& to = keys_[k + 1];
    const double duration = to.time - from.time;
    const double share = duration != 0.0 ? (time - from.time) / duration : 0.0;
    return PointAlong(from, to, share * from.span);
}

void TeskAnimationPath::VisitFields(TeskFieldVisitor& visitor) {
    visitor.List(
        "nodes", nodes_.size(), [this](size_t size) { nodes_.resize(size); },
        [this, &visitor](size_t index) {
            PathNode& node = nodes_[index];
            visitor.Field("kind", node.kind);
            visitor.Field("x", node.point.x);
            visitor.Field("y", node.point.y);
        });
    visitor.List(
        "keys", keys_.size(), [this](size_t size) { keys_.resize(size); },
        [this, &visitor](size_t index) {
            visitor.Field("node", keys_[index].node);
            visitor.Field("time", keys_[index].time);
        });
    if (visitor.IsReading())
        prepared_ = false;
}

void TeskAnimationPath::Read(ZoFolderFile& file) {
    ZoFolderGuard folder(file, false, false);
    TeskAnimationPath path;
    for (int32_t i = 0, count = file.ReadInt32(); i < count; ++i) {
        const int32_t kind = file.ReadInt32();
        const double x = file.ReadDouble();
        path.nodes_.push_back({kind, {x, file.ReadDouble()}, 0.0});
    }
    for (int32_t i = 0, count = file.ReadInt32(); i < count; ++i) {
        const int32_t node = file.ReadInt32();
        path.keys_.push_back({node, file.ReadDouble(), 0.0});
    }
    *this = std::move(path);
}

void TeskAnimationPath::Write(ZoFolderFile& file) const {
    ZoFolderGuard folder(file, true);
    file.WriteInt32(GetNodeCount());
    for (const PathNode& node : nodes_) {
        file.WriteInt32(node.kind);
        file.WriteDouble(node.point.x);
        file.WriteDouble(node.point.y);
    }
    file.WriteInt32(GetKeyCount());
    for (const PathKey& key : keys_) {
        file.WriteInt32(key.node);
        file.WriteDouble(key.time);
    }
}

bool operator==(const TeskAnimationPath& a, const TeskAnimationPath& b) noexcept {
    return std::equal(a.nodes_.begin(), a.nodes_.end(), b.nodes_.begin(), b.nodes_.end(),
                      [](const auto& m, const auto& n) {
                          return m.kind == n.kind && m.point == n.point;
                      }) &&
           std::equal(
               a.keys_.begin(), a.keys_.end(), b.keys_.begin(), b.keys_.end(),
               [](const auto& m, const auto& n) { return m.node == n.node && m.time == n.time; });
}
