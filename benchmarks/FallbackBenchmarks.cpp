// A text whose font lacks every third character.

#include "support/Items.h"
#include "support/LayoutLoops.h"

namespace Vell::Benchmarks {

namespace {

/// Splits UTF-8 into its characters.
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

/// The English text with every third character replaced by one of the Chinese text.
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
    measureEngine(state, BenchEngine(workload, getCjk().fontFile), workload);
    countItems(state, workload.countCharacters());
}

void layOutWithPango(benchmark::State& state, const Workload& workload) {
    measurePango(state, workload);
    countItems(state, workload.countCharacters());
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
