// The first use of a glyph. The time to release glyphs is measured for neither contestant.

#include "support/GlyphSet.h"
#include "support/Items.h"

#include <benchmark/benchmark.h>

namespace Vell::Benchmarks {

namespace {

void countGlyphs(benchmark::State& state) {
    countItems(state, GlyphSet::glyphCount);
}

void skipUnlessAgreed(benchmark::State& state, const GlyphSet& glyphs) {
    if (!glyphs.agrees()) {
        state.SkipWithError("FreeType renders different pixels");
    }
}

/// Renders glyphs into an empty cache.
void renderByEngine(benchmark::State& state, const HintedFont& font, unsigned int sizeCount) {
    const GlyphSet glyphs(font, sizeCount);
    skipUnlessAgreed(state, glyphs);
    for (auto step : state) {
        for (std::size_t i = 0; i < GlyphSet::glyphCount; ++i) {
            benchmark::DoNotOptimize(glyphs.getFromEngine(i));
        }
        state.PauseTiming();
        glyphs.getEngine().factory->reset(0, 0); // the font keeps its face
        state.ResumeTiming();
    }
    countGlyphs(state);
}

/// Makes FreeType's three calls, on a face that keeps its size or is resized for each glyph.
void renderByFreeType(benchmark::State& state, const HintedFont& font, unsigned int sizeCount) {
    const GlyphSet glyphs(font, sizeCount);
    skipUnlessAgreed(state, glyphs);
    glyphs.sizeFace(0);
    std::array<FT_Glyph, GlyphSet::glyphCount> rendered{};
    for (auto step : state) {
        for (std::size_t i = 0; i < GlyphSet::glyphCount; ++i) {
            if (sizeCount > 1) {
                glyphs.sizeFace(i);
            }
            rendered[i] = glyphs.renderByFreeType(i);
        }
        state.PauseTiming();
        for (const FT_Glyph glyph : rendered) {
            FT_Done_Glyph(glyph);
        }
        state.ResumeTiming();
    }
    countGlyphs(state);
}

void registerFont(const HintedFont& font) {
    const std::string oneSize = "cold glyph/" + font.name;
    benchmark::RegisterBenchmark((oneSize + "/engine").c_str(), renderByEngine, font, 1);
    benchmark::RegisterBenchmark((oneSize + "/floor: FreeType").c_str(), renderByFreeType, font, 1);
    const std::string twoSizes = "cold glyph, two sizes in turn/" + font.name;
    benchmark::RegisterBenchmark((twoSizes + "/engine").c_str(), renderByEngine, font, 2);
    benchmark::RegisterBenchmark((twoSizes + "/floor: FreeType").c_str(), renderByFreeType, font, 2);
}

const bool areRegistered = [] {
    registerFont(getBytecodeFont());
    registerFont(getAutoHintedFont());
    registerFont(getUnhintedFont());
    return true;
}();

} // namespace

} // namespace Vell::Benchmarks
