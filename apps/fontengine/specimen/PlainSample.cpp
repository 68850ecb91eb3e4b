// Samples of scripts without TextLayout.

#include "drawing/TextLines.h"
#include "fonts/FontRuns.h"
#include "specimen/DrawnSample.h"
#include "specimen/Picture.h"

namespace Vell::Tool {

namespace {

SampleFaces findFaces(const TextFont& font, const TextFont& own, const char* text) {
    SampleFaces faces;
    for (const CharacterFont& character : findCharacterFonts(font, text)) {
        if (character.codePoint == ' ') {
            continue;
        }
        if (hasGlyph(character.font, character.codePoint)) {
            faces.add(*character.font.font->getFace(), *own.font->getFace());
        } else {
            ++faces.missingCount;
        }
    }
    return faces;
}

} // namespace

DrawnSample drawSample(const FontSource& /*source*/, const TextFont& font, const TextFont& own,
                       const char* text) {
    constexpr float room = 12.0F; // of a picture beyond the advance of its text
    DrawnSample sample{"", findFaces(font, own, text)};
    for (const std::string& line : wrapText(font, text, sampleColumnWidth - room)) {
        sample.images += makeImage(drawLine(font, line).picture, "ink", line);
    }
    return sample;
}

bool areSamplesShaped() {
    return false;
}

bool drawsColorText(const TextFont& /*font*/) {
    return false;
}

std::string drawColorLine(const FontSource& /*source*/, const TextFont& font, const std::string& text,
                          const std::string& alternative) {
    return makeImage(drawLine(font, text).picture, "ink", alternative);
}

} // namespace Vell::Tool
