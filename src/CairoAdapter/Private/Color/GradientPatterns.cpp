#include <CairoAdapter/Private/Color/GradientPatterns.h>

#include <algorithm>
#include <cmath>
#include <vector>

namespace Vell::CairoAdapter::Internal {

namespace {

cairo_extend_t toCairoExtend(FontEngine::GradientExtend extend) {
    switch (extend) {
    case FontEngine::GradientExtend::Repeat:
        return CAIRO_EXTEND_REPEAT;
    case FontEngine::GradientExtend::Reflect:
        return CAIRO_EXTEND_REFLECT;
    default:
        return CAIRO_EXTEND_PAD;
    }
}

/// The offsets where a pattern of cairo begins and ends.
struct Span {
    double from = 0.0;
    double to = 1.0;
};

/// PDF documents lose the colour before a sharp change at the very beginning, and the one behind it at the
/// very end. So such a line is continued on both sides.
Span chooseSpan(const FontEngine::ColorLine& line) {
    const std::vector<FontEngine::ColorStop>& stops = line.stops;
    const bool isSharp = stops[0].offset == stops[1].offset ||
                         stops[stops.size() - 2].offset == stops[stops.size() - 1].offset;
    return isSharp && line.extend == FontEngine::GradientExtend::Pad ? Span{-1.0, 2.0} : Span{};
}

PatternPtr addLine(PatternPtr pattern, const FontEngine::ColorLine& line, const Span& span) {
    constexpr double max = 255.0;
    for (const FontEngine::ColorStop& stop : line.stops) {
        const FontEngine::PaintColor& color = stop.color;
        const double offset = (static_cast<double>(stop.offset) - span.from) / (span.to - span.from);
        cairo_pattern_add_color_stop_rgba(pattern.get(), offset, color.r / max, color.g / max, color.b / max,
                                          color.a / max);
    }
    cairo_pattern_set_extend(pattern.get(), toCairoExtend(line.extend));
    throwIfFailed(cairo_pattern_status(pattern.get()));
    return pattern;
}

struct GradientPoint {
    explicit GradientPoint(const cinder::Vec2<float>& point, double scale = 1.0)
        : x(static_cast<double>(point.x) * scale)
        , y(static_cast<double>(point.y) * scale) {}

    double getExtent() const { return std::max(std::abs(x), std::abs(y)); }

    double x;
    double y;
};

} // namespace

double getExtent(const FontEngine::LinearGradient& gradient) {
    return std::max({GradientPoint(gradient.p0).getExtent(), GradientPoint(gradient.p1).getExtent(),
                     GradientPoint(gradient.p2).getExtent()});
}

double getExtent(const FontEngine::RadialGradient& gradient) {
    return std::max({GradientPoint(gradient.center0).getExtent(), GradientPoint(gradient.center1).getExtent(),
                     static_cast<double>(gradient.radius0), static_cast<double>(gradient.radius1)});
}

PatternPtr makeGradientPattern(const FontEngine::LinearGradient& gradient, double scale) {
    const GradientPoint p0(gradient.p0, scale);
    const GradientPoint p1(gradient.p1, scale);
    const GradientPoint p2(gradient.p2, scale);
    // The colours of cairo's gradients are constant at right angles to their line. The line to p1 is
    // therefore projected on the normal of the one to p2.
    const double acrossX = p0.y - p2.y;
    const double acrossY = p2.x - p0.x;
    const double share =
        ((p1.x - p0.x) * acrossX + (p1.y - p0.y) * acrossY) / (acrossX * acrossX + acrossY * acrossY);
    const double axisX = share * acrossX;
    const double axisY = share * acrossY;
    const Span span = chooseSpan(gradient.line);
    return addLine(
        adoptPattern(cairo_pattern_create_linear(p0.x + span.from * axisX, p0.y + span.from * axisY,
                                                 p0.x + span.to * axisX, p0.y + span.to * axisY)),
        gradient.line, span);
}

PatternPtr makeGradientPattern(const FontEngine::RadialGradient& gradient, double scale) {
    const GradientPoint center0(gradient.center0, scale);
    const GradientPoint center1(gradient.center1, scale);
    const double radius0 = static_cast<double>(gradient.radius0) * scale;
    const double radius1 = static_cast<double>(gradient.radius1) * scale;
    return addLine(adoptPattern(cairo_pattern_create_radial(center0.x, center0.y, radius0, center1.x,
                                                            center1.y, radius1)),
                   gradient.line, Span());
}

double choosePatternScale(double extent, const DeviceBox& box, const cairo_matrix_t& toGradient) {
    constexpr double maxCoordinate = 16000.0; // half of what its 16.16 numbers hold
    for (double x : {box.left, box.right}) {
        for (double y : {box.top, box.bottom}) {
            cairo_matrix_transform_point(&toGradient, &x, &y);
            extent = std::max({extent, std::abs(x), std::abs(y)});
        }
    }
    return extent > maxCoordinate ? maxCoordinate / extent : 1.0;
}

} // namespace Vell::CairoAdapter::Internal
