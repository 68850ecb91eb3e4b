#include "demo/WeightSection.h"

#include <fmt/format.h>

#include <string>
#include <utility>
#include <vector>

namespace Vell::Tool {

namespace {

constexpr const char* variableFamily = "Inter";
constexpr int firstWeight = 100;
constexpr int lastWeight = 900;
constexpr int weightStep = 100;
constexpr int stepCount = (lastWeight - firstWeight) / weightStep + 1;

FontRequest makeRequest(int weight, float size) {
    return {fmt::format("{}:wght={}", variableFamily, weight), false, false, size, 0.0F};
}

bool hasVariableFont(const DemoPageBuilder& page) {
    try {
        return isInstalled(page.getFactory(), makeRequest(firstWeight, 1.0F));
    } catch (const FontLoaders::FontLoaderException&) { // a static font has the name
        return false;
    }
}

/// A sample in one weight, above its number.
struct WeightSample {
    TextFont font;
    std::string weight;
};

DemoDrawing drawWeights(std::vector<WeightSample> samples, const TextFont& numberFont) {
    constexpr float sampleHeight = 28.0F;
    constexpr float numberHeight = 16.0F;
    constexpr float descent = 5.0F;
    const float width = DemoPageBuilder::getColumnWidth();
    const auto draw = [=, samples = std::move(samples)](CairoAdapter::CairoPainter& painter,
                                                        const TextPaint& paint) {
        painter.pushTransform();
        for (const WeightSample& sample : samples) {
            painter.translate({0.0F, sampleHeight - descent});
            paintText(painter, sample.font, "Rag", paint);
            painter.translate({0.0F, numberHeight});
            paintText(painter, numberFont, sample.weight, paint);
            painter.translate({width / stepCount, descent - sampleHeight - numberHeight});
        }
        painter.popTransform();
    };
    return {width, sampleHeight + numberHeight, draw};
}

} // namespace

void addWeightSection(DemoPageBuilder& page) {
    constexpr float size = 21.0F;
    constexpr float numberSize = 10.0F;
    if (!hasVariableFont(page)) {
        return;
    }
    std::vector<WeightSample> samples;
    for (int weight = firstWeight; weight <= lastWeight; weight += weightStep) {
        samples.push_back({page.makeFont(makeRequest(weight, size)), fmt::format("{}", weight)});
    }
    page.addSection(fmt::format("{}, a variable font: its weight in nine steps", variableFamily));
    page.addDrawing(drawWeights(std::move(samples), page.makeFont({"", false, false, numberSize, 0.0F})));
}

} // namespace Vell::Tool
