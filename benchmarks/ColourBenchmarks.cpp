// The colouring of sub-pixel bitmaps. An item is a pixel.

#include "support/BenchEngine.h"
#include "support/ColourFloors.h"
#include "support/Items.h"

#include <FontEngine/Private/FE_FreeTypeUtilsInternal.h>

#include <benchmark/benchmark.h>

#include <cstring>
#include <stdexcept>

namespace Vell::Benchmarks {

namespace {

using Glyph = std::shared_ptr<const FT_BitmapGlyphRec_>;

constexpr Color textColor{20, 90, 200, 255};

Glyph renderLetter(const BenchEngine& engine, char letter, float size) {
    const auto index =
        engine.font.getFace()->getBasicMetrics().getCharMap()[static_cast<unsigned char>(letter)];
    const FontEngine::BitmapGlyphInfo key(engine.faceInfo, FT_RENDER_MODE_LCD, index.glyphIndex, 'x', size,
                                          {1.0F, 1.0F}, 1.0F, 0, true, FontEngine::GlyphTransform::None);
    return engine.factory->getBitmapGlyph(key, engine.font.getFace(), false);
}

/// A letter whose bitmap has this size.
Glyph findLetter(unsigned int width, unsigned int rows) {
    const BenchEngine engine(getEnglish());
    for (float size = static_cast<float>(rows); size <= 2.0F * static_cast<float>(rows); size += 0.5F) {
        for (char letter = 'A'; letter <= 'z'; ++letter) {
            Glyph glyph = renderLetter(engine, letter, size);
            if (glyph->bitmap.width / 3 == width && glyph->bitmap.rows == rows) {
                return glyph;
            }
        }
    }
    throw std::runtime_error("no letter has this size");
}

bool areEqual(const Image& a, const Image& b) {
    return a.rows == b.rows && a.width == b.width &&
           std::memcmp(a.buffer, b.buffer, std::size_t(a.rows) * static_cast<std::size_t>(a.pitch)) == 0;
}

std::shared_ptr<Image> colorByEngine(const FT_BitmapGlyphRec_& glyph, const Color& color) {
    return FontEngine::Internal::getColoredGlyphImage(glyph, color);
}

/// Fails unless `color(glyph)` returns the same pixels as the engine.
template <typename ColorGlyph>
void colorAll(benchmark::State& state, const FT_BitmapGlyphRec_& glyph, const ColorGlyph& color) {
    const std::size_t pixels = std::size_t(glyph.bitmap.width / 3) * glyph.bitmap.rows;
    if (!areEqual(*color(glyph), *colorByEngine(glyph, textColor))) {
        state.SkipWithError("the pixels differ from the engine's");
    }
    for (auto step : state) {
        benchmark::DoNotOptimize(color(glyph)->buffer);
    }
    countItems(state, pixels);
}

using ColorFunction = std::shared_ptr<Image> (*)(const FT_BitmapGlyphRec_&, const Color&);

void colorBy(benchmark::State& state, unsigned int width, unsigned int rows, ColorFunction color) {
    const Glyph glyph = findLetter(width, rows);
    colorAll(state, *glyph, [&](const FT_BitmapGlyphRec_& source) { return color(source, textColor); });
}

/// The tables exist before the measurement begins.
void colorByTables(benchmark::State& state, unsigned int width, unsigned int rows) {
    const Glyph glyph = findLetter(width, rows);
    const ColorTables tables(textColor);
    colorAll(state, *glyph,
             [&](const FT_BitmapGlyphRec_& source) { return colorByColorTables(source, tables); });
}

void registerSize(unsigned int width, unsigned int rows) {
    const std::string group = "colour/" + std::to_string(width) + " x " + std::to_string(rows);
    benchmark::RegisterBenchmark((group + "/engine").c_str(), colorBy, width, rows, colorByEngine);
    benchmark::RegisterBenchmark((group + "/floor: tables of the colour").c_str(), colorByTables, width,
                                 rows);
    benchmark::RegisterBenchmark((group + "/floor: one decode table").c_str(), colorBy, width, rows,
                                 colorByDecodeTable);
    benchmark::RegisterBenchmark((group + "/three powers a pixel").c_str(), colorBy, width, rows,
                                 colorByPowers);
}

const bool areRegistered = [] {
    registerSize(9, 12);
    registerSize(18, 24);
    registerSize(36, 48);
    return true;
}();

} // namespace

} // namespace Vell::Benchmarks
