#include <CairoAdapter/Private/GlyphBlender.h>

#include <CairoAdapter/Private/Blending/BitmapBlending.h>
#include <CairoAdapter/Private/Blending/BitmapView.h>
#include <CairoAdapter/Private/CairoMatrix.h>
#include <CairoAdapter/Private/GlyphPlacement.h>

#include <algorithm>
#include <cmath>

namespace Vell::CairoAdapter::Internal {

namespace {

/// pixman's numbers end here; far before those of an int.
constexpr double maxCoordinate = 32766.0;

/// Half a step of pixman's numbers: a smaller change of scale does not exist for it.
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

bool isInReach(const Point& point) {
    return std::abs(point.x) < maxCoordinate && std::abs(point.y) < maxCoordinate; // no NaN is
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
    if (bitmap.bytesPerPixel == 0 || !isInReach(corner)) {
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
