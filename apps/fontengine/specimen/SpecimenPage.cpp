#include "specimen/SpecimenPage.h"

#include "Errors.h"
#include "fonts/FaceFacts.h"
#include "specimen/DrawnSample.h"
#include "specimen/Html.h"
#include "specimen/SpecimenSections.h"

#include <fmt/format.h>

namespace Vell::Tool {

namespace {

#include "WebFiles.inc"

void checkMetrics(const FontSource& source) {
    const TextFont font = source.makeFont(false, false, 1.0F);
    if (!hasUsableMetrics(*font.font) && !drawsColorText(font)) {
        throw ToolError(fmt::format("the font '{}' has no usable metrics", getAskedName(font)));
    }
}

std::string getName(const FontSource& source) {
    return getFamilyName(*source.makeFont(false, false, 1.0F).font->getFace());
}

std::string describeLimit(const GlyphTable& table) {
    const std::size_t count = countCharacters(table.ranges);
    if (table.entries.size() == count) {
        return "";
    }
    return fmt::format(
        "<p class=\"note\">Only the first {} of {} characters have pictures, to keep this page "
        "small; the search finds all of them.</p>",
        table.entries.size(), count);
}

/// The section with its heading; nothing for a static font.
std::string frameAxes(const std::string& rows) {
    return rows.empty()
               ? ""
               : "<section aria-labelledby=\"axes\">\n<h2 id=\"axes\">Axes</h2>\n" + rows + "</section>\n";
}

} // namespace

std::string makeSpecimenPage(const FontSource& source, const PictureProgress& progress,
                             const std::string& variations) {
    checkMetrics(source);
    const std::string axes = frameAxes(makeAxesSection(source, FontLoaders::parseVariations(variations)));
    const GlyphTable table = makeGlyphTable(source, maxPictureCount, progress);
    return fillTemplate(pageTemplate, {
                                          {"title", escapeHtml(getName(source))},
                                          {"style", std::string(pageStyle)},
                                          {"name", escapeHtml(getName(source))},
                                          {"facts", makeFactsSection(source)},
                                          {"waterfall", makeWaterfallSection(source)},
                                          {"styles", makeStylesSection(source)},
                                          {"axesLink", axes.empty() ? "" : "<a href=\"#axes\">Axes</a>\n"},
                                          {"axes", axes},
                                          {"rendering", makeRenderingSection(source)},
                                          {"offsets", makeOffsetsSection(source)},
                                          {"metrics", makeMetricsSection(source)},
                                          {"fallback", makeFallbackSection(source)},
                                          {"limit", describeLimit(table)},
                                          {"glyphs", printJson(table)},
                                          {"script", std::string(pageScript)},
                                      });
}

} // namespace Vell::Tool
