#pragma once

#include <TextLayout/Private/CharacterTraits.h>

#include <unicode/uchar.h>

namespace Vell::TextLayout {

/// Opening, closing or no paired bracket in the sense of UAX #9.
inline UBidiPairedBracketType getBracketType(UChar32 codePoint) {
    if (!getTraits(static_cast<char32_t>(codePoint)).isPairedBracket()) {
        return U_BPT_NONE;
    }
    return static_cast<UBidiPairedBracketType>(
        u_getIntPropertyValue(codePoint, UCHAR_BIDI_PAIRED_BRACKET_TYPE));
}

/// U+232A and U+3009 are canonically equivalent; these are the only equivalent closing brackets.
inline UChar32 getCanonicalBracket(UChar32 closing) {
    constexpr UChar32 angleBracket = 0x232A;
    constexpr UChar32 canonicalAngleBracket = 0x3009;
    return closing == angleBracket ? canonicalAngleBracket : closing;
}

/// What closes the bracket that `opening` opens, in its canonical form.
inline UChar32 getClosingBracket(UChar32 opening) {
    return getCanonicalBracket(u_getBidiPairedBracket(opening));
}

} // namespace Vell::TextLayout
