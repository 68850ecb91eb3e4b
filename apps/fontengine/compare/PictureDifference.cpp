#include "compare/PictureDifference.h"

#include <Utils/Utils.h>

#include <algorithm>
#include <cstdlib>

namespace Vell::Tool {

namespace {

using Pixel = std::array<unsigned int, channelCount>;

constexpr unsigned int full = 255;

/// In thousandths: the darkness of the grey parts, and the red of the smallest difference.
constexpr unsigned int outlineStrength = 300;
constexpr unsigned int leastRed = 400;
constexpr unsigned int thousand = 1000;

/// A pixel, premultiplied by its alpha.
Pixel readPixel(const PngPicture& picture, std::size_t offset) {
    const std::uint8_t* bytes = &picture.bytes[offset];
    const unsigned int alpha = bytes[3];
    const auto multiply = [alpha](unsigned int color) { return (color * alpha + full / 2) / full; };
    return {multiply(bytes[0]), multiply(bytes[1]), multiply(bytes[2]), alpha};
}

unsigned int getDistance(unsigned int a, unsigned int b) {
    return a < b ? b - a : a - b;
}

Pixel getDistances(const Pixel& a, const Pixel& b) {
    Pixel distances{};
    std::transform(a.begin(), a.end(), b.begin(), distances.begin(), getDistance);
    return distances;
}

/// The brightness of a pixel on white, by the usual weights of the colours.
unsigned int getBrightness(const Pixel& pixel) {
    return (299 * pixel[0] + 587 * pixel[1] + 114 * pixel[2]) / thousand + full - pixel[3];
}

unsigned int mix(unsigned int from, unsigned int to, unsigned int thousandths) {
    return (from * (thousand - thousandths) + to * thousandths) / thousand;
}

void writePixel(PngPicture& picture, std::size_t offset, const Pixel& a, const Pixel& b) {
    const Pixel distances = getDistances(a, b);
    const unsigned int largest = *std::max_element(distances.begin(), distances.end());
    const unsigned int brightness = std::min((getBrightness(a) + getBrightness(b)) / 2, full);
    const unsigned int grey = mix(full, brightness, outlineStrength);
    const unsigned int red = largest == 0 ? 0 : leastRed + (thousand - leastRed) * largest / full;
    picture.bytes[offset] = static_cast<std::uint8_t>(mix(grey, full, red));
    picture.bytes[offset + 1] = static_cast<std::uint8_t>(mix(grey, 0, red));
    picture.bytes[offset + 2] = static_cast<std::uint8_t>(mix(grey, 0, red));
    picture.bytes[offset + 3] = full;
}

void checkSizes(const PngPicture& a, const PngPicture& b) {
    if (a.width != b.width || a.height != b.height) {
        constexpr int line = 60;
        doFailAssert("apps/fontengine/PictureDifference", line, "a.width == b.width && a.height == b.height");
    }
}

} // namespace

PictureDifference measureDifference(const PngPicture& a, const PngPicture& b) {
    checkSizes(a, b);
    PictureDifference difference;
    std::array<std::uint64_t, channelCount> sums{};
    for (std::size_t offset = 0; offset < a.bytes.size(); offset += channelCount) {
        const Pixel distances = getDistances(readPixel(a, offset), readPixel(b, offset));
        bool differs = false;
        for (std::size_t i = 0; i < channelCount; ++i) {
            difference.largest[i] = std::max(difference.largest[i], distances[i]);
            sums[i] += distances[i];
            differs = differs || distances[i] != 0;
        }
        difference.differingPixels += differs ? 1 : 0;
    }
    const std::size_t pixelCount = a.bytes.size() / channelCount;
    const auto pixels = static_cast<double>(pixelCount);
    std::transform(sums.begin(), sums.end(), difference.mean.begin(),
                   [pixels](std::uint64_t sum) { return static_cast<double>(sum) / pixels; });
    return difference;
}

PngPicture drawDifference(const PngPicture& a, const PngPicture& b) {
    checkSizes(a, b);
    PngPicture drawn{a.width, a.height, std::vector<std::uint8_t>(a.bytes.size())};
    for (std::size_t offset = 0; offset < a.bytes.size(); offset += channelCount) {
        writePixel(drawn, offset, readPixel(a, offset), readPixel(b, offset));
    }
    return drawn;
}

} // namespace Vell::Tool
