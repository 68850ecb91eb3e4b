// A glyph cache with a limit that holds all glyphs, and with one that does not. Glyphs are requested in turn,
// so that with the smaller limit each is evicted before its next turn.

#include "support/GlyphSet.h"
#include "support/Items.h"

#include <benchmark/benchmark.h>

namespace Vell::Benchmarks {

namespace {

unsigned long weighAll(const GlyphSet& glyphs) {
    constexpr unsigned long recordBytes = 48; // what the cache charges for a glyph besides its pixels
    unsigned long bytes = 0;
    for (std::size_t i = 0; i < GlyphSet::glyphCount; ++i) {
        const FT_Bitmap& bitmap = glyphs.getFromEngine(i)->bitmap;
        bytes += static_cast<unsigned long>(bitmap.pitch) * bitmap.rows + recordBytes;
    }
    return bytes;
}

void requestAll(const GlyphSet& glyphs) {
    for (std::size_t i = 0; i < GlyphSet::glyphCount; ++i) {
        benchmark::DoNotOptimize(glyphs.getFromEngine(i));
    }
}

/// Whether the cache still holds the first glyph after all of them were requested.
bool keepsGlyphs(const GlyphSet& glyphs) {
    const std::weak_ptr<const FT_BitmapGlyphRec_> first = glyphs.getFromEngine(0);
    requestAll(glyphs);
    return !first.expired();
}

/// The limit is `share` of the bytes of all glyphs.
void requestGlyphs(benchmark::State& state, double share) {
    const GlyphSet glyphs(getBytecodeFont(), 1);
    const auto limit = static_cast<unsigned long>(static_cast<double>(weighAll(glyphs)) * share);
    glyphs.getEngine().factory->reset(0, limit);
    if (keepsGlyphs(glyphs) != (share >= 1.0)) {
        state.SkipWithError("the limit does not have the intended effect");
    }
    for (auto step : state) {
        requestAll(glyphs);
    }
    countItems(state, GlyphSet::glyphCount);
}

/// Thrashing releases one glyph for each glyph that it makes. So does its floor.
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
    benchmark::RegisterBenchmark("byte budget/fits/engine", requestGlyphs, 1.0);
    benchmark::RegisterBenchmark("byte budget/thrashes/engine", requestGlyphs, 0.5);
    benchmark::RegisterBenchmark("byte budget/thrashes/floor: FreeType", renderAndRelease);
    return true;
}();

} // namespace

} // namespace Vell::Benchmarks
