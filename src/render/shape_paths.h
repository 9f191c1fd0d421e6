#pragma once
// Shapes as paths ready to fill. SWF gives each edge the fill on its left
// and the fill on its right; a fill's region is the edges that name it,
// turned to run one way and joined into closed contours.
#include <cstdint>
#include <vector>

#include "render/swf_parser.h"

namespace ZoRender {

/// One step of a path, in twips; `cx`, `cy` is a quadratic curve's control.
struct PathCommand {
    enum class Kind : uint8_t { kMove, kLine, kCurve, kClose };
    Kind kind = Kind::kMove;
    double cx = 0, cy = 0;
    double x = 0, y = 0;
};

using Path = std::vector<PathCommand>;

struct ShapePaths {
    /// Closed contours per fill style (index = style number - 1). A font
    /// glyph has no style list; its one fill is index 0.
    std::vector<Path> fills;
    /// Open runs of edges per line style (index = style number - 1).
    std::vector<Path> lines;
};

ShapePaths BuildShapePaths(const Shape& shape);

}  // namespace ZoRender
