#pragma once
#include "geometry/fixed_triangulation.h"
#include "platform/zo_rect.h"

/// The staggered "Triangular" grid: `down` rows of `across` triangles whose
/// apexes sit on `across` evenly spaced positions from 0 to 1, alternately
/// pointing down and up, the pattern shifted by one from row to row. The
/// first and last triangle of a row are halves cut by the object's edge.
class TeskHexTriangulation : public TeskFixedTriangulation {
  public:
    ZoAutoPtr<TeskTriangulation> Clone() const override;
    int32_t GetTriangleCount() const override { return across_ * down_; }
    void GetTriangle(int32_t index, int32_t set, TeskPoint2D& a, TeskPoint2D& b,
                     TeskPoint2D& c) const override;
    void Read(ZoFolderFile& file) override;
    void Write(ZoFolderFile& file) const override;

    int32_t GetAcross() const noexcept { return across_; }
    int32_t GetDown() const noexcept { return down_; }
    /// Raised to 2: a row needs both of its edge halves.
    void SetAcross(int32_t across) noexcept;
    void SetDown(int32_t down) noexcept { down_ = down; }

    /// Sizes the grid for about `count` triangles of roughly equal sides over
    /// `rect` (twips). Results below the grid's limits (2 across, 1 down) are
    /// raised to them.
    void ChooseGrid(int32_t count, const ZoRect& rect);

  private:
    int32_t across_ = 5;
    int32_t down_ = 5;
};
