#pragma once
#include "geometry/fixed_triangulation.h"
#include "platform/zo_rect.h"

/// A grid of `across` × `down` cells, each cut into two triangles along one
/// diagonal: "Rectangular NWSE" (diagonal 0) or "Rectangular NESW" (1).
/// Triangles are numbered row by row from the top, cell by cell from the
/// left, two per cell.
class TeskGridTriangulation : public TeskFixedTriangulation {
  public:
    static constexpr int32_t kNorthWestSouthEast = 0;
    static constexpr int32_t kNorthEastSouthWest = 1;

    ZoAutoPtr<TeskTriangulation> Clone() const override;
    int32_t GetTriangleCount() const override { return 2 * across_ * down_; }
    /// For a `diagonal` other than 0 or 1 the corners are left unchanged.
    void GetTriangle(int32_t index, int32_t set, TeskPoint2D& a, TeskPoint2D& b,
                     TeskPoint2D& c) const override;
    void Read(ZoFolderFile& file) override;
    void Write(ZoFolderFile& file) const override;

    int32_t GetDiagonal() const noexcept { return diagonal_; }
    int32_t GetAcross() const noexcept { return across_; }
    int32_t GetDown() const noexcept { return down_; }
    void SetDiagonal(int32_t diagonal) noexcept { diagonal_ = diagonal; }
    void SetAcross(int32_t across) noexcept { across_ = across; }
    void SetDown(int32_t down) noexcept { down_ = down; }

    /// Sizes the grid for about `count` triangles over `rect` (twips), with
    /// cells shaped and cut so that the diagonals follow `angle` (degrees).
    void ChooseGrid(int32_t count, int32_t angle, const ZoRect& rect);

  private:
    int32_t diagonal_ = kNorthWestSouthEast;
    int32_t across_ = 5;
    int32_t down_ = 5;
};
