#pragma once

#include <CairoAdapter/Private/PathFlattening.h>

namespace Vell::CairoAdapter::Internal {

/// How far from the origin of a surface the points that cairo is given may be, in its pixels: no image is
/// larger than half of it. Cairo's 24.8 numbers end at 2^23, but slanted edges that are longer than this
/// overflow already (as measured with cairo 1.16), and come out displaced or not at all.
constexpr double maxSurfaceCoordinate = 1 << 16;

/// The same in device units, which a surface may scale.
struct DeviceLimits {
    double x;
    double y;

    bool contain(DevicePoint point) const;
};

DeviceLimits getDeviceLimits(cairo_t* context);

/// Cuts off what lies beyond the limits on any side. Whatever of the polyline's area or line is within stays
/// what it was; parts that were beyond run along the limits. `isClosed`: the first point follows the last.
void clip(Polyline& polyline, const DeviceLimits& limits, bool isClosed);

} // namespace Vell::CairoAdapter::Internal
