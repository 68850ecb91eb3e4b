#include "Commands.h"
#include "FontRuns.h"

#include <fmt/format.h>
#include <fmt/ostream.h>

#include <ostream>

namespace Vell::Tool {

namespace {

/// Control characters would disturb the terminal, ill-formed bytes its decoding.
std::string makePrintable(const CharacterFont& character) {
    constexpr unsigned int lastControl = 0x9F;
    const bool isControl =
        character.codePoint < ' ' || (character.codePoint > '~' && character.codePoint <= lastControl);
    if (isControl) {
        return "";
    }
    return character.codePoint == replacementCharacter ? "\xEF\xBF\xBD" : std::string(character.bytes);
}

const char* describeSource(const TextFont& wanted, const CharacterFont& character) {
    if (!hasGlyph(character.font, character.codePoint)) {
        return "missing";
    }
    return character.font.font->getFace() == wanted.font->getFace() ? "own" : "fallback";
}

void printCharacter(const TextFont& wanted, const CharacterFont& character, std::ostream& out) {
    const FontEngine::FontFace& face = *character.font.font->getFace();
    fmt::print(out, "U+{:04X}\t{}\t{} {}\t{}\n", character.codePoint, makePrintable(character),
               getFamilyName(face), getStyleName(face), describeSource(wanted, character));
}

} // namespace

void printFallback(const FallbackOptions& options, std::istream& standardInput, std::ostream& out) {
    const std::string text = readText(options.source, standardInput);
    const FactoryPtr factory = FontEngine::FontFactory::create(defaultFamily);
    const TextFont font = makeTextFont(factory, options.font);
    for (const std::string& line : splitLines(text)) {
        for (const CharacterFont& character : findCharacterFonts(font, line)) {
            if (character.codePoint != '\t') { // never drawn: it moves the pen
                printCharacter(font, character, out);
            }
        }
    }
}

} // namespace Vell::Tool
