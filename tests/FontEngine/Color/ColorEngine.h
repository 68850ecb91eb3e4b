#pragma once

#include <FontEngine/Engine.h>

#include <FontEngine/Color/FE_ColorGlyphs.h>
#include <support/ColrTable.h>
#include <support/OpenedFont.h>
#include <support/PictureTables.h>

#include <cstddef>
#include <fstream>
#include <ios>
#include <memory>
#include <utility>
#include <vector>

namespace Vell::FontEngine {

using ColorImagePtr = std::shared_ptr<const ColorGlyphImage>;

constexpr PaintColor textColor(10, 20, 30, 255);

/// The test font with bitmaps beside its outlines.
inline Testing::FontBuilder makeSbixFont(const std::vector<Testing::PictureStrike>& strikes) {
    Testing::FontBuilder font = makeTestFont();
    return font.setTable("sbix", Testing::buildSbix(strikes, font.getGlyphCount()));
}

/// The test font with bitmaps in place of its outlines.
inline Testing::FontBuilder makeCbdtFont(const std::vector<Testing::PictureStrike>& strikes) {
    Testing::CbdtTables tables = Testing::buildCbdt(strikes);
    Testing::FontBuilder font = makeTestFont();
    font.setTable("CBLC", std::move(tables.cblc)).setTable("CBDT", std::move(tables.cbdt));
    return font.omitTable("glyf").omitTable("loca");
}

/// Strikes of 8 and 20 pixels per em. Both have an A, the larger one also has an x.
inline std::vector<Testing::PictureStrike> makeTwoStrikes() {
    using namespace Testing;
    return {{8, {makeGlyphPicture(TestGlyph::a, 1, 6, makeMixedPicture(7, 8))}},
            {20,
             {makeGlyphPicture(TestGlyph::a, 2, 15, makeMixedPicture(18, 20)),
              makeGlyphPicture(TestGlyph::x, -3, 10, makeFlatPicture(10, 12, {200, 100, 50, 255}))}}};
}

/// The test font with an A of two layers, the second one in the colour of the text, and an x that is painted
/// with a gradient between two colours of the palette, in a clip box.
inline Testing::FontBuilder makeLayerFont() {
    using namespace Testing::Colr;
    Testing::FontBuilder font = makeTestFont();
    ColrTable colr;
    colr.addLayers(TestGlyph::a, {{TestGlyph::a, 0}, {TestGlyph::x, foreground}});
    const Paint gradient = makeLinear({{{0.0, 0}, {1.0, 1}}}, {0, 0}, {400, 0}, {0, 400});
    const unsigned int layer = colr.addLayer(makeGlyph(TestGlyph::x, gradient));
    colr.addGlyph(TestGlyph::x, makeLayers(1, layer));
    colr.setClipBox(TestGlyph::x, {0, 0, 300, 400});
    return font.setTable("COLR", colr.build())
        .setTable("CPAL", makePalettes({{{255, 0, 0}, {0, 255, 0}}, {{0, 0, 255}, {255, 0, 0}}}));
}

inline Testing::Bytes readFont(const char* path) {
    std::ifstream file(path, std::ios::binary | std::ios::ate);
    Testing::Bytes bytes(file ? static_cast<std::size_t>(file.tellg()) : 0);
    file.seekg(0).read(reinterpret_cast<char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    return bytes;
}

/// An engine with a font with colours.
struct ColorEngine : Engine {
    explicit ColorEngine(const Testing::Bytes& font = makeSbixFont(makeTwoStrikes()).build())
        : Engine(font) {}

    ColorGlyphs& getColors() const { return factory->getColorGlyphs(); }

    ColorGlyphInfo makeKey(unsigned long glyph, float size, const PaintColor& color = textColor) const {
        return ColorGlyphInfo(faceInfo, glyph, size, 1.0F, 1.0F, nullptr, color);
    }
    ColorImagePtr getImage(unsigned long glyph, float size, const PaintColor& color = textColor) const {
        return getColors().getImage(makeKey(glyph, size, color), getFace());
    }

    Testing::FaceInfoPtr faceInfo = Testing::makeFaceInfo();
};

/// The pixels in the order of memory.
inline Testing::Bytes copyPixels(const ColorGlyphImage& image) {
    return Testing::Bytes(image.buffer, image.buffer + static_cast<std::size_t>(image.pitch) * image.rows);
}

} // namespace Vell::FontEngine
