#include <CairoAdapter/Private/GlyphPlacement.h>

#include <CairoAdapter/Private/CairoContext.h>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>

namespace Vell::CairoAdapter::Internal {

namespace {

struct Box {
    double left;
    double top;
    double right;
    double bottom;
};

Box getClipBox(cairo_t* context) {
    const ContextState state(context);
    cairo_identity_matrix(context);
    Box box{};
    cairo_clip_extents(context, &box.left, &box.top, &box.right, &box.bottom);
    return box;
}

Box transform(const Box& box, const cairo_matrix_t& matrix) {
    double x[] = {box.left, box.right, box.left, box.right};
    double y[] = {box.top, box.top, box.bottom, box.bottom};
    for (int corner = 0; corner < 4; ++corner) {
        cairo_matrix_transform_point(&matrix, &x[corner], &y[corner]);
    }
    const auto xs = std::minmax_element(std::begin(x), std::end(x));
    const auto ys = std::minmax_element(std::begin(y), std::end(y));
    return {*xs.first, *ys.first, *xs.second, *ys.second};
}

bool areOverlapping(const Box& a, const Box& b) {
    return a.left < b.right && b.left < a.right && a.top < b.bottom && b.top < a.bottom;
}

/// The box of a recording without bounds reaches from minus to plus infinity.
bool isBounded(const Box& box) {
    return std::isfinite(box.right - box.left) && std::isfinite(box.bottom - box.top);
}

/// Whether an image can have pixels everywhere in the box.
bool isWithinImages(const Box& box) {
    constexpr double largestSide = 32767.0;
    return std::max({-box.left, -box.top, box.right, box.bottom}) <= largestSide;
}

/// Whether the box overlaps the parallelogram that the matrix makes of the bitmap. A comparison with the
/// bounds of the parallelogram is not enough, because under extreme slants these say little.
bool areOverlapping(const Box& box, const Box& bitmap, const cairo_matrix_t& matrix) {
    if (!areOverlapping(box, transform(bitmap, matrix))) {
        return false;
    }
    cairo_matrix_t inverse = matrix;
    return !isBounded(box) || (cairo_matrix_invert(&inverse) == CAIRO_STATUS_SUCCESS &&
                               areOverlapping(bitmap, transform(box, inverse)));
}

/// The nearest matrix of whole numbers.
cairo_matrix_t roundMatrix(const cairo_matrix_t& m) {
    return {std::round(m.xx), std::round(m.yx), std::round(m.xy),
            std::round(m.yy), std::round(m.x0), std::round(m.y0)};
}

/// Whether a matrix of whole numbers only mirrors and turns by quarters.
bool keepsPixels(const cairo_matrix_t& m) {
    const bool isUpright = m.yx == 0.0 && m.xy == 0.0 && std::abs(m.xx) == 1.0 && std::abs(m.yy) == 1.0;
    const bool isTurned = m.xx == 0.0 && m.yy == 0.0 && std::abs(m.yx) == 1.0 && std::abs(m.xy) == 1.0;
    return isUpright || isTurned;
}

/// How far apart, at most and on either axis, two matrices place the same corner of the bitmap.
double getGreatestShift(const cairo_matrix_t& a, const cairo_matrix_t& b, double width, double height) {
    const cairo_matrix_t difference{a.xx - b.xx, a.yx - b.yx, a.xy - b.xy,
                                    a.yy - b.yy, a.x0 - b.x0, a.y0 - b.y0};
    const Box shift = transform({0.0, 0.0, width, height}, difference);
    return std::max({-shift.left, shift.right, -shift.top, shift.bottom});
}

/// Greater numbers do not fit into pixman's 16.16 numbers.
constexpr double maxPixmanFactor = 32767.0;

/// Whether pixman can hold the inverse of the matrix, which leads to the pixels of the surface. It cannot if
/// a row or column of the bitmap is drawn thinner than 1/32767 of a pixel.
bool isDrawableForImages(const cairo_matrix_t& matrix) {
    const auto inverse = tryInvert(matrix);
    if (!inverse) {
        return false;
    }
    const double factors[] = {inverse->xx, inverse->yx, inverse->xy, inverse->yy};
    return std::all_of(std::begin(factors), std::end(factors),
                       [](double factor) { return std::abs(factor) < maxPixmanFactor; });
}

struct Shift {
    double x;
    double y;
};

double getNorm(const Shift& shift) {
    return std::max(std::abs(shift.x), std::abs(shift.y));
}

/// By how many pixels cairo (1.16) moves the picture to make the translation small. cairo chooses the
/// smallest among the translation itself and the shifts that leave a translation as large as themselves.
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

/// An upper bound of the translation that remains, since cairo shifts by whole pixels.
double getRemainder(double alongX, double alongY, double translation, const Shift& shift) {
    return std::abs(alongX * shift.x + alongY * shift.y + translation) + std::abs(alongX) + std::abs(alongY);
}

/// Whether pixman can hold the translation of that inverse, too: under extreme slants it cannot. Expects a
/// matrix that is drawable for images, and a surface no larger than images can be.
bool isPlaceableInImages(const cairo_matrix_t& matrix) {
    const auto inverse = tryInvert(matrix);
    if (!inverse) {
        return false;
    }
    const Shift shift = chooseShift(*inverse);
    return getRemainder(inverse->xx, inverse->xy, inverse->x0, shift) < maxPixmanFactor &&
           getRemainder(inverse->yx, inverse->yy, inverse->y0, shift) < maxPixmanFactor;
}

} // namespace

cairo_matrix_t placeGlyph(const cinder::Vec2<float>& position, float devicePixelRatio,
                          const cairo_matrix_t& deviceTransform) {
    const double pixel = 1.0 / static_cast<double>(devicePixelRatio);
    return chain({pixel, 0.0, 0.0, pixel, position.x, position.y}, deviceTransform);
}

bool isVisible(cairo_t* context, const cairo_matrix_t& matrix, double width, double height) {
    // Interpolation spreads a bitmap by up to one of its pixels.
    const Box bitmap{-1.0, -1.0, width + 1.0, height + 1.0};
    const cairo_matrix_t toPixels = getSurfaceTransform(context);
    const cairo_matrix_t exact = chain(matrix, toPixels);
    const Box clip = getClipBox(context);
    return isDrawable(matrix) && isDrawableForImages(exact) && areOverlapping(clip, bitmap, matrix) &&
           (isPlaceableInImages(exact) || !isWithinImages(transform(clip, toPixels)));
}

cairo_filter_t chooseFilter(cairo_t* context, const cairo_matrix_t& matrix, double width, double height) {
    const cairo_matrix_t exact = chain(matrix, getSurfaceTransform(context));
    const cairo_matrix_t rounded = roundMatrix(exact);
    if (keepsPixels(rounded)) {
        cairo_matrix_t displaced = rounded;
        displaced.x0 = exact.x0;
        displaced.y0 = exact.y0;
        if (getGreatestShift(exact, rounded, width, height) < alignmentTolerance) {
            return CAIRO_FILTER_NEAREST;
        }
        if (getGreatestShift(exact, displaced, width, height) < alignmentTolerance) {
            return CAIRO_FILTER_BILINEAR;
        }
    }
    return CAIRO_FILTER_GOOD;
}

} // namespace Vell::CairoAdapter::Internal
