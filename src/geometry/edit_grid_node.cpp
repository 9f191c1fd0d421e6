#include "geometry/edit_grid_node.h"

#include <algorithm>

namespace {

// Parameter of the foot of the perpendicular from p onto the line from p1
// to p2; 0 when the two coincide.
double Projection(const TeskPoint2D& p, const TeskPoint2D& p1, const TeskPoint2D& p2) noexcept {
    const TeskPoint2D along = p2 - p1;
    const double length2 = along.x * along.x + along.y * along.y;
    if (length2 == 0.0)
        return 0.0;
    const TeskPoint2D offset = p - p1;
    return (offset.x * along.x + offset.y * along.y) / length2;
}

// The edge test of hit testing: p lies on the inner side of a→b or on it.
bool Inside(const TeskPoint2D& a, const TeskPoint2D& b, const TeskPoint2D& c,
            const TeskPoint2D& p) noexcept {
    return TeskCross(b - a, p - b) >= 0.0 && TeskCross(c - b, p - c) >= 0.0 &&
           TeskCross(a - c, p - a) >= 0.0;
}

}  // namespace

TeskEditGridNode::TeskEditGridNode(TeskEditGridNode* parentNode, int32_t sets)
    : parent(parentNode), pointSetCount(sets), cells(1) {
    for (int32_t s = 0; s < sets; ++s)
        points.insert(points.end(), {{0.0, 0.0}, {1.0, 0.0}, {0.0, 1.0}, {1.0, 1.0}});
}

ZoAutoPtr<TeskEditGridNode> TeskEditGridNode::Clone(TeskEditGridNode* newParent) const {
    auto copy = std::make_unique<TeskEditGridNode>(newParent, pointSetCount);
    copy->across = across;
    copy->down = down;
    copy->points = points;
    copy->cells.resize(cells.size());
    for (size_t i = 0; i < cells.size(); ++i) {
        copy->cells[i].diagonal = cells[i].diagonal;
        if (cells[i].child)
            copy->cells[i].child = cells[i].child->Clone(copy.get());
    }
    return copy;
}

TeskPoint2D& TeskEditGridNode::At(int32_t c, int32_t r, int32_t set) noexcept {
    return points[c + r * (across + 1) + set * (across + 1) * (down + 1)];
}

const TeskPoint2D& TeskEditGridNode::At(int32_t c, int32_t r, int32_t set) const noexcept {
    return points[c + r * (across + 1) + set * (across + 1) * (down + 1)];
}

int32_t TeskEditGridNode::OwnPointCount() const noexcept {
    const int32_t all = (across + 1) * (down + 1);
    return parent ? all - 4 : all;
}

int32_t TeskEditGridNode::PointCount() const noexcept {
    int32_t count = OwnPointCount();
    for (const Cell& cell : cells) {
        if (cell.child)
            count += cell.child->PointCount();
    }
    return count;
}

bool TeskEditGridNode::LocatePoint(int32_t index, TeskEditGridNode*& node, int32_t& c,
                                   int32_t& r) noexcept {
    if (index < 0)
        return false;
    const int32_t own = OwnPointCount();
    if (index < own) {
        // A child's own points skip its four corners.
        int32_t position = index;
        if (parent)
            position += index < across - 1 ? 1 : index < own - across + 1 ? 2 : 3;
        node = this;
        c = position % (across + 1);
        r = position / (across + 1);
        return true;
    }
    index -= own;
    for (Cell& cell : cells) {
        if (!cell.child)
            continue;
        const int32_t count = cell.child->PointCount();
        if (index < count)
            return cell.child->LocatePoint(index, node, c, r);
        index -= count;
    }
    return false;
}

int32_t TeskEditGridNode::TriangleCount() const noexcept {
    int32_t count = 0;
    for (const Cell& cell : cells)
        count += cell.child ? cell.child->TriangleCount() : 2;
    return count;
}

void TeskEditGridNode::CellTriangle(int32_t c, int32_t r, int32_t half, int32_t set, TeskPoint2D& a,
                                    TeskPoint2D& b, TeskPoint2D& p) const noexcept {
    const TeskPoint2D& topLeft = At(c, r, set);
    const TeskPoint2D& topRight = At(c + 1, r, set);
    const TeskPoint2D& bottomLeft = At(c, r + 1, set);
    const TeskPoint2D& bottomRight = At(c + 1, r + 1, set);
    if (CellAt(c, r).diagonal) {
        a = topLeft;
        b = half == 0 ? bottomRight : topRight;
        p = half == 0 ? bottomLeft : bottomRight;
    } else {
        a = half == 0 ? topLeft : bottomRight;
        b = half == 0 ? topRight : bottomLeft;
        p = half == 0 ? bottomLeft : topRight;
    }
}

