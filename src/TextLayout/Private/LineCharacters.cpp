#include <TextLayout/Private/LineCharacters.h>

#include <TextLayout/Private/CharacterTraits.h>
#include <Utils/Public/Utf8.h>

namespace Vell::TextLayout {

namespace {

constexpr unsigned int softHyphen = 0xAD;
constexpr unsigned int noBreakSpace = 0xA0;
constexpr unsigned int figureSpace = 0x2007; // white space to UAX #9, glue to UAX #14
constexpr unsigned int lineSeparator = 0x2028;
constexpr unsigned int paragraphSeparator = 0x2029;
constexpr unsigned int nextLine = 0x85;

LineCharacter classifyAscii(unsigned int codePoint) {
    if (codePoint > ' ') {
        return codePoint == 0x7F ? LineCharacter::Blank : LineCharacter::Other;
    }
    if (codePoint == ' ') {
        return LineCharacter::Space;
    }
    if (codePoint == '\t') {
        return LineCharacter::Tab;
    }
    return codePoint >= '\n' && codePoint <= '\r' ? LineCharacter::Separator : LineCharacter::Blank;
}

LineCharacter classify(unsigned int codePoint) {
    switch (codePoint) {
    case softHyphen:
        return LineCharacter::SoftHyphen;
    case noBreakSpace:
        return LineCharacter::NoBreakSpace;
    case nextLine:
    case lineSeparator:
    case paragraphSeparator:
        return LineCharacter::Separator;
    default:
        break;
    }
    const CharacterTraits traits = getTraits(codePoint);
    if (traits.isIdeographOrKana()) {
        return LineCharacter::Ideograph;
    }
    const bool isBlank = traits.isSpaceAtLineEnd() && codePoint != figureSpace;
    return isBlank ? LineCharacter::Blank : LineCharacter::Other;
}

} // namespace

LocatedCharacter getLineCharacter(std::string_view text, std::uint32_t offset) {
    const char* position = text.data() + offset;
    const unsigned int codePoint = decodeUtf8(position, text.data() + text.size());
    const auto end = static_cast<std::uint32_t>(position - text.data());
    return {codePoint < 0x80 ? classifyAscii(codePoint) : classify(codePoint), end};
}

LineCharacter getClusterCharacter(std::string_view text, std::uint32_t begin, std::uint32_t end) {
    const LocatedCharacter character = getLineCharacter(text, begin);
    const bool isWhole =
        character.end >= end || isHidden(character.kind) || character.kind == LineCharacter::Ideograph;
    return isWhole ? character.kind : LineCharacter::Other;
}

} // namespace Vell::TextLayout
