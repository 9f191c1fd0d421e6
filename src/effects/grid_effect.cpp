#include "effects/grid_effect.h"

#include "effects/record_fallback.h"
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
