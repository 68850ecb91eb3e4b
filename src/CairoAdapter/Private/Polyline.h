#pragma once

#include <cairo.h>

#include <vector>

/// Polylines in cairo's device units, for paths that exceed what cairo can hold: curves are flattened, and
/// everything far away is clipped.
namespace Vell::CairoAdapter::Internal {

struct DevicePoint {
    double x;
    double y;
};

using Polyline = std::vector<DevicePoint>;

/// Flattens a cubic curve that starts at the last point of the polyline, and appends the lines. They stay
/// within a tenth of a device unit of the curve, which is cairo's own tolerance.
void appendFlattened(Polyline& polyline, DevicePoint control1, DevicePoint control2, DevicePoint end);

/// How far from the origin of a surface, in its pixels, points may be that cairo is given. No image is larger
/// than half of it. cairo's 24.8 numbers end at 2^23, but slanted edges that are longer than this overflow
/// earlier (measured with cairo 1.16) and come out displaced or not at all.
constexpr double maxSurfaceCoordinate = 1 << 16;

/// The same limit in device units, which a surface may scale.
struct DeviceLimits {
    double x;
    double y;

    bool contain(DevicePoint point) const;
};

DeviceLimits getDeviceLimits(cairo_t* context);

/// Cuts off what lies beyond the limits. The area and the line of the polyline stay the same within the
/// limits; parts from beyond run along the limits. `isClosed` says that the last point connects to the first.
void clip(Polyline& polyline, const DeviceLimits& limits, bool isClosed);

} // namespace Vell::CairoAdapter::Internal
