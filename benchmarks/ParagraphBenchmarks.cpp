// Breaking a text that is shaped already into lines of another width.

#include "support/BenchEngine.h"
#include "support/Items.h"

#include <TextLayout/TextLayout.h>

#include <benchmark/benchmark.h>
#include <pango/pangocairo.h>

#include <memory>
#include <string>

namespace Vell::Benchmarks {

namespace {

constexpr std::size_t textBytes = 1000000;
constexpr int widths[] = {600, 500};

/// The lines of the workload, over and over.
std::string makeLongText(const Workload& workload) {
    std::string text;
    for (std::size_t line = 0; text.size() < textBytes; ++line) {
        text += workload.lines[line % workload.lines.size()];
        text += line % 10 == 9 ? '\n' : ' ';
    }
    return text;
}

void breakAnew(benchmark::State& state, const Workload& workload) {
    const BenchEngine engine(workload);
    const TextLayout::TextShaper shaper(engine.factory, nullptr);
    const auto text = shaper.shape(makeLongText(workload), TextLayout::TextStyle(engine.extFontInfo));
    const TextLayout::Paragraph measured(text);
    std::size_t round = 0;
    for (auto _ : state) {
        const auto width = static_cast<float>(widths[round++ % std::size(widths)]);
        const TextLayout::Paragraph paragraph(text, TextLayout::ParagraphStyle().setWidth(width));
        benchmark::DoNotOptimize(paragraph.getLines().size());
    }
    countItems(state, textBytes);
}

struct Unref {
    void operator()(gpointer object) const { g_object_unref(object); }
};

void breakAnewWithPango(benchmark::State& state, const Workload& workload) {
    const std::unique_ptr<PangoContext, Unref> context(
        pango_font_map_create_context(pango_cairo_font_map_get_default()));
    const std::unique_ptr<PangoLayout, Unref> layout(pango_layout_new(context.get()));
    PangoFontDescription* const font = pango_font_description_from_string(workload.fontFamily.c_str());
    pango_font_description_set_absolute_size(font, static_cast<double>(workload.pixelSize) * PANGO_SCALE);
    pango_layout_set_font_description(layout.get(), font);
    pango_font_description_free(font);
    const std::string text = makeLongText(workload);
    pango_layout_set_text(layout.get(), text.data(), static_cast<int>(text.size()));
    pango_layout_get_line_count(layout.get());
    std::size_t round = 0;
    for (auto _ : state) {
        pango_layout_set_width(layout.get(), widths[round++ % std::size(widths)] * PANGO_SCALE);
        benchmark::DoNotOptimize(pango_layout_get_line_count(layout.get()));
    }
    countItems(state, textBytes);
}

const bool areRegistered = [] {
    for (const Workload& workload : {getEnglish(), getCjk()}) {
        const std::string name = "break anew/1 MB " + workload.name;
        benchmark::RegisterBenchmark((name + "/engine").c_str(), breakAnew, workload)
            ->Unit(benchmark::kMillisecond);
        benchmark::RegisterBenchmark((name + "/Pango").c_str(), breakAnewWithPango, workload)
            ->Unit(benchmark::kMillisecond);
    }
    return true;
}();

} // namespace

} // namespace Vell::Benchmarks
