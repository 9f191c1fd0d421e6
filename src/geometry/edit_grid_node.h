#pragma once
// One level of the editable morph grid: a grid of quadrilateral cells, each
// cut into two triangles along a diagonal the user can reverse, with one
// position per point for every point set. A cell may be split into a finer
// grid of its own (a child node) whose corners follow the cell's corners.
#include <cstdint>
#include <vector>

#include "geometry/point_2d.h"
#include "platform/zo_auto_ptr.h"

class ZoFolderFile;

/// A grid node. Point (c, r) of set s, c in 0..across, r in 0..down, is
/// points[c + r·(across + 1) + s·(across + 1)·(down + 1)]; cell (c, r) is
/// cells[c + r·across].
struct TeskEditGridNode {
    /// Most cells a node holds across and down. Beyond it a grid neither fits
    /// a movie's depths (two sprites per triangle) nor can be edited by hand.
    static constexpr int32_t kLargestSide = 32;

    struct Cell {
        ZoAutoPtr<TeskEditGridNode> child;  ///< null while the cell is not split
        bool diagonal =
            true;  ///< true: cut top-left to bottom-right; false: top-right to bottom-left
    };

    /// A 1 × 1 node over the unit square, its cell cut top-left to bottom-right.
    TeskEditGridNode(TeskEditGridNode* parent, int32_t pointSetCount);
    /// A deep copy whose children point back into the copy.
    ZoAutoPtr<TeskEditGridNode> Clone(TeskEditGridNode* newParent) const;

    TeskPoint2D& At(int32_t c, int32_t r, int32_t set) noexcept;
    const TeskPoint2D& At(int32_t c, int32_t r, int32_t set) const noexcept;
    Cell& CellAt(int32_t c, int32_t r) noexcept { return cells[c + r * across]; }
    const Cell& CellAt(int32_t c, int32_t r) const noexcept { return cells[c + r * across]; }
    bool IsCorner(int32_t c, int32_t r) const noexcept {
        return (c == 0 || c == across) && (r == 0 || r == down);
    }

    /// Editable points of this node and its children; a child's corners
    /// belong to its parent.
    int32_t PointCount() const noexcept;
    int32_t OwnPointCount() const noexcept;
    /// Finds the node and column and row of point `index` (numbered: own
    /// points first, then each split cell's child in cell order).
    bool LocatePoint(int32_t index, TeskEditGridNode*& node, int32_t& c, int32_t& r) noexcept;
    int32_t TriangleCount() const noexcept;
    bool GetTriangle(int32_t index, int32_t set, TeskPoint2D& a, TeskPoint2D& b,
                     TeskPoint2D& c) const noexcept;
    int32_t LineCount() const noexcept;
    bool GetLine(int32_t index, int32_t set, TeskPoint2D& from, TeskPoint2D& to) const noexcept;

    /// Stores a point and puts the corners of the split cells around it back
    /// onto the cell corners.
    void SetPoint(int32_t c, int32_t r, int32_t set, const TeskPoint2D& point);
    /// The checked move: corners stay, border points slide along their border
    /// line, and a move that would fold a triangle is undone. True only when
    /// the point went where asked; `point` receives where it went.
    bool MovePoint(int32_t c, int32_t r, int32_t set, TeskPoint2D& point);
    /// Moves this child's corners onto its parent cell (c, r), carrying its
    /// border points along their lines; inner points stay.
    void FitToCell(int32_t c, int32_t r);

    /// Every triangle of every set, here and below, winds strictly positive.
    bool IsValid() const noexcept;
    /// The cell (searched in the children of split cells first) one of whose
    /// triangles in `set` holds `p`, edges included.
    bool HitTest(const TeskPoint2D& p, int32_t set, TeskEditGridNode*& node, int32_t& c,
                 int32_t& r) noexcept;

    /// Flips the cell's diagonal unless that makes the node invalid.
    void ReverseDiagonal(int32_t c, int32_t r);
    /// Gives an unsplit cell a 1 × 1 child fitted to it; returns the child.
    TeskEditGridNode* SplitCell(int32_t c, int32_t r);
    /// Drops the cell's child; flips the diagonal if the node is then invalid.
    bool UnsplitCell(int32_t c, int32_t r);
    /// Cuts cell column c (row r) in half at the midpoints of its edges;
    /// nothing happens once the node has kLargestSide columns (rows).
    void InsertColumn(int32_t c);
    void InsertRow(int32_t r);
    /// Removes the grid line between cell columns c and c + 1 (rows r and
    /// r + 1); the merged cell keeps the right (lower) cell's diagonal and
    /// child. Nothing happens to the last column (row).
    void DeleteColumn(int32_t c);
    void DeleteRow(int32_t r);
    /// A fresh across × down grid (each clamped to 1..kLargestSide) blended
    /// between the node's corners; all children are dropped and every
    /// diagonal runs top-left to bottom-right.
    void Resize(int32_t newAcross, int32_t newDown);
    /// Evenly spaced points over (x0, y0)–(x1, y1), and the same inside each
    /// child over its cell; diagonals and children stay.
    void ResetUniform(double x0, double y0, double x1, double y1);

    /// The node record, in its own unnamed folder.
    void Write(ZoFolderFile& file) const;
    /// Reads a node record written by Write. Throws ZoException when the
    /// record is damaged beyond its defaults.
    static ZoAutoPtr<TeskEditGridNode> Read(ZoFolderFile& file, TeskEditGridNode* parent,
                                            int32_t pointSetCount);

    TeskEditGridNode* parent = nullptr;
    int32_t pointSetCount = 1;
    int32_t across = 1;
    int32_t down = 1;
    std::vector<TeskPoint2D> points;
    std::vector<Cell> cells;

  private:
    bool CellValid(int32_t c, int32_t r) const noexcept;
    void CellTriangle(int32_t c, int32_t r, int32_t half, int32_t set, TeskPoint2D& a,
                      TeskPoint2D& b, TeskPoint2D& p) const noexcept;
    void StorePoint(int32_t c, int32_t r, int32_t set, const TeskPoint2D& point, bool fitChildren);
    void RefitChildrenAround(int32_t c, int32_t r, bool fitChildren);
    void Rebuild(int32_t newAcross, int32_t newDown, bool columns, int32_t at, bool inserting);
};
