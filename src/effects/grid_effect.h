#pragma once
#include "effects/mesh_effect.h"

/// An effect that cuts its object into a grid of triangles. The grid
/// settings say how the mesh is chosen and how its points are rounded.
class TeskGridEffect : public TeskMeshEffect {
  public:
    /// The `gridType` codes, as the grid control lists them.
    enum GridType : int32_t {
        kRectangularNWSE = 1,
        kTriangular = 2,
        kRectangularNESW = 3,
    };

    struct GridSettings {
        bool chooseGrid = true;  // size the grid from maxTriangles
        int32_t maxTriangles = 50;
        int32_t gridType = kRectangularNWSE;
        int32_t across = 5;
        int32_t down = 5;
        // Not stored in the project file: documents always have these values.
        bool roundPoints = false;
        bool roundMovedPoints = false;
        int32_t expand = 20;  // twips
        bool roundLightPoints = true;
        bool roundMovedLightPoints = true;
        int32_t expandLight = 0;  // twips
        friend bool operator==(const GridSettings&, const GridSettings&) = default;
    };

    class GridState : public State {
      public:
        GridState() = default;
        void VisitFields(TeskFieldVisitor& visitor) override;

        GridSettings gridSettings;

      protected:
        GridState(const GridState&) = default;
    };

    GridState& GetGridState() noexcept { return static_cast<GridState&>(GetState()); }
    const GridState& GetGridState() const noexcept {
        return static_cast<const GridState&>(GetState());
    }
    const GridSettings& GetGridSettings() const noexcept { return GetGridState().gridSettings; }
    void SetGridSettings(const GridSettings& settings, ZoEditor::ZoEditTransaction* transaction);

    /// The triangulation the settings describe for `rect` (twips). Chosen
    /// automatically: a rectangular grid for about maxTriangles / `divisor`
    /// triangles (at least 8), cut to follow `angle` (degrees). Otherwise the
    /// grid of `gridType` with `across` and `down`, which are first clamped
    /// to 1..50 in the settings themselves; an unknown type leaves `out` as
    /// it was.
    void BuildTriangulation(const ZoRect& rect, ZoAutoPtr<TeskTriangulation>& out,
                            int32_t angle = 45, int32_t divisor = 1);
    /// As BuildTriangulation, but the automatic choice is the staggered
    /// triangular grid.
    void BuildTriangulationHex(const ZoRect& rect, ZoAutoPtr<TeskTriangulation>& out,
                               int32_t divisor);
    /// The mesh of `object` (may be null) over the whole budget's grid cut
    /// to follow `angle`, with the settings' enlargement and rounding, from
    /// depth `depthBase`; empty without an object or a grid.
    MeshTriangleList BuildObjectMesh(TeskSWFMovie& movie, const ZoRect& rect, TeskObject* object,
                                     int32_t angle, int32_t depthBase);

    void Read(ZoFolderFile& file) override;
    void Write(ZoFolderFile& file) const override;

  protected:
    using TeskMeshEffect::TeskMeshEffect;

  private:
    /// The budget of an automatic choice split `divisor` ways.
    int32_t TriangleBudget(int32_t divisor) const noexcept;
    /// The grid of the fixed settings, after clamping them.
    void BuildFixedTriangulation(ZoAutoPtr<TeskTriangulation>& out);
};
