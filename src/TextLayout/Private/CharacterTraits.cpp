#include <TextLayout/Private/CharacterTraits.h>

#include <TextLayout/Private/BidiClasses.h>

#include <memory>

namespace Vell::TextLayout {

namespace {

constexpr char32_t replacement = 0xFFFD; // ill-formed parts of texts are decoded to it

static_assert(USCRIPT_CODE_LIMIT <= 256, "a script has one byte");

UScriptCode findScript(UChar32 codePoint) {
    UErrorCode status = U_ZERO_ERROR; // no code point leads to an error
    return uscript_getScript(codePoint, &status);
}

/// Viramas join consonants to conjuncts, whose cluster ICU keeps whole.
bool isVirama(UChar32 codePoint) {
    return u_getIntPropertyValue(codePoint, UCHAR_INDIC_SYLLABIC_CATEGORY) == U_INSC_VIRAMA;
}

ClusterRole findClusterRole(UChar32 codePoint) {
    switch (u_getIntPropertyValue(codePoint, UCHAR_GRAPHEME_CLUSTER_BREAK)) {
    case U_GCB_OTHER:
    case U_GCB_LV:
    case U_GCB_LVT:
        return ClusterRole::Base;
    case U_GCB_CONTROL:
    case U_GCB_CR:
    case U_GCB_LF:
        return ClusterRole::Control;
    case U_GCB_EXTEND:
    case U_GCB_SPACING_MARK:
        return isVirama(codePoint) ? ClusterRole::Complex : ClusterRole::Extending;
    default: // ZWJ, prepended characters, jamo, regional indicators
        return ClusterRole::Complex;
    }
}

/// Letters that both kinds of kana share, such as the prolonged sound mark, have the script Common.
bool isSharedKana(UChar32 codePoint) {
    return u_isUAlphabetic(codePoint) && uscript_hasScript(codePoint, USCRIPT_KATAKANA);
}

bool isIdeographic(UChar32 codePoint, UScriptCode script) {
    return script == USCRIPT_HIRAGANA || script == USCRIPT_KATAKANA || isSharedKana(codePoint) ||
           u_hasBinaryProperty(codePoint, UCHAR_IDEOGRAPHIC);
}

} // namespace

CharacterTraits::CharacterTraits(char32_t character) {
    const auto codePoint = static_cast<UChar32>(character);
    const UScriptCode script = findScript(codePoint);
    const UCharDirection bidiClass = u_charDirection(codePoint);
    const std::uint32_t classMask = U_MASK(bidiClass);
    _script = static_cast<std::uint8_t>(script);
    _bidiClass = static_cast<std::uint8_t>(bidiClass);
    _flags = static_cast<std::uint16_t>(static_cast<unsigned int>(findClusterRole(codePoint)) << roleShift);
    const auto add = [this](Flag flag, bool holds) {
        if (holds) {
            _flags = static_cast<std::uint16_t>(_flags | flag);
        }
    };
    add(scriptOfOthers, script == USCRIPT_COMMON || script == USCRIPT_INHERITED);
    add(pairedBracket, u_getIntPropertyValue(codePoint, UCHAR_BIDI_PAIRED_BRACKET_TYPE) != U_BPT_NONE);
    add(plain, getClusterRole() == ClusterRole::Base && !isPairedBracket() && character != replacement);
    add(removed, (classMask & BidiClasses::removed) != 0);
    add(spaceAtLineEnd, (classMask & BidiClasses::spaceAtLineEnd) != 0);
    add(mark, (U_GET_GC_MASK(codePoint) & U_GC_M_MASK) != 0);
    add(defaultIgnorable, u_hasBinaryProperty(codePoint, UCHAR_DEFAULT_IGNORABLE_CODE_POINT) != 0);
    add(emoji, u_hasBinaryProperty(codePoint, UCHAR_EMOJI) != 0);
    add(emojiPresentation, u_hasBinaryProperty(codePoint, UCHAR_EMOJI_PRESENTATION) != 0);
    add(ideographOrKana, isIdeographic(codePoint, script));
    add(joining, u_getIntPropertyValue(codePoint, UCHAR_JOINING_TYPE) != U_JT_NON_JOINING);
}

CharacterTraitsPages characterTraitsPages;

const CharacterTraitsPages::Page& makeTraitsPage(std::size_t number) {
    auto made = std::make_unique<CharacterTraitsPages::Page>();
    auto codePoint = static_cast<char32_t>(number * CharacterTraitsPages::pageSize);
    for (CharacterTraits& traits : *made) {
        traits = CharacterTraits(codePoint++);
    }
    return characterTraitsPages.put(number, std::move(made));
}

} // namespace Vell::TextLayout
