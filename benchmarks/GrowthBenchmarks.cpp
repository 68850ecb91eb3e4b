// The layout of one text of growing length. An item is a glyph.

#include "support/BenchEngine.h"
#include "support/Items.h"

#include <benchmark/benchmark.h>

namespace Vell::Benchmarks {

namespace {

std::string makeProse(std::size_t bytes) {
    std::string text;
    text.reserve(bytes + 100);
    while (text.size() < bytes) {
        for (const std::string& line : getEnglish().lines) {
            text += line;
            text += ' ';
        }
    }
    text.resize(bytes); // the text is ASCII
    return text;
}

void layOut(benchmark::State& state, std::size_t bytes) {
    const BenchEngine engine(getEnglish());
    const std::string text = makeProse(bytes);
    IdlePainter idle;
    FontEngine::RasterTextPainter painter(idle, idle, false);
    const auto layOutText = [&](boost::string_ref part) {
        benchmark::DoNotOptimize(
            painter.createGlyphRun(part, engine.extFontInfo, engine.font, 1.0F, {1.0F, 1.0F}));
    };
    constexpr std::size_t enoughForAllGlyphs = 100'000;
    layOutText(boost::string_ref(text).substr(0, enoughForAllGlyphs));
    for (auto step : state) {
        layOutText(text);
    }
    countItems(state, bytes);
}

const bool areRegistered = [] {
    constexpr std::size_t kilobyte = 1000;
    for (std::size_t kilobytes = 1; kilobytes <= 10000; kilobytes *= 10) {
        const std::string size =
            kilobytes < 1000 ? std::to_string(kilobytes) + " KB" : std::to_string(kilobytes / 1000) + " MB";
        benchmark::RegisterBenchmark(("growth/" + size + "/engine").c_str(), layOut, kilobytes * kilobyte);
    }
    return true;
}();

} // namespace

} // namespace Vell::Benchmarks
