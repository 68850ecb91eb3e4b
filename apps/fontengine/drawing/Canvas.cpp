#include "drawing/Canvas.h"

#include <algorithm>
#include <cmath>

namespace Vell::Tool {

namespace {

using CairoAdapter::CairoPainter;
using cinder::Vec2;

float toRadians(float degrees) {
    constexpr double pi = 3.14159265358979323846;
    return static_cast<float>(std::fmod(static_cast<double>(degrees), 360.0) * pi / 180.0);
}

Vec2<float> place(const Vec2<float>& point, const Placement& placement) {
    const float cosine = std::cos(toRadians(placement.degrees)) * placement.scale;
    const float sine = std::sin(toRadians(placement.degrees)) * placement.scale;
    return {cosine * point.x - sine * point.y, sine * point.x + cosine * point.y};
}

float snap(float length, float pixelRatio) {
    return std::round(length * pixelRatio) / pixelRatio;
}

/// Bitmaps stay sharp if their baseline begins on a whole pixel. Rotated ones are resampled anyway.
Vec2<float> getStart(const Segment& segment, float baseLine, const TextPaint& paint,
                     const Placement& placement, const Vec2<float>& origin) {
    const Vec2<float> placed = place({segment.x, baseLine}, placement);
    const Vec2<float> start(placed.x + origin.x, placed.y + origin.y);
    const bool isSharp = paint.kind == PainterKind::Raster && toRadians(placement.degrees) == 0.0F;
    return isSharp ? Vec2<float>(snap(start.x, paint.pixelRatio), snap(start.y, paint.pixelRatio)) : start;
}

bool isEmpty(const Box& box) {
    return !(box.left < box.right && box.top < box.bottom);
}

} // namespace

Box getPlacedBox(const TextBlock& block, const Placement& placement) {
    const Vec2<float> corners[] = {
        place({block.left, 0.0F}, placement), place({block.right, 0.0F}, placement),
        place({block.left, block.height}, placement), place({block.right, block.height}, placement)};
    Box box{corners[0].x, corners[0].y, corners[0].x, corners[0].y};
    for (const Vec2<float>& corner : corners) {
        box.left = std::min(box.left, corner.x);
        box.top = std::min(box.top, corner.y);
        box.right = std::max(box.right, corner.x);
        box.bottom = std::max(box.bottom, corner.y);
    }
    return box;
}

Box unite(const Box& a, const Box& b) {
    if (isEmpty(b)) {
        return a;
    }
    return {std::min(a.left, b.left), std::min(a.top, b.top), std::max(a.right, b.right),
            std::max(a.bottom, b.bottom)};
}

Box measureInk(const TextBlock& block, const TextFont& font, const TextPaint& paint,
               const Placement& placement) {
    const auto recording = CairoAdapter::adoptSurface(
        cairo_recording_surface_create(CAIRO_CONTENT_COLOR_ALPHA, nullptr /* without bounds */));
    CairoPainter painter(recording.get());
    drawBlock(painter, block, font, paint, placement, {0.0F, 0.0F});
    double x = 0.0;
    double y = 0.0;
    double width = 0.0;
    double height = 0.0;
    cairo_recording_surface_ink_extents(recording.get(), &x, &y, &width, &height);
    CairoAdapter::throwIfFailed(cairo_surface_status(recording.get()));
    return {static_cast<float>(x), static_cast<float>(y), static_cast<float>(x + width),
            static_cast<float>(y + height)};
}

Canvas makeCanvas(const Box& box, float margin, float pixelRatio) {
    const float left = std::floor((box.left - margin) * pixelRatio) / pixelRatio;
    const float top = std::floor((box.top - margin) * pixelRatio) / pixelRatio;
    const PageSize size{std::ceil(box.right + margin - left), std::ceil(box.bottom + margin - top),
                        pixelRatio};
    return {size, {-left, -top}};
}

void drawBlock(CairoPainter& painter, const TextBlock& block, const TextFont& font, const TextPaint& paint,
               const Placement& placement, const Vec2<float>& origin) {
    for (const BlockLine& line : block.lines) {
        for (const Segment& segment : line.segments) {
            painter.pushTransform();
            painter.translate(getStart(segment, line.baseLine, paint, placement, origin));
            painter.rotate(toRadians(placement.degrees));
            painter.scale({placement.scale, placement.scale});
            paintText(painter, font, segment.text, paint);
            painter.popTransform();
        }
    }
}

} // namespace Vell::Tool
