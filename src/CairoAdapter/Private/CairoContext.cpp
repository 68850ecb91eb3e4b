#include <CairoAdapter/Private/CairoContext.h>

#include <algorithm>
#include <cmath>
#include <iterator>

namespace Vell::CairoAdapter::Internal {

namespace {

bool isFinite(const cairo_matrix_t& matrix) {
    const double values[] = {matrix.xx, matrix.yx, matrix.xy, matrix.yy, matrix.x0, matrix.y0};
    return std::all_of(std::begin(values), std::end(values),
                       [](double value) { return std::isfinite(value); });
}

} // namespace

void setSource(cairo_t* context, const cinder::ColorAT<unsigned char>& color) {
    constexpr double max = 255.0;
    cairo_set_source_rgba(context, color.r / max, color.g / max, color.b / max, color.a / max);
}

cairo_matrix_t toCairoMatrix(const cinder::MatrixAffine2<float>& matrix) {
    const float(&m)[6] = matrix.m;
    return {m[0], m[1], m[2], m[3], m[4], m[5]};
}

cairo_matrix_t chain(const cairo_matrix_t& first, const cairo_matrix_t& second) {
    cairo_matrix_t result;
    cairo_matrix_multiply(&result, &first, &second);
    return result;
}

std::optional<cairo_matrix_t> tryInvert(cairo_matrix_t matrix) {
    const bool isInvertible = isFinite(matrix) && cairo_matrix_invert(&matrix) == CAIRO_STATUS_SUCCESS;
    return isInvertible && isFinite(matrix) ? std::optional(matrix) : std::nullopt;
}

bool isDrawable(const cairo_matrix_t& matrix) {
    return tryInvert(matrix).has_value();
}

cairo_matrix_t getSurfaceTransform(cairo_surface_t* surface) {
    cairo_matrix_t matrix;
    cairo_matrix_init_identity(&matrix);
    cairo_surface_get_device_scale(surface, &matrix.xx, &matrix.yy);
    cairo_surface_get_device_offset(surface, &matrix.x0, &matrix.y0);
    return matrix;
}

cairo_matrix_t getSurfaceTransform(cairo_t* context) {
    return getSurfaceTransform(cairo_get_group_target(context));
}

} // namespace Vell::CairoAdapter::Internal
