// Opening a face and building its table of characters.

#include "support/BenchEngine.h"

#include <FontLoaders/Public/FreeType.h>

#include <benchmark/benchmark.h>

#include FT_ADVANCES_H

namespace Vell::Benchmarks {

namespace {

void openFace(benchmark::State& state, const Workload& workload) {
    const auto loader = std::make_shared<OneFontLoader>(readFontFile(workload.fontFile));
    const auto factory = FontEngine::FontFactory::create(loader, "Bench");
    const auto description =
        std::make_shared<const FontEngine::Internal::FontFaceInfo>("Bench", false, false);
    for (auto step : state) {
        benchmark::DoNotOptimize(factory->getFace(description));
        factory->flush();
    }
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations()));
}

/// Opening by FreeType alone, and a walk over the charmap with the advance of each code.
void walk(benchmark::State& state, const Workload& workload) {
    const std::shared_ptr<const Bytes> bytes = readFontFile(workload.fontFile);
    for (auto step : state) {
        const FontLoaders::FTLibraryPtr library = FontLoaders::createFreeTypeLibrary();
        FT_Face face = nullptr;
        FT_New_Memory_Face(library.get(), bytes->data(), static_cast<FT_Long>(bytes->size()), 0, &face);
        FT_Select_Charmap(face, FT_ENCODING_UNICODE);
        FT_UInt glyph = 0;
        FT_Fixed sum = 0;
        for (FT_ULong code = FT_Get_First_Char(face, &glyph); glyph != 0;
             code = FT_Get_Next_Char(face, code, &glyph)) {
            FT_Fixed advance = 0;
            FT_Get_Advance(face, glyph, FT_LOAD_NO_SCALE, &advance);
            sum += advance;
        }
        benchmark::DoNotOptimize(sum);
        FT_Done_Face(face);
    }
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations()));
}

BENCHMARK_CAPTURE(openFace, DejaVu, getEnglish())->Name("open DejaVu/engine");
BENCHMARK_CAPTURE(walk, DejaVu, getEnglish())->Name("open DejaVu/FreeType walk");
BENCHMARK_CAPTURE(openFace, CJK, getCjk())->Name("open Noto CJK/engine");
BENCHMARK_CAPTURE(walk, CJK, getCjk())->Name("open Noto CJK/FreeType walk");

} // namespace

} // namespace Vell::Benchmarks
