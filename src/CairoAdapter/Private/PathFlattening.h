#pragma once

#include <CairoAdapter/Private/RecordedPath.h>

#include <cairo.h>

#include <vector>

namespace Vell::CairoAdapter::Internal {

/// In cairo's device units.
struct DevicePoint {
    double x;
    double y;
};

using Polyline = std::vector<DevicePoint>;

/// Turns one curve of a path into lines and appends them to the polyline, at whose last point it starts. The
/// lines stay within a tenth of a device unit of the curve, which is cairo's own tolerance.
void appendFlattened(Polyline& polyline, DevicePoint control1, DevicePoint control2, DevicePoint end);

/// The cubic curve that a quadratic one is: the middle of its own control points, towards `control` by 2/3.
DevicePoint raiseControlPoint(DevicePoint end, DevicePoint control);

} // namespace Vell::CairoAdapter::Internal
