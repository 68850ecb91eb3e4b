#include "ColourFloors.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace Vell::Benchmarks {

namespace {

constexpr float textGamma = 1.2F;

int raise(int value, float exponent) {
    return static_cast<int>(std::pow(static_cast<float>(value) / 255.0F, exponent) * 255.0F);
}

int encode(int value) {
    return raise(value, textGamma);
}

int decodeByPower(int value) {
    return raise(value, 1.0F / textGamma);
}

const std::array<int, 256>& getDecodeTable() {
    static const auto table = [] {
        std::array<int, 256> decoded{};
        for (int i = 0; i < 256; ++i) {
            decoded[static_cast<std::size_t>(i)] = decodeByPower(i);
        }
        return decoded;
    }();
    return table;
}

/// Covers white with a channel of the text colour, in the encoded space.
int mix(unsigned char coverage, int encodedText) {
    const float alpha = static_cast<float>(coverage) / 255.0F;
    return static_cast<int>(alpha * static_cast<float>(encodedText) + (1.0F - alpha) * 255.0F);
}

/// A channel as ColorTables stores it.
std::uint64_t makePart(int value, std::size_t channel) {
    const auto bits = static_cast<std::uint64_t>(value);
    return bits << 32U | bits << (16U - 8U * channel);
}

/// Pixels of at least this lightness are transparent.
constexpr std::uint32_t cornerLimit = 690;
constexpr std::uint32_t innerLimit = 750;

std::uint32_t finish(std::uint64_t parts, std::uint32_t firstTransparent) {
    const auto lightness = static_cast<std::uint32_t>(parts >> 32U);
    return lightness >= firstTransparent ? 0 : 0xFF000000U | static_cast<std::uint32_t>(parts);
}

std::shared_ptr<Image> makeImage(const FT_Bitmap& bitmap) {
    auto image = std::make_shared<Image>();
    image->rows = bitmap.rows;
    image->width = bitmap.width / 3;
    image->pitch = static_cast<int>(image->width * 4);
    image->pixelMode = bitmap.pixel_mode;
    image->buffer = new unsigned char[static_cast<std::size_t>(image->rows) * image->width * 4];
    return image;
}

/// `see(channel, coverage)` returns the part of a channel.
template <typename See>
void colorPixels(const unsigned char* source, unsigned char* target, unsigned int count,
                 std::uint32_t firstTransparent, const See& see) {
    for (unsigned int x = 0; x < count; ++x, source += 3, target += 4) {
        const std::uint64_t parts = see(0, source[0]) + see(1, source[1]) + see(2, source[2]);
        const std::uint32_t pixel = finish(parts, firstTransparent);
        std::memcpy(target, &pixel, sizeof(pixel));
    }
}

/// The corners are two pixels wide and two rows high.
template <typename See>
std::shared_ptr<Image> colorAll(const FT_BitmapGlyphRec_& glyph, const See& see) {
    constexpr unsigned int edge = 2;
    std::shared_ptr<Image> image = makeImage(glyph.bitmap);
    const unsigned int left = std::min(edge, image->width);
    const unsigned int right = std::min(edge, image->width - left);
    const unsigned int inner = image->width - left - right;
    for (unsigned int row = 0; row < image->rows; ++row) {
        const unsigned char* const source =
            glyph.bitmap.buffer + static_cast<std::ptrdiff_t>(row) * glyph.bitmap.pitch;
        unsigned char* const target = image->buffer + static_cast<std::ptrdiff_t>(row) * image->pitch;
        const bool isEdge = row < edge || row + edge >= image->rows;
        const std::uint32_t sideLimit = isEdge ? cornerLimit : innerLimit;
        colorPixels(source, target, left, sideLimit, see);
        colorPixels(source + 3 * left, target + 4 * left, inner, innerLimit, see);
        colorPixels(source + 3 * (left + inner), target + 4 * (left + inner), right, sideLimit, see);
    }
    return image;
}

template <typename Decode>
std::shared_ptr<Image> colorBy(const FT_BitmapGlyphRec_& glyph, const Color& color, const Decode& decode) {
    const std::array<int, 3> text{encode(color.r), encode(color.g), encode(color.b)};
    return colorAll(glyph, [&](std::size_t channel, unsigned char coverage) {
        return makePart(decode(mix(coverage, text[channel])), channel);
    });
}

} // namespace

ColorTables::ColorTables(const Color& color)
    : channels{} {
    const std::array<int, 3> text{encode(color.r), encode(color.g), encode(color.b)};
    for (std::size_t channel = 0; channel < 3; ++channel) {
        for (unsigned int coverage = 0; coverage < 256; ++coverage) {
            const int mixed = mix(static_cast<unsigned char>(coverage), text[channel]);
            channels[channel][coverage] = makePart(decodeByPower(mixed), channel);
        }
    }
}

std::shared_ptr<Image> colorByPowers(const FT_BitmapGlyphRec_& glyph, const Color& color) {
    return colorBy(glyph, color, [](int value) { return decodeByPower(value); });
}

std::shared_ptr<Image> colorByDecodeTable(const FT_BitmapGlyphRec_& glyph, const Color& color) {
    const std::array<int, 256>& table = getDecodeTable();
    return colorBy(glyph, color, [&](int value) { return table[static_cast<std::size_t>(value)]; });
}

std::shared_ptr<Image> colorByColorTables(const FT_BitmapGlyphRec_& glyph, const ColorTables& tables) {
    return colorAll(glyph, [&](std::size_t channel, unsigned char coverage) {
        return tables.channels[channel][coverage];
    });
}

} // namespace Vell::Benchmarks
