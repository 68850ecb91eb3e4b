#include <CairoAdapter/Private/Blending/Displacement.h>

#include <cmath>

namespace Vell::CairoAdapter::Internal {

namespace {

/// pixman's coordinates are numbers of 16.16 bits; they lead from the image to the bitmap.
struct Coordinate {
    explicit Coordinate(double corner) {
        constexpr int fractionBits = 16;
        const auto toBitmap = static_cast<int>(std::lrint(-corner * (1 << fractionBits)));
        first = -1 - (toBitmap >> fractionBits);
        ofSecond = static_cast<unsigned int>(toBitmap >> (fractionBits - weightBits)) % allWeight;
    }

    int first;
    unsigned int ofSecond;
};

} // namespace

Displacement displace(double x, double y) {
    const Coordinate column(x);
    const Coordinate row(y);
    return {column.first, row.first, column.ofSecond, row.ofSecond};
}

} // namespace Vell::CairoAdapter::Internal
