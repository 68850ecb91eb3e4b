#pragma once

#include <cstdint>
#include <string_view>

namespace Vell::TextLayout {

/// What a character is to the lines of a paragraph. The functions below depend on the order.
enum class LineCharacter : unsigned char {
    Other,
    Ideograph,    ///< an ideograph or kana; justification widens the space between two of them
    NoBreakSpace, ///< U+00A0; justification widens it, and it does not hang
    Space,        ///< U+0020
    Blank,        ///< white space and invisible characters that rule L1 of UAX #9 resets at the end of a line
    Tab,
    SoftHyphen,
    Separator, ///< ends a line: LF, VT, FF, CR, U+0085, U+2028, U+2029
};

/// Whether the character hangs at the end of a line and takes the level of the paragraph there.
constexpr bool isTrailing(LineCharacter character) {
    return character >= LineCharacter::Space;
}

/// Whether a paragraph draws something else in place of the character's glyph, or nothing.
constexpr bool isHidden(LineCharacter character) {
    return character >= LineCharacter::Tab;
}

constexpr bool isStretchable(LineCharacter character) {
    return character == LineCharacter::Space || character == LineCharacter::NoBreakSpace;
}

struct LocatedCharacter {
    LineCharacter kind;
    std::uint32_t end; ///< the byte behind it
};

/// The character at a byte of the text.
LocatedCharacter getLineCharacter(std::string_view text, std::uint32_t offset);

/// What a cluster of glyphs is to a line. A character with others in its cluster counts as what it is only if
/// it is an ideograph, or hidden together with them.
LineCharacter getClusterCharacter(std::string_view text, std::uint32_t begin, std::uint32_t end);

/// Whether isHidden holds for the character at a byte of the text. Fast for the others.
inline bool isHiddenAt(std::string_view text, std::uint32_t offset) {
    const auto first = static_cast<unsigned char>(text[offset]);
    const bool mayBe = (first >= 0x09 && first <= 0x0D) || first == 0xC2 || first == 0xE2;
    return mayBe && isHidden(getLineCharacter(text, offset).kind);
}

} // namespace Vell::TextLayout
