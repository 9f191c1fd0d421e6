#include "effects/mesh_effect.h"

#include <algorithm>
#include <cstdlib>

#include "flash/swf_frame.h"
#include "flash/swf_shape.h"
#include "geometry/mesh_geometry.h"
#include "geometry/triangulation.h"

namespace {

// Integer twips truncate towards zero, as the object's own rectangle does.
ZoPoint Truncated(const ZoGeometry::ZoDoublePoint& p) noexcept {
    return {static_cast<int32_t>(p.x), static_cast<int32_t>(p.y)};
}

TeskTriangle Truncated(const TeskDoubleTriangle& t) noexcept {
    return {Truncated(t[0]), Truncated(t[1]), Truncated(t[2])};
}

TeskTriangle RoundedToPixels(TeskTriangle t) noexcept {
    for (ZoPoint& p : t)
        p = TeskRoundToPixel(p);
    return t;
}

TeskTriangle Magnified(TeskTriangle t, int32_t factor) noexcept {
    for (ZoPoint& p : t)
        p = {p.x * factor, p.y * factor};
    return t;
}

// A triangle's shape is drawn as large as it may be, so that every frame
// scales it down: small scale and rotate terms take fewer bits in each of
// the placements that make up most of a movie. Shape and rest corners stay
// within kZoHalfTwipExtent, so rounding a term moves no point by more than
// half a twip, far less than the overlap `expand` gives neighbours.
int32_t ShapeMagnification(const ZoFlash::ZoSWFShape& shape, const TeskTriangle& rest) noexcept {
    int32_t extent = 1;
    for (const ZoPoint p : rest)
        extent = std::max({extent, std::abs(p.x), std::abs(p.y)});
    return std::min(shape.LargestMagnification(ZoFlash::kZoHalfTwipExtent),
                    std::max(ZoFlash::kZoHalfTwipExtent / extent, 1));
}

}  // namespace

void TeskMeshEffect::BuildMeshTriangles(MeshTriangleList& list, TeskSWFMovie& movie,
                                        TeskObject& object, const ZoRect& rect,
                                        const TeskTriangulation& triangulation, int32_t pointSet,
                                        double expand, bool roundPoints, int32_t depthBase) {
    object.PrepareOutput();
    const int32_t count = triangulation.GetTriangleCount();
    list.reserve(list.size() + static_cast<size_t>(count));
    for (int32_t i = 0; i < count; ++i) {
        TeskPoint2D a, b, c;
        triangulation.GetTriangle(i, pointSet, a, b, c);
        const TeskDoubleTriangle mapped{TeskMapToRect(a, rect), TeskMapToRect(b, rect),
                                        TeskMapToRect(c, rect)};
        TeskTriangle outline = Truncated(TeskExpandTriangle(mapped, expand));
        if (roundPoints)
            outline = RoundedToPixels(outline);
        MeshTriangle& triangle = list.emplace_back();
        triangle.restCorners = Truncated(mapped);
        ZoAutoInterface2<ZoFlash::ZoSWFShape> shape =
            object.MakeTriangleShape(movie, rect, outline);
        triangle.shapeMagnification = ShapeMagnification(*shape, triangle.restCorners);
        shape->Magnify(triangle.shapeMagnification);
        triangle.shape = std::move(shape);
        triangle.corners = triangle.restCorners;
        triangle.restDepth = triangle.depth = depthBase + i;
    }
    object.ReleaseOutput();
}

void TeskMeshEffect::BuildMeshTriangles(MeshTriangleList& list, TeskSWFMovie& movie,
                                        TeskObject& object, const ZoRect& rect,
                                        const TeskTriangulation& triangulation, int32_t pointSet,
                                        double expand, int32_t depthBase) {
    BuildMeshTriangles(list, movie, object, rect, triangulation, pointSet, expand, true, depthBase);
}

void TeskMeshEffect::PlaceMeshTriangles(const MeshTriangleList& list, ZoFlash::ZoSWFFrame& frame,
                                        bool roundMovedPoints) {
    frame.ReservePlacements(frame.GetPlacements().size() + list.size());
    for (const MeshTriangle& triangle : list) {
        if (triangle.depth == 0)
            continue;
        const TeskTriangle q =
            roundMovedPoints ? RoundedToPixels(triangle.corners) : triangle.corners;
        const TeskTriangle p = Magnified(triangle.restCorners, triangle.shapeMagnification);
        ZoFlash::ZoSWFTransformation t;
        if (!TriangleTransform(t, p[0], q[0], p[1], q[1], p[2], q[2]))
            continue;
        frame.PlaceObject(triangle.shape, nullptr, triangle.depth, t, 0, -1,
                          triangle.colourTransformation);
    }
}

bool TeskMeshEffect::TriangleTransform(ZoFlash::ZoSWFTransformation& transformation, ZoPoint p0,
                                       ZoPoint q0, ZoPoint p1, ZoPoint q1, ZoPoint p2, ZoPoint q2) {
    const auto m = TeskTriangleEdgeMap({p0, p1, p2}, {q0, q1, q2});
    if (!m)
        return false;
    transformation.SetTranslate(-p0.x, -p0.y);
    transformation.AppendMatrix(m->m00, m->m01, m->m10, m->m11, 0.0, 0.0);
    transformation.AppendTranslate(q0.x, q0.y);
    return true;
}
