// A glyph cache with a limit that its glyphs fit into, and with one that they do not: glyphs are asked for in
// turn, so that each has gone when its turn comes again.

#include "support/GlyphSet.h"
#include "support/Items.h"

#include <benchmark/benchmark.h>

namespace Vell::Benchmarks {

namespace {

unsigned long weighAll(const GlyphSet& glyphs) {
    constexpr unsigned long recordBytes = 48; // as the cache counts
    unsigned long bytes = 0;
    for (std::size_t i = 0; i < GlyphSet::glyphCount; ++i) {
        const FT_Bitmap& bitmap = glyphs.getFromEngine(i)->bitmap;
        bytes += static_cast<unsigned long>(bitmap.pitch) * bitmap.rows + recordBytes;
    }
    return bytes;
}

void askForAll(const GlyphSet& glyphs) {
    for (std::size_t i = 0; i < GlyphSet::glyphCount; ++i) {
        benchmark::DoNotOptimize(glyphs.getFromEngine(i));
    }
}

/// Whether the first glyph is still there when all have been asked for.
bool keepsGlyphs(const GlyphSet& glyphs) {
    const std::weak_ptr<const FT_BitmapGlyphRec_> first = glyphs.getFromEngine(0);
    askForAll(glyphs);
    return !first.expired();
}

/// `partOfAll` of the bytes of all glyphs are allowed.
void ask(benchmark::State& state, double partOfAll) {
    const GlyphSet glyphs(getBytecodeFont(), 1);
    const auto limit = static_cast<unsigned long>(static_cast<double>(weighAll(glyphs)) * partOfAll);
    glyphs.getEngine().factory->reset(0, limit);
    if (keepsGlyphs(glyphs) != (partOfAll >= 1.0)) {
        state.SkipWithError("the limit does not work as meant");
    }
    for (auto step : state) {
        askForAll(glyphs);
    }
    countItems(state, GlyphSet::glyphCount);
}

/// Thrashing releases a glyph for each that it makes: so does its floor.
void renderAndRelease(benchmark::State& state) {
    const GlyphSet glyphs(getBytecodeFont(), 1);
    for (auto step : state) {
        for (std::size_t i = 0; i < GlyphSet::glyphCount; ++i) {
            FT_Done_Glyph(glyphs.renderByFreeType(i));
        }
    }
    countItems(state, GlyphSet::glyphCount);
}

const bool areRegistered = [] {
    benchmark::RegisterBenchmark("byte budget/fits/engine", ask, 1.0);
    benchmark::RegisterBenchmark("byte budget/thrashes/engine", ask, 0.5);
    benchmark::RegisterBenchmark("byte budget/thrashes/floor: FreeType", renderAndRelease);
    return true;
}();

} // namespace

} // namespace Vell::Benchmarks
