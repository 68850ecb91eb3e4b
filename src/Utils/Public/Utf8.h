#pragma once

namespace Vell {

/// U+FFFD, which replaces an ill-formed part of a text.
constexpr unsigned int replacementCharacter = 0xFFFD;

namespace Utf8Details {

/// What may follow a lead byte: the number of trailing bytes, the range of the first one (all others are in
/// 80..BF), and a mask for the bits of the code point that the lead byte carries.
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

inline unsigned int decodeAfterLead(unsigned char lead, const char*& position, const char* end) {
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

/// Decodes the code point at `position` and moves `position` past it. Requires `position != end`. Never reads
/// at or past `end`.
///
/// Ill-formed text is decoded as Unicode recommends: each maximal subpart of an ill-formed sequence gives one
/// U+FFFD. So `F0 9F 98 41` gives U+FFFD U+0041, and a sequence that `end` cuts off gives one U+FFFD.
/// Overlong forms, surrogates and the bytes C0, C1 and F5..FF give one U+FFFD for each byte.
inline unsigned int decodeUtf8(const char*& position, const char* end) {
    const auto lead = static_cast<unsigned char>(*position++);
    return lead < 0x80 ? lead : Utf8Details::decodeAfterLead(lead, position, end);
}

} // namespace Vell
