#include "effects/grid_effect.h"

#include <algorithm>

#include "effects/record_fallback.h"
#include "flash/swf_entity.h"
#include "geometry/grid_triangulation.h"
#include "geometry/hex_triangulation.h"
#include "objects/field_visitor.h"
#include "platform/folder_file.h"

void TeskGridEffect::GridState::VisitFields(TeskFieldVisitor& visitor) {
    State::VisitFields(visitor);
    GridSettings& s = gridSettings;
    visitor.Group("gridSettings", [&] {
        visitor.Field("chooseGrid", s.chooseGrid);
        visitor.Field("maxTriangles", s.maxTriangles);
        visitor.Field("gridType", s.gridType);
        visitor.Field("across", s.across);
        visitor.Field("down", s.down);
        visitor.Field("roundPoints", s.roundPoints);
        visitor.Field("roundMovedPoints", s.roundMovedPoints);
        visitor.Field("expand", s.expand);
        visitor.Field("roundLightPoints", s.roundLightPoints);
        visitor.Field("roundMovedLightPoints", s.roundMovedLightPoints);
        visitor.Field("expandLight", s.expandLight);
    });
}

void TeskGridEffect::SetGridSettings(const GridSettings& settings,
                                     ZoEditor::ZoEditTransaction* transaction) {
    SetStateField(&GridState::gridSettings, settings, transaction);
}

int32_t TeskGridEffect::TriangleBudget(int32_t divisor) const noexcept {
    return std::max(GetGridSettings().maxTriangles / std::max(divisor, 1), 8);
}

void TeskGridEffect::BuildTriangulation(const ZoRect& rect, ZoAutoPtr<TeskTriangulation>& out,
                                        int32_t angle, int32_t divisor) {
    if (!GetGridSettings().chooseGrid) {
        BuildFixedTriangulation(out);
        return;
    }
    auto grid = std::make_unique<TeskGridTriangulation>();
    grid->ChooseGrid(TriangleBudget(divisor), angle, rect);
    out = std::move(grid);
}

void TeskGridEffect::BuildTriangulationHex(const ZoRect& rect, ZoAutoPtr<TeskTriangulation>& out,
                                           int32_t divisor) {
    if (!GetGridSettings().chooseGrid) {
        BuildFixedTriangulation(out);
        return;
    }
    auto hex = std::make_unique<TeskHexTriangulation>();
    hex->ChooseGrid(TriangleBudget(divisor), rect);
    out = std::move(hex);
}

void TeskGridEffect::BuildFixedTriangulation(ZoAutoPtr<TeskTriangulation>& out) {
    GridSettings& s = GetGridState().gridSettings;
    s.across = std::clamp(s.across, 1, 50);
    s.down = std::clamp(s.down, 1, 50);
    if (s.gridType == kTriangular) {
        auto hex = std::make_unique<TeskHexTriangulation>();
        hex->SetAcross(s.across);
        hex->SetDown(s.down);
        out = std::move(hex);
        return;
    }
    if (s.gridType != kRectangularNWSE && s.gridType != kRectangularNESW)
        return;
    auto grid = std::make_unique<TeskGridTriangulation>();
    grid->SetDiagonal(s.gridType == kRectangularNWSE ? TeskGridTriangulation::kNorthWestSouthEast
                                                     : TeskGridTriangulation::kNorthEastSouthWest);
    grid->SetAcross(s.across);
    grid->SetDown(s.down);
    out = std::move(grid);
}

namespace {

TeskGridEffect::GridSettings ReadGridSettings(ZoFolderFile& file) {
    ZoFolderGuard folder(file, false, true);
    TeskGridEffect::GridSettings settings;
    settings.chooseGrid = file.ReadBool();
    settings.maxTriangles = file.ReadInt32();
    settings.gridType = file.ReadInt32();
    settings.across = file.ReadInt32();
    settings.down = file.ReadInt32();
    return settings;
}

}  // namespace

void TeskGridEffect::Read(ZoFolderFile& file) {
    ZoFolderGuard folder(file, false, false);
    TeskEffect::Read(file);
    GetGridState().gridSettings =
        TeskReadOr(GridSettings{}, [&] { return ReadGridSettings(file); });
}

void TeskGridEffect::Write(ZoFolderFile& file) const {
    ZoFolderGuard folder(file, true);
    TeskEffect::Write(file);
    ZoFolderGuard settingsFolder(file, true);
    const GridSettings& s = GetGridSettings();
    file.WriteBool(s.chooseGrid);
    for (int32_t value : {s.maxTriangles, s.gridType, s.across, s.down})
        file.WriteInt32(value);
}

TeskMeshEffect::MeshTriangleList TeskGridEffect::BuildObjectMesh(TeskSWFMovie& movie,
                                                                 const ZoRect& rect,
                                                                 TeskObject* object, int32_t angle,
                                                                 int32_t depthBase) {
    ZoAutoPtr<TeskTriangulation> triangulation;
    BuildTriangulation(rect, triangulation, angle, 1);
    MeshTriangleList mesh;
    if (object && triangulation) {
        const GridSettings& grid = GetGridSettings();
        BuildMeshTriangles(mesh, movie, *object, rect, *triangulation, 0, grid.expand,
                           grid.roundPoints, depthBase);
    }
    return mesh;
}
