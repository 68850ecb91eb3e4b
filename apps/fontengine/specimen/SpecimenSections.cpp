#include "specimen/SpecimenSections.h"

#include "fonts/FaceFacts.h"
#include "specimen/DrawnSample.h"
#include "specimen/GlyphTable.h"
#include "specimen/Html.h"
#include "specimen/Picture.h"
#include "specimen/SampleText.h"

#include <fmt/format.h>

namespace Vell::Tool {

namespace {

std::string printFact(const char* name, const std::string& value) {
    return fmt::format("<div><dt>{}</dt><dd>{}</dd></div>\n", name, escapeHtml(value));
}

/// A box in which a wide picture scrolls, also by keyboard.
std::string makeScroller(const std::string& label, const std::string& content) {
    return fmt::format("<div class=\"scroller\" role=\"region\" tabindex=\"0\" aria-label=\"{}\">{}</div>\n",
                       escapeHtml(label), content);
}

struct Style {
    const char* name;
    bool isBold;
    bool isItalic;
};

constexpr Style styles[] = {
    {"Regular", false, false}, {"Bold", true, false}, {"Italic", false, true}, {"Bold italic", true, true}};

std::string drawSampleLine(const FontSource& source, const TextFont& font, const std::string& text,
                           const std::string& alternative) {
    return drawsColorText(font) ? drawColorLine(source, font, text, alternative)
                                : makeImage(drawLine(font, text).picture, "ink", alternative);
}

std::string makeStyle(const FontSource& source, const Style& style) {
    constexpr float size = 28.0F;
    const TextFont font = source.makeFont(style.isBold, style.isItalic, size);
    const std::string text = chooseSample(font);
    const std::string picture = drawSampleLine(source, font, text, text);
    return fmt::format("<h3>{}</h3>\n{}<p class=\"note\">Drawn with {}; synthesised: {}.</p>\n", style.name,
                       makeScroller(std::string(style.name) + " sample", picture),
                       escapeHtml(getFullName(*font.font->getFace())),
                       describeSynthesis(font.font->getFace()->getTransform()));
}

} // namespace

std::string makeFactsSection(const FontSource& source) {
    const TextFont font = source.makeFont(false, false, 1.0F);
    const FontEngine::FontFace& face = *font.font->getFace();
    const FT_FaceRec& record = *face.getHandle();
    return "<dl class=\"facts\">\n" + printFact("Family", getFamilyName(face)) +
           printFact("Style", getStyleName(face)) +
           printFact("Synthesised", describeSynthesis(face.getTransform())) +
           printFact("Glyphs", fmt::format("{}", record.num_glyphs)) +
           printFact(
               "Mapped characters",
               fmt::format("{}", countCharacters(findMappedRanges(face.getBasicMetrics().getCharMap())))) +
           printFact("Units per em", fmt::format("{}", getUnitsPerEm(face))) +
           printFact("Outlines", FT_IS_SCALABLE(&record) ? "yes" : "no") + "</dl>\n";
}

std::string makeWaterfallSection(const FontSource& source) {
    std::string rows;
    for (const int size : {10, 12, 14, 16, 18, 24, 32, 48, 72}) {
        const TextFont font = source.makeFont(false, false, static_cast<float>(size));
        const std::string text = chooseSample(font);
        const std::string alternative = fmt::format("{} at {} pixels", text, size);
        rows += fmt::format("<div class=\"step\"><span class=\"note\">{}</span>{}</div>\n", size,
                            drawSampleLine(source, font, text, alternative));
    }
    return makeScroller("Waterfall of sizes", rows);
}

std::string makeStylesSection(const FontSource& source) {
    std::string html;
    for (const Style& style : styles) {
        html += makeStyle(source, style);
    }
    return html;
}

} // namespace Vell::Tool
