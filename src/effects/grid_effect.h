#pragma once
#include "effects/effect.h"

/// An effect that cuts its object into a grid of triangles. The grid
/// settings say how the mesh is chosen and how its points are rounded.
class TeskGridEffect : public TeskEffect {
  public:
    struct GridSettings {
        bool chooseGrid = true;  // size the grid from maxTriangles
        int32_t maxTriangles = 50;
        int32_t gridType = 1;  // 1 rectangular NWSE, 3 rectangular NESW, 2 triangular
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

    void Read(ZoFolderFile& file) override;
    void Write(ZoFolderFile& file) const override;

  protected:
    using TeskEffect::TeskEffect;
};
