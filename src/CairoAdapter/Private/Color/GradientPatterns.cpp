#include <CairoAdapter/Private/Color/GradientPatterns.h>

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
    explicit GradientPoint(const cinder::Vec2<float>& point)
        : x(point.x)
        , y(point.y) {}

    double x;
    double y;
};

} // namespace

PatternPtr makeGradientPattern(const FontEngine::LinearGradient& gradient) {
    const GradientPoint p0(gradient.p0);
    const GradientPoint p1(gradient.p1);
    const GradientPoint p2(gradient.p2);
    // The colours of cairo's gradients are constant at right angles to their line. The line to p1 is
    // therefore projected on the normal of the one to p2.
    const double normalX = p0.y - p2.y;
    const double normalY = p2.x - p0.x;
    const double share =
        ((p1.x - p0.x) * normalX + (p1.y - p0.y) * normalY) / (normalX * normalX + normalY * normalY);
    const double axisX = share * normalX;
    const double axisY = share * normalY;
    const Span span = chooseSpan(gradient.line);
    return addLine(
        adoptPattern(cairo_pattern_create_linear(p0.x + span.from * axisX, p0.y + span.from * axisY,
                                                 p0.x + span.to * axisX, p0.y + span.to * axisY)),
        gradient.line, span);
}

PatternPtr makeGradientPattern(const FontEngine::RadialGradient& gradient) {
    const GradientPoint center0(gradient.center0);
    const GradientPoint center1(gradient.center1);
    return addLine(adoptPattern(cairo_pattern_create_radial(
                       center0.x, center0.y, static_cast<double>(gradient.radius0), center1.x, center1.y,
                       static_cast<double>(gradient.radius1))),
                   gradient.line, Span());
}

} // namespace Vell::CairoAdapter::Internal
