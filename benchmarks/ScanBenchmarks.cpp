// The look at the glyphs of the auto-hinter that a face's first hinted glyph takes, once a face: the figures
// of opening and of warm glyphs are without it.

#include "support/BenchEngine.h"
#include "support/Items.h"

#include <FontLoaders/Public/CompositeGlyphs.h>
#include <FontLoaders/Public/FreeType.h>

#include <benchmark/benchmark.h>

namespace Vell::Benchmarks {

namespace {

void scanFace(benchmark::State& state, const std::string& fontFile) {
    const std::shared_ptr<const Bytes> bytes = readFontFile(fontFile);
    const FontLoaders::FTLibraryPtr library = FontLoaders::createFreeTypeLibrary();
    for (auto step : state) {
        state.PauseTiming(); // a face remembers the answer
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
