#include "fonts/FaceFacts.h"
#include "specimen/DrawnSample.h"
#include "specimen/Html.h"
#include "specimen/SampleText.h"
#include "specimen/SpecimenSections.h"

#include <fmt/format.h>

#include <algorithm>
#include <vector>

namespace Vell::Tool {

namespace {

constexpr float sampleSize = 20.0F;

const char* getHead(const SampleFaces& faces) {
    if (!faces.isOwnAmongThem) {
        return "fallback: ";
    }
    return faces.names.size() == 1 ? "own face: " : "own face and fallback: ";
}

std::string describe(const SampleFaces& faces) {
    std::string names;
    for (const std::string& name : faces.names) {
        names += (names.empty() ? "" : ", ") + name;
    }
    std::string text = names.empty() ? "" : getHead(faces) + names;
    if (faces.missingCount > 0) {
        text +=
            fmt::format("{}characters that no face has: {}", text.empty() ? "" : "; ", faces.missingCount);
    }
    return text;
}

/// Shows in installed fonts what a font file lacks, because a file has no fallback fonts here.
std::string makeRow(const FontSource& source, const FontSource& installed, const ScriptSample& sample) {
    const TextFont own = source.makeFont(false, false, sampleSize);
    const bool isOwn = coversText(own, sample.text);
    const FontSource& drawing = isOwn || !source.isFile() ? source : installed;
    const DrawnSample drawn =
        drawSample(drawing, drawing.makeFont(false, false, sampleSize), own, sample.text);
    return fmt::format(
        "<div class=\"script\"><h3>{}</h3><div class=\"sample\">{}</div><p class=\"note\">{}</p></div>\n",
        sample.script, drawn.images, escapeHtml(describe(drawn.faces)));
}

} // namespace

void SampleFaces::add(const FontEngine::FontFace& face, const FontEngine::FontFace& own) {
    isOwnAmongThem = isOwnAmongThem || &face == &own;
    const std::string name = getFullName(face);
    if (std::find(names.begin(), names.end(), name) == names.end()) {
        names.push_back(name);
    }
}

std::string makeFallbackSection(const FontSource& source) {
    const FontSource installed(defaultFamily);
    std::string rows;
    for (const ScriptSample& sample : getScriptSamples()) {
        rows += makeRow(source, installed, sample);
    }
    const std::string note =
        areSamplesShaped() ? ""
                           : "<p class=\"note\">One character is one glyph: ligatures, joined forms and "
                             "right-to-left order need a shaper.</p>\n";
    return note + "<div class=\"scripts\">\n" + rows + "</div>\n";
}

} // namespace Vell::Tool
