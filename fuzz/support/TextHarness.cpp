#include <fuzz/support/Harness.h>

#include <fuzz/support/ByteReader.h>
#include <fuzz/support/Finding.h>
#include <fuzz/support/TextCalls.h>
#include <fuzz/support/Tolerate.h>

#include <FontEngine/FE_FontFactory.h>
#include <FontLoaders/Public/Exceptions.h>
#include <FontLoaders/Public/UnicodeRangeMap.h>
#include <support/CountingLoader.h>
#include <support/FontBuilder.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <memory>
#include <string>

namespace Vell::Fuzz {

namespace {

using Testing::FontBuilder;
using Testing::makeBoxGlyph;

/// How a text is set: the 19 bytes before it, in this order.
struct TextScript {
    explicit TextScript(ByteReader& reader) {
        const unsigned int flags = reader.takeU8();
        isFlipped = (flags & 1U) != 0;
        hasFallback = (flags & 2U) != 0;
        isFallbackMissing = (flags & 4U) != 0;
        isBold = (flags & 8U) != 0;
        position = static_cast<Gfx::TextPositionType>((flags >> 4) % 3);
        size = reader.takeMeasure();
        spacing = reader.takeMeasure();
        width = reader.takeMeasure();
        angle = reader.takeMeasure();
        translateX = reader.takeMeasure();
        translateY = reader.takeMeasure();
        devicePixelRatio = reader.takeFactor();
        scaleX = reader.takeFactor();
        scaleY = reader.takeFactor();
    }

    TextPlace makePlace() const {
        const float cosine = std::cos(angle);
        const float sine = std::sin(angle);
        TextPlace place;
        place.transform = {scaleX * cosine, scaleX * sine, -scaleY * sine,
                           scaleY * cosine, translateX,    translateY};
        place.devicePixelRatio = devicePixelRatio;
        place.isFlipped = isFlipped;
        return place;
    }

    // 1 byte of flags: 1 flipped, 2 with a fallback family, 4 the loader lacks that family, 8 bold, the rest
    // is the position type; then 2 bytes each for six measures and three factors
    bool isFlipped;
    bool hasFallback;
    bool isFallbackMissing;
    bool isBold;
    Gfx::TextPositionType position;
    float size;
    float spacing;
    float width;
    float angle; // radians
    float translateX;
    float translateY;
    float devicePixelRatio;
    float scaleX;
    float scaleY;
};

Bytes makeTextFont() {
    FontBuilder font("Test Sans");
    font.setNotdef(makeBoxGlyph(500, 50, 0, 450, 700));
    font.map('_', font.addGlyph(makeBoxGlyph(500, 0, -100, 500, -50)));
    font.map(' ', font.addGlyph({250, {}, {}}));
    font.map('-', font.addGlyph(makeBoxGlyph(0, -200, 200, 0, 250)));
    for (unsigned int letter = 'a'; letter <= 'z'; ++letter) {
        font.map(letter, font.addGlyph(makeBoxGlyph(300 + letter, 20, -200, 300, 500)));
    }
    font.map(0x416, font.addGlyph(makeBoxGlyph(900, 0, 0, 900, 700)));
    font.map(0x1F600, font.addGlyph(makeBoxGlyph(1000, 0, 0, 1000, 1000)));
    return font.build();
}

Bytes makeFallbackFont() {
    FontBuilder font("Test Fallback");
    font.setUnitsPerEm(2048);
    font.map(0x3A9, font.addGlyph(makeBoxGlyph(1500, 100, 0, 1400, 1400)));
    font.map(0x4E00, font.addGlyph(makeBoxGlyph(2048, 0, 0, 2048, 300)));
    return font.build();
}

std::shared_ptr<Testing::CountingLoader> makeLoader(const TextScript& script) {
    static const auto textFont = std::make_shared<const Bytes>(makeTextFont());
    static const auto fallbackFont = std::make_shared<const Bytes>(makeFallbackFont());
    auto loader = std::make_shared<Testing::CountingLoader>();
    loader->setFont("Test Sans", false, false, textFont);
    if (!script.isFallbackMissing) {
        loader->setFont("Test Fallback", false, false, fallbackFont);
    }
    if (script.hasFallback) {
        for (const unsigned int codePoint : {0x3A9U, 0x4E00U, 0x41U, 0x1F600U}) {
            loader->setRangeFamily(FontLoaders::UnicodeRangeMap::find(codePoint), "Test Fallback");
        }
    }
    return loader;
}

/// A line holds the bitmaps of all its characters while it is drawn. If each takes hundreds of megabytes,
/// only a few characters are drawn.
std::string takeDrawableText(const std::string& text, const TextScript& script) {
    constexpr float enormous = 2000.0F; // pixels
    constexpr std::size_t fewCharacters = 3;
    const float size = std::abs(script.size * script.scaleX) * std::max(1.0F, script.devicePixelRatio);
    return size < enormous ? text : text.substr(0, fewCharacters);
}

void measureAndDraw(const std::string& text, const TextScript& script) {
    const auto factory = FontEngine::FontFactory::create(makeLoader(script), "Test Sans");
    const auto faceInfo = Testing::makeFaceInfo("Test Sans", script.isBold);
    const auto fontInfo = Testing::makeFontInfo(faceInfo, script.size, script.position);
    const auto extFontInfo = Testing::makeExtFontInfo(fontInfo, script.spacing);
    const FontEngine::Font font = factory->getFont(fontInfo);
    measureLine(font);
    drawVector(text, extFontInfo, font, script.makePlace());
    checkCountedChars(text, script.width, extFontInfo, font);
    // FreeType's rasteriser reports an error for a glyph that is too large.
    tolerate<FontLoaders::FreeTypeException>(
        [&] { drawRaster(takeDrawableText(text, script), extFontInfo, font, script.makePlace()); });
}

} // namespace

void runText(const Bytes& input) {
    ByteReader reader(input);
    const TextScript script(reader);
    const Bytes rest = reader.takeRest();
    const std::string text(rest.begin(), rest.end());
    const bool isDone = tolerate<FontLoaders::FontLoaderException>([&] { measureAndDraw(text, script); });
    require(isDone || (script.hasFallback && script.isFallbackMissing),
            "text fails only if its fallback font is missing");
}

} // namespace Vell::Fuzz
