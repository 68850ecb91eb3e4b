#include <TextLayout/Private/RunDependence.h>

#include <TextLayout/Private/TextCharacters.h>

#include <unicode/unorm2.h>

#include <algorithm>
#include <iterator>

namespace Vell::TextLayout {

namespace {

/// Their letters neither form syllables nor join.
constexpr hb_script_t simpleScripts[] = {
    HB_SCRIPT_COMMON,   HB_SCRIPT_UNKNOWN,  HB_SCRIPT_LATIN,    HB_SCRIPT_GREEK, HB_SCRIPT_CYRILLIC,
    HB_SCRIPT_ARMENIAN, HB_SCRIPT_GEORGIAN, HB_SCRIPT_HEBREW,   HB_SCRIPT_THAI,  HB_SCRIPT_LAO,
    HB_SCRIPT_HIRAGANA, HB_SCRIPT_HAN,      HB_SCRIPT_KATAKANA, HB_SCRIPT_HANGUL};

template <class Predicate>
bool hasAny(std::string_view text, const TextPart& part, const Predicate& predicate) {
    for (std::uint32_t position = part.begin; position < part.end;
         position = findCharacterBehind(text, position)) {
        if (predicate(decodeAt(text, position))) {
            return true;
        }
    }
    return false;
}

/// Whether a canonically equivalent spelling has other characters.
bool isDecomposable(char32_t character) {
    UErrorCode status = U_ZERO_ERROR;
    const UNormalizer2* const normalizer = unorm2_getNFDInstance(&status);
    return U_SUCCESS(status) &&
           unorm2_getRawDecomposition(normalizer, static_cast<UChar32>(character), nullptr, 0, &status) >= 0;
}

template <std::size_t size>
bool contains(const hb_script_t (&scripts)[size], hb_script_t script) {
    return std::find(std::begin(scripts), std::end(scripts), script) != std::end(scripts);
}

} // namespace

bool runsAgainstScript(const hb_segment_properties_t& properties) {
    const hb_direction_t ofScript = hb_script_get_horizontal_direction(properties.script);
    return ofScript != HB_DIRECTION_INVALID && ofScript != properties.direction;
}

bool mayBeDecomposed(hb_script_t script) {
    constexpr hb_script_t scripts[] = {HB_SCRIPT_DEVANAGARI, HB_SCRIPT_BENGALI,  HB_SCRIPT_GURMUKHI,
                                       HB_SCRIPT_ORIYA,      HB_SCRIPT_TAMIL,    HB_SCRIPT_TIBETAN,
                                       HB_SCRIPT_MYANMAR,    HB_SCRIPT_BALINESE, HB_SCRIPT_KAITHI};
    return contains(scripts, script);
}

bool staysDecomposed(std::string_view text, const TextPart& part) {
    const TextPart behindFirst{findCharacterBehind(text, part.begin), part.end};
    return !hasAny(text, behindFirst, isMark) && hasAny(text, part, isDecomposable);
}

bool hasSyllables(hb_script_t script) {
    return script != HB_SCRIPT_ARABIC && script != HB_SCRIPT_SYRIAC && !contains(simpleScripts, script);
}

bool mayJoin(hb_script_t script) {
    return !contains(simpleScripts, script);
}

bool mayHaveIdeographs(hb_script_t script) {
    constexpr hb_script_t scripts[] = {HB_SCRIPT_COMMON,   HB_SCRIPT_HAN,      HB_SCRIPT_HIRAGANA,
                                       HB_SCRIPT_KATAKANA, HB_SCRIPT_BOPOMOFO, HB_SCRIPT_HANGUL};
    return contains(scripts, script);
}

bool isJoinerAt(std::string_view text, std::uint32_t offset) {
    const char32_t character = decodeAt(text, offset);
    return character == U'\u200C' || character == U'\u200D' || character == U'\u2060';
}

bool joinsOutside(std::string_view text, const TextPart& run, const TextPart& word) {
    const bool mayJoinBefore = word.begin == run.begin && word.begin != 0;
    const bool mayJoinBehind = word.end == run.end && word.end != text.size();
    const auto isJoiningAt = [text](std::uint32_t offset) {
        return getTraits(decodeAt(text, offset)).isJoining();
    };
    return (mayJoinBefore && isJoiningAt(findCharacterBefore(text, word.begin))) ||
           (mayJoinBehind && isJoiningAt(word.end));
}

} // namespace Vell::TextLayout
