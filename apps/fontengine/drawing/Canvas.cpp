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

bool isEmpty(const Box& box) {
    return !(box.left < box.right && box.top < box.bottom);
}

} // namespace

Box getPlacedBox(const Box& box, const Placement& placement) {
    const Vec2<float> corners[] = {
        place({box.left, box.top}, placement), place({box.right, box.top}, placement),
        place({box.left, box.bottom}, placement), place({box.right, box.bottom}, placement)};
    Box placed{corners[0].x, corners[0].y, corners[0].x, corners[0].y};
    for (const Vec2<float>& corner : corners) {
        placed.left = std::min(placed.left, corner.x);
        placed.top = std::min(placed.top, corner.y);
        placed.right = std::max(placed.right, corner.x);
        placed.bottom = std::max(placed.bottom, corner.y);
    }
    return placed;
}

Box getPlacedBox(const TextBlock& block, const Placement& placement) {
    return getPlacedBox(Box{block.left, 0.0F, block.right, block.height}, placement);
}

Box unite(const Box& a, const Box& b) {
    if (isEmpty(b)) {
        return a;
    }
    return {std::min(a.left, b.left), std::min(a.top, b.top), std::max(a.right, b.right),
            std::max(a.bottom, b.bottom)};
}

Box measureInk(const PageDrawing& draw) {
    const auto recording = CairoAdapter::adoptSurface(
        cairo_recording_surface_create(CAIRO_CONTENT_COLOR_ALPHA, nullptr /* without bounds */));
    CairoPainter painter(recording.get());
    draw(painter);
    double x = 0.0;
    double y = 0.0;
    double width = 0.0;
    double height = 0.0;
    cairo_recording_surface_ink_extents(recording.get(), &x, &y, &width, &height);
    CairoAdapter::throwIfFailed(cairo_surface_status(recording.get()));
    return {static_cast<float>(x), static_cast<float>(y), static_cast<float>(x + width),
            static_cast<float>(y + height)};
}

Box measureInk(const TextBlock& block, const TextFont& font, const TextPaint& paint,
               const Placement& placement) {
    return measureInk([&](CairoPainter& painter) {
        drawBlock(painter, block, font, paint, placement, {0.0F, 0.0F});
    });
}

Canvas makeCanvas(const Box& box, float margin, float pixelRatio) {
    const float left = std::floor((box.left - margin) * pixelRatio) / pixelRatio;
    const float top = std::floor((box.top - margin) * pixelRatio) / pixelRatio;
    const PageSize size{std::ceil(box.right + margin - left), std::ceil(box.bottom + margin - top),
                        pixelRatio};
    return {size, {-left, -top}};
}

Vec2<float> getStart(const Vec2<float>& start, const TextPaint& paint, const Placement& placement,
                     const Vec2<float>& origin) {
    const Vec2<float> placed = place(start, placement);
    const Vec2<float> moved(placed.x + origin.x, placed.y + origin.y);
    const bool isSharp = paint.kind == PainterKind::Raster && toRadians(placement.degrees) == 0.0F;
    return isSharp ? Vec2<float>(snap(moved.x, paint.pixelRatio), snap(moved.y, paint.pixelRatio)) : moved;
}

void enterPlacement(CairoPainter& painter, const Vec2<float>& origin, const Placement& placement) {
    painter.translate(origin);
    painter.rotate(toRadians(placement.degrees));
    painter.scale({placement.scale, placement.scale});
}

void drawBlock(CairoPainter& painter, const TextBlock& block, const TextFont& font, const TextPaint& paint,
               const Placement& placement, const Vec2<float>& origin) {
    for (const BlockLine& line : block.lines) {
        for (const Segment& segment : line.segments) {
            painter.pushTransform();
            enterPlacement(painter, getStart({segment.x, line.baseLine}, paint, placement, origin),
                           placement);
            paintText(painter, font, segment.text, paint);
            painter.popTransform();
        }
    }
}

} // namespace Vell::Tool
