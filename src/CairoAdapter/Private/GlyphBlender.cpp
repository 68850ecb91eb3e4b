#include <CairoAdapter/Private/GlyphBlender.h>

#include <CairoAdapter/Private/Blending/PixelOperations.h>
#include <CairoAdapter/Private/CairoContext.h>
#include <CairoAdapter/Private/GlyphPlacement.h>

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

/// The rectangles of whole pixels that make up the clip, in device units; none for any other clip.
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

/// Empty unless the clip is a single box of whole pixels. Empty for a context or surface that is in an error
/// state; for a finished surface, this query sets the error.
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

/// A sub-surface of an image has the type of an image, but no data.
bool isImageOfColors(cairo_surface_t* surface) {
    if (cairo_surface_get_type(surface) != CAIRO_SURFACE_TYPE_IMAGE ||
        cairo_image_surface_get_data(surface) == nullptr) {
        return false;
    }
    const cairo_format_t format = cairo_image_surface_get_format(surface);
    return format == CAIRO_FORMAT_ARGB32 || format == CAIRO_FORMAT_RGB24;
}

/// The image below a context. There is one only if cairo, too, would do nothing but blend within a box of
/// whole pixels: the operator is over, and the clip is such a box. Its pixels may be written until the
/// context or the surface is used otherwise. Before that, cairo must learn of the changes
/// (cairo_surface_mark_dirty).
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

/// The limit of pixman's numbers, far below that of an int.
constexpr double maxCoordinate = 32766.0;

/// Half a step of pixman's numbers: smaller changes of scale round to none.
constexpr double interpolationTolerance = 1.0 / 131072.0;

struct Point {
    double x;
    double y;
};

Point transform(const cairo_matrix_t& m, const cinder::Vec2<float>& position) {
    const auto x = static_cast<double>(position.x);
    const auto y = static_cast<double>(position.y);
    return {m.xx * x + m.xy * y + m.x0, m.yx * x + m.yy * y + m.y0};
}

bool isInRange(const Point& point) {
    return std::abs(point.x) < maxCoordinate && std::abs(point.y) < maxCoordinate; // false for NaN
}

int roundToWhole(double coordinate) {
    return static_cast<int>(coordinate < 0.0 ? coordinate - 0.5 : coordinate + 0.5);
}

double getDrift(const cairo_matrix_t& toPixels, double bitmapPixel) {
    const double x = std::abs(toPixels.xx * bitmapPixel - 1.0) + std::abs(toPixels.xy * bitmapPixel);
    const double y = std::abs(toPixels.yy * bitmapPixel - 1.0) + std::abs(toPixels.yx * bitmapPixel);
    return std::max(x, y);
}

} // namespace

GlyphBlender::GlyphBlender(const CairoPainter& painter, float devicePixelRatio)
    : _painter(painter)
    , _operations(choosePixelOperations())
    , _bitmapPixel(1.0 / static_cast<double>(devicePixelRatio)) {}

void GlyphBlender::open() {
    _target = findImageTarget(_painter.getContext());
    _isTakenOver = _target.surface != nullptr;
    if (_isTakenOver) {
        _toPixels = chain(_painter.getDeviceTransform(), _target.toPixels);
        _drift = getDrift(_toPixels, _bitmapPixel);
    }
}

bool GlyphBlender::tryBlend(const FontEngine::BitmapGlyphImage& image, const cinder::Vec2<float>& position,
                            std::uint32_t color) {
    if (_target.surface == nullptr) {
        return false;
    }
    const BitmapView bitmap = viewBitmap(image);
    const Point corner = transform(_toPixels, position);
    if (bitmap.bytesPerPixel == 0 || !isInRange(corner)) {
        return false;
    }
    const double drift = _drift * std::max(bitmap.width, bitmap.rows);
    const int left = roundToWhole(corner.x);
    const int top = roundToWhole(corner.y);
    if (drift + std::max(std::abs(corner.x - left), std::abs(corner.y - top)) < alignmentTolerance) {
        takeOver();
        blendBitmap(_operations, _target.pixels, bitmap, left, top, color);
        return true;
    }
    if (drift < interpolationTolerance && canBeDisplaced(bitmap)) {
        takeOver();
        blendDisplacedBitmap(_operations, _target.pixels, bitmap, displace(corner.x, corner.y), color);
        return true;
    }
    return false;
}

void GlyphBlender::takeOver() {
    if (!_isTakenOver) {
        cairo_surface_flush(_target.surface.get());
        _isTakenOver = true;
    }
}

void GlyphBlender::handOver() noexcept {
    if (_isTakenOver) {
        cairo_surface_mark_dirty(_target.surface.get());
        _isTakenOver = false;
    }
}

void GlyphBlender::close() noexcept {
    handOver();
    _target = {};
}

} // namespace Vell::CairoAdapter::Internal
