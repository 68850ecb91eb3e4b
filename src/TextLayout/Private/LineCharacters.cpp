#include <TextLayout/Private/LineCharacters.h>

#include <Utils/Public/Utf8.h>

#include <unicode/uchar.h>
#include <unicode/uscript.h>

namespace Vell::TextLayout {

namespace {

constexpr unsigned int softHyphen = 0xAD;
constexpr unsigned int noBreakSpace = 0xA0;
constexpr unsigned int figureSpace = 0x2007; // white space to UAX #9, glue to UAX #14
constexpr unsigned int lineSeparator = 0x2028;
constexpr unsigned int paragraphSeparator = 0x2029;
constexpr unsigned int nextLine = 0x85;

bool isBlank(unsigned int codePoint) {
    switch (u_charDirection(static_cast<UChar32>(codePoint))) {
    case U_WHITE_SPACE_NEUTRAL:
        return codePoint != figureSpace;
    case U_BLOCK_SEPARATOR:
    case U_SEGMENT_SEPARATOR:
    case U_BOUNDARY_NEUTRAL:
    case U_LEFT_TO_RIGHT_EMBEDDING:
    case U_RIGHT_TO_LEFT_EMBEDDING:
    case U_LEFT_TO_RIGHT_OVERRIDE:
    case U_RIGHT_TO_LEFT_OVERRIDE:
    case U_POP_DIRECTIONAL_FORMAT:
    case U_LEFT_TO_RIGHT_ISOLATE:
    case U_RIGHT_TO_LEFT_ISOLATE:
    case U_FIRST_STRONG_ISOLATE:
    case U_POP_DIRECTIONAL_ISOLATE:
        return true;
    default:
        return false;
    }
}

bool isIdeographOrKana(unsigned int codePoint) {
    constexpr unsigned int firstOfTheirBlocks = 0x3005; // the ideographic iteration mark
    if (codePoint < firstOfTheirBlocks) {
        return false;
    }
    UErrorCode status = U_ZERO_ERROR;
    switch (uscript_getScript(static_cast<UChar32>(codePoint), &status)) {
    case USCRIPT_HAN:
    case USCRIPT_HIRAGANA:
    case USCRIPT_KATAKANA:
    case USCRIPT_BOPOMOFO:
        return true;
    default:
        return false;
    }
}

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
    if (isIdeographOrKana(codePoint)) {
        return LineCharacter::Ideograph;
    }
    return isBlank(codePoint) ? LineCharacter::Blank : LineCharacter::Other;
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