bool TeskEditGridNode::GetTriangle(int32_t index, int32_t set, TeskPoint2D& a, TeskPoint2D& b,
                                   TeskPoint2D& c) const noexcept {
    if (index < 0)
        return false;
    for (int32_t i = 0; i < across * down; ++i) {
        const Cell& cell = cells[i];
        const int32_t count = cell.child ? cell.child->TriangleCount() : 2;
        if (index >= count) {
            index -= count;
            continue;
        }
        if (cell.child)
            return cell.child->GetTriangle(index, set, a, b, c);
        CellTriangle(i % across, i / across, index, set, a, b, c);
        return true;
    }
    return false;
}

int32_t TeskEditGridNode::LineCount() const noexcept {
    int32_t count = (across - 1) * down + (down - 1) * across + (parent ? 0 : 4);
    for (const Cell& cell : cells)
        count += cell.child ? cell.child->LineCount() : 1;
    return count;
}

bool TeskEditGridNode::GetLine(int32_t index, int32_t set, TeskPoint2D& from,
                               TeskPoint2D& to) const noexcept {
    if (index < 0)
        return false;
    const int32_t vertical = (across - 1) * down;
    if (index < vertical) {
        const int32_t k = index % (across - 1) + 1;
        const int32_t r = index / (across - 1);
        from = At(k, r, set);
        to = At(k, r + 1, set);
        return true;
    }
    index -= vertical;
    const int32_t horizontal = (down - 1) * across;
    if (index < horizontal) {
        const int32_t c = index % across;
        const int32_t k = index / across + 1;
        from = At(c, k, set);
        to = At(c + 1, k, set);
        return true;
    }
    index -= horizontal;
    for (int32_t i = 0; i < across * down; ++i) {
        const Cell& cell = cells[i];
        const int32_t count = cell.child ? cell.child->LineCount() : 1;
        if (index >= count) {
            index -= count;
            continue;
        }
        if (cell.child)
            return cell.child->GetLine(index, set, from, to);
        const int32_t c = i % across;
        const int32_t r = i / across;
        from = cell.diagonal ? At(c, r, set) : At(c, r + 1, set);
        to = cell.diagonal ? At(c + 1, r + 1, set) : At(c + 1, r, set);
        return true;
    }
    if (parent || index >= 4)
        return false;
    // The root's border: top, bottom, left, right.
    const int32_t fromColumn[] = {0, 0, 0, across};
    const int32_t fromRow[] = {0, down, 0, 0};
    const int32_t toColumn[] = {across, across, 0, across};
    const int32_t toRow[] = {0, down, down, down};
    from = At(fromColumn[index], fromRow[index], set);
    to = At(toColumn[index], toRow[index], set);
    return true;
}

void TeskEditGridNode::StorePoint(int32_t c, int32_t r, int32_t set, const TeskPoint2D& point,
                                  bool fitChildren) {
    At(c, r, set) = point;
    RefitChildrenAround(c, r, fitChildren);
}

void TeskEditGridNode::RefitChildrenAround(int32_t c, int32_t r, bool fitChildren) {
    for (const auto& [cc, rr] : {std::pair{c, r}, {c - 1, r}, {c - 1, r - 1}, {c, r - 1}}) {
        if (cc < 0 || cc >= across || rr < 0 || rr >= down)
            continue;
        TeskEditGridNode* child = CellAt(cc, rr).child.get();
        if (!child)
            continue;
        if (fitChildren) {
            child->FitToCell(cc, rr);
            continue;
        }
        for (int32_t s = 0; s < pointSetCount; ++s) {
            child->StorePoint(0, 0, s, At(cc, rr, s), false);
            child->StorePoint(child->across, 0, s, At(cc + 1, rr, s), false);
            child->StorePoint(0, child->down, s, At(cc, rr + 1, s), false);
            child->StorePoint(child->across, child->down, s, At(cc + 1, rr + 1, s), false);
        }
    }
}

void TeskEditGridNode::SetPoint(int32_t c, int32_t r, int32_t set, const TeskPoint2D& point) {
    StorePoint(c, r, set, point, false);
}

bool TeskEditGridNode::MovePoint(int32_t c, int32_t r, int32_t set, TeskPoint2D& point) {
    const TeskPoint2D old = At(c, r, set);
    if (IsCorner(c, r)) {
        point = old;
        return false;
    }
    // Border points slide along their border line, tested left, right, top, bottom.
    const bool border = c == 0 || c == across || r == 0 || r == down;
    TeskPoint2D target = point;
    if (border) {
        const bool vertical = c == 0 || c == across;
        const TeskPoint2D& first = vertical ? At(c, 0, set) : At(0, r, set);
        const TeskPoint2D& last = vertical ? At(c, down, set) : At(across, r, set);
        target = TeskBlend(first, last, std::clamp(Projection(point, first, last), 0.0, 1.0));
    }
    StorePoint(c, r, set, target, true);
    const bool valid = IsValid();
    if (!valid)
        StorePoint(c, r, set, old, true);
    point = At(c, r, set);
    return valid && !border;
}

