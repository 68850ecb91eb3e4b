#include <FontEngine/Color/Private/PaintChecks.h>

#include <algorithm>
#include <cmath>

namespace Vell::FontEngine {

namespace {

Testing::Bytes buildFont(const Testing::Colr::ColrTable& colr, unsigned int glyphCount) {
    Testing::FontBuilder font = makePaintFont(glyphCount);
    font.setTable("COLR", colr.build());
    return font.build();
}

Testing::Colr::Color toTestColor(const PaintColor& color) {
    return {color.r, color.g, color.b, color.a};
}

/// Returns a pixel as BGRA, transparent outside the image.
const unsigned char* findPixel(const ColorGlyphImage& image, int x, int y) {
    static const unsigned char transparent[4] = {0, 0, 0, 0};
    const int column = x - image.left;
    const int row = image.top - 1 - y;
    const bool isInside = column >= 0 && row >= 0 && column < static_cast<int>(image.width) &&
                          row < static_cast<int>(image.rows);
    const std::ptrdiff_t offset = static_cast<std::ptrdiff_t>(row) * image.pitch + std::ptrdiff_t(column) * 4;
    return isInside ? image.buffer + offset : transparent;
}

int compare(const unsigned char* bgra, const PlainPixel& plain) {
    const double expected[4] = {plain[2], plain[1], plain[0], plain[3]};
    int difference = 0;
    for (int i = 0; i < 4; ++i) {
        difference =
            std::max(difference, std::abs(bgra[i] - static_cast<int>(std::lround(expected[i] * 255))));
    }
    return difference;
}

} // namespace

PaintFont::PaintFont(const Testing::Colr::ColrTable& colr, unsigned int glyphCount)
    : table(colr)
    , font(buildFont(colr, glyphCount)) {}

std::shared_ptr<const Internal::ColorPaintList> PaintFont::walk(unsigned int glyphIndex) const {
    return Internal::makeColorPaintList(font.get(), glyphIndex,
                                        Internal::resolvePalette(font.get(), {}, textColor));
}

std::shared_ptr<ColorGlyphImage> PaintFont::draw(unsigned int glyphIndex, float pixelsPerEm) const {
    const auto paints = walk(glyphIndex);
    const float scale = pixelsPerEm / 1000;
    return paints ? Internal::renderColorGlyph(font.get(), *paints, {scale, 0, 0, scale, 0, 0}, 1 << 24)
                  : nullptr;
}

PaintDifference compareWithPlainPainter(const PaintFont& font, unsigned int glyphIndex, float pixelsPerEm,
                                        int tolerance) {
    const auto image = font.draw(glyphIndex, pixelsPerEm);
    if (!image) {
        return {256, 1, 0};
    }
    // A margin around the glyph shows whether its image is cut off.
    const double scale = static_cast<double>(pixelsPerEm / 1000);
    const int size = static_cast<int>(pixelsPerEm) + 16;
    PlainImage plain{-8, -8, size, size, {}};
    PlainPainter painter(font.font.get(), font.table, makeExamplePalettes().front(), toTestColor(textColor));
    painter.paint(glyphIndex, {scale, 0, 0, scale, 0, 0}, plain);
    PaintDifference difference{0, 0, 0};
    for (int row = 0; row < size; ++row) {
        for (int column = 0; column < size; ++column) {
            const int index = row * size + column;
            const PlainPixel& expected = plain.pixels[static_cast<std::size_t>(index)];
            const int found =
                compare(findPixel(*image, plain.left + column, plain.bottom + size - 1 - row), expected);
            difference.max = std::max(difference.max, found);
            difference.count += found > tolerance ? 1 : 0;
            difference.ink += expected[3] / (size * size);
        }
    }
    return difference;
}

} // namespace Vell::FontEngine
