#include <CairoAdapter/Private/GlyphPlacement.h>

#include <CairoAdapter/Private/CairoMatrix.h>
#include <CairoAdapter/Private/ContextState.h>

#include <algorithm>
#include <cmath>
#include <iterator>

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

/// A recording may have no bounds: the box reaches from minus to plus infinity.
bool isBounded(const Box& box) {
    return std::isfinite(box.right - box.left) && std::isfinite(box.bottom - box.top);
}

/// Whether all of the box is where an image can have pixels.
bool isWithinImages(const Box& box) {
    constexpr double largestSide = 32767.0;
    return std::max({-box.left, -box.top, box.right, box.bottom}) <= largestSide;
}

/// Whether the box and the parallelogram that the matrix makes of the bitmap have points in common. Under
/// extreme slants the parallelogram's own box says little.
bool areOverlapping(const Box& box, const Box& bitmap, const cairo_matrix_t& matrix) {
    if (!areOverlapping(box, transform(bitmap, matrix))) {
        return false;
    }
    cairo_matrix_t inverse = matrix;
    return !isBounded(box) || (cairo_matrix_invert(&inverse) == CAIRO_STATUS_SUCCESS &&
                               areOverlapping(bitmap, transform(box, inverse)));
}

/// The matrix of whole numbers that is nearest.
cairo_matrix_t roundMatrix(const cairo_matrix_t& m) {
    return {std::round(m.xx), std::round(m.yx), std::round(m.xy),
            std::round(m.yy), std::round(m.x0), std::round(m.y0)};
}

/// Whether the matrix of whole numbers turns and mirrors by quarter turns only.
bool keepsPixels(const cairo_matrix_t& m) {
    const bool isUpright = m.yx == 0.0 && m.xy == 0.0 && std::abs(m.xx) == 1.0 && std::abs(m.yy) == 1.0;
    const bool isTurned = m.xx == 0.0 && m.yy == 0.0 && std::abs(m.yx) == 1.0 && std::abs(m.xy) == 1.0;
    return isUpright || isTurned;
}

/// The greatest distance, on either axis, between where two matrices put a corner of the bitmap.
double getGreatestShift(const cairo_matrix_t& a, const cairo_matrix_t& b, double width, double height) {
    const cairo_matrix_t difference{a.xx - b.xx, a.yx - b.yx, a.xy - b.xy,
                                    a.yy - b.yy, a.x0 - b.x0, a.y0 - b.y0};
    const Box shift = transform({0.0, 0.0, width, height}, difference);
    return std::max({-shift.left, shift.right, -shift.top, shift.bottom});
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
