#pragma once

#include <FontEngine/Color/Private/FE_ColorPaintList.h>

#include <vector>

namespace Vell::FontEngine::Internal {

/// A colour line as a font has it: stops at any offsets, in any order. Around the first and the last stop it
/// is extended.
struct FontColorLine {
    struct Stop {
        double offset;
        PaintColor color;
    };
    std::vector<Stop> stops;
    GradientExtend extend;
};

/// The geometry of gradients in a font: offsets 0 and 1 need not have stops.
struct FontLinear {
    cinder::Vec2<double> p0;
    cinder::Vec2<double> p1;
    cinder::Vec2<double> p2;
};
struct FontRadial {
    cinder::Vec2<double> center0;
    double radius0;
    cinder::Vec2<double> center1;
    double radius1;
};
struct FontSweep {
    cinder::Vec2<double> center;
    double startAngle; ///< in radians
    double endAngle;
};

/// Appends a fill with the gradient, moved so that its stops reach from 0 to 1: a colour if there is only one
/// stop. Appends nothing if there is none, or if the geometry leaves the colours without a place: points on
/// one line, equal circles, or no distance to repeat.
void appendGradient(PaintOperations& operations, const FontLinear& gradient, FontColorLine line);
void appendGradient(PaintOperations& operations, const FontRadial& gradient, FontColorLine line);
void appendGradient(PaintOperations& operations, const FontSweep& gradient, FontColorLine line);

} // namespace Vell::FontEngine::Internal
