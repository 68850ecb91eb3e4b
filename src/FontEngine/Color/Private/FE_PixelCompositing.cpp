#include <FontEngine/Color/Private/FE_PixelCompositing.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace Vell::FontEngine::Internal {

namespace {

using Pixel = ColorPixel;

Pixel scale(const Pixel& pixel, float factor) {
    return {pixel.b * factor, pixel.g * factor, pixel.r * factor, pixel.a * factor};
}

Pixel add(const Pixel& a, const Pixel& b) {
    return {a.b + b.b, a.g + b.g, a.r + b.r, a.a + b.a};
}

float toFraction(unsigned char coverage) {
    return static_cast<float>(coverage) * (1.0F / 255.0F);
}

// --- The operators of Porter and Duff: which parts of the source and of the destination remain, given the
// alpha of the other one.

float none(float) {
    return 0;
}
float all(float) {
    return 1;
}
float inside(float alpha) {
    return alpha;
}
float outside(float alpha) {
    return 1 - alpha;
}

using Part = float (*)(float alpha);
using Blend = Pixel (*)(const Pixel& source, const Pixel& destination);

template <Part sourcePart, Part destinationPart>
Pixel keep(const Pixel& source, const Pixel& destination) {
    return add(scale(source, sourcePart(destination.a)), scale(destination, destinationPart(source.a)));
}

Pixel plus(const Pixel& source, const Pixel& destination) {
    const Pixel sum = add(source, destination);
    return {std::min(sum.b, 1.0F), std::min(sum.g, 1.0F), std::min(sum.r, 1.0F), std::min(sum.a, 1.0F)};
}

// --- Blend modes of one channel, without alpha.

float multiply(float source, float backdrop) {
    return source * backdrop;
}
float screen(float source, float backdrop) {
    return source + backdrop - source * backdrop;
}
float hardLight(float source, float backdrop) {
    return source <= 0.5F ? multiply(2 * source, backdrop) : screen(2 * source - 1, backdrop);
}
float overlay(float source, float backdrop) {
    return hardLight(backdrop, source);
}
float darken(float source, float backdrop) {
    return std::min(source, backdrop);
}
float lighten(float source, float backdrop) {
    return std::max(source, backdrop);
}
float colorDodge(float source, float backdrop) {
    if (backdrop <= 0) {
        return 0;
    }
    return source >= 1 ? 1 : std::min(1.0F, backdrop / (1 - source));
}
float colorBurn(float source, float backdrop) {
    if (backdrop >= 1) {
        return 1;
    }
    return source <= 0 ? 0 : 1 - std::min(1.0F, (1 - backdrop) / source);
}
float softLight(float source, float backdrop) {
    if (source <= 0.5F) {
        return backdrop - (1 - 2 * source) * backdrop * (1 - backdrop);
    }
    const float lightened =
        backdrop <= 0.25F ? ((16 * backdrop - 12) * backdrop + 4) * backdrop : std::sqrt(backdrop);
    return backdrop + (2 * source - 1) * (lightened - backdrop);
}
float difference(float source, float backdrop) {
    return std::abs(source - backdrop);
}
float exclusion(float source, float backdrop) {
    return source + backdrop - 2 * source * backdrop;
}

// --- Blend modes of hue, saturation and luminosity.

struct Rgb {
    float r;
    float g;
    float b;
};

float getLuminosity(const Rgb& color) {
    return 0.3F * color.r + 0.59F * color.g + 0.11F * color.b;
}

float getSaturation(const Rgb& color) {
    return std::max({color.r, color.g, color.b}) - std::min({color.r, color.g, color.b});
}

/// Moves a colour towards its luminosity until it is within the channels' range.
Rgb clip(const Rgb& color) {
    const float luminosity = getLuminosity(color);
    const float least = std::min({color.r, color.g, color.b});
    const float greatest = std::max({color.r, color.g, color.b});
    float factor = 1;
    if (least < 0) {
        factor = luminosity / (luminosity - least);
    }
    if (greatest > 1) {
        factor = std::min(factor, (1 - luminosity) / (greatest - luminosity));
    }
    const auto move = [=](float channel) { return luminosity + (channel - luminosity) * factor; };
    return {move(color.r), move(color.g), move(color.b)};
}

Rgb setLuminosity(const Rgb& color, float luminosity) {
    const float difference = luminosity - getLuminosity(color);
    return clip({color.r + difference, color.g + difference, color.b + difference});
}

Rgb setSaturation(const Rgb& color, float saturation) {
    const float least = std::min({color.r, color.g, color.b});
    const float range = getSaturation(color);
    if (range <= 0) {
        return {0, 0, 0};
    }
    const auto stretch = [=](float channel) { return (channel - least) * saturation / range; };
    return {stretch(color.r), stretch(color.g), stretch(color.b)};
}

Rgb hue(const Rgb& source, const Rgb& backdrop) {
    return setLuminosity(setSaturation(source, getSaturation(backdrop)), getLuminosity(backdrop));
}
Rgb saturation(const Rgb& source, const Rgb& backdrop) {
    return setLuminosity(setSaturation(backdrop, getSaturation(source)), getLuminosity(backdrop));
}
Rgb color(const Rgb& source, const Rgb& backdrop) {
    return setLuminosity(source, getLuminosity(backdrop));
}
Rgb luminosity(const Rgb& source, const Rgb& backdrop) {
    return setLuminosity(backdrop, getLuminosity(source));
}

// --- Blend modes with alpha: they apply where both source and destination are.

/// Returns the straight colour of a pixel.
Rgb divide(const Pixel& pixel) {
    if (pixel.a <= 0) {
        return {0, 0, 0};
    }
    return {std::min(pixel.r / pixel.a, 1.0F), std::min(pixel.g / pixel.a, 1.0F),
            std::min(pixel.b / pixel.a, 1.0F)};
}

Pixel blendWhereBoth(const Pixel& source, const Pixel& destination, const Rgb& blended) {
    const float both = source.a * destination.a;
    const Pixel apart = keep<outside, outside>(source, destination);
    return add(apart, {blended.b * both, blended.g * both, blended.r * both, both});
}

template <float (*mix)(float source, float backdrop)>
Pixel blendChannels(const Pixel& source, const Pixel& destination) {
    const Rgb top = divide(source);
    const Rgb bottom = divide(destination);
    return blendWhereBoth(source, destination,
                          {mix(top.r, bottom.r), mix(top.g, bottom.g), mix(top.b, bottom.b)});
}

template <Rgb (*mix)(const Rgb& source, const Rgb& backdrop)>
Pixel blendColors(const Pixel& source, const Pixel& destination) {
    return blendWhereBoth(source, destination, mix(divide(source), divide(destination)));
}

template <Blend blend>
void compositeRow(const Pixel* source, const unsigned char* coverage, Pixel* destination, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        const Pixel result = blend(source[i], destination[i]);
        const float part = coverage != nullptr ? toFraction(coverage[i]) : 1.0F;
        destination[i] = add(scale(result, part), scale(destination[i], 1 - part));
    }
}

