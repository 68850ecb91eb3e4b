#include "commands/Commands.h"
#include "commands/CoverageRoad.h"
#include "drawing/TextLines.h"
#include "fonts/FaceFacts.h"
#include "fonts/FontOrigin.h"
#include "fonts/FontRuns.h"
#include "fonts/FontSource.h"
#include "output/Printing.h"

#include <fmt/format.h>
#include <fmt/ostream.h>

#include <algorithm>
#include <ostream>
#include <vector>

namespace Vell::Tool {

namespace {

const char* describeSource(const TextFont& wanted, const CharacterFont& character) {
    if (!hasGlyph(character.font, character.codePoint)) {
        return "missing";
    }
    return character.font.font->getFace() == wanted.font->getFace() ? "own" : "fallback";
}

std::string getFaceName(const TextFont& font) {
    return getFullName(*font.font->getFace());
}

void printCharacter(const TextFont& wanted, const CharacterFont& character, std::ostream& out) {
    fmt::print(out, "{}\t{}\t{}\t{}\n", formatCodePoint(character.codePoint),
               makePrintable(character.codePoint, character.bytes), getFaceName(character.font),
               describeSource(wanted, character));
}

/// Collects what `--why` explains after the characters.
class Seen {
public:
    void add(const CharacterFont& character) {
        _codePoints.push_back(character.codePoint);
        const bool isKnown = std::any_of(_fonts.begin(), _fonts.end(), [&](const TextFont& font) {
            return font.font->getFace() == character.font.font->getFace();
        });
        if (!isKnown) {
            _fonts.push_back(character.font);
        }
    }

    void explain(const RecordingFontLoader& loader, std::ostream& out) const {
        out << '\n';
        for (const TextFont& font : _fonts) {
            printProperty(out, "face", getFaceName(font));
            printOrigin(*font.font, loader, out);
        }
        printQuestions(loader, _codePoints, out);
    }

private:
    std::vector<unsigned int> _codePoints;
    std::vector<TextFont> _fonts; // one for each face
};

} // namespace

void printFallback(const FallbackOptions& options, std::istream& standardInput, std::ostream& out) {
    const std::string text = readText(options.source, standardInput);
    const FontSource source(options.font);
    const TextFont font = source.makeFont(options.font);
    Seen seen;
    for (const std::string& line : splitLines(text)) {
        for (const CharacterFont& character : findCharacterFonts(font, line)) {
            if (character.codePoint != '\t') { // a tab moves the pen and is never drawn
                printCharacter(font, character, out);
                seen.add(character);
            }
        }
    }
    if (options.explains) {
        seen.explain(*source.getLoader(), out);
        printCoverage(options, text, out);
    }
}

} // namespace Vell::Tool
