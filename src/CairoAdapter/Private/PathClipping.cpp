#include <CairoAdapter/Private/PathClipping.h>

#include <CairoAdapter/Private/CairoMatrix.h>

#include <cmath>
#include <utility>

namespace Vell::CairoAdapter::Internal {

namespace {

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
        // The closing line is cut like the others; where it leaves the half plane, the next one closes anew.
        if (isClosed) {
            close(polyline);
        }
        polyline = clipToHalfPlane(polyline, halfPlane);
    }
}

} // namespace Vell::CairoAdapter::Internal