using CompositeRow = void (*)(const Pixel*, const unsigned char*, Pixel*, std::size_t);

/// In the order of CompositeMode.
constexpr std::array<CompositeRow, 28> compositeRows{
    compositeRow<keep<none, none>>,
    compositeRow<keep<all, none>>,
    compositeRow<keep<none, all>>,
    compositeRow<keep<all, outside>>,
    compositeRow<keep<outside, all>>,
    compositeRow<keep<inside, none>>,
    compositeRow<keep<none, inside>>,
    compositeRow<keep<outside, none>>,
    compositeRow<keep<none, outside>>,
    compositeRow<keep<inside, outside>>,
    compositeRow<keep<outside, inside>>,
    compositeRow<keep<outside, outside>>,
    compositeRow<plus>,
    compositeRow<blendChannels<screen>>,
    compositeRow<blendChannels<overlay>>,
    compositeRow<blendChannels<darken>>,
    compositeRow<blendChannels<lighten>>,
    compositeRow<blendChannels<colorDodge>>,
    compositeRow<blendChannels<colorBurn>>,
    compositeRow<blendChannels<hardLight>>,
    compositeRow<blendChannels<softLight>>,
    compositeRow<blendChannels<difference>>,
    compositeRow<blendChannels<exclusion>>,
    compositeRow<blendChannels<multiply>>,
    compositeRow<blendColors<hue>>,
    compositeRow<blendColors<saturation>>,
    compositeRow<blendColors<color>>,
    compositeRow<blendColors<luminosity>>,
};

Pixel over(const Pixel& source, const Pixel& destination) {
    return keep<all, outside>(source, destination);
}

unsigned char toByte(float value) {
    constexpr float half = 0.5F; // rounds, because the cast truncates
    return static_cast<unsigned char>(std::clamp(value, 0.0F, 1.0F) * 255.0F + half);
}

} // namespace

ColorPixel premultiply(const PaintColor& color) {
    const float alpha = toFraction(color.a);
    return {toFraction(color.b) * alpha, toFraction(color.g) * alpha, toFraction(color.r) * alpha, alpha};
}

void drawOver(const ColorPixel& color, const unsigned char* coverage, ColorPixel* destination,
              std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        if (coverage == nullptr || coverage[i] == 255) {
            destination[i] = over(color, destination[i]);
        } else if (coverage[i] != 0) {
            destination[i] = over(scale(color, toFraction(coverage[i])), destination[i]);
        }
    }
}

void drawOver(const ColorPixel* source, const unsigned char* coverage, ColorPixel* destination,
              std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        const float part = coverage != nullptr ? toFraction(coverage[i]) : 1.0F;
        destination[i] = over(scale(source[i], part), destination[i]);
    }
}

void composite(CompositeMode mode, const ColorPixel* source, const unsigned char* coverage,
               ColorPixel* destination, std::size_t count) {
    compositeRows[static_cast<std::size_t>(mode)](source, coverage, destination, count);
}

void store(const ColorPixel* pixels, std::size_t count, unsigned char* bytes) {
    for (std::size_t i = 0; i < count; ++i, bytes += 4) {
        bytes[0] = toByte(pixels[i].b);
        bytes[1] = toByte(pixels[i].g);
        bytes[2] = toByte(pixels[i].r);
        bytes[3] = toByte(pixels[i].a);
    }
}

} // namespace Vell::FontEngine::Internal
