#pragma once

namespace Vell {

/// What stands for an ill-formed part of a text.
constexpr unsigned int replacementCharacter = 0xFFFD;

namespace Utf8Details {

/// What may follow a lead byte: how many bytes, the narrowed range of the first of them (all others are
/// 80..BF), and the bits of the code point that the lead byte carries.
struct Sequence {
    int trailing;
    unsigned char firstMin;
    unsigned char firstMax;
    unsigned char leadBits;
};

constexpr Sequence describeLead(unsigned char lead) {
    if (lead >= 0xC2 && lead <= 0xDF) {
        return {1, 0x80, 0xBF, 0x1F};
    }
    if (lead >= 0xE0 && lead <= 0xEF) {
        const bool mayBeOverlong = lead == 0xE0;
        const bool mayBeSurrogate = lead == 0xED;
        return {2, static_cast<unsigned char>(mayBeOverlong ? 0xA0 : 0x80),
                static_cast<unsigned char>(mayBeSurrogate ? 0x9F : 0xBF), 0x0F};
    }
    if (lead >= 0xF0 && lead <= 0xF4) {
        const bool mayBeOverlong = lead == 0xF0;
        const bool mayBeTooLarge = lead == 0xF4;
        return {3, static_cast<unsigned char>(mayBeOverlong ? 0x90 : 0x80),
                static_cast<unsigned char>(mayBeTooLarge ? 0x8F : 0xBF), 0x07};
    }
    return {0, 0, 0, 0};
}

inline unsigned int decodeBehind(unsigned char lead, const char*& position, const char* end) {
    const Sequence sequence = describeLead(lead);
    if (sequence.trailing == 0) {
        return replacementCharacter;
    }
    unsigned int codePoint = lead & sequence.leadBits;
    unsigned char min = sequence.firstMin;
    unsigned char max = sequence.firstMax;
    for (int i = 0; i < sequence.trailing; ++i) {
        if (position == end) {
            return replacementCharacter;
        }
        const auto byte = static_cast<unsigned char>(*position);
        if (byte < min || byte > max) {
            return replacementCharacter;
        }
        codePoint = codePoint << 6 | (byte & 0x3FU);
        ++position;
        min = 0x80;
        max = 0xBF;
    }
    return codePoint;
}

} // namespace Utf8Details

/// Decodes the code point at `position` and moves `position` behind it. Needs `position != end`.
///
/// Ill-formed text follows the Unicode practice: each maximal subpart of an ill-formed sequence gives one
/// U+FFFD, so `F0 9F 98 41` is U+FFFD U+0041, and overlong forms, surrogates and the bytes C0, C1 and F5..FF
/// give one U+FFFD a byte. A truncated tail is one U+FFFD. No byte at or behind `end` is read.
inline unsigned int decodeUtf8(const char*& position, const char* end) {
    const auto lead = static_cast<unsigned char>(*position++);
    return lead < 0x80 ? lead : Utf8Details::decodeBehind(lead, position, end);
}

} // namespace Vell
