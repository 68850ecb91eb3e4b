#include <CairoAdapter/Private/PathFlattening.h>

#include <algorithm>
#include <cmath>

namespace Vell::CairoAdapter::Internal {

namespace {

constexpr double tolerance = 0.1;

/// Enough for curves of 10^8 device units; beyond, time and memory count for more than the tolerance.
constexpr double maxSteps = 65536.0;

/// The second difference at a control point: how far the curve is from being a line there.
double getBend(DevicePoint before, DevicePoint at, DevicePoint after) {
    return std::hypot(before.x - 2.0 * at.x + after.x, before.y - 2.0 * at.y + after.y);
}

/// A chord of n equal steps is away from a cubic by no more than 3/4 bend / n^2.
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

DevicePoint raiseControlPoint(DevicePoint end, DevicePoint control) {
    return mix(end, control, 2.0 / 3.0);
}

} // namespace Vell::CairoAdapter::Internal
