#include <CairoAdapter/Private/CairoMatrix.h>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>
#include <optional>

namespace Vell::CairoAdapter::Internal {

namespace {

constexpr double maxPixmanFactor = 32767.0;

bool isFinite(const cairo_matrix_t& matrix) {
    const double values[] = {matrix.xx, matrix.yx, matrix.xy, matrix.yy, matrix.x0, matrix.y0};
    return std::all_of(std::begin(values), std::end(values),
                       [](double value) { return std::isfinite(value); });
}

std::optional<cairo_matrix_t> tryInvert(cairo_matrix_t matrix) {
    const bool isInvertible = isFinite(matrix) && cairo_matrix_invert(&matrix) == CAIRO_STATUS_SUCCESS;
    return isInvertible && isFinite(matrix) ? std::optional(matrix) : std::nullopt;
}

struct Shift {
    double x;
    double y;
};

double getNorm(const Shift& shift) {
    return std::max(std::abs(shift.x), std::abs(shift.y));
}

/// By how many pixels cairo moves the picture so that the translation becomes small: the least of those that
/// leave as much as they move, or the translation itself.
Shift chooseShift(const cairo_matrix_t& m) {
    Shift best{m.x0, m.y0};
    for (const double i : {-1.0, 1.0}) {
        for (const double j : {-1.0, 1.0}) {
            const double determinant = (m.xx + i) * (m.yy + j) - m.xy * m.yx;
            if (std::abs(determinant) < std::numeric_limits<double>::epsilon()) {
                continue;
            }
            const Shift shift{(m.y0 * m.xy - m.x0 * (m.yy + j)) / determinant,
                              (m.x0 * m.yx - m.y0 * (m.xx + i)) / determinant};
            best = getNorm(shift) < getNorm(best) ? shift : best;
        }
    }
    return best;
}

/// What remains of a translation, at most: cairo shifts by whole pixels.
double getRemainder(double alongX, double alongY, double translation, const Shift& shift) {
    return std::abs(alongX * shift.x + alongY * shift.y + translation) + std::abs(alongX) + std::abs(alongY);
}

} // namespace

cairo_matrix_t toCairoMatrix(const cinder::MatrixAffine2<float>& matrix) {
    const float(&m)[6] = matrix.m;
    return {m[0], m[1], m[2], m[3], m[4], m[5]};
}

cairo_matrix_t chain(const cairo_matrix_t& first, const cairo_matrix_t& second) {
    cairo_matrix_t result;
    cairo_matrix_multiply(&result, &first, &second);
    return result;
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

bool isDrawable(const cairo_matrix_t& matrix) {
    return tryInvert(matrix).has_value();
}

bool isDrawableForImages(const cairo_matrix_t& matrix) {
    const auto inverse = tryInvert(matrix);
    if (!inverse) {
        return false;
    }
    const double factors[] = {inverse->xx, inverse->yx, inverse->xy, inverse->yy};
    return std::all_of(std::begin(factors), std::end(factors),
                       [](double factor) { return std::abs(factor) < maxPixmanFactor; });
}

bool isPlaceableInImages(const cairo_matrix_t& matrix) {
    const auto inverse = tryInvert(matrix);
    if (!inverse) {
        return false;
    }
    const Shift shift = chooseShift(*inverse);
    return getRemainder(inverse->xx, inverse->xy, inverse->x0, shift) < maxPixmanFactor &&
           getRemainder(inverse->yx, inverse->yy, inverse->y0, shift) < maxPixmanFactor;
}

} // namespace Vell::CairoAdapter::Internal
