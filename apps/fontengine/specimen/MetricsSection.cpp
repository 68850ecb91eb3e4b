#include "fonts/FaceFacts.h"
#include "specimen/Html.h"
#include "specimen/Picture.h"
#include "specimen/SampleText.h"
#include "specimen/SpecimenSections.h"

#include <fmt/format.h>

#include <vector>

namespace Vell::Tool {

namespace {

struct MetricLine {
    const char* name;
    float value;       ///< above the baseline
    const char* place; ///< of the name: above or below the line
};

/// In their usual order from top to bottom.
std::vector<MetricLine> listLines(const FontEngine::Font& metrics) {
    std::vector<MetricLine> lines = {{"Ascent", metrics.getAscent(), "above"}};
    if (hasCapHeight(*metrics.getFace())) {
        lines.push_back({"Cap height", metrics.getCapHeight(), "below"});
    }
    lines.push_back({"Strike-out", metrics.getStrikeOutPosition(), "above"});
    lines.push_back({"Baseline", 0.0F, "below"});
    lines.push_back({"Descent", -metrics.getDescent(), "below"});
    return lines;
}

std::string makeLine(const MetricLine& line, float size, const LinePicture& sample) {
    constexpr float whole = 100.0F;
    const float top = (static_cast<float>(sample.baseLine) - line.value) /
                      static_cast<float>(sample.picture.height) * whole;
    return fmt::format("<div class=\"metric {}\" style=\"top:{:.2f}%\"><span>{} {:.3f}</span></div>\n",
                       line.place, top, line.name, line.value / size);
}

} // namespace

std::string makeMetricsSection(const FontSource& source) {
    constexpr float size = 96.0F;
    const TextFont font = source.makeFont(false, false, size);
    const FontEngine::Font& metrics = *font.font;
    if (!hasUsableMetrics(metrics)) {
        return "<p class=\"note\">The engine has no metrics for a font without outlines.</p>\n";
    }
    const std::string text = chooseShortSample(font);
    const LinePicture sample = drawLine(font, text);
    std::string html = "<div class=\"metrics\">\n" + makeImage(sample.picture, "ink", text) + "\n";
    for (const MetricLine& line : listLines(metrics)) {
        html += makeLine(line, size, sample);
    }
    return html + fmt::format("</div>\n<p class=\"note\">In ems above the baseline. Baseline to "
                              "baseline: {:.3f}; leading: {:.3f}.{}</p>\n",
                              metrics.getHeight() / size, metrics.getLeading() / size + 0.0F,
                              hasCapHeight(*metrics.getFace()) ? "" : " The file gives no cap height.");
}

} // namespace Vell::Tool
