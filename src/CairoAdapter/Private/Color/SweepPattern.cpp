#include <CairoAdapter/Private/Color/SweepPattern.h>

#include <CairoAdapter/Private/CairoContext.h>
#include <CairoAdapter/Private/Color/DocumentPixels.h>
#include <CairoAdapter/Private/Color/SweepImage.h>
#include <CairoAdapter/Private/Color/SweepMesh.h>

#include <algorithm>
#include <cmath>

namespace Vell::CairoAdapter::Internal {

namespace {

/// The radius of a disc around the gradient's centre that covers the box.
double getRadius(const FontEngine::SweepGradient& gradient, const DeviceBox& box,
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

PatternPtr makeImagePattern(cairo_t* context, const FontEngine::SweepGradient& gradient, const DeviceBox& box,
                            const cairo_matrix_t& toGradient) {
    const cairo_matrix_t toPixels = getPixelTransform(context, box);
    const auto fromPixels = tryInvert(toPixels);
    if (!fromPixels) {
        return nullptr;
    }
    const PixelArea area = getPixels(box, toPixels);
    const cairo_matrix_t fromImage = chain(
        {1.0, 0.0, 0.0, 1.0, static_cast<double>(area.left), static_cast<double>(area.top)}, *fromPixels);
    const SurfacePtr image = makeSweepImage(gradient, chain(fromImage, toGradient), area.width, area.rows);
    return placeImage(image.get(), area, toPixels);
}

PatternPtr makeMeshPattern(const FontEngine::SweepGradient& gradient, const DeviceBox& box,
                           const cairo_matrix_t& toGradient) {
    PatternPtr mesh = makeSweepMesh(gradient, getRadius(gradient, box, toGradient));
    cairo_pattern_set_matrix(mesh.get(), &toGradient);
    return mesh;
}

} // namespace

PatternPtr makeSweepPattern(cairo_t* context, const cairo_matrix_t& matrix,
                            const FontEngine::SweepGradient& gradient) {
    const auto toGradient = tryInvert(matrix);
    const DeviceBox box = getClip(context);
    if (!toGradient || box.isEmpty()) {
        return nullptr;
    }
    return hasMeshes(context) ? makeMeshPattern(gradient, box, *toGradient)
                              : makeImagePattern(context, gradient, box, *toGradient);
}

} // namespace Vell::CairoAdapter::Internal
