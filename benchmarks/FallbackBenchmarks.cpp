// A text every third character of which its font lacks.

#include "support/BenchEngine.h"
#include "support/PangoText.h"

#include <benchmark/benchmark.h>

namespace Vell::Benchmarks {

namespace {

/// The bytes of each character.
std::vector<std::string> split(const std::string& text) {
    constexpr auto isContinuation = [](char byte) {
        return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
    };
    std::vector<std::string> characters;
    for (const char byte : text) {
        if (!isContinuation(byte)) {
            characters.emplace_back();
        }
        characters.back() += byte;
    }
    return characters;
}

/// The English text, every third character of it replaced by one of the Chinese text.
Workload makeGappedText() {
    Workload text = getEnglish();
    const std::vector<std::string> chinese = split(getCjk().lines.front());
    std::size_t next = 0;
    for (std::string& line : text.lines) {
        std::string gapped;
        for (std::size_t i = 0; i < line.size(); ++i) {
            gapped += i % 3 == 2 ? chinese[next++ % chinese.size()] : std::string(1, line[i]);
        }
        line = gapped;
    }
    return text;
}

void layOut(benchmark::State& state, const Workload& workload) {
    const BenchEngine engine(workload.fontFile, getCjk().fontFile);
    IdlePainter idle;
    FontEngine::RasterTextPainter painter(idle, idle, false);
    const auto layOutAll = [&] {
        for (const std::string& line : workload.lines) {
            benchmark::DoNotOptimize(
                painter.createGlyphRun(line, engine.extFontInfo, engine.font, 1.0F, {1.0F, 1.0F}));
        }
    };
    layOutAll();
    for (auto step : state) {
        layOutAll();
    }
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations() * workload.countCharacters()));
}

void layOutWithPango(benchmark::State& state, const Workload& workload) {
    PangoText pango(workload);
    for (auto step : state) {
        for (const std::string& line : workload.lines) {
            pango.layOut(line);
        }
    }
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations() * workload.countCharacters()));
}

const bool areRegistered = [] {
    const Workload gapped = makeGappedText();
    benchmark::RegisterBenchmark("fallback/every third/engine", layOut, gapped);
    benchmark::RegisterBenchmark("fallback/every third/engine, nothing missing", layOut, getEnglish());
    benchmark::RegisterBenchmark("fallback/every third/Pango", layOutWithPango, gapped);
    return true;
}();

} // namespace

} // namespace Vell::Benchmarks
