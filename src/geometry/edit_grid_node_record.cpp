// The node record: across, down, every point (set by set, row by row, x then
// y), then a flags word per cell, each split cell's child record right after
// its flags.
#include <cstdint>

#include "geometry/edit_grid_node.h"
#include "platform/folder_file.h"
#include "platform/zo_exception.h"

namespace {

enum CellFlags : int32_t { kDiagonal = 1, kSplit = 2 };

int32_t ReadInt32Or(ZoFolderFile& file, int32_t fallback) {
    try {
        return file.ReadInt32();
    } catch (const ZoFileNonFatalException&) {
        return fallback;
    }
}

}  // namespace

void TeskEditGridNode::Write(ZoFolderFile& file) const {
    ZoFolderGuard folder(file, true);
    file.WriteInt32(across);
    file.WriteInt32(down);
    for (const TeskPoint2D& point : points) {
        file.WriteDouble(point.x);
        file.WriteDouble(point.y);
    }
    for (const Cell& cell : cells) {
        file.WriteInt32((cell.diagonal ? kDiagonal : 0) | (cell.child ? kSplit : 0));
        if (cell.child)
            cell.child->Write(file);
    }
}

ZoAutoPtr<TeskEditGridNode> TeskEditGridNode::Read(ZoFolderFile& file, TeskEditGridNode* parent,
                                                   int32_t pointSetCount) {
    ZoFolderGuard folder(file, false);
    auto node = std::make_unique<TeskEditGridNode>(parent, pointSetCount);
    node->across = ReadInt32Or(file, 1);
    node->down = ReadInt32Or(file, 1);
    // The bounds also keep a damaged record from asking for absurd allocations.
    if (node->across < 1 || node->across > kLargestSide || node->down < 1 ||
        node->down > kLargestSide)
        throw ZoException("The grid record is damaged.");
    const int64_t pointCount = int64_t(pointSetCount) * (node->across + 1) * (node->down + 1);
    if (int64_t(file.GetFolderSize()) < 8 + 16 * pointCount)
        throw ZoException("The grid record is too short.");
    node->points.resize(size_t(pointCount));
    for (TeskPoint2D& point : node->points) {
        point.x = file.ReadDouble();
        point.y = file.ReadDouble();
    }
    node->cells.resize(size_t(node->across) * node->down);
    for (size_t i = 0; i < node->cells.size(); ++i) {
        const int32_t flags = ReadInt32Or(file, 0);
        node->cells[i].diagonal = (flags & kDiagonal) != 0;
        if (flags & kSplit)
            node->cells[i].child = Read(file, node.get(), pointSetCount);
    }
    return node;
}
