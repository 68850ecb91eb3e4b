// Instances of a variable font: how long one takes to make, and text drawn with one beside the same text in a
// font that is static from the start.

#include "support/BenchEngine.h"
#include "support/Items.h"
#include "support/LayoutLoops.h"
#include "support/Scene.h"

#include <memory>
#include <string>

namespace Vell::Benchmarks {

namespace {

constexpr const char* fontFile = "/usr/share/fonts/truetype/inter-vf/Inter.var.ttf";
constexpr const char* settings = "wght=650,slnt=-5";
constexpr const char* variedFamily = "Inter:wght=650,slnt=-5";

/// Serves one font by its name only, so that names with settings are left to the loader above.
class InterLoader : public FontLoaders::FontLoader {
public:
    FontLoaders::FontBytes loadFont(const NNPtr<const Gfx::FontFaceInfo>& faceInfo) const override {
        const bool isServed = faceInfo->getName() == "Inter" && !faceInfo->isBold() && !faceInfo->isItalic();
        return isServed ? _font : nullptr;
    }
    FontLoaders::FontBytes loadDefaultFont(bool, bool) const override { return nullptr; }
    std::string getFamilyNameForRange(unsigned int) const override { return ""; }

private:
    FontLoaders::FontBytes _font = readFontFile(fontFile);
};

FontLoaders::FontBytes makeInstance() {
    return FontLoaders::makeFontInstance(readFontFile(fontFile), FontLoaders::parseVariations(settings));
}

BenchEngine makeVariedEngine() {
    return {FontLoaders::createVariationLoader(makeNNPtr<InterLoader>()), variedFamily};
}

/// English prose in Inter.
const Workload& getText() {
    static const Workload text = [] {
        Workload english = getEnglish();
        english.fontFile = fontFile;
        english.fontFamily = "Inter";
        return english;
    }();
    return text;
}

void instance(benchmark::State& state) {
    const auto font = readFontFile(fontFile);
    const auto values = FontLoaders::parseVariations(settings);
    for (auto step : state) {
        benchmark::DoNotOptimize(FontLoaders::makeFontInstance(font, values));
    }
    countItems(state, 1);
}

void instanceAgain(benchmark::State& state) {
    const auto loader = FontLoaders::createVariationLoader(makeNNPtr<InterLoader>());
    const auto description = makeNNPtr<const FontEngine::Internal::FontFaceInfo>(variedFamily, false, false);
    const FontLoaders::FontBytes first = loader->loadFont(description);
    for (auto step : state) {
        if (loader->loadFont(description) != first) {
            state.SkipWithError("the instance was made again");
            break;
        }
    }
    countItems(state, 1);
}

void layOut(benchmark::State& state, const BenchEngine& engine) {
    measureEngine(state, engine, getText());
    countItems(state, getText().countCharacters());
}

void draw(benchmark::State& state, const BenchEngine& engine) {
    const Scene scene{getText(), 1};
    const CairoAdapter::SurfacePtr page = makePage(scene);
    CairoAdapter::CairoPainter painter(page.get());
    CairoAdapter::CairoGlyphPainter glyphPainter(painter, scene.workload.ink);
    FontEngine::RasterTextPainter text(painter, glyphPainter, false);
    drawPage(state, scene, viewPixels(page), [&](std::size_t line, double y) {
        painter.pushTransform();
        painter.translate({static_cast<float>(leftMargin), static_cast<float>(y)});
        text.drawText(scene.workload.lines[line], engine.extFontInfo, engine.font, scene.workload.ink, 1.0F);
        painter.popTransform();
    });
}

/// From the font file to the width of a line, with nothing cached.
template <class MakeEngine>
void startCold(benchmark::State& state, const MakeEngine& makeEngine) {
    const std::string& line = getText().lines.front();
    for (auto step : state) {
        const BenchEngine engine = makeEngine();
        benchmark::DoNotOptimize(engine.font.getTextWidth(line, engine.extFontInfo));
    }
    countItems(state, 1);
}

const bool areRegistered = [] {
    benchmark::RegisterBenchmark("instance/Inter/engine", instance);
    benchmark::RegisterBenchmark("instance/Inter/engine, again", instanceAgain);
    benchmark::RegisterBenchmark("varied layout/Inter/engine",
                                 [](auto& state) { layOut(state, makeVariedEngine()); });
    benchmark::RegisterBenchmark("varied layout/Inter/engine, static font",
                                 [](auto& state) { layOut(state, BenchEngine(makeInstance())); });
    benchmark::RegisterBenchmark("varied draw/Inter/engine",
                                 [](auto& state) { draw(state, makeVariedEngine()); });
    benchmark::RegisterBenchmark("varied draw/Inter/engine, static font",
                                 [](auto& state) { draw(state, BenchEngine(makeInstance())); });
    benchmark::RegisterBenchmark("varied cold line/Inter/engine",
                                 [](auto& state) { startCold(state, makeVariedEngine); });
    benchmark::RegisterBenchmark("varied cold line/Inter/engine, static font", [](auto& state) {
        const FontLoaders::FontBytes bytes = makeInstance();
        startCold(state, [&] { return BenchEngine(bytes); });
    });
    return true;
}();

} // namespace

} // namespace Vell::Benchmarks