void TeskEditGridNode::FitToCell(int32_t c, int32_t r) {
    for (int32_t s = 0; s < pointSetCount; ++s) {
        struct Slide {
            int32_t c, r;
            double t;
        };
        std::vector<Slide> slides;
        for (int32_t k = 1; k < down; ++k) {
            slides.push_back({0, k, Projection(At(0, k, s), At(0, 0, s), At(0, down, s))});
            slides.push_back(
                {across, k, Projection(At(across, k, s), At(across, 0, s), At(across, down, s))});
        }
        for (int32_t k = 1; k < across; ++k) {
            slides.push_back({k, 0, Projection(At(k, 0, s), At(0, 0, s), At(across, 0, s))});
            slides.push_back(
                {k, down, Projection(At(k, down, s), At(0, down, s), At(across, down, s))});
        }
        StorePoint(0, 0, s, parent->At(c, r, s), true);
        StorePoint(across, 0, s, parent->At(c + 1, r, s), true);
        StorePoint(0, down, s, parent->At(c, r + 1, s), true);
        StorePoint(across, down, s, parent->At(c + 1, r + 1, s), true);
        for (const Slide& slide : slides) {
            const bool vertical = slide.c == 0 || slide.c == across;
            const TeskPoint2D& first = vertical ? At(slide.c, 0, s) : At(0, slide.r, s);
            const TeskPoint2D& last = vertical ? At(slide.c, down, s) : At(across, slide.r, s);
            StorePoint(slide.c, slide.r, s, TeskBlend(first, last, slide.t), true);
        }
    }
}

bool TeskEditGridNode::CellValid(int32_t c, int32_t r) const noexcept {
    for (int32_t s = 0; s < pointSetCount; ++s) {
        for (int32_t half = 0; half < 2; ++half) {
            TeskPoint2D a, b, p;
            CellTriangle(c, r, half, s, a, b, p);
            if (!(TeskWinding(a, b, p) > 0.0))
                return false;
        }
    }
    return true;
}

bool TeskEditGridNode::IsValid() const noexcept {
    for (int32_t r = 0; r < down; ++r) {
        for (int32_t c = 0; c < across; ++c) {
            const Cell& cell = CellAt(c, r);
            if (cell.child ? !cell.child->IsValid() : !CellValid(c, r))
                return false;
        }
    }
    return true;
}

bool TeskEditGridNode::HitTest(const TeskPoint2D& p, int32_t set, TeskEditGridNode*& node,
                               int32_t& c, int32_t& r) noexcept {
    for (int32_t rr = 0; rr < down; ++rr) {
        for (int32_t cc = 0; cc < across; ++cc) {
            TeskEditGridNode* child = CellAt(cc, rr).child.get();
            if (child && child->HitTest(p, set, node, c, r))
                return true;
            for (int32_t half = 0; half < 2; ++half) {
                TeskPoint2D a, b, d;
                CellTriangle(cc, rr, half, set, a, b, d);
                if (Inside(a, b, d, p)) {
                    node = this;
                    c = cc;
                    r = rr;
                    return true;
                }
            }
        }
    }
    return false;
}

void TeskEditGridNode::ReverseDiagonal(int32_t c, int32_t r) {
    bool& diagonal = CellAt(c, r).diagonal;
    diagonal = !diagonal;
    if (!IsValid())
        diagonal = !diagonal;
}

TeskEditGridNode* TeskEditGridNode::SplitCell(int32_t c, int32_t r) {
    Cell& cell = CellAt(c, r);
    if (!cell.child) {
        cell.child = std::make_unique<TeskEditGridNode>(this, pointSetCount);
        cell.child->FitToCell(c, r);
    }
    return cell.child.get();
}

bool TeskEditGridNode::UnsplitCell(int32_t c, int32_t r) {
    Cell& cell = CellAt(c, r);
    cell.child.reset();
    if (!IsValid())
        cell.diagonal = !cell.diagonal;
    return IsValid();
}

void TeskEditGridNode::InsertColumn(int32_t c) {
    if (across < kLargestSide)
        Rebuild(across + 1, down, true, c, true);
}

void TeskEditGridNode::InsertRow(int32_t r) {
    if (down < kLargestSide)
        Rebuild(across, down + 1, false, r, true);
}

void TeskEditGridNode::DeleteColumn(int32_t c) {
    if (across > 1)
        Rebuild(across - 1, down, true, c, false);
}

void TeskEditGridNode::DeleteRow(int32_t r) {
    if (down > 1)
        Rebuild(across, down - 1, false, r, false);
}

