// Texts that are shaped already, drawn into an image, beside cairo with the same glyphs at the same places.

#include "support/BenchEngine.h"
#include "support/CairoText.h"

#include <TextLayout/TextLayout.h>

#include <memory>
#include <vector>

namespace Vell::Benchmarks {

namespace {

using ShapedLines = std::vector<NNPtr<const TextLayout::ShapedText>>;

ShapedLines shapeLines(const Scene& scene, const BenchEngine& engine) {
    const TextLayout::TextShaper shaper(engine.factory, nullptr);
    ShapedLines lines;
    for (const std::string& line : scene.workload.lines) {
        lines.push_back(shaper.shape(line, engine.extFontInfo));
    }
    return lines;
}

void drawShaped(benchmark::State& state, const Scene& scene) {
    const BenchEngine engine(scene.workload);
    const ShapedLines lines = shapeLines(scene, engine);
    const auto ratio = static_cast<float>(scene.ratio);
    const CairoAdapter::SurfacePtr page = makePage(scene);
    CairoAdapter::CairoPainter painter(page.get(), {ratio, 0.0F, 0.0F, ratio, 0.0F, 0.0F});
    CairoAdapter::CairoGlyphPainter glyphPainter(painter, scene.workload.ink, ratio);
    drawPage(state, scene, viewPixels(page), [&](std::size_t line, double y) {
        painter.pushTransform();
        painter.translate({static_cast<float>(leftMargin), static_cast<float>(y)});
        drawRaster(*lines[line], {painter, glyphPainter, scene.workload.ink, ratio});
        painter.popTransform();
    });
}

/// In device pixels.
std::vector<cairo_glyph_t> placeGlyphs(const TextLayout::ShapedText& text, const Scene& scene, double y) {
    std::vector<cairo_glyph_t> glyphs;
    double pen = leftMargin;
    for (const TextLayout::ShapedRun& run : text.getRuns()) {
        const TextLayout::RunFont& font = text.getFont(run);
        const auto toUnits = [&](int units) {
            return static_cast<double>(font.toUnits(static_cast<float>(units)));
        };
        for (std::uint32_t i = run.glyphBegin; i != run.glyphEnd; ++i) {
            const TextLayout::ShapedGlyph& glyph = text.getGlyphs()[i];
            glyphs.push_back({glyph.index, (pen + toUnits(glyph.xOffset)) * scene.ratio,
                              (y - toUnits(glyph.yOffset)) * scene.ratio});
            pen += toUnits(glyph.advance);
        }
    }
    return glyphs;
}

void showGlyphs(benchmark::State& state, const Scene& scene) {
    const BenchEngine engine(scene.workload);
    std::vector<std::vector<cairo_glyph_t>> lines;
    for (const auto& text : shapeLines(scene, engine)) {
        lines.push_back(placeGlyphs(*text, scene, lineHeight * static_cast<double>(lines.size() + 1)));
    }
    const CairoAdapter::SurfacePtr page = makePage(scene);
    const CairoAdapter::ContextPtr context = makeTextContext(page.get(), scene);
    drawPage(state, scene, viewPixels(page), [&](std::size_t line, double) {
        cairo_show_glyphs(context.get(), lines[line].data(), static_cast<int>(lines[line].size()));
    });
}

const bool areRegistered = [] {
    for (const Scene& scene : getScenes()) {
        const std::string name = "shaped " + scene.getName();
        benchmark::RegisterBenchmark((name + "/engine").c_str(), drawShaped, scene);
        benchmark::RegisterBenchmark((name + "/cairo show_glyphs").c_str(), showGlyphs, scene);
    }
    return true;
}();

} // namespace

} // namespace Vell::Benchmarks
