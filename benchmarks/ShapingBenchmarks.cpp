// Texts of all scripts as glyphs. "first shaping" finds nothing in the cache of words; faces and HarfBuzz's
// plans are there. The cache takes no words, or, "remembering", so few that they are gone before they come
// again. "shaping again" finds all words.

#include "support/Items.h"
#include "support/LayoutLoops.h"
#include "support/PangoText.h"
#include "support/PlainShaping.h"

#include <TextLayout/TextLayout.h>

namespace Vell::Benchmarks {

namespace {

using TextLayout::ShapedText;
using TextLayout::TextShaper;
using TextLayout::TextStyle;

std::vector<NNPtr<const ShapedText>> shapeAll(const TextShaper& shaper, const BenchEngine& engine,
                                              const Workload& workload) {
    std::vector<NNPtr<const ShapedText>> texts;
    for (const std::string& line : workload.lines) {
        texts.push_back(shaper.shape(line, engine.extFontInfo));
    }
    return texts;
}

void shape(benchmark::State& state, const Workload& workload, std::uint64_t maxWordBytes) {
    const BenchEngine engine(workload);
    const TextShaper shaper(engine.factory, maxWordBytes);
    const TextStyle style = engine.extFontInfo;
    shapeAll(shaper, engine, workload);
    for (auto step : state) {
        for (const std::string& line : workload.lines) {
            benchmark::DoNotOptimize(shaper.shape(line, style));
        }
    }
    countItems(state, workload.countCharacters());
}

void shapePlainly(benchmark::State& state, const Workload& workload) {
    const BenchEngine engine(workload);
    const auto texts = shapeAll(TextShaper(engine.factory), engine, workload);
    PlainShaping plain(readFontFile(workload.fontFile), texts);
    std::size_t glyphs = 0;
    for (const auto& text : texts) {
        glyphs += text->getGlyphs().size();
    }
    if (plain.shapeAll() != glyphs) {
        state.SkipWithError("HarfBuzz alone makes other glyphs");
        return;
    }
    for (auto step : state) {
        benchmark::DoNotOptimize(plain.shapeAll());
    }
    countItems(state, workload.countCharacters());
}

void shapeWithPango(benchmark::State& state, const Workload& workload) {
    PangoText pango(workload);
    for (auto step : state) {
        for (const std::string& line : workload.lines) {
            pango.shape(line);
        }
    }
    countItems(state, workload.countCharacters());
}

void layOutUnshaped(benchmark::State& state, const Workload& workload) {
    measureEngine(state, BenchEngine(workload), workload);
    countItems(state, workload.countCharacters());
}

const bool areRegistered = [] {
    constexpr std::uint64_t noWords = 1;
    constexpr std::uint64_t fewWords = 4096;
    for (const Workload* workload : getShapedWorkloads()) {
        const std::string first = "first shaping/" + workload->name;
        const std::string again = "shaping again/" + workload->name;
        benchmark::RegisterBenchmark((first + "/engine").c_str(), shape, *workload, noWords);
        benchmark::RegisterBenchmark((first + "/engine, remembering").c_str(), shape, *workload, fewWords);
        benchmark::RegisterBenchmark((first + "/floor: hb_shape").c_str(), shapePlainly, *workload);
        benchmark::RegisterBenchmark((first + "/Pango").c_str(), shapeWithPango, *workload);
        benchmark::RegisterBenchmark((again + "/engine").c_str(), shape, *workload,
                                     TextShaper::defaultMaxWordBytes);
        benchmark::RegisterBenchmark((again + "/engine, unshaped").c_str(), layOutUnshaped, *workload);
        benchmark::RegisterBenchmark((again + "/Pango").c_str(), shapeWithPango, *workload);
    }
    return true;
}();

} // namespace

} // namespace Vell::Benchmarks