// Inserting or deleting one line of cells: `columns` picks the axis and `at`
// the cell column (row) that is cut in half or merged with the next one.
void TeskEditGridNode::Rebuild(int32_t newAcross, int32_t newDown, bool columns, int32_t at,
                               bool inserting) {
    const int32_t oldAcross = across;
    const int32_t oldDown = down;
    const std::vector<TeskPoint2D> oldPoints = std::move(points);
    std::vector<Cell> oldCells = std::move(cells);
    const auto oldAt = [&](int32_t c, int32_t r, int32_t s) {
        return oldPoints[c + r * (oldAcross + 1) + s * (oldAcross + 1) * (oldDown + 1)];
    };
    // Where a new point or cell line along the axis comes from; -1 marks
    // the inserted one.
    const auto sourcePoint = [&](int32_t k) {
        if (k <= at)
            return k;
        if (!inserting)
            return k + 1;
        return k == at + 1 ? -1 : k - 1;
    };
    const auto sourceCell = [&](int32_t k) {
        if (k < at)
            return k;
        if (!inserting)
            return k + 1;
        return k == at ? -1 : k - 1;
    };

    across = newAcross;
    down = newDown;
    points.assign(size_t(pointSetCount) * (across + 1) * (down + 1), {});
    for (int32_t s = 0; s < pointSetCount; ++s) {
        for (int32_t r = 0; r <= down; ++r) {
            for (int32_t c = 0; c <= across; ++c) {
                const int32_t source = sourcePoint(columns ? c : r);
                if (source >= 0) {
                    At(c, r, s) = columns ? oldAt(source, r, s) : oldAt(c, source, s);
                    continue;
                }
                const TeskPoint2D before = columns ? oldAt(at, r, s) : oldAt(c, at, s);
                const TeskPoint2D after = columns ? oldAt(at + 1, r, s) : oldAt(c, at + 1, s);
                At(c, r, s) = (before + after) * 0.5;
            }
        }
    }
    cells.clear();
    cells.resize(size_t(across) * down);
    for (int32_t r = 0; r < down; ++r) {
        for (int32_t c = 0; c < across; ++c) {
            const int32_t source = sourceCell(columns ? c : r);
            if (source < 0)
                continue;
            CellAt(c, r) = std::move(columns ? oldCells[source + r * oldAcross]
                                             : oldCells[c + source * oldAcross]);
            if (CellAt(c, r).child)
                CellAt(c, r).child->FitToCell(c, r);
        }
    }
}

void TeskEditGridNode::Resize(int32_t newAcross, int32_t newDown) {
    newAcross = std::clamp(newAcross, 1, kLargestSide);
    newDown = std::clamp(newDown, 1, kLargestSide);
    std::vector<TeskPoint2D> resized(size_t(pointSetCount) * (newAcross + 1) * (newDown + 1));
    for (int32_t s = 0; s < pointSetCount; ++s) {
        const TeskPoint2D topLeft = At(0, 0, s);
        const TeskPoint2D topRight = At(across, 0, s);
        const TeskPoint2D bottomLeft = At(0, down, s);
        const TeskPoint2D bottomRight = At(across, down, s);
        for (int32_t r = 0; r <= newDown; ++r) {
            for (int32_t c = 0; c <= newAcross; ++c) {
                const double u = double(c) / newAcross;
                const double v = double(r) / newDown;
                resized[c + r * (newAcross + 1) + s * (newAcross + 1) * (newDown + 1)] =
                    topLeft * ((1.0 - u) * (1.0 - v)) + topRight * (u * (1.0 - v)) +
                    bottomLeft * ((1.0 - u) * v) + bottomRight * (u * v);
            }
        }
    }
    across = newAcross;
    down = newDown;
    points = std::move(resized);
    cells.clear();
    cells.resize(size_t(across) * down);
}

void TeskEditGridNode::ResetUniform(double x0, double y0, double x1, double y1) {
    // The ends are taken as given so that children land exactly on their cells.
    const auto x = [&](int32_t c) {
        return c == 0 ? x0 : c == across ? x1 : ((across - c) * x0 + c * x1) / across;
    };
    const auto y = [&](int32_t r) {
        return r == 0 ? y0 : r == down ? y1 : ((down - r) * y0 + r * y1) / down;
    };
    for (int32_t s = 0; s < pointSetCount; ++s) {
        for (int32_t r = 0; r <= down; ++r) {
            for (int32_t c = 0; c <= across; ++c)
                At(c, r, s) = {x(c), y(r)};
        }
    }
    for (int32_t r = 0; r < down; ++r) {
        for (int32_t c = 0; c < across; ++c) {
            if (TeskEditGridNode* child = CellAt(c, r).child.get())
                child->ResetUniform(x(c), y(r), x(c + 1), y(r + 1));
        }
    }
}
