#include <FontEngine/Color/Private/FE_GradientPaints.h>

#include <algorithm>
#include <cmath>
#include <optional>

namespace Vell::FontEngine::Internal {

namespace {

using Point = cinder::Vec2<double>;
using Stop = FontColorLine::Stop;

double lerp(double a, double b, double t) {
    return a + (b - a) * t;
}

Point lerp(const Point& a, const Point& b, double t) {
    return {lerp(a.x, b.x, t), lerp(a.y, b.y, t)};
}

cinder::Vec2<float> narrow(const Point& point) {
    return {static_cast<float>(point.x), static_cast<float>(point.y)};
}

/// The offsets of a font's line that become 0 and 1.
struct Span {
    double first;
    double last;
};

/// Sorts the stops, and makes room for a line that is padded around a single offset.
void arrange(FontColorLine& line) {
    std::stable_sort(line.stops.begin(), line.stops.end(),
                     [](const Stop& lhs, const Stop& rhs) { return lhs.offset < rhs.offset; });
    if (line.extend == GradientExtend::Pad && line.stops.front().offset == line.stops.back().offset) {
        line.stops.push_back({line.stops.back().offset + 1, line.stops.back().color});
    }
}

Span getSpan(const FontColorLine& line) {
    return {line.stops.front().offset, line.stops.back().offset};
}

ColorLine normalise(const FontColorLine& line) {
    const Span span = getSpan(line);
    ColorLine normalised{{}, line.extend};
    normalised.stops.reserve(line.stops.size());
    for (const Stop& stop : line.stops) {
        const double offset = (stop.offset - span.first) / (span.last - span.first);
        normalised.stops.push_back({static_cast<float>(offset), stop.color});
    }
    return normalised;
}

/// Handles lines that need no gradient: returns whether one is left, with stops at two offsets at least.
bool isGradient(PaintOperations& operations, FontColorLine& line) {
    if (line.stops.empty()) {
        return false;
    }
    if (line.stops.size() == 1) {
        operations.emplace_back(line.stops.front().color);
        return false;
    }
    arrange(line);
    return getSpan(line).first < getSpan(line).last;
}

unsigned char mix(unsigned char a, unsigned char b, double t) {
    return static_cast<unsigned char>(std::lround(lerp(a, b, t)));
}

PaintColor mix(const PaintColor& a, const PaintColor& b, double t) {
    return {mix(a.r, b.r, t), mix(a.g, b.g, t), mix(a.b, b.b, t), mix(a.a, b.a, t)};
}

/// Returns the colour of a padded line at an offset.
PaintColor colorAt(const std::vector<Stop>& stops, double offset) {
    const auto next =
        std::find_if(stops.begin(), stops.end(), [offset](const Stop& stop) { return stop.offset > offset; });
    if (next == stops.begin() || next == stops.end()) {
        return next == stops.end() ? stops.back().color : next->color;
    }
    const Stop& previous = *(next - 1);
    return mix(previous.color, next->color, (offset - previous.offset) / (next->offset - previous.offset));
}

bool isPlaced(const FontLinear& gradient) {
    const Point a{gradient.p1.x - gradient.p0.x, gradient.p1.y - gradient.p0.y};
    const Point b{gradient.p2.x - gradient.p0.x, gradient.p2.y - gradient.p0.y};
    return a.x * b.y - a.y * b.x != 0;
}

bool isPlaced(const FontRadial& gradient) {
    return gradient.center0 != gradient.center1 || gradient.radius0 != gradient.radius1;
}

bool isPlaced(const FontSweep& gradient, GradientExtend extend) {
    return gradient.startAngle != gradient.endAngle || extend == GradientExtend::Pad;
}

double getRadius(const FontRadial& gradient, double offset) {
    return lerp(gradient.radius0, gradient.radius1, offset);
}

/// Cuts a padded line off where the radius becomes zero: nothing is drawn on the other side.
void cutAtZero(const FontRadial& gradient, FontColorLine& line) {
    const double zero = gradient.radius0 / (gradient.radius0 - gradient.radius1);
    const bool isGrowing = gradient.radius1 > gradient.radius0;
    const Stop end{zero, colorAt(line.stops, zero)};
    const auto isBeyond = [&](const Stop& stop) {
        return isGrowing ? stop.offset <= zero : stop.offset >= zero;
    };
    line.stops.erase(std::remove_if(line.stops.begin(), line.stops.end(), isBeyond), line.stops.end());
    line.stops.insert(isGrowing ? line.stops.begin() : line.stops.end(), end);
    if (line.stops.size() == 1) {
        const Stop other{isGrowing ? zero + 1 : zero - 1, end.color};
        line.stops.insert(isGrowing ? line.stops.end() : line.stops.begin(), other);
    }
}

/// Shifts a repeated line by whole periods to where no radius is negative.
void shiftToPositive(const FontRadial& gradient, FontColorLine& line) {
    const Span span = getSpan(line);
    const double period = (span.last - span.first) * (line.extend == GradientExtend::Reflect ? 2.0 : 1.0);
    const double growth = gradient.radius1 - gradient.radius0;
    const double lowest = std::min(getRadius(gradient, span.first), getRadius(gradient, span.last));
    const double shift = period * std::ceil(-lowest / (std::abs(growth) * period)) * (growth > 0 ? 1 : -1);
    for (Stop& stop : line.stops) {
        stop.offset += shift;
    }
}

void avoidNegativeRadius(const FontRadial& gradient, FontColorLine& line) {
    const Span span = getSpan(line);
    if (getRadius(gradient, span.first) >= 0 && getRadius(gradient, span.last) >= 0) {
        return;
    }
    if (line.extend == GradientExtend::Pad) {
        cutAtZero(gradient, line);
    } else {
        shiftToPositive(gradient, line);
    }
}

} // namespace

void appendGradient(PaintOperations& operations, const FontLinear& gradient, FontColorLine line) {
    if (!isPlaced(gradient) || !isGradient(operations, line)) {
        return;
    }
    const Span span = getSpan(line);
    const Point p0 = lerp(gradient.p0, gradient.p1, span.first);
    const Point p2{gradient.p2.x + p0.x - gradient.p0.x, gradient.p2.y + p0.y - gradient.p0.y};
    operations.emplace_back(LinearGradient{normalise(line), narrow(p0),
                                           narrow(lerp(gradient.p0, gradient.p1, span.last)), narrow(p2)});
}

void appendGradient(PaintOperations& operations, const FontRadial& gradient, FontColorLine line) {
    if (!isPlaced(gradient) || !isGradient(operations, line)) {
        return;
    }
    avoidNegativeRadius(gradient, line);
    const Span span = getSpan(line);
    const auto radiusAt = [&](double offset) {
        return static_cast<float>(std::max(0.0, getRadius(gradient, offset)));
    };
    const auto centerAt = [&](double offset) {
        return narrow(lerp(gradient.center0, gradient.center1, offset));
    };
    operations.emplace_back(RadialGradient{normalise(line), centerAt(span.first), radiusAt(span.first),
                                           centerAt(span.last), radiusAt(span.last)});
}

void appendGradient(PaintOperations& operations, const FontSweep& gradient, FontColorLine line) {
    if (!isPlaced(gradient, line.extend) || !isGradient(operations, line)) {
        return;
    }
    const Span span = getSpan(line);
    const auto angleAt = [&](double offset) {
        return static_cast<float>(lerp(gradient.startAngle, gradient.endAngle, offset));
    };
    operations.emplace_back(
        SweepGradient{normalise(line), narrow(gradient.center), angleAt(span.first), angleAt(span.last)});
}

} // namespace Vell::FontEngine::Internal
