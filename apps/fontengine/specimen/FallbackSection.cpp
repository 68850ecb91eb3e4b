#include "drawing/TextLines.h"
#include "fonts/FaceFacts.h"
#include "fonts/FontRuns.h"
#include "specimen/Html.h"
#include "specimen/Picture.h"
#include "specimen/SampleText.h"
#include "specimen/SpecimenSections.h"

#include <fmt/format.h>

#include <algorithm>
#include <vector>

namespace Vell::Tool {

namespace {

constexpr float sampleSize = 20.0F;

/// The faces that draw a sample, in the order of their first characters.
struct Faces {
    std::vector<std::string> names;
    bool isOwnAmongThem = false;
    std::size_t missingCount = 0;
};

Faces findFaces(const TextFont& own, const TextFont& font, const char* text) {
    Faces faces;
    for (const CharacterFont& character : findCharacterFonts(font, text)) {
        if (character.codePoint == ' ') {
            continue;
        }
        if (!hasGlyph(character.font, character.codePoint)) {
            ++faces.missingCount;
            continue;
        }
        const FontEngine::FontFace& face = *character.font.font->getFace();
        faces.isOwnAmongThem = faces.isOwnAmongThem || &face == &*own.font->getFace();
        const std::string name = getFullName(face);
        if (std::find(faces.names.begin(), faces.names.end(), name) == faces.names.end()) {
            faces.names.push_back(name);
        }
    }
    return faces;
}

const char* getHead(const Faces& faces) {
    if (!faces.isOwnAmongThem) {
        return "fallback: ";
    }
    return faces.names.size() == 1 ? "own face: " : "own face and fallback: ";
}

std::string describe(const Faces& faces) {
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

/// Breaks the sample to fit the narrowest column, on a phone of 320 pixels, so that no browser shrinks it.
std::string drawSample(const TextFont& font, const char* text) {
    constexpr float columnWidth = 288.0F;
    constexpr float room = 12.0F; // of a picture beyond the advance of its text
    std::string html;
    for (const std::string& line : wrapText(font, text, columnWidth - room)) {
        html += makeImage(drawLine(font, line).picture, "ink", line);
    }
    return html;
}

/// Shows in installed fonts what a font file lacks, because a file has no fallback fonts here.
std::string makeRow(const FontSource& source, const FontSource& installed, const ScriptSample& sample) {
    const TextFont own = source.makeFont(false, false, sampleSize);
    const bool isOwn = coversText(own, sample.text);
    const TextFont font = isOwn || !source.isFile() ? own : installed.makeFont(false, false, sampleSize);
    return fmt::format(
        "<div class=\"script\"><h3>{}</h3><div class=\"sample\">{}</div><p class=\"note\">{}</p></div>\n",
        sample.script, drawSample(font, sample.text),
        escapeHtml(describe(findFaces(own, font, sample.text))));
}

} // namespace

std::string makeFallbackSection(const FontSource& source) {
    const FontSource installed(defaultFamily);
    std::string rows;
    for (const ScriptSample& sample : getScriptSamples()) {
        rows += makeRow(source, installed, sample);
    }
    return "<div class=\"scripts\">\n" + rows + "</div>\n";
}

} // namespace Vell::Tool
