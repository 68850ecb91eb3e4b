#include <CairoAdapter/Private/Color/DocumentPixels.h>

#include <CairoAdapter/Private/CairoContext.h>
#include <CairoAdapter/Private/Polyline.h>

#include <algorithm>
#include <cmath>

namespace Vell::CairoAdapter::Internal {

namespace {

cairo_surface_type_t getType(cairo_t* context) {
    return cairo_surface_get_type(cairo_get_target(context));
}

bool isImage(cairo_t* context) {
    return cairo_surface_get_type(cairo_get_group_target(context)) == CAIRO_SURFACE_TYPE_IMAGE;
}

} // namespace

DeviceBox unite(const DeviceBox& a, const DeviceBox& b) {
    if (a.isEmpty() || b.isEmpty()) {
        return a.isEmpty() ? b : a;
    }
    return {std::min(a.left, b.left), std::min(a.top, b.top), std::max(a.right, b.right),
            std::max(a.bottom, b.bottom)};
}

DeviceBox getClip(cairo_t* context) {
    DeviceBox box{};
    cairo_clip_extents(context, &box.left, &box.top, &box.right, &box.bottom);
    const DeviceLimits limits = getDeviceLimits(context);
    return {std::max(box.left, -limits.x), std::max(box.top, -limits.y), std::min(box.right, limits.x),
            std::min(box.bottom, limits.y)};
}

bool isDocument(cairo_t* context) {
    const cairo_surface_type_t type = getType(context);
    return type == CAIRO_SURFACE_TYPE_SVG || type == CAIRO_SURFACE_TYPE_PDF || type == CAIRO_SURFACE_TYPE_PS;
}

bool isExpressible(cairo_t* context, cairo_operator_t mode) {
    const bool isBlendMode = mode >= CAIRO_OPERATOR_MULTIPLY;
    return !isDocument(context) || mode == CAIRO_OPERATOR_OVER ||
           (isBlendMode && getType(context) == CAIRO_SURFACE_TYPE_PDF);
}

bool isExpressible(cairo_t* context, const FontEngine::RadialGradient& gradient) {
    const double distance = static_cast<double>(
        std::hypot(gradient.center1.x - gradient.center0.x, gradient.center1.y - gradient.center0.y));
    const double growth = static_cast<double>(gradient.radius1 - gradient.radius0);
    return getType(context) != CAIRO_SURFACE_TYPE_SVG || distance < std::abs(growth);
}

bool hasMeshes(cairo_t* context) {
    return !isImage(context) && getType(context) != CAIRO_SURFACE_TYPE_SVG;
}

cairo_matrix_t getPixelTransform(cairo_t* context, const DeviceBox& box) {
    if (isImage(context)) {
        return getSurfaceTransform(context);
    }
    constexpr double unitsPerInch = 72.0;
    constexpr double maxSide = 4096.0;
    cairo_matrix_t scale;
    cairo_matrix_init_identity(&scale);
    cairo_surface_get_fallback_resolution(cairo_get_target(context), &scale.xx, &scale.yy);
    scale.xx = std::min(scale.xx / unitsPerInch, maxSide / (box.right - box.left));
    scale.yy = std::min(scale.yy / unitsPerInch, maxSide / (box.bottom - box.top));
    return scale;
}

PixelArea getPixels(const DeviceBox& box, const cairo_matrix_t& toPixels) {
    const auto [left, right] =
        std::minmax({box.left * toPixels.xx + toPixels.x0, box.right * toPixels.xx + toPixels.x0});
    const auto [top, bottom] =
        std::minmax({box.top * toPixels.yy + toPixels.y0, box.bottom * toPixels.yy + toPixels.y0});
    const auto floor = [](double value) { return static_cast<int>(std::floor(value)); };
    const auto ceil = [](double value) { return static_cast<int>(std::ceil(value)); };
    return {floor(left), floor(top), ceil(right) - floor(left), ceil(bottom) - floor(top)};
}

PatternPtr placeImage(cairo_surface_t* image, const PixelArea& area, const cairo_matrix_t& toPixels) {
    const cairo_matrix_t toImage = chain(
        toPixels, {1.0, 0.0, 0.0, 1.0, -static_cast<double>(area.left), -static_cast<double>(area.top)});
    PatternPtr pattern = adoptPattern(cairo_pattern_create_for_surface(image));
    cairo_pattern_set_matrix(pattern.get(), &toImage);
    return pattern;
}

PatternPtr toPixels(cairo_t* context, cairo_pattern_t* pattern, const DeviceBox& box) {
    if (box.isEmpty()) {
        return nullptr;
    }
    const cairo_matrix_t transform = getPixelTransform(context, box);
    const PixelArea area = getPixels(box, transform);
    const SurfacePtr image = makeImageSurface(area.width, area.rows);
    const ContextPtr drawing = makeContext(image.get());
    cairo_translate(drawing.get(), -area.left, -area.top);
    cairo_transform(drawing.get(), &transform);
    cairo_set_source(drawing.get(), pattern);
    cairo_paint(drawing.get());
    throwIfFailed(cairo_status(drawing.get()));
    return placeImage(image.get(), area, transform);
}

} // namespace Vell::CairoAdapter::Internal
