// The scan that precedes a face's first hinted glyph, once per face: it examines the glyphs that the
// auto-hinter may load. The figures for opening a face and for warm glyphs do not include it.

#include "support/BenchEngine.h"
#include "support/Items.h"

#include <FontLoaders/Public/CompositeGlyphs.h>
#include <FontLoaders/Public/FreeType.h>

#include <benchmark/benchmark.h>

namespace Vell::Benchmarks {

namespace {

void scanFace(benchmark::State& state, const std::string& fontFile) {
    const FontLoaders::FontBytes bytes = readFontFile(fontFile);
    const FontLoaders::FTLibraryPtr library = FontLoaders::createFreeTypeLibrary();
    for (auto step : state) {
        state.PauseTiming(); // the scan runs once per face
        FontLoaders::FTFacePtr face = FontLoaders::createFontFace(library, bytes);
        state.ResumeTiming();
        if (!FontLoaders::hasBoundedGlyphs(face.get())) {
            state.SkipWithError("the scan stopped early");
            break;
        }
        state.PauseTiming();
        face.reset();
        state.ResumeTiming();
    }
    countItems(state, 1);
}

const bool areRegistered = [] {
    const std::string folder = "/usr/share/fonts/truetype/";
    benchmark::RegisterBenchmark("scan/DejaVu/engine", scanFace, folder + "dejavu/DejaVuSans.ttf");
    benchmark::RegisterBenchmark("scan/Noto SignWriting/engine", scanFace,
                                 folder + "noto/NotoSansSignWriting-Regular.ttf");
    return true;
}();

} // namespace

} // namespace Vell::Benchmarks
