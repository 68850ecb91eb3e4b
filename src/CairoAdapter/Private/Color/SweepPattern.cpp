#include <CairoAdapter/Private/Color/SweepPattern.h>

#include <CairoAdapter/Private/CairoContext.h>
#include <CairoAdapter/Private/Color/SweepImage.h>
#include <CairoAdapter/Private/Color/SweepMesh.h>
#include <CairoAdapter/Private/Polyline.h>

#include <algorithm>
#include <cmath>

namespace Vell::CairoAdapter::Internal {

namespace {

struct ClipBox {
    double left;
    double top;
    double right;
    double bottom;

    bool isEmpty() const { return left >= right || top >= bottom; }
};

ClipBox getClip(cairo_t* context) {
    ClipBox box{};
    cairo_clip_extents(context, &box.left, &box.top, &box.right, &box.bottom);
    const DeviceLimits limits = getDeviceLimits(context);
    return {std::max(box.left, -limits.x), std::max(box.top, -limits.y), std::min(box.right, limits.x),
            std::min(box.bottom, limits.y)};
}

/// The radius of a disc around the gradient's centre that covers the box.
double getRadius(const FontEngine::SweepGradient& gradient, const ClipBox& box,
                 const cairo_matrix_t& toGradient) {
    const double centerX = gradient.center.x;
    const double centerY = gradient.center.y;
    double radius = 0.0;
    for (double x : {box.left - 1.0, box.right + 1.0}) {
        for (double y : {box.top - 1.0, box.bottom + 1.0}) {
            cairo_matrix_transform_point(&toGradient, &x, &y);
            radius = std::max(radius, std::hypot(x - centerX, y - centerY));
        }
    }
    return radius;
}

/// Whole pixels of the surface.
struct PixelArea {
    int left;
    int top;
    int width;
    int rows;
};

PixelArea getPixels(const ClipBox& box, const cairo_matrix_t& toPixels) {
    const auto [left, right] =
        std::minmax({box.left * toPixels.xx + toPixels.x0, box.right * toPixels.xx + toPixels.x0});
    const auto [top, bottom] =
        std::minmax({box.top * toPixels.yy + toPixels.y0, box.bottom * toPixels.yy + toPixels.y0});
    const auto floor = [](double value) { return static_cast<int>(std::floor(value)); };
    const auto ceil = [](double value) { return static_cast<int>(std::ceil(value)); };
    return {floor(left), floor(top), ceil(right) - floor(left), ceil(bottom) - floor(top)};
}

PatternPtr makeImagePattern(cairo_t* context, const FontEngine::SweepGradient& gradient, const ClipBox& box,
                            const cairo_matrix_t& toGradient) {
    const cairo_matrix_t toPixels = getSurfaceTransform(context);
    const auto [left, top, width, rows] = getPixels(box, toPixels);
    const cairo_matrix_t toImage =
        chain(toPixels, {1.0, 0.0, 0.0, 1.0, static_cast<double>(-left), static_cast<double>(-top)});
    const auto toDevice = tryInvert(toImage);
    if (!toDevice) {
        return nullptr;
    }
    const SurfacePtr image = makeSweepImage(gradient, chain(*toDevice, toGradient), width, rows);
    PatternPtr pattern = adoptPattern(cairo_pattern_create_for_surface(image.get()));
    cairo_pattern_set_matrix(pattern.get(), &toImage);
    cairo_pattern_set_filter(pattern.get(), CAIRO_FILTER_NEAREST);
    return pattern;
}

PatternPtr makeMeshPattern(const FontEngine::SweepGradient& gradient, const ClipBox& box,
                           const cairo_matrix_t& toGradient) {
    PatternPtr mesh = makeSweepMesh(gradient, getRadius(gradient, box, toGradient));
    cairo_pattern_set_matrix(mesh.get(), &toGradient);
    return mesh;
}

} // namespace

PatternPtr makeSweepPattern(cairo_t* context, const cairo_matrix_t& matrix,
                            const FontEngine::SweepGradient& gradient) {
    const auto toGradient = tryInvert(matrix);
    const ClipBox box = getClip(context);
    if (!toGradient || box.isEmpty()) {
        return nullptr;
    }
    const bool isImage = cairo_surface_get_type(cairo_get_group_target(context)) == CAIRO_SURFACE_TYPE_IMAGE;
    return isImage ? makeImagePattern(context, gradient, box, *toGradient)
                   : makeMeshPattern(gradient, box, *toGradient);
}

} // namespace Vell::CairoAdapter::Internal
