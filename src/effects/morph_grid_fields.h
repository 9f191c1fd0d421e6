#pragma once
// The morph mesh by named fields, for JSON projects and `vimbo dump`. A node
// lists its size, its points (each with its place on the start object, x and
// y, and on the end object, endX and endY), its cells' diagonals and, for the
// root, its split cells. Reading is forgiving where a project file would be:
// sizes are clamped, points and diagonals left out keep their places, and a
// split cell's corners follow the cell.

class TeskEditGridTriangulation;
class TeskFieldVisitor;

/// Visits a grid of two point sets (start and end object).
void TeskVisitMorphGrid(TeskFieldVisitor& visitor, TeskEditGridTriangulation& grid);
