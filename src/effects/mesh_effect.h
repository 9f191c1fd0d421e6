#pragma once
// The mesh technique: the player cannot warp a picture, but it can draw any
// shape under an affine map. So every triangle of the object's mesh becomes a
// shape of its own once per compilation, and each frame places each shape
// with the map that carries its rest corners onto its moved corners.
#include <cstdint>
#include <vector>

#include "effects/effect.h"
#include "flash/swf_transformation.h"
#include "objects/object.h"

namespace ZoFlash {
class ZoSWFFrame;
class ZoSWFObject;
}  // namespace ZoFlash
class TeskTriangulation;

/// An effect that cuts its object into triangles and moves their corners
/// from frame to frame. Adds no setting of its own.
class TeskMeshEffect : public TeskEffect {
  public:
    /// One triangle of the mesh during one compilation.
    struct MeshTriangle {
        ZoAutoInterface2<ZoFlash::ZoSWFObject> shape;
        /// Corners in the object rectangle (twips) before enlargement.
        TeskTriangle restCorners;
        /// Where the effect has moved the corners in the current frame.
        TeskTriangle corners;
        int32_t restDepth = 0;
        /// The depth to place at in the current frame; 0 leaves it out.
        int32_t depth = 0;
        ZoFlash::ZoSWFColourTransformation colourTransformation;
        /// The shape is drawn this many times larger than the triangle at
        /// rest; placements scale it back.
        int32_t shapeMagnification = 1;
    };
    using MeshTriangleList = std::vector<MeshTriangle>;

    /// Appends one triangle per triangle of point set `pointSet` of
    /// `triangulation`, mapped onto `rect` (twips): its shape is `object`'s
    /// fill clipped to the triangle pushed `expand` twips outwards, with the
    /// outline snapped to whole pixels when `roundPoints` is set, drawn
    /// magnified. Triangle i rests at depth `depthBase` + i with corners and
    /// depth at rest.
    static void BuildMeshTriangles(MeshTriangleList& list, TeskSWFMovie& movie, TeskObject& object,
                                   const ZoRect& rect, const TeskTriangulation& triangulation,
                                   int32_t pointSet, double expand, bool roundPoints,
                                   int32_t depthBase);
    /// As above with the outline snapped to whole pixels.
    static void BuildMeshTriangles(MeshTriangleList& list, TeskSWFMovie& movie, TeskObject& object,
                                   const ZoRect& rect, const TeskTriangulation& triangulation,
                                   int32_t pointSet, double expand, int32_t depthBase);

    /// Places every triangle whose depth is not 0 into `frame`, in list
    /// order, carried from its rest corners onto its corners (first snapped
    /// to whole pixels when `roundMovedPoints` is set). A triangle without
    /// area at rest has no such map and is left out.
    static void PlaceMeshTriangles(const MeshTriangleList& list, ZoFlash::ZoSWFFrame& frame,
                                   bool roundMovedPoints = false);

    /// Sets `transformation` to the affine map that carries P0, P1, P2 onto
    /// Q0, Q1, Q2. False, leaving it unchanged, when P has no area.
    static bool TriangleTransform(ZoFlash::ZoSWFTransformation& transformation, ZoPoint p0,
                                  ZoPoint q0, ZoPoint p1, ZoPoint q1, ZoPoint p2, ZoPoint q2);

  protected:
    using TeskEffect::TeskEffect;
};
