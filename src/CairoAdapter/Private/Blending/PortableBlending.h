#pragma once

#include <CairoAdapter/Private/Blending/Pixels.h>

/// Blending in plain C++, two channels of a word at once. The other implementations follow this one.
namespace Vell::CairoAdapter::Internal::Portable {

constexpr std::uint32_t channelPair = 0x00FF00FF; ///< red and blue; alpha and green after a shift by 8 bits

/// Each channel * factor / 255, rounded to the nearest.
constexpr std::uint32_t scaleColor(std::uint32_t color, std::uint32_t factor) {
    constexpr std::uint32_t halves = 0x00800080;
    const std::uint32_t low = (color & channelPair) * factor + halves;
    const std::uint32_t high = (color >> 8 & channelPair) * factor + halves;
    return ((low + (low >> 8 & channelPair)) >> 8 & channelPair) |
           ((high + (high >> 8 & channelPair)) & ~channelPair);
}

/// Adds two pairs of channels; each sum saturates at 255.
constexpr std::uint32_t addPairs(std::uint32_t a, std::uint32_t b) {
    constexpr std::uint32_t carries = 0x01000100;
    const std::uint32_t sum = a + b;
    return (sum | (carries - (sum >> 8 & channelPair))) & channelPair;
}

/// One premultiplied colour over another.
constexpr std::uint32_t blend(std::uint32_t color, std::uint32_t under) {
    const std::uint32_t below = scaleColor(under, 255 - (color >> 24));
    return addPairs(color & channelPair, below & channelPair) |
           addPairs(color >> 8 & channelPair, below >> 8 & channelPair) << 8;
}

/// Blends the colour, scaled by the coverage of each pixel, over the block.
inline void blendCoverage(const PixelBlock& block, std::uint32_t color) {
    for (std::ptrdiff_t row = 0; row < block.rows; ++row) {
        const unsigned char* from = block.from + row * block.fromPitch;
        unsigned char* to = block.to + row * block.toPitch;
        for (int x = 0; x < block.width; ++x, to += bytesPerColor) {
            if (from[x] != 0) {
                writeColor(blend(scaleColor(color, from[x]), readColor(to)), to);
            }
        }
    }
}

/// Blends the colours of the source over those of the destination.
inline void blendColors(const PixelBlock& block) {
    for (std::ptrdiff_t row = 0; row < block.rows; ++row) {
        const unsigned char* from = block.from + row * block.fromPitch;
        unsigned char* to = block.to + row * block.toPitch;
        for (int x = 0; x < block.width; ++x, from += bytesPerColor, to += bytesPerColor) {
            writeColor(blend(readColor(from), readColor(to)), to);
        }
    }
}

} // namespace Vell::CairoAdapter::Internal::Portable
