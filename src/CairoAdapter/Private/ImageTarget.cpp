#include <CairoAdapter/Private/ImageTarget.h>

#include <CairoAdapter/Private/CairoMatrix.h>
#include <CairoAdapter/Private/ContextState.h>

#include <algorithm>
#include <cmath>
#include <memory>

namespace Vell::CairoAdapter::Internal {

namespace {

struct RectanglesDeleter {
    void operator()(cairo_rectangle_list_t* list) const noexcept { cairo_rectangle_list_destroy(list); }
};
using RectanglesPtr = std::unique_ptr<cairo_rectangle_list_t, RectanglesDeleter>;

bool isIdentity(const cairo_matrix_t& m) {
    return m.xx == 1.0 && m.yx == 0.0 && m.xy == 0.0 && m.yy == 1.0 && m.x0 == 0.0 && m.y0 == 0.0;
}

/// The rectangles of whole pixels that make up the clip, in device units; none where it is no such thing.
RectanglesPtr copyClip(cairo_t* context) {
    cairo_matrix_t matrix;
    cairo_get_matrix(context, &matrix);
    if (isIdentity(matrix)) {
        return RectanglesPtr(cairo_copy_clip_rectangle_list(context));
    }
    const ContextState state(context);
    cairo_identity_matrix(context);
    return RectanglesPtr(cairo_copy_clip_rectangle_list(context));
}

/// Empty unless the clip is one box of whole pixels. Of a context or surface in error there is none; a
/// finished surface gets into its error by being asked.
PixelBox findClip(cairo_t* context, const cairo_matrix_t& toPixels) {
    const RectanglesPtr clip = copyClip(context);
    if (clip->num_rectangles != 1) {
        return {};
    }
    const cairo_rectangle_t& box = *clip->rectangles;
    const auto toWhole = [](double value) { return static_cast<int>(std::lround(value)); };
    const auto [left, right] = std::minmax({toWhole(box.x * toPixels.xx + toPixels.x0),
                                            toWhole((box.x + box.width) * toPixels.xx + toPixels.x0)});
    const auto [top, bottom] = std::minmax({toWhole(box.y * toPixels.yy + toPixels.y0),
                                            toWhole((box.y + box.height) * toPixels.yy + toPixels.y0)});
    return {left, top, right, bottom};
}

/// A surface that is a part of an image has the type of an image, but no data.
bool isImageOfColors(cairo_surface_t* surface) {
    if (cairo_surface_get_type(surface) != CAIRO_SURFACE_TYPE_IMAGE ||
        cairo_image_surface_get_data(surface) == nullptr) {
        return false;
    }
    const cairo_format_t format = cairo_image_surface_get_format(surface);
    return format == CAIRO_FORMAT_ARGB32 || format == CAIRO_FORMAT_RGB24;
}

} // namespace

ImageTarget findImageTarget(cairo_t* context) {
    cairo_surface_t* const surface = cairo_get_group_target(context);
    if (cairo_get_operator(context) != CAIRO_OPERATOR_OVER || !isImageOfColors(surface)) {
        return {};
    }
    const PixelBox image{0, 0, cairo_image_surface_get_width(surface),
                         cairo_image_surface_get_height(surface)};
    const cairo_matrix_t toPixels = getSurfaceTransform(surface);
    const PixelBox clip = intersect(findClip(context, toPixels), image);
    if (clip.isEmpty()) {
        return {};
    }
    cairo_surface_flush(surface);
    return {adoptSurface(cairo_surface_reference(surface)),
            {cairo_image_surface_get_data(surface), cairo_image_surface_get_stride(surface), clip},
            toPixels};
}

} // namespace Vell::CairoAdapter::Internal
