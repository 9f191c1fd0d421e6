#include "render/sample_context.h"

namespace ZoRender {

SampleContext MakeSampleContext(cairo_t* cr, double x, double y) {
    SampleContext sample{cr, {}};
    cairo_matrix_init_translate(&sample.toSample, -x, -y);
    cairo_set_fill_rule(cr, CAIRO_FILL_RULE_EVEN_ODD);
    return sample;
}

cairo_matrix_t GeometryMatrix(const SampleContext& sample, const cairo_matrix_t& placement) {
    cairo_matrix_t m;
    cairo_matrix_multiply(&m, &placement, &sample.toSample);
    return m;
}

void UseGeometryMatrix(const SampleContext& sample, const cairo_matrix_t& placement) {
    const cairo_matrix_t m = GeometryMatrix(sample, placement);
    cairo_set_matrix(sample.cr, &m);
}

void AppendPath(cairo_t* cr, const Path& path) {
    double x = 0, y = 0;
    for (const PathCommand& c : path) {
        switch (c.kind) {
            case PathCommand::Kind::kMove:
                cairo_move_to(cr, c.x, c.y);
                break;
            case PathCommand::Kind::kLine:
                cairo_line_to(cr, c.x, c.y);
                break;
            case PathCommand::Kind::kCurve:
                // The quadratic as the cubic with the same curve.
                cairo_curve_to(cr, x + 2.0 / 3.0 * (c.cx - x), y + 2.0 / 3.0 * (c.cy - y),
                               c.x + 2.0 / 3.0 * (c.cx - c.x), c.y + 2.0 / 3.0 * (c.cy - c.y), c.x,
                               c.y);
                break;
            case PathCommand::Kind::kClose:
                cairo_close_path(cr);
                continue;  // the pen stays at the contour's end
        }
        x = c.x;
        y = c.y;
    }
}

}  // namespace ZoRender
