#include <CairoAdapter/Private/Polyline.h>

#include <CairoAdapter/Private/CairoContext.h>

#include <algorithm>
#include <cmath>

namespace Vell::CairoAdapter::Internal {

namespace {

constexpr double tolerance = 0.1;

/// Enough for curves of 10^8 device units. For longer ones, time and memory matter more than the tolerance.
constexpr double maxSteps = 65536.0;

/// The second difference at a control point, which measures how far the curve is from a line there.
double getBend(DevicePoint before, DevicePoint at, DevicePoint after) {
    return std::hypot(before.x - 2.0 * at.x + after.x, before.y - 2.0 * at.y + after.y);
}

/// With n equal steps, no chord is farther from a cubic curve than 3/4 bend / n^2.
double countSteps(double bend) {
    return std::clamp(std::ceil(std::sqrt(0.75 * bend / tolerance)), 1.0, maxSteps);
}

DevicePoint mix(DevicePoint from, DevicePoint to, double t) {
    return {from.x + (to.x - from.x) * t, from.y + (to.y - from.y) * t};
}

DevicePoint getCurvePoint(const DevicePoint (&p)[4], double t) {
    const DevicePoint middle = mix(p[1], p[2], t);
    const DevicePoint left = mix(mix(p[0], p[1], t), middle, t);
    const DevicePoint right = mix(middle, mix(p[2], p[3], t), t);
    return mix(left, right, t);
}

/// The part of the plane where `axis` is at most the limit (`sign` 1) or at least its negative (`sign` -1).
struct HalfPlane {
    double DevicePoint::*axis;
    double DevicePoint::*otherAxis;
    double sign;
    double limit;

    bool contains(DevicePoint point) const { return sign * point.*axis <= limit; }

    DevicePoint getCrossing(DevicePoint from, DevicePoint to) const {
        const double t = (sign * limit - from.*axis) / (to.*axis - from.*axis);
        DevicePoint crossing{};
        crossing.*axis = sign * limit;
        crossing.*otherAxis = from.*otherAxis + t * (to.*otherAxis - from.*otherAxis);
        return crossing;
    }
};

Polyline clipToHalfPlane(const Polyline& polyline, const HalfPlane& halfPlane) {
    Polyline clipped;
    for (std::size_t i = 0; i < polyline.size(); ++i) {
        const bool isInside = halfPlane.contains(polyline[i]);
        if (i > 0 && isInside != halfPlane.contains(polyline[i - 1])) {
            clipped.push_back(halfPlane.getCrossing(polyline[i - 1], polyline[i]));
        }
        if (isInside) {
            clipped.push_back(polyline[i]);
        }
    }
    return clipped;
}

void close(Polyline& polyline) {
    if (!polyline.empty()) {
        polyline.push_back(polyline.front());
    }
}

} // namespace

void appendFlattened(Polyline& polyline, DevicePoint control1, DevicePoint control2, DevicePoint end) {
    const DevicePoint points[4] = {polyline.back(), control1, control2, end};
    const double steps = countSteps(
        std::max(getBend(points[0], points[1], points[2]), getBend(points[1], points[2], points[3])));
    for (int step = 1; step < steps; ++step) {
        polyline.push_back(getCurvePoint(points, step / steps));
    }
    polyline.push_back(end);
}

bool DeviceLimits::contain(DevicePoint point) const {
    return std::abs(point.x) <= x && std::abs(point.y) <= y;
}

DeviceLimits getDeviceLimits(cairo_t* context) {
    const cairo_matrix_t surfaceTransform = getSurfaceTransform(context);
    return {maxSurfaceCoordinate / std::abs(surfaceTransform.xx),
            maxSurfaceCoordinate / std::abs(surfaceTransform.yy)};
}

void clip(Polyline& polyline, const DeviceLimits& limits, bool isClosed) {
    const HalfPlane halfPlanes[] = {
        {&DevicePoint::x, &DevicePoint::y, 1.0, limits.x},
        {&DevicePoint::x, &DevicePoint::y, -1.0, limits.x},
        {&DevicePoint::y, &DevicePoint::x, 1.0, limits.y},
        {&DevicePoint::y, &DevicePoint::x, -1.0, limits.y},
    };
    for (const HalfPlane& halfPlane : halfPlanes) {
        // The closing line is cut like the others. It is added anew for each half plane.
        if (isClosed) {
            close(polyline);
        }
        polyline = clipToHalfPlane(polyline, halfPlane);
    }
}

} // namespace Vell::CairoAdapter::Internal
