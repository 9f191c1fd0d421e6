// The built-in morph preset and the header export it was made with.
#include <array>

#include "geometry/edit_grid_triangulation.h"
#include "platform/atomic_file.h"
#include "platform/zo_exception.h"

namespace {

constexpr int32_t kPresetCells = 5;

// The preset's points that differ from the uniform grid in either set.
struct PresetPoint {
    int32_t row, column;
    TeskPoint2D start, end;
};
constexpr std::array<PresetPoint, 18> kPresetPoints = {{
    {0, 1, {0.2, 0.0}, {0.267081, 0.0}},
    {0, 4, {0.838509, 0.0}, {0.888199, 0.0}},
    {1, 1, {0.118012, 0.0726257}, {0.149068, 0.0614525}},
    {1, 2, {0.36646, 0.139665}, {0.440994, 0.223464}},
    {1, 3, {0.627329, 0.156425}, {0.652174, 0.223464}},
    {1, 4, {0.795031, 0.0726257}, {0.89441, 0.0558659}},
    {1, 5, {1.0, 0.2}, {1.0, 0.0335196}},
    {2, 1, {0.118012, 0.396648}, {0.167702, 0.435754}},
    {2, 2, {0.529412, 0.412256}, {0.490683, 0.519553}},
    {2, 3, {0.826087, 0.407821}, {0.770898, 0.498607}},
    {2, 4, {0.875776, 0.396648}, {0.879257, 0.467967}},
    {3, 1, {0.2, 0.6}, {0.136646, 0.625698}},
    {3, 2, {0.565217, 0.703911}, {0.47205, 0.709497}},
    {3, 3, {0.751553, 0.486034}, {0.684211, 0.590529}},
    {3, 4, {0.89441, 0.608939}, {0.727554, 0.690808}},
    {4, 1, {0.2, 0.8}, {0.136646, 0.810056}},
    {4, 3, {0.689441, 0.810056}, {0.6, 0.8}},
    {4, 4, {0.823529, 0.888579}, {0.687307, 0.81337}},
}};

}  // namespace

void TeskEditGridTriangulation::ApplyPreset() {
    GridNode& root = *root_;
    root.Resize(kPresetCells, kPresetCells);
    // Sets beyond the end object's take the end object's positions.
    for (int32_t s = 0; s < pointSetCount_; ++s) {
        for (int32_t r = 0; r <= kPresetCells; ++r) {
            for (int32_t c = 0; c <= kPresetCells; ++c)
                root.At(c, r, s) = {0.2 * c, 0.2 * r};
        }
        for (const PresetPoint& point : kPresetPoints)
            root.At(point.column, point.row, s) = s == 0 ? point.start : point.end;
    }
    for (GridNode::Cell& cell : root.cells)
        cell.diagonal = true;
}

ZoString TeskEditGridTriangulation::PresetHeaderText() const {
    const GridNode& root = *root_;
    const int32_t endSet = pointSetCount_ > 1 ? 1 : 0;
    ZoString text =
        "//\n// TeskMorphPreset.h\n//\n\n#ifndef __TESK_MORPH_PRESET_H__\n"
        "#define __TESK_MORPH_PRESET_H__\n#pragma once\n\n";
    text += ZoFormat(
        "static const int s_morph_preset_x_divisions = %d;\n"
        "static const int s_morph_preset_y_divisions = %d;\n",
        root.across, root.down);
    text += ZoFormat("static const double s_morph_preset_points[%d][%d][2][2] = {\n", root.down + 1,
                     root.across + 1);
    for (int32_t r = 0; r <= root.down; ++r) {
        text += "\t{\n";
        for (int32_t c = 0; c <= root.across; ++c) {
            const TeskPoint2D& start = root.At(c, r, 0);
            const TeskPoint2D& end = root.At(c, r, endSet);
            text += ZoFormat("\t\t{ { %g, %g }, { %g, %g } },\n", start.x, start.y, end.x, end.y);
        }
        text += "\t},\n";
    }
    text += "\t};\n";
    text += ZoFormat("static const bool s_morph_preset_diagonals[%d][%d] = {\n", root.down,
                     root.across);
    for (int32_t r = 0; r < root.down; ++r) {
        text += "\t{";
        for (int32_t c = 0; c < root.across; ++c)
            text += root.CellAt(c, r).diagonal ? "true, " : "false, ";
        text += "},\n";
    }
    text += "\t};\n#endif\n";
    return text;
}

bool TeskEditGridTriangulation::ExportPresetHeader(const std::filesystem::path& path) const {
    try {
        ZoWriteFileAtomically(path, PresetHeaderText());
        return true;
    } catch (const ZoException&) {
        return false;
    }
}
