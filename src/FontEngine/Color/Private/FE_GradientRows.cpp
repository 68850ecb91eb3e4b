#include <FontEngine/Color/Private/FE_GradientRows.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace Vell::FontEngine::Internal {

namespace {

constexpr double fullTurn = 6.28318530717958647693;

cinder::Vec2<double> widenPoint(const cinder::Vec2<float>& point) {
    return {point.x, point.y};
}

cinder::Vec2<double> subtract(const cinder::Vec2<double>& a, const cinder::Vec2<double>& b) {
    return {a.x - b.x, a.y - b.y};
}

double wrap(double offset, GradientExtend extend) {
    if (extend == GradientExtend::Repeat) {
        return offset - std::floor(offset);
    }
    const double rest = offset - 2 * std::floor(offset / 2);
    return rest <= 1 ? rest : 2 - rest;
}

ColorPixel toStraight(const PaintColor& color) {
    constexpr float scale = 1.0F / 255.0F;
    return {static_cast<float>(color.b) * scale, static_cast<float>(color.g) * scale,
            static_cast<float>(color.r) * scale, static_cast<float>(color.a) * scale};
}

ColorPixel mixStraight(const ColorPixel& a, const ColorPixel& b, float t) {
    return {a.b + (b.b - a.b) * t, a.g + (b.g - a.g) * t, a.r + (b.r - a.r) * t, a.a + (b.a - a.a) * t};
}

ColorPixel premultiplyStraight(const ColorPixel& color) {
    return {color.b * color.a, color.g * color.a, color.r * color.a, color.a};
}

} // namespace

ColorRamp::ColorRamp(const ColorLine& line)
    : _extend(line.extend) {
    _stops.reserve(line.stops.size());
    for (const ColorStop& stop : line.stops) {
        _stops.push_back({stop.offset, toStraight(stop.color)});
    }
}

ColorPixel ColorRamp::at(double offset) const {
    if (_extend != GradientExtend::Pad) {
        return within(wrap(offset, _extend));
    }
    return offset < 0 ? premultiplyStraight(_stops.front().color) : within(offset);
}

ColorPixel ColorRamp::within(double offset) const {
    const auto next = std::upper_bound(_stops.begin(), _stops.end(), offset,
                                       [](double wanted, const Stop& stop) { return wanted < stop.offset; });
    if (next == _stops.end()) {
        return premultiplyStraight(_stops.back().color);
    }
    const Stop& previous = *(next - 1);
    const double part = (offset - previous.offset) / (next->offset - previous.offset);
    return premultiplyStraight(mixStraight(previous.color, next->color, static_cast<float>(part)));
}

LinearRows::LinearRows(const LinearGradient& gradient)
    : _ramp(gradient.line)
    , _origin(widenPoint(gradient.p0)) {
    const cinder::Vec2<double> line = subtract(widenPoint(gradient.p2), _origin);
    const cinder::Vec2<double> span = subtract(widenPoint(gradient.p1), _origin);
    const double area = span.x * line.y - span.y * line.x;
    _slope = {line.y / area, -line.x / area};
}

void LinearRows::read(const GradientRun& run, std::size_t count, ColorPixel* row) const {
    const cinder::Vec2<double> start = subtract(run.start, _origin);
    const double first = start.x * _slope.x + start.y * _slope.y;
    const double step = run.step.x * _slope.x + run.step.y * _slope.y;
    for (std::size_t i = 0; i < count; ++i) {
        row[i] = _ramp.at(first + step * static_cast<double>(i));
    }
}

RadialRows::RadialRows(const RadialGradient& gradient)
    : _ramp(gradient.line)
    , _center(widenPoint(gradient.center0))
    , _shift(subtract(widenPoint(gradient.center1), _center))
    , _radius(gradient.radius0)
    , _growth(static_cast<double>(gradient.radius1) - _radius)
    , _quadratic(_shift.x * _shift.x + _shift.y * _shift.y - _growth * _growth) {}

double RadialRows::accept(double first, double second) const {
    const auto isCircle = [this](double offset) {
        return std::isfinite(offset) && _radius + offset * _growth >= 0;
    };
    const double greater = std::max(first, second);
    const double smaller = std::min(first, second);
    if (isCircle(greater)) {
        return greater;
    }
    return isCircle(smaller) ? smaller : std::numeric_limits<double>::quiet_NaN();
}

double RadialRows::findOffset(double x, double y) const {
    // The circle of offset t goes through (x, y) if a t^2 - 2 b t + c = 0.
    const double b = x * _shift.x + y * _shift.y + _radius * _growth;
    const double c = x * x + y * y - _radius * _radius;
    const double discriminant = b * b - _quadratic * c;
    if (discriminant < 0) {
        return std::numeric_limits<double>::quiet_NaN();
    }
    // Adds numbers of the same sign, so that none of the two solutions loses digits.
    const double sum = b + std::copysign(std::sqrt(discriminant), b);
    if (sum == 0) {
        return _quadratic != 0 ? accept(0, 0) : std::numeric_limits<double>::quiet_NaN();
    }
    const double near = c / sum;
    return _quadratic != 0 ? accept(sum / _quadratic, near) : accept(near, near);
}

void RadialRows::read(const GradientRun& run, std::size_t count, ColorPixel* row) const {
    const cinder::Vec2<double> start = subtract(run.start, _center);
    for (std::size_t i = 0; i < count; ++i) {
        const auto steps = static_cast<double>(i);
        const double offset = findOffset(start.x + run.step.x * steps, start.y + run.step.y * steps);
        row[i] = std::isnan(offset) ? ColorPixel() : _ramp.at(offset);
    }
}

SweepRows::SweepRows(const SweepGradient& gradient)
    : _ramp(gradient.line)
    , _center(widenPoint(gradient.center))
    , _startAngle(gradient.startAngle)
    , _range(static_cast<double>(gradient.endAngle) - _startAngle) {}

double SweepRows::findOffset(double angle) const {
    if (_range == 0) {
        return angle < _startAngle ? -1 : 2;
    }
    return (angle - _startAngle) / _range;
}

void SweepRows::read(const GradientRun& run, std::size_t count, ColorPixel* row) const {
    const cinder::Vec2<double> start = subtract(run.start, _center);
    for (std::size_t i = 0; i < count; ++i) {
        const auto steps = static_cast<double>(i);
        const double angle = std::atan2(start.y + run.step.y * steps, start.x + run.step.x * steps);
        row[i] = _ramp.at(findOffset(angle < 0 ? angle + fullTurn : angle));
    }
}

} // namespace Vell::FontEngine::Internal
