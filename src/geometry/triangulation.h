#pragma once
// A triangulation covers the unit square of an object with triangles. Mesh
// effects map each triangle onto the object rectangle and move its corners
// frame by frame. Every triangle handed out runs clockwise on screen,
// TeskWinding(a, b, c) > 0: the clipper and the 3D facing tests rely on it.
#include <cstdint>

#include "geometry/point_2d.h"
#include "platform/zo_auto_ptr.h"

class ZoFolderFile;

/// The abstract triangulation. Editable meshes hold one set of point
/// positions per object (point sets); the fixed grids hold one and no
/// editable points.
class TeskTriangulation {
  public:
    virtual ~TeskTriangulation() = default;

    /// A heap copy of the same class with the same parameters.
    virtual ZoAutoPtr<TeskTriangulation> Clone() const = 0;

    virtual int32_t GetPointSetCount() const = 0;
    /// Number of points a user may edit.
    virtual int32_t GetPointCount() const = 0;
    virtual const TeskPoint2D& GetPoint(int32_t index, int32_t set) const = 0;
    /// Places a point without any check.
    virtual void SetPoint(int32_t index, int32_t set, const TeskPoint2D& point) = 0;
    /// Places a point under the triangulation's own constraints; true only
    /// when it went freely where asked and the mesh stayed valid. Where the
    /// point was slid along a border instead, `point` receives its position.
    virtual bool MovePoint(int32_t index, int32_t set, TeskPoint2D& point) = 0;

    /// The mesh lines an editor draws.
    virtual int32_t GetLineCount() const = 0;
    virtual void GetLine(int32_t index, int32_t set, TeskPoint2D& from, TeskPoint2D& to) const = 0;

    virtual int32_t GetTriangleCount() const = 0;
    /// The corners of triangle `index` in point set `set`, clockwise on screen.
    virtual void GetTriangle(int32_t index, int32_t set, TeskPoint2D& a, TeskPoint2D& b,
                             TeskPoint2D& c) const = 0;

    /// The project-file record, in its own unnamed folder. Reading never
    /// throws: what cannot be read takes the defaults.
    virtual void Read(ZoFolderFile& file) = 0;
    virtual void Write(ZoFolderFile& file) const = 0;
};
