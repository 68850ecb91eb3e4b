// Groups of colour glyphs: each composite mode against its formula.

#include "ColorCanvas.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace Vell::CairoAdapter::Testing {

namespace {

using FontEngine::CompositeMode;

/// Straight colour and alpha, 0 to 1.
struct Layer {
    std::array<double, 3> color; ///< red, green, blue
    double alpha;
};

using Rgb = std::array<double, 3>;

double getLuminosity(const Rgb& c) {
    return 0.3 * c[0] + 0.59 * c[1] + 0.11 * c[2];
}

Rgb setLuminosity(Rgb c, double luminosity) {
    const double shift = luminosity - getLuminosity(c);
    for (double& channel : c) {
        channel += shift;
    }
    const double low = std::min({c[0], c[1], c[2]});
    const double high = std::max({c[0], c[1], c[2]});
    for (double& channel : c) {
        if (low < 0.0) {
            channel = luminosity + (channel - luminosity) * luminosity / (luminosity - low);
        }
    }
    for (double& channel : c) {
        if (high > 1.0) {
            channel = luminosity + (channel - luminosity) * (1.0 - luminosity) / (high - luminosity);
        }
    }
    return c;
}

double getSaturation(const Rgb& c) {
    return std::max({c[0], c[1], c[2]}) - std::min({c[0], c[1], c[2]});
}

Rgb setSaturation(Rgb c, double saturation) {
    const double low = std::min({c[0], c[1], c[2]});
    const double range = getSaturation(c);
    for (double& channel : c) {
        channel = range > 0.0 ? (channel - low) * saturation / range : 0.0;
    }
    return c;
}

double hardLight(double backdrop, double source) {
    return source <= 0.5 ? backdrop * 2.0 * source : backdrop + (2.0 * source - 1.0) * (1.0 - backdrop);
}

double softLight(double b, double s) {
    const double d = b <= 0.25 ? ((16.0 * b - 12.0) * b + 4.0) * b : std::sqrt(b);
    return s <= 0.5 ? b - (1.0 - 2.0 * s) * b * (1.0 - b) : b + (2.0 * s - 1.0) * (d - b);
}

/// The blend function of one channel, of the backdrop and the source.
double blendChannel(CompositeMode mode, double b, double s) {
    switch (mode) {
    case CompositeMode::Screen:
        return b + s - b * s;
    case CompositeMode::Overlay:
        return hardLight(s, b);
    case CompositeMode::Darken:
        return std::min(b, s);
    case CompositeMode::Lighten:
        return std::max(b, s);
    case CompositeMode::ColorDodge:
        return b == 0.0 ? 0.0 : s >= 1.0 ? 1.0 : std::min(1.0, b / (1.0 - s));
    case CompositeMode::ColorBurn:
        return b >= 1.0 ? 1.0 : s <= 0.0 ? 0.0 : 1.0 - std::min(1.0, (1.0 - b) / s);
    case CompositeMode::HardLight:
        return hardLight(b, s);
    case CompositeMode::SoftLight:
        return softLight(b, s);
    case CompositeMode::Difference:
        return std::abs(b - s);
    case CompositeMode::Exclusion:
        return b + s - 2.0 * b * s;
    case CompositeMode::Multiply:
        return b * s;
    default:
        ADD_FAILURE() << "not a blend mode of channels";
        return 0.0;
    }
}

Rgb blend(CompositeMode mode, const Rgb& b, const Rgb& s) {
    switch (mode) {
    case CompositeMode::Hue:
        return setLuminosity(setSaturation(s, getSaturation(b)), getLuminosity(b));
    case CompositeMode::Saturation:
        return setLuminosity(setSaturation(b, getSaturation(s)), getLuminosity(b));
    case CompositeMode::Color:
        return setLuminosity(s, getLuminosity(b));
    case CompositeMode::Luminosity:
        return setLuminosity(b, getLuminosity(s));
    default:
        return {blendChannel(mode, b[0], s[0]), blendChannel(mode, b[1], s[1]),
                blendChannel(mode, b[2], s[2])};
    }
}

/// The shares of source and destination in the modes of Porter and Duff, which come first.
struct Shares {
    double source;
    double destination;
};

Shares getShares(CompositeMode mode, double source, double destination) {
    const Shares shares[] = {{0, 0},
                             {1, 0},
                             {0, 1},
                             {1, 1 - source},
                             {1 - destination, 1},
                             {destination, 0},
                             {0, source},
                             {1 - destination, 0},
                             {0, 1 - source},
                             {destination, 1 - source},
                             {1 - destination, source},
                             {1 - destination, 1 - source},
                             {1, 1}};
    return shares[static_cast<std::size_t>(mode)];
}

/// Premultiplied, as a word.
std::uint32_t toPixel(const Rgb& premultiplied, double alpha) {
    const auto toByte = [](double value) {
        return static_cast<std::uint32_t>(std::lround(std::min(value, 1.0) * 255.0));
    };
    return toByte(alpha) << 24 | toByte(premultiplied[0]) << 16 | toByte(premultiplied[1]) << 8 |
           toByte(premultiplied[2]);
}

std::uint32_t compose(CompositeMode mode, const Layer& source, const Layer& destination) {
    Rgb result{};
    if (mode <= CompositeMode::Plus) {
        const Shares shares = getShares(mode, source.alpha, destination.alpha);
        const double fromSource = source.alpha * shares.source;
        const double fromDestination = destination.alpha * shares.destination;
        for (std::size_t i = 0; i < 3; ++i) {
            result[i] = source.color[i] * fromSource + destination.color[i] * fromDestination;
        }
        return toPixel(result, fromSource + fromDestination);
    }
    const Rgb blended = blend(mode, destination.color, source.color);
    const double both = source.alpha * destination.alpha;
    for (std::size_t i = 0; i < 3; ++i) {
        result[i] = (source.alpha - both) * source.color[i] +
                    (destination.alpha - both) * destination.color[i] + both * blended[i];
    }
    return toPixel(result, source.alpha + destination.alpha - both);
}

Layer makeLayer(const PaintColor& color) {
    return {{color.r / 255.0, color.g / 255.0, color.b / 255.0}, color.a / 255.0};
}

int getDifference(std::uint32_t a, std::uint32_t b) {
    int greatest = 0;
    for (const int shift : {0, 8, 16, 24}) {
        greatest = std::max(
            greatest, std::abs(static_cast<int>(a >> shift & 0xFF) - static_cast<int>(b >> shift & 0xFF)));
    }
    return greatest;
}

struct Pair {
    PaintColor source;
    PaintColor destination;
};

constexpr Pair pairs[] = {{{200, 40, 90, 255}, {30, 180, 220, 255}},
                          {{255, 128, 0, 128}, {60, 100, 250, 200}},
                          {{10, 250, 130, 77}, {240, 20, 200, 255}},
                          {{128, 128, 128, 255}, {200, 100, 50, 128}}};

/// Within a clip of 10 to 40, the destination covers the left half and the source the lower half of the
/// canvas.
ColorCanvas compose(CompositeMode mode, const Pair& pair) {
    return ColorCanvas([&](ColorPaintTarget& target) {
        const auto fillBox = [&target](const PaintBox& box, const PaintColor& color) {
            target.pushClip(box);
            target.fill(color);
            target.popClip();
        };
        target.pushGroup();
        fillBox({0, 0, 25, 50}, pair.destination);
        target.pushClip(PaintBox{10, 10, 40, 40});
        target.pushGroup();
        fillBox({0, 0, 50, 25}, pair.source);
        target.popGroup(mode);
        target.popClip();
        target.popGroup(CompositeMode::SourceOver);
    });
}

class CairoColorGroupMode : public ::testing::TestWithParam<int> {};

TEST_P(CairoColorGroupMode, FollowsTheFormulaOfItsMode) {
    const auto mode = static_cast<CompositeMode>(GetParam());
    const Layer nothing{{0, 0, 0}, 0};
    for (const Pair& pair : pairs) {
        const ColorCanvas canvas = compose(mode, pair);
        const Layer source = makeLayer(pair.source);
        const Layer destination = makeLayer(pair.destination);
        const std::uint32_t untouched = compose(CompositeMode::Destination, nothing, destination);
        EXPECT_LE(getDifference(canvas.getPixelAt(15, 15), compose(mode, source, destination)), 2);
        EXPECT_LE(getDifference(canvas.getPixelAt(15, 35), compose(mode, nothing, destination)), 2);
        EXPECT_LE(getDifference(canvas.getPixelAt(35, 15), compose(mode, source, nothing)), 2);
        EXPECT_EQ(canvas.getPixelAt(35, 35), 0U);
        // Outside of the clip, nothing changes, even under modes that clear what the source leaves out.
        EXPECT_LE(getDifference(canvas.getPixelAt(5, 15), untouched), 1);
        EXPECT_LE(getDifference(canvas.getPixelAt(15, 45), untouched), 1);
        EXPECT_EQ(canvas.getPixelAt(45, 15), 0U);
    }
}

INSTANTIATE_TEST_SUITE_P(All, CairoColorGroupMode,
                         ::testing::Range(0, static_cast<int>(CompositeMode::Luminosity) + 1));

TEST(CairoColorGroup, CountTheSmoothEdgesOfTheClipsAroundThemOnce) {
    const ColorCanvas canvas([](ColorPaintTarget& target) {
        target.pushClip(PaintBox{10.5F, 10, 20, 20});
        target.pushGroup();
        target.fill(red);
        target.popGroup(CompositeMode::SourceOver);
        target.popClip();
    });
    EXPECT_NEAR(canvas.getPixelAt(10, 15) >> 24, 128, 1);
    EXPECT_EQ(canvas.getPixelAt(11, 15), redPixel);
    EXPECT_EQ(canvas.getPixelAt(20, 15), 0U);
}

TEST(CairoColorGroup, KeepGradientsInTheirPlace) {
    const auto fillWithGradients = [](ColorPaintTarget& target) {
        const FontEngine::ColorLine line{{{0, red}, {1, blue}}, FontEngine::GradientExtend::Pad};
        target.pushClip(PaintBox{5, 5, 45, 20});
        target.fill(FontEngine::LinearGradient{line, {10, 10}, {40, 10}, {10, 40}});
        target.popClip();
        target.pushClip(PaintBox{15, 25, 45, 50});
        target.fill(FontEngine::SweepGradient{line, {30, 35}, 0, 6});
        target.popClip();
    };
    const ColorCanvas direct(fillWithGradients);
    const ColorCanvas grouped([&fillWithGradients](ColorPaintTarget& target) {
        target.pushClip(PaintBox{3, 3, 48, 50});
        target.pushGroup();
        fillWithGradients(target);
        target.popGroup(CompositeMode::SourceOver);
        target.popClip();
    });
    EXPECT_EQ(grouped.getPixels(), direct.getPixels());
    EXPECT_FALSE(direct.isEmpty());
}

} // namespace

} // namespace Vell::CairoAdapter::Testing
