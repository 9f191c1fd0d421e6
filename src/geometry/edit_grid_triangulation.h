#pragma once
// The morph effect's mesh: a grid whose points the user places by hand, one
// position per point for each object (point set 0 on the start object, 1 on
// the end object), with cells that can be split into finer grids.
#include <filesystem>

#include "geometry/edit_grid_node.h"
#include "geometry/triangulation.h"
#include "platform/zo_string.h"

/// The editable grid triangulation.
class TeskEditGridTriangulation : public TeskTriangulation {
  public:
    using GridNode = TeskEditGridNode;

    /// A 4 × 4 uniform grid over the unit square in every point set.
    explicit TeskEditGridTriangulation(int32_t pointSetCount = 2);
    TeskEditGridTriangulation(const TeskEditGridTriangulation& other);
    TeskEditGridTriangulation& operator=(const TeskEditGridTriangulation&) = delete;

    ZoAutoPtr<TeskTriangulation> Clone() const override;
    int32_t GetPointSetCount() const override { return pointSetCount_; }
    int32_t GetPointCount() const override { return root_->PointCount(); }
    /// An index beyond all points gives the shared origin.
    const TeskPoint2D& GetPoint(int32_t index, int32_t set) const override;
    void SetPoint(int32_t index, int32_t set, const TeskPoint2D& point) override;
    bool MovePoint(int32_t index, int32_t set, TeskPoint2D& point) override;
    int32_t GetLineCount() const override { return root_->LineCount(); }
    void GetLine(int32_t index, int32_t set, TeskPoint2D& from, TeskPoint2D& to) const override;
    int32_t GetTriangleCount() const override { return root_->TriangleCount(); }
    void GetTriangle(int32_t index, int32_t set, TeskPoint2D& a, TeskPoint2D& b,
                     TeskPoint2D& c) const override;
    /// A damaged record gives a 4 × 4 uniform grid with 2 point sets.
    void Read(ZoFolderFile& file) override;
    void Write(ZoFolderFile& file) const override;

    GridNode& Root() noexcept { return *root_; }
    const GridNode& Root() const noexcept { return *root_; }
    bool IsValid() const noexcept { return root_->IsValid(); }
    /// The node and cell under `p` in point set `set` (see GridNode::HitTest).
    bool HitTest(const TeskPoint2D& p, int32_t set, GridNode*& node, int32_t& column,
                 int32_t& row) noexcept;
    /// Evenly spaced points over the unit square, and inside every split cell.
    void ResetUniform();

    /// Loads the built-in 5 × 5 preset into point sets 0 and 1.
    void ApplyPreset();
    /// The root grid as the C header "TeskMorphPreset.h" developers paste
    /// back in as the preset.
    ZoString PresetHeaderText() const;
    /// Writes PresetHeaderText() to `path`; false when the file cannot be
    /// written, in which case nothing is left behind.
    bool ExportPresetHeader(const std::filesystem::path& path) const;

  private:
    int32_t pointSetCount_;
    ZoAutoPtr<GridNode> root_;
};
