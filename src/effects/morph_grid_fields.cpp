#include "effects/morph_grid_fields.h"

#include <algorithm>
#include <cassert>
#include <vector>

#include "geometry/edit_grid_triangulation.h"
#include "objects/field_visitor.h"

namespace {

using GridNode = TeskEditGridTriangulation::GridNode;

constexpr int32_t kStartSet = 0;
constexpr int32_t kEndSet = 1;

void VisitSize(TeskFieldVisitor& visitor, GridNode& node) {
    int32_t across = node.across;
    int32_t down = node.down;
    visitor.Field("across", across);
    visitor.Field("down", down);
    if (visitor.IsReading() && (across != node.across || down != node.down))
        node.Resize(across, down);
}

// A node's own points in the editor's numbering: a split cell's corners
// belong to the cell, so its node lists only the points inside and on its
// edges. Extra elements are left unvisited, which the JSON reader reports
// as unknown keys.
void VisitPoints(TeskFieldVisitor& visitor, GridNode& node) {
    const auto count = static_cast<size_t>(node.OwnPointCount());
    visitor.List(
        "points", count, [](size_t) {},
        [&](size_t index) {
            GridNode* owner = nullptr;
            int32_t c = 0;
            int32_t r = 0;
            if (index >= count || !node.LocatePoint(static_cast<int32_t>(index), owner, c, r))
                return;
            TeskPoint2D& start = node.At(c, r, kStartSet);
            TeskPoint2D& end = node.At(c, r, kEndSet);
            visitor.Field("x", start.x);
            visitor.Field("y", start.y);
            visitor.Field("endX", end.x);
            visitor.Field("endY", end.y);
        });
}

void VisitDiagonals(TeskFieldVisitor& visitor, GridNode& node) {
    visitor.List(
        "diagonals", node.cells.size(), [](size_t) {},
        [&](size_t index) {
            if (index < node.cells.size())
                visitor.Field("diagonal", node.cells[index].diagonal);
        });
}

void VisitNode(TeskFieldVisitor& visitor, GridNode& node) {
    VisitSize(visitor, node);
    VisitPoints(visitor, node);
    VisitDiagonals(visitor, node);
}

// Only the root's cells are listed as split, as only they are in the
// editor; a listed split replaces every split the grid had.
void VisitSplits(TeskFieldVisitor& visitor, GridNode& root) {
    std::vector<int32_t> split;
    for (size_t i = 0; i < root.cells.size(); ++i) {
        if (root.cells[i].child)
            split.push_back(static_cast<int32_t>(i));
    }
    visitor.List(
        "splits", split.size(),
        [&](size_t) {
            for (GridNode::Cell& cell : root.cells)
                cell.child.reset();
        },
        [&](size_t index) {
            const bool reading = visitor.IsReading();
            int32_t column = reading ? 0 : split[index] % root.across;
            int32_t row = reading ? 0 : split[index] / root.across;
            visitor.Field("column", column);
            visitor.Field("row", row);
            column = std::clamp(column, 0, root.across - 1);
            row = std::clamp(row, 0, root.down - 1);
            VisitNode(visitor, *root.SplitCell(column, row));
        });
}

// Puts every split cell's corners back onto the cell, wherever the points
// read have left them.
void RefitSplitCells(GridNode& root) {
    for (int32_t r = 0; r < root.down; ++r) {
        for (int32_t c = 0; c < root.across; ++c) {
            if (!root.CellAt(c, r).child)
                continue;
            for (int32_t s = 0; s < root.pointSetCount; ++s) {
                for (const auto& [cc, rr] :
                     {std::pair{c, r}, {c + 1, r}, {c, r + 1}, {c + 1, r + 1}}) {
                    const TeskPoint2D corner = root.At(cc, rr, s);
                    root.SetPoint(cc, rr, s, corner);
                }
            }
        }
    }
}

}  // namespace

void TeskVisitMorphGrid(TeskFieldVisitor& visitor, TeskEditGridTriangulation& grid) {
    assert(grid.GetPointSetCount() == 2 && "a morph grid has a start and an end point set");
    GridNode& root = grid.Root();
    VisitNode(visitor, root);
    VisitSplits(visitor, root);
    if (visitor.IsReading())
        RefitSplitCells(root);
}
