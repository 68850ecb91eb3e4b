#include <fuzz/support/CairoRules.h>

#include <fuzz/support/Finding.h>

#include <algorithm>
#include <iterator>

namespace Vell::Fuzz {

namespace {

cairo_matrix_t getMatrix(cairo_t* context) {
    cairo_matrix_t matrix;
    cairo_get_matrix(context, &matrix);
    return matrix;
}

bool areEqual(const cairo_matrix_t& a, const cairo_matrix_t& b) {
    return a.xx == b.xx && a.yx == b.yx && a.xy == b.xy && a.yy == b.yy && a.x0 == b.x0 && a.y0 == b.y0;
}

} // namespace

ContextSettings::ContextSettings(cairo_t* context)
    : matrix(getMatrix(context))
    , blending(cairo_get_operator(context))
    , antialias(cairo_get_antialias(context))
    , fillRule(cairo_get_fill_rule(context))
    , lineWidth(cairo_get_line_width(context))
    , tolerance(cairo_get_tolerance(context))
    , source(CairoAdapter::adoptPattern(cairo_pattern_reference(cairo_get_source(context))))
    , clip{} {
    cairo_clip_extents(context, &clip[0], &clip[1], &clip[2], &clip[3]);
}

bool ContextSettings::operator==(const ContextSettings& other) const {
    return areEqual(matrix, other.matrix) && blending == other.blending && antialias == other.antialias &&
           fillRule == other.fillRule && lineWidth == other.lineWidth && tolerance == other.tolerance &&
           source == other.source && std::equal(std::begin(clip), std::end(clip), std::begin(other.clip));
}

void checkContext(cairo_t* context, const ContextSettings& settings) {
    require(cairo_status(context) == CAIRO_STATUS_SUCCESS, "a working context keeps working");
    require(ContextSettings(context) == settings, "the settings of the context are restored");
    require(cairo_has_current_point(context) == 0, "the context has no path left");
}

} // namespace Vell::Fuzz
