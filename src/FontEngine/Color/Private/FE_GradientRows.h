#pragma once

#include <FontEngine/Color/FE_ColorPaintTarget.h>
#include <FontEngine/Color/Private/FE_PixelCompositing.h>

#include <cstddef>
#include <vector>

namespace Vell::FontEngine::Internal {

/// The colours of a line at any offset.
class ColorRamp {
public:
    explicit ColorRamp(const ColorLine& line);

    /// `offset` is finite.
    ColorPixel at(double offset) const;

private:
    struct Stop {
        double offset;
        ColorPixel color; ///< not premultiplied
    };
    ColorPixel within(double offset) const;

    std::vector<Stop> _stops;
    GradientExtend _extend;
};

/// Reads a gradient at points in its own space. A run is a row of points at equal distances.
struct GradientRun {
    cinder::Vec2<double> start;
    cinder::Vec2<double> step;
};

class LinearRows {
public:
    explicit LinearRows(const LinearGradient& gradient);
    void read(const GradientRun& run, std::size_t count, ColorPixel* row) const;

private:
    ColorRamp _ramp;
    cinder::Vec2<double> _origin;
    cinder::Vec2<double> _slope; ///< of the offset
};

class RadialRows {
public:
    explicit RadialRows(const RadialGradient& gradient);
    void read(const GradientRun& run, std::size_t count, ColorPixel* row) const;

private:
    /// Returns the greatest offset whose circle goes through a point, NaN if none does.
    double findOffset(double x, double y) const;
    double accept(double first, double second) const;

    ColorRamp _ramp;
    cinder::Vec2<double> _center;
    cinder::Vec2<double> _shift; ///< from the first centre to the second one
    double _radius;
    double _growth;
    double _quadratic; ///< the coefficient of the equation for the offset
};

class SweepRows {
public:
    explicit SweepRows(const SweepGradient& gradient);
    void read(const GradientRun& run, std::size_t count, ColorPixel* row) const;

private:
    double findOffset(double angle) const;

    ColorRamp _ramp;
    cinder::Vec2<double> _center;
    double _startAngle;
    double _range;
};

} // namespace Vell::FontEngine::Internal
