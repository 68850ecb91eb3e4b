#include <FontEngine/Color/Private/FE_GradientFields.h>

namespace Vell::FontEngine::Internal {

namespace {

cinder::Vec2<double> readPoint(TableFields& fields) {
    const double x = fields.i16();
    return {x, static_cast<double>(fields.i16())};
}

/// Reads an angle of a sweep, of which the file has half turns, less one.
double readSweepAngle(TableFields& fields) {
    constexpr double pi = 3.14159265358979323846;
    return (fields.f2dot14() + 1) * pi;
}

} // namespace

GradientExtend toExtend(unsigned int extend) {
    switch (extend) {
    case 1:
        return GradientExtend::Repeat;
    case 2:
        return GradientExtend::Reflect;
    default:
        return GradientExtend::Pad;
    }
}

FontLinear readLinear(TableFields& fields) {
    const cinder::Vec2<double> p0 = readPoint(fields);
    const cinder::Vec2<double> p1 = readPoint(fields);
    return {p0, p1, readPoint(fields)};
}

FontRadial readRadial(TableFields& fields) {
    const cinder::Vec2<double> center0 = readPoint(fields);
    const double radius0 = fields.u16();
    const cinder::Vec2<double> center1 = readPoint(fields);
    return {center0, radius0, center1, static_cast<double>(fields.u16())};
}

FontSweep readSweep(TableFields& fields) {
    const cinder::Vec2<double> center = readPoint(fields);
    const double start = readSweepAngle(fields);
    return {center, start, readSweepAngle(fields)};
}

} // namespace Vell::FontEngine::Internal
