// Gradients of colour glyphs against their definitions, pixel by pixel.

#include "ColorCanvas.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <optional>

namespace Vell::CairoAdapter::Testing {

namespace {

using FontEngine::ColorLine;
using FontEngine::GradientExtend;
using FontEngine::LinearGradient;
using FontEngine::RadialGradient;
using FontEngine::SweepGradient;

constexpr double turn = 6.28318530717958647692;
constexpr GradientExtend extends[] = {GradientExtend::Pad, GradientExtend::Repeat, GradientExtend::Reflect};

double extendOffset(double offset, GradientExtend extend) {
    switch (extend) {
    case GradientExtend::Repeat:
        return offset - std::floor(offset);
    case GradientExtend::Reflect:
        return 1.0 - std::abs(1.0 - (offset - 2.0 * std::floor(offset / 2.0)));
    default:
        return std::clamp(offset, 0.0, 1.0);
    }
}

using Channels = std::vector<double>; // blue, green, red, alpha: straight, 0 to 255

Channels getChannels(const PaintColor& color) {
    return {double(color.b), double(color.g), double(color.r), double(color.a)};
}

Channels getColor(const ColorLine& line, double offset) {
    if (line.extend == GradientExtend::Pad && offset < 0.0) {
        return getChannels(line.stops.front().color);
    }
    const double place = extendOffset(offset, line.extend);
    std::size_t next = 1;
    while (next + 1 < line.stops.size() && double(line.stops[next].offset) <= place) {
        ++next;
    }
    const auto& from = line.stops[next - 1];
    const auto& to = line.stops[next];
    const double length = double(to.offset) - double(from.offset);
    const double share = std::clamp(length > 0 ? (place - double(from.offset)) / length : 1.0, 0.0, 1.0);
    Channels color = getChannels(from.color);
    const Channels end = getChannels(to.color);
    for (std::size_t i = 0; i < color.size(); ++i) {
        color[i] += (end[i] - color[i]) * share;
    }
    return color;
}

/// The greatest difference of a channel from the definition, which returns the offset at a point. Leaves out
/// pixels with a jump of colour nearby: there the definition changes within a quarter of a pixel.
template <class Gradient, class Definition>
double getGreatestError(const Gradient& gradient, const Definition& getOffset) {
    const ColorCanvas canvas([&gradient](ColorPaintTarget& target) {
        target.pushClip(PaintBox{0, 0, 50, 50});
        target.fill(gradient);
        target.popClip();
    });
    const auto getExpected = [&](double x, double y) {
        const std::optional<double> offset = getOffset(x, y);
        return offset ? getColor(gradient.line, *offset) : Channels(4, 0.0);
    };
    const auto isSmooth = [&](double x, double y) {
        const Channels center = getExpected(x, y);
        for (const double dx : {-0.25, 0.25}) {
            for (const double dy : {-0.25, 0.25}) {
                const Channels near = getExpected(x + dx, y + dy);
                for (std::size_t i = 0; i < near.size(); ++i) {
                    if (std::abs(near[i] - center[i]) > 16.0) {
                        return false;
                    }
                }
            }
        }
        return true;
    };
    double greatest = 0.0;
    int compared = 0;
    for (int y = 0; y < ColorCanvas::side; ++y) {
        for (int x = 0; x < ColorCanvas::side; ++x) {
            if (!isSmooth(x + 0.5, y + 0.5)) {
                continue;
            }
            ++compared;
            const Channels expected = getExpected(x + 0.5, y + 0.5);
            for (std::size_t i = 0; i < 4; ++i) {
                const double premultiplied = i == 3 ? expected[i] : expected[i] * expected[3] / 255.0;
                const double actual = canvas.getPixelAt(x, y) >> 8 * i & 0xFF;
                greatest = std::max(greatest, std::abs(actual - premultiplied));
            }
        }
    }
    EXPECT_GT(compared, ColorCanvas::side * ColorCanvas::side / 2);
    return greatest;
}

ColorLine makeLine(GradientExtend extend) {
    return {{{0, {255, 0, 0, 255}},
             {0.25F, {0, 200, 100, 255}},
             {0.25F, {0, 0, 255, 128}},
             {1, {250, 240, 0, 255}}},
            extend};
}

TEST(CairoColorGradient, IsConstantAlongTheLineToTheThirdPointOfALinearOne) {
    for (const GradientExtend extend : extends) {
        // The colours run from left to right, however oblique the first line is.
        const LinearGradient gradient{makeLine(extend), {10, 10}, {35, 40}, {10, 45}};
        EXPECT_LE(getGreatestError(gradient, [](double x, double) { return (x - 10.0) / 25.0; }), 1.0);
    }
}

TEST(CairoColorGradient, RunsAtRightAnglesToAnyLineToTheThirdPoint) {
    for (const GradientExtend extend : extends) {
        const LinearGradient gradient{makeLine(extend), {5, 5}, {30, 10}, {0, 20}};
        EXPECT_LE(getGreatestError(gradient,
                                   [](double x, double y) { // the normal of (-5, 15) is (15, 5)
                                       return ((x - 5) * 15 + (y - 5) * 5) / (25.0 * 15 + 5.0 * 5);
                                   }),
                  1.0);
    }
}

TEST(CairoColorGradient, MayChangeItsColorSharplyAtItsEnds) {
    for (const GradientExtend extend : extends) {
        const ColorLine line{{{0, red}, {0, {20, 200, 10, 255}}, {1, blue}, {1, {90, 90, 0, 255}}}, extend};
        EXPECT_LE(getGreatestError(LinearGradient{line, {20, 0}, {32, 0}, {20, 9}},
                                   [](double x, double) { return (x - 20.0) / 12.0; }),
                  1.0);
    }
}

/// The greatest offset whose circle goes through the point and has no negative radius.
std::optional<double> findCircle(const RadialGradient& gradient, double x, double y) {
    const double dx = double(gradient.center1.x) - double(gradient.center0.x);
    const double dy = double(gradient.center1.y) - double(gradient.center0.y);
    const double dr = double(gradient.radius1) - double(gradient.radius0);
    const double px = x - double(gradient.center0.x);
    const double py = y - double(gradient.center0.y);
    const double r0 = gradient.radius0;
    const double a = dx * dx + dy * dy - dr * dr;
    const double b = px * dx + py * dy + r0 * dr;
    const double c = px * px + py * py - r0 * r0;
    const double root = std::sqrt(b * b - a * c); // NaN if there is no circle
    std::vector<double> offsets =
        a == 0.0 ? std::vector<double>{c / (2.0 * b)} : std::vector<double>{(b + root) / a, (b - root) / a};
    std::sort(offsets.rbegin(), offsets.rend());
    for (const double offset : offsets) {
        if (std::isfinite(offset) && r0 + offset * dr >= 0.0) {
            return offset;
        }
    }
    return std::nullopt;
}

double getGreatestError(const RadialGradient& gradient) {
    return getGreatestError(gradient, [&gradient](double x, double y) { return findCircle(gradient, x, y); });
}

TEST(CairoColorGradient, GrowsFromOneCircleIntoAnotherAroundIt) {
    for (const GradientExtend extend : extends) {
        EXPECT_LE(getGreatestError(RadialGradient{makeLine(extend), {20, 25}, 4, {25, 25}, 24}), 2.0);
        EXPECT_LE(getGreatestError(RadialGradient{makeLine(extend), {25, 25}, 20, {25, 25}, 0}), 2.0);
    }
}

TEST(CairoColorGradient, MakesAConeOfCirclesBesideEachOther) {
    for (const GradientExtend extend : extends) {
        EXPECT_LE(getGreatestError(RadialGradient{makeLine(extend), {12, 25}, 10, {36, 25}, 4}), 2.0);
        EXPECT_LE(getGreatestError(RadialGradient{makeLine(extend), {12, 25}, 8, {36, 30}, 8}), 2.0);
    }
}

double getGreatestError(const SweepGradient& gradient) {
    return getGreatestError(gradient, [&gradient](double x, double y) -> std::optional<double> {
        const double angle = std::atan2(y - double(gradient.center.y), x - double(gradient.center.x));
        const double positive = angle < 0.0 ? angle + turn : angle;
        return (positive - double(gradient.startAngle)) /
               (double(gradient.endAngle) - double(gradient.startAngle));
    });
}

TEST(CairoColorGradient, TurnsCounterClockwise) {
    for (const GradientExtend extend : extends) {
        EXPECT_LE(getGreatestError(SweepGradient{makeLine(extend), {25, 25}, 0, float(turn)}), 1.0);
        EXPECT_LE(getGreatestError(SweepGradient{makeLine(extend), {20.3F, 27.1F}, 1.0F, 3.0F}), 1.0);
        EXPECT_LE(getGreatestError(SweepGradient{makeLine(extend), {25, 25}, -1.0F, 7.5F}), 1.0);
    }
}

TEST(CairoColorGradient, TurnsClockwiseIfTheSecondAngleIsSmaller) {
    for (const GradientExtend extend : extends) {
        EXPECT_LE(getGreatestError(SweepGradient{makeLine(extend), {25, 25}, 3.0F, 1.0F}), 1.0);
    }
}

TEST(CairoColorGradient, TurnsAroundACentreFarOutsideTheClip) {
    EXPECT_LE(getGreatestError(SweepGradient{makeLine(GradientExtend::Pad), {-100, 25}, 0.0F, float(turn)}),
              1.0);
}

TEST(CairoColorGradient, ChangesItsColourAtOneAngleIfBothAreEqual) {
    const ColorCanvas canvas([](ColorPaintTarget& target) {
        const ColorLine line{{{0, red}, {1, blue}}, GradientExtend::Pad};
        target.pushClip(PaintBox{0, 0, 50, 50});
        target.fill(SweepGradient{line, {25, 25}, float(turn) / 2, float(turn) / 2});
        target.popClip();
    });
    EXPECT_EQ(canvas.getPixelAt(30, 30), redPixel);
    EXPECT_EQ(canvas.getPixelAt(5, 30), redPixel);
    EXPECT_EQ(canvas.getPixelAt(5, 20), bluePixel);
    EXPECT_EQ(canvas.getPixelAt(30, 20), bluePixel);
}

TEST(CairoColorGradient, ShowsTheMeanOfASweepThatRepeatsTooOften) {
    const ColorCanvas canvas([](ColorPaintTarget& target) {
        const ColorLine line{{{0, {0, 0, 0, 255}}, {0.5F, {200, 100, 0, 255}}, {0.5F, black}, {1, black}},
                             GradientExtend::Repeat};
        target.pushClip(PaintBox{0, 0, 50, 50});
        target.fill(SweepGradient{line, {25, 25}, 0.0F, 1e-6F});
        target.popClip();
    });
    for (const int x : {3, 24, 40}) {
        EXPECT_EQ(canvas.getPixelAt(x, 40), 0xFF321900U);
    }
}

TEST(CairoColorGradient, FollowsTheTransformsAroundIt) {
    const ColorCanvas canvas([](ColorPaintTarget& target) {
        const ColorLine line{{{0, red}, {1, blue}}, GradientExtend::Pad};
        target.pushClip(ClipFont::box);
        target.pushTransform(cinder::MatrixAffine2<float>(10, 0, 0, 10, 10, 0)); // 10 to 20 from 0 to 1
        target.fill(LinearGradient{line, {0, 0}, {1, 0}, {0, 1}});
        target.popTransform();
        target.popClip();
    });
    EXPECT_NEAR(canvas.getPixelAt(10, 20) & 0xFF, 13, 1);
    EXPECT_NEAR(canvas.getPixelAt(19, 20) & 0xFF, 242, 1);
    EXPECT_EQ(canvas.getPixelAt(20, 20), bluePixel);
}

/// cairo's image code cannot hold such numbers, and would leave the context in an error state for good.
TEST(CairoColorGradient, MayLieFarAway) {
    const ColorCanvas canvas([](ColorPaintTarget& target) {
        const ColorLine line{{{0, red}, {1, blue}}, GradientExtend::Pad};
        target.pushClip(ClipFont::box);
        target.pushTransform(cinder::MatrixAffine2<float>(0.009F, 0.008F, 0.006F, 0.002F, 3e11F, 1e12F));
        target.fill(LinearGradient{line, {-95, -96}, {-104, -87}, {0, 1}});
        target.fill(RadialGradient{line, {-95, -96}, 3, {-104, -87}, 9});
        target.fill(SweepGradient{line, {-95, -96}, 0, 1});
        target.popTransform();
        target.pushTransform(cinder::MatrixAffine2<float>(1, 0, 0, 1, -200000, 0));
        target.fill(LinearGradient{line, {0, 0}, {1, 0}, {0, 1}});
        target.popTransform();
        target.popClip();
    });
    EXPECT_TRUE(canvas.isBoxOf(bluePixel, 10, 10, 30, 40)); // behind the end of the last gradient
}

TEST(CairoColorGradient, DrawsNothingUnderASingularTransform) {
    const ColorCanvas canvas([](ColorPaintTarget& target) {
        const ColorLine line{{{0, red}, {1, blue}}, GradientExtend::Pad};
        target.pushClip(ClipFont::box);
        target.pushTransform(cinder::MatrixAffine2<float>(1, 0, 0, 0, 0, 0));
        target.fill(LinearGradient{line, {0, 0}, {1, 0}, {0, 1}});
        target.fill(RadialGradient{line, {0, 0}, 0, {0, 0}, 9});
        target.fill(SweepGradient{line, {0, 0}, 0, 1});
        target.popTransform();
        target.popClip();
    });
    EXPECT_TRUE(canvas.isEmpty());
}

} // namespace

} // namespace Vell::CairoAdapter::Testing
