#pragma once

#include <TextLayout/Private/LazyPages.h>

#include <unicode/uchar.h>
#include <unicode/uscript.h>

#include <cstddef>
#include <cstdint>

namespace Vell::TextLayout {

/// What a character tells about the boundaries of extended grapheme clusters beside it.
enum class ClusterRole : unsigned char {
    Base,      ///< begins a cluster, unless a Complex character stands in the cluster before it
    Control,   ///< is a cluster by itself, but for CR LF
    Extending, ///< belongs to the cluster before it, unless that is a Control
    Complex    ///< the characters around it tell
};

/// The properties of a character that the analysis of texts and their shaping need.
///
///     const CharacterTraits traits = getTraits(U'\u0301');
///     traits.isMark(); // true
class CharacterTraits {
public:
    CharacterTraits() = default;

    /// Asks ICU for each property; getTraits() remembers the answers.
    explicit CharacterTraits(char32_t codePoint);

    /// The property Script, which may be USCRIPT_COMMON or USCRIPT_INHERITED.
    UScriptCode getScript() const { return static_cast<UScriptCode>(_script); }
    UCharDirection getBidiClass() const { return static_cast<UCharDirection>(_bidiClass); }
    ClusterRole getClusterRole() const { return static_cast<ClusterRole>(_flags >> roleShift); }

    /// The script is common or inherited.
    bool takesScriptOfOthers() const { return has(scriptOfOthers); }
    /// Opens or closes a pair in the sense of UAX #9.
    bool isPairedBracket() const { return has(pairedBracket); }

    /// Rule X9 removes it from the line.
    bool isRemovedFromLine() const { return has(removed); }
    /// The class B.
    bool isParagraphSeparator() const { return _bidiClass == U_BLOCK_SEPARATOR; }
    /// Rule L1 gives it the level of the paragraph if only such characters stand between it and the end of
    /// its line: white space, separators, isolate formatting characters, and whatever rule X9 removes.
    bool isSpaceAtLineEnd() const { return has(spaceAtLineEnd); }

    bool isMark() const { return has(mark); }
    bool isDefaultIgnorable() const { return has(defaultIgnorable); }
    bool hasEmojiPresentation() const { return has(emojiPresentation); }
    /// Has the property Emoji, as also digits have.
    bool isEmoji() const { return has(emoji); }
    /// An ideograph or kana: scripts without spaces, whose characters do not depend on their neighbours.
    bool isIdeographOrKana() const { return has(ideographOrKana); }
    /// A Base of clusters that is no bracket and no U+FFFD. Between two characters of its script, it begins a
    /// cluster and nothing else.
    bool isPlain() const { return has(plain); }
    /// May join the characters beside it, as the letters of Arabic do.
    bool isJoining() const { return has(joining); }

private:
    enum Flag : std::uint16_t {
        scriptOfOthers = 1U << 0U,
        pairedBracket = 1U << 1U,
        plain = 1U << 2U,
        removed = 1U << 3U,
        spaceAtLineEnd = 1U << 4U,
        mark = 1U << 5U,
        defaultIgnorable = 1U << 6U,
        emoji = 1U << 7U,
        emojiPresentation = 1U << 8U,
        ideographOrKana = 1U << 9U,
        joining = 1U << 10U
    };

    static constexpr unsigned int roleShift = 14;

    bool has(Flag flag) const { return (_flags & flag) != 0; }

    std::uint8_t _script = 0;
    std::uint8_t _bidiClass = 0;
    std::uint16_t _flags = 0; ///< and the cluster role above them
};

using CharacterTraitsPages = LazyPages<CharacterTraits, 0x110000>;

extern CharacterTraitsPages characterTraitsPages; // never released

const CharacterTraitsPages::Page& makeTraitsPage(std::size_t number);

/// The traits of 256 characters from `number` times 256 on. Any thread may call it. Throws std::bad_alloc if
/// memory is short.
inline const CharacterTraitsPages::Page& getTraitsPage(std::size_t number) {
    const CharacterTraitsPages::Page* const page = characterTraitsPages.find(number);
    return page != nullptr ? *page : makeTraitsPage(number);
}

/// The traits of a code point, at most U+10FFFF. Costs two loads when its page exists. Any thread may call
/// it. Throws std::bad_alloc if memory is short.
inline CharacterTraits getTraits(char32_t codePoint) {
    constexpr std::size_t pageSize = CharacterTraitsPages::pageSize;
    return getTraitsPage(codePoint / pageSize)[codePoint % pageSize];
}

} // namespace Vell::TextLayout
