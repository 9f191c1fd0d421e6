#pragma once
// Every pixel is sampled at four points, each drawn into a surface of its
// own; the painter draws every piece into all of them in turn.
#include <cairo.h>

#include "render/shape_paths.h"

namespace ZoRender {

/// Where one sample of every pixel is drawn.
struct SampleContext {
    cairo_t* cr = nullptr;
    /// Device pixels to the pixels whose centres lie at this sample's point.
    cairo_matrix_t toSample{};
};

/// A sample context for the point `x`, `y` pixels from each pixel's centre.
SampleContext MakeSampleContext(cairo_t* cr, double x, double y);

/// The matrix that draws shapes placed by `placement` (their units to
/// device pixels) at the sample's point.
cairo_matrix_t GeometryMatrix(const SampleContext& sample, const cairo_matrix_t& placement);
/// Sets the sample's context to that matrix.
void UseGeometryMatrix(const SampleContext& sample, const cairo_matrix_t& placement);

/// Appends `path` (twips) to `cr`'s current path under its matrix.
void AppendPath(cairo_t* cr, const Path& path);

}  // namespace ZoRender
