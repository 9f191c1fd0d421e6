// The geometry a mesh effect runs once per compilation: clipping every mesh
// triangle to the object, cutting glyph outlines by mesh triangles, and
// reading every triangle of a morph grid.
#include <benchmark/benchmark.h>

#include <cmath>
#include <numbers>

#include "geometry/edit_grid_triangulation.h"
#include "geometry/poly_shape.h"
#include "geometry/triangle_clip.h"

namespace {

using ZoGeometry::ZoDoublePoint;
using ZoGeometry::ZoPolyPointKind;
using ZoGeometry::ZoPolyShape;

void BM_ClipTriangleToRect(benchmark::State& state) {
    const ZoRect rect{0, 0, 6400, 4800};
    for (auto _ : state) {
        auto polygon =
            ZoGeometry::ZoClipTriangleToRect({-500, 200}, {7000, -300}, {3000, 6000}, rect);
        benchmark::DoNotOptimize(polygon);
    }
}
BENCHMARK(BM_ClipTriangleToRect);

// A glyph-sized ring of `segments` quadratic segments around a hole.
ZoPolyShape Glyph(int segments) {
    ZoPolyShape shape;
    for (const double radius : {400.0, -200.0}) {
        const int32_t contour = shape.AddContour();
        const double step = 2.0 * std::numbers::pi / segments * (radius > 0 ? 1 : -1);
        const double r = std::abs(radius);
        for (int i = 0; i < segments; ++i) {
            const double a = i * step;
            if (i > 0)
                shape.AddPoint(
                    contour, ZoPolyPointKind::kQuadraticControl,
                    {1.1 * r * std::cos(a - step / 2), 1.1 * r * std::sin(a - step / 2)});
            shape.AddPoint(contour, i == 0 ? ZoPolyPointKind::kMove : ZoPolyPointKind::kQuadratic,
                           {r * std::cos(a), r * std::sin(a)});
        }
    }
    return shape;
}

void BM_CutGlyphByTriangle(benchmark::State& state) {
    const ZoPolyShape glyph = Glyph(static_cast<int>(state.range(0)));
    const ZoDoublePoint a{-300, -500}, b{500, 100}, c{-400, 350};
    for (auto _ : state) {
        ZoPolyShape piece = glyph;
        piece.Cut(a, b);
        piece.Cut(b, c);
        piece.Cut(c, a);
        benchmark::DoNotOptimize(piece);
    }
}
BENCHMARK(BM_CutGlyphByTriangle)->Arg(8)->Arg(32);

void BM_ReadEveryMorphTriangle(benchmark::State& state) {
    TeskEditGridTriangulation grid;
    grid.Root().Resize(static_cast<int32_t>(state.range(0)), static_cast<int32_t>(state.range(0)));
    grid.Root().SplitCell(1, 1)->Resize(2, 2);
    for (auto _ : state) {
        TeskPoint2D p, q, r;
        for (int32_t i = 0; i < grid.GetTriangleCount(); ++i)
            grid.GetTriangle(i, 1, p, q, r);
        benchmark::DoNotOptimize(p);
    }
}
BENCHMARK(BM_ReadEveryMorphTriangle)->Arg(5)->Arg(15);

}  // namespace
