// Opening a face, building its table of characters, and closing it.

#include "support/BenchEngine.h"
#include "support/Items.h"

#include <FontLoaders/Public/FreeType.h>

#include <benchmark/benchmark.h>

#include FT_ADVANCES_H

#include <unordered_map>

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
    countItems(state, 1);
}

/// Opens a face by FreeType alone and walks over its charmap. `insert(table, code, glyph, advance in ems)`
/// adds each code to a new `Table`.
template <typename Table, typename Insert>
void walk(benchmark::State& state, const Workload& workload, const Insert& insert) {
    const FontLoaders::FontBytes bytes = readFontFile(workload.fontFile);
    for (auto step : state) {
        const FontLoaders::FTLibraryPtr library = FontLoaders::createFreeTypeLibrary();
        FT_Face face = nullptr;
        FT_New_Memory_Face(library.get(), bytes->data(), static_cast<FT_Long>(bytes->size()), 0, &face);
        FT_Select_Charmap(face, FT_ENCODING_UNICODE);
        Table table{};
        FT_UInt glyph = 0;
        for (FT_ULong code = FT_Get_First_Char(face, &glyph); glyph != 0;
             code = FT_Get_Next_Char(face, code, &glyph)) {
            FT_Fixed advance = 0;
            FT_Get_Advance(face, glyph, FT_LOAD_NO_SCALE, &advance);
            insert(table, static_cast<unsigned int>(code), static_cast<unsigned short>(glyph),
                   static_cast<float>(advance) / static_cast<float>(face->units_per_EM));
        }
        benchmark::DoNotOptimize(&table);
        benchmark::ClobberMemory();
        FT_Done_Face(face);
    }
    countItems(state, 1);
}

using Entry = Gfx::CharMap::GlyphIndexWithAdvance;

struct PagedTable {
    Gfx::CharMap map{Entry(0, 0.0F)};
};

void walkOnly(benchmark::State& state, const Workload& workload) {
    walk<float>(state, workload,
                [](float& sum, unsigned int, unsigned short, float advance) { sum += advance; });
}

void walkIntoHashMap(benchmark::State& state, const Workload& workload) {
    walk<std::unordered_map<unsigned int, Entry>>(
        state, workload, [](auto& table, unsigned int code, unsigned short glyph, float advance) {
            table.emplace(code, Entry(glyph, advance));
        });
}

void walkIntoPages(benchmark::State& state, const Workload& workload) {
    walk<PagedTable>(state, workload,
                     [](PagedTable& table, unsigned int code, unsigned short glyph, float advance) {
                         table.map.insert(code, Entry(glyph, advance), true);
                     });
}

void registerFont(const std::string& name, const Workload& workload) {
    const std::string group = "open/" + name;
    benchmark::RegisterBenchmark((group + "/engine").c_str(), openFace, workload);
    benchmark::RegisterBenchmark((group + "/floor: walk").c_str(), walkOnly, workload);
    benchmark::RegisterBenchmark((group + "/floor: walk into pages").c_str(), walkIntoPages, workload);
    benchmark::RegisterBenchmark((group + "/walk into unordered_map").c_str(), walkIntoHashMap, workload);
}

const bool areRegistered = [] {
    registerFont("DejaVu", getEnglish());
    registerFont("Noto CJK", getCjk());
    return true;
}();

} // namespace

} // namespace Vell::Benchmarks
