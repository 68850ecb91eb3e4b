#pragma once

#include <FontEngine/Color/FE_ColorPaintTarget.h>

#include <vector>

namespace Vell::CairoAdapter::Internal {

/// A colour with straight alpha whose channels are 0 to 1.
struct StraightColor {
    double red;
    double green;
    double blue;
    double alpha;
};

/// Mixes the channels, as cairo's gradients do.
StraightColor mix(const StraightColor& from, const StraightColor& to, double share);

constexpr double wholeTurn = 6.28318530717958647692; ///< radians

/// A part of a sweep gradient, whose colour changes evenly with the angle.
struct Sector {
    double from; ///< radians, counter-clockwise
    double to;
    StraightColor fromColor;
    StraightColor toColor;
};

/// The sectors of a whole turn, from angle 0 to 2 pi, in ascending order. A gradient that repeats itself too
/// often for pixels to show it becomes one sector of its mean colour.
std::vector<Sector> listSectors(const FontEngine::SweepGradient& gradient);

} // namespace Vell::CairoAdapter::Internal
