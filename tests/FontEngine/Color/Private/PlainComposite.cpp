#include <FontEngine/Color/Private/PlainPainter.h>

#include <algorithm>
#include <cmath>

// The formulas stand as in "Compositing and Blending" of the W3C, with its names: Cs and Cb are the straight
// colours of source and backdrop.

namespace Vell::FontEngine {

namespace {

using Rgb = std::array<double, 3>;

double blendChannel(unsigned int mode, double cb, double cs) {
    switch (mode) {
    case 13: // screen
        return cb + cs - cb * cs;
    case 14: // overlay
        return blendChannel(19, cs, cb);
    case 15: // darken
        return std::min(cb, cs);
    case 16: // lighten
        return std::max(cb, cs);
    case 17: // color-dodge
        return cb == 0 ? 0 : cs == 1 ? 1 : std::min(1.0, cb / (1 - cs));
    case 18: // color-burn
        return cb == 1 ? 1 : cs == 0 ? 0 : 1 - std::min(1.0, (1 - cb) / cs);
    case 19: // hard-light
        return cs <= 0.5 ? cb * 2 * cs : blendChannel(13, cb, 2 * cs - 1);
    case 20: { // soft-light
        const double d = cb <= 0.25 ? ((16 * cb - 12) * cb + 4) * cb : std::sqrt(cb);
        return cs <= 0.5 ? cb - (1 - 2 * cs) * cb * (1 - cb) : cb + (2 * cs - 1) * (d - cb);
    }
    case 21: // difference
        return std::abs(cb - cs);
    case 22: // exclusion
        return cb + cs - 2 * cb * cs;
    default: // multiply
        return cb * cs;
    }
}

double lum(const Rgb& c) {
    return 0.3 * c[0] + 0.59 * c[1] + 0.11 * c[2];
}

double sat(const Rgb& c) {
    return *std::max_element(c.begin(), c.end()) - *std::min_element(c.begin(), c.end());
}

Rgb clipColor(Rgb c) {
    const double l = lum(c);
    const double n = *std::min_element(c.begin(), c.end());
    const double x = *std::max_element(c.begin(), c.end());
    for (double& channel : c) {
        if (n < 0) {
            channel = l + (channel - l) * l / (l - n);
        }
        if (x > 1) {
            channel = l + (channel - l) * (1 - l) / (x - l);
        }
    }
    return c;
}

Rgb setLum(const Rgb& c, double l) {
    const double d = l - lum(c);
    return clipColor({c[0] + d, c[1] + d, c[2] + d});
}

Rgb setSat(Rgb c, double s) {
    std::array<double*, 3> sorted{&c[0], &c[1], &c[2]};
    std::sort(sorted.begin(), sorted.end(), [](const double* a, const double* b) { return *a < *b; });
    double& low = *sorted[0];
    double& mid = *sorted[1];
    double& high = *sorted[2];
    if (high > low) {
        mid = (mid - low) * s / (high - low);
        high = s;
    } else {
        mid = high = 0;
    }
    low = 0;
    return c;
}

Rgb blend(unsigned int mode, const Rgb& cb, const Rgb& cs) {
    switch (mode) {
    case 24: // hue
        return setLum(setSat(cs, sat(cb)), lum(cb));
    case 25: // saturation
        return setLum(setSat(cb, sat(cs)), lum(cb));
    case 26: // color
        return setLum(cs, lum(cb));
    case 27: // luminosity
        return setLum(cb, lum(cs));
    default:
        return {blendChannel(mode, cb[0], cs[0]), blendChannel(mode, cb[1], cs[1]),
                blendChannel(mode, cb[2], cs[2])};
    }
}

Rgb divide(const PlainPixel& pixel) {
    const double alpha = pixel[3] > 0 ? pixel[3] : 1;
    return {pixel[0] / alpha, pixel[1] / alpha, pixel[2] / alpha};
}

PlainPixel combine(const PlainPixel& source, double fa, const PlainPixel& backdrop, double fb) {
    PlainPixel result;
    for (std::size_t i = 0; i < result.size(); ++i) {
        result[i] = std::min(1.0, source[i] * fa + backdrop[i] * fb);
    }
    return result;
}

} // namespace

PlainPixel compositePlainly(unsigned int mode, const PlainPixel& source, const PlainPixel& backdrop) {
    const double as = source[3];
    const double ab = backdrop[3];
    const double factors[13][2] = {{0, 0},       {1, 0},           {0, 1},      {1, 1 - as}, {1 - ab, 1},
                                   {ab, 0},      {0, as},          {1 - ab, 0}, {0, 1 - as}, {ab, 1 - as},
                                   {1 - ab, as}, {1 - ab, 1 - as}, {1, 1}};
    if (mode < 13) {
        return combine(source, factors[mode][0], backdrop, factors[mode][1]);
    }
    const Rgb cb = divide(backdrop);
    const Rgb cs = divide(source);
    const Rgb mixed = blend(mode, cb, cs);
    PlainPixel blended{0, 0, 0, as};
    for (std::size_t i = 0; i < mixed.size(); ++i) {
        blended[i] = as * ((1 - ab) * cs[i] + ab * mixed[i]);
    }
    return combine(blended, 1, backdrop, 1 - as);
}

} // namespace Vell::FontEngine
