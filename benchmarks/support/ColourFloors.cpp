#include "ColourFloors.h"

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

int decodeByTable(int value) {
    static const auto table = [] {
        std::array<int, 256> decoded{};
        for (int i = 0; i < 256; ++i) {
            decoded[static_cast<std::size_t>(i)] = decodeByPower(i);
        }
        return decoded;
    }();
    return table[static_cast<std::size_t>(value)];
}

/// Coverage of white by a channel of the text colour, in the encoded space.
int mix(unsigned char coverage, int encodedText) {
    const float alpha = static_cast<float>(coverage) / 255.0F;
    return static_cast<int>(alpha * static_cast<float>(encodedText) + (1.0F - alpha) * 255.0F);
}

bool isNearEdge(unsigned int index, unsigned int count) {
    return index <= 1 || index + 2 >= count;
}

std::uint32_t pack(unsigned int r, unsigned int g, unsigned int b, bool isCorner) {
    const unsigned int sum = r + g + b;
    const bool isTransparent = isCorner ? sum >= 690 : sum > 749;
    return isTransparent ? 0 : 0xFF000000U | r << 16U | g << 8U | b;
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

/// `see(channel, coverage)` is what is seen of a channel.
template <typename See>
std::shared_ptr<Image> colorAll(const FT_BitmapGlyphRec_& glyph, const See& see) {
    std::shared_ptr<Image> image = makeImage(glyph.bitmap);
    for (unsigned int row = 0; row < image->rows; ++row) {
        const unsigned char* source =
            glyph.bitmap.buffer + static_cast<std::ptrdiff_t>(row) * glyph.bitmap.pitch;
        unsigned char* target = image->buffer + static_cast<std::ptrdiff_t>(row) * image->pitch;
        const bool isEdgeRow = isNearEdge(row, image->rows);
        for (unsigned int x = 0; x < image->width; ++x, source += 3, target += 4) {
            const std::uint32_t pixel = pack(see(0, source[0]), see(1, source[1]), see(2, source[2]),
                                             isEdgeRow && isNearEdge(x, image->width));
            std::memcpy(target, &pixel, sizeof(pixel));
        }
    }
    return image;
}

template <typename Decode>
std::shared_ptr<Image> colorBy(const FT_BitmapGlyphRec_& glyph, const Color& color, const Decode& decode) {
    const std::array<int, 3> text{encode(color.r), encode(color.g), encode(color.b)};
    return colorAll(glyph, [&](std::size_t channel, unsigned char coverage) {
        return static_cast<unsigned int>(decode(mix(coverage, text[channel])));
    });
}

} // namespace

ColorTables::ColorTables(const Color& color)
    : channels{} {
    const std::array<int, 3> text{encode(color.r), encode(color.g), encode(color.b)};
    for (std::size_t channel = 0; channel < 3; ++channel) {
        for (unsigned int coverage = 0; coverage < 256; ++coverage) {
            channels[channel][coverage] = static_cast<unsigned char>(
                decodeByPower(mix(static_cast<unsigned char>(coverage), text[channel])));
        }
    }
}

std::shared_ptr<Image> colorByPowers(const FT_BitmapGlyphRec_& glyph, const Color& color) {
    return colorBy(glyph, color, decodeByPower);
}

std::shared_ptr<Image> colorByDecodeTable(const FT_BitmapGlyphRec_& glyph, const Color& color) {
    return colorBy(glyph, color, decodeByTable);
}

std::shared_ptr<Image> colorByColorTables(const FT_BitmapGlyphRec_& glyph, const ColorTables& tables) {
    return colorAll(glyph, [&](std::size_t channel, unsigned char coverage) {
        return static_cast<unsigned int>(tables.channels[channel][coverage]);
    });
}

} // namespace Vell::Benchmarks
