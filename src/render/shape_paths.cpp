#include "render/shape_paths.h"

#include <algorithm>
#include <unordered_map>

namespace ZoRender {
namespace {

struct Point {
    int32_t x = 0, y = 0;
    bool operator==(const Point&) const = default;
};

struct Edge {
    Point from, control, to;
    bool curved = false;

    Edge Reversed() const noexcept { return {to, control, from, curved}; }
};

uint64_t Key(Point p) noexcept {
    return static_cast<uint64_t>(static_cast<uint32_t>(p.x)) << 32 | static_cast<uint32_t>(p.y);
}

void Append(Path& path, const Edge& e) {
    if (e.curved)
        path.push_back({PathCommand::Kind::kCurve, double(e.control.x), double(e.control.y),
                        double(e.to.x), double(e.to.y)});
    else
        path.push_back({PathCommand::Kind::kLine, 0, 0, double(e.to.x), double(e.to.y)});
}

void MoveTo(Path& path, Point p) {
    path.push_back({PathCommand::Kind::kMove, 0, 0, double(p.x), double(p.y)});
}

// Joins one fill's edges into contours. Edges mostly arrive in drawing order,
// so the neighbours in the list are tried before the index of start points.
Path JoinContours(const std::vector<Edge>& edges) {
    std::unordered_multimap<uint64_t, size_t> starts;
    starts.reserve(edges.size());
    for (size_t i = 0; i < edges.size(); ++i)
        starts.emplace(Key(edges[i].from), i);
    std::vector<bool> used(edges.size(), false);
    auto nextFrom = [&](size_t current) -> size_t {
        const Point end = edges[current].to;
        if (current + 1 < edges.size() && !used[current + 1] && edges[current + 1].from == end)
            return current + 1;
        // Edges of the fill on the other side arrive reversed, so backwards.
        if (current > 0 && !used[current - 1] && edges[current - 1].from == end)
            return current - 1;
        auto [first, last] = starts.equal_range(Key(end));
        for (auto it = first; it != last; ++it)
            if (!used[it->second])
                return it->second;
        return edges.size();
    };
    Path path;
    for (size_t start = 0; start < edges.size(); ++start) {
        if (used[start])
            continue;
        MoveTo(path, edges[start].from);
        for (size_t e = start; e < edges.size(); e = nextFrom(e)) {
            used[e] = true;
            Append(path, edges[e]);
            if (edges[e].to == edges[start].from)
                break;
        }
        path.push_back({PathCommand::Kind::kClose});
    }
    return path;
}

class EdgeCollector {
  public:
    explicit EdgeCollector(const Shape& shape)
        : fillEdges_(std::max<size_t>(shape.fills.size(), 1)), lines_(shape.lines.size()) {}

    void Collect(const std::vector<ShapeRecord>& records) {
        for (const ShapeRecord& r : records) {
            if (r.kind == ShapeRecord::Kind::kStyleChange) {
                ChangeStyle(r);
                continue;
            }
            Edge e;
            e.from = pen_;
            e.curved = r.kind == ShapeRecord::Kind::kCurved;
            e.control = {pen_.x + r.controlDx, pen_.y + r.controlDy};
            e.to = {e.control.x + r.dx, e.control.y + r.dy};
            AddEdge(e);
            pen_ = e.to;
        }
    }

    ShapePaths Finish() {
        ShapePaths paths;
        for (const auto& edges : fillEdges_)
            paths.fills.push_back(JoinContours(edges));
        paths.lines = std::move(lines_);
        return paths;
    }

  private:
    void ChangeStyle(const ShapeRecord& r) {
        if (r.moveTo)
            pen_ = {r.moveX, r.moveY};
        if (r.fill0 >= 0)
            fill0_ = r.fill0;
        if (r.fill1 >= 0)
            fill1_ = r.fill1;
        if (r.line >= 0)
            line_ = r.line;
        lineOpen_ = false;
    }

    void AddEdge(const Edge& e) {
        // Both sides run the fill on the same hand, so contours join up.
        if (fill1_ > 0 && size_t(fill1_) <= fillEdges_.size())
            fillEdges_[fill1_ - 1].push_back(e);
        if (fill0_ > 0 && size_t(fill0_) <= fillEdges_.size())
            fillEdges_[fill0_ - 1].push_back(e.Reversed());
        if (line_ > 0 && size_t(line_) <= lines_.size()) {
            Path& line = lines_[line_ - 1];
            if (!lineOpen_)
                MoveTo(line, e.from);
            Append(line, e);
            lineOpen_ = true;
        }
    }

    std::vector<std::vector<Edge>> fillEdges_;
    std::vector<Path> lines_;
    Point pen_;
    int fill0_ = 0, fill1_ = 0, line_ = 0;
    bool lineOpen_ = false;
};

}  // namespace

ShapePaths BuildShapePaths(const Shape& shape) {
    EdgeCollector collector(shape);
    collector.Collect(shape.records);
    return collector.Finish();
}

}  // namespace ZoRender
