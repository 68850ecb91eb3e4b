#pragma once

#include <Utils/Public/Utf8.h>

#include <cstdint>
#include <string_view>

/// Single characters of a UTF-8 text, ill-formed parts as decodeUtf8 decodes them.
namespace Vell::TextLayout {

/// The same as decodeUtf8(), with a short way for each well-formed sequence of up to three bytes.
inline char32_t decodeNext(const char*& position, const char* end) {
    constexpr unsigned int trailingMark = 0x80; // of a byte behind the first one, which has six bits more
    constexpr unsigned int trailingLimit = 0x40;
    constexpr char32_t firstOfThreeBytes = 0x800;
    constexpr char32_t firstSurrogate = 0xD800;
    constexpr char32_t surrogates = 0x800;
    const auto getByte = [&](int index) { return static_cast<unsigned char>(position[index]); };
    const unsigned int lead = getByte(0);
    if (lead < 0x80U) {
        ++position;
        return lead;
    }
    if (lead >= 0xE0U && lead < 0xF0U && end - position > 2) {
        const unsigned int second = getByte(1) ^ trailingMark;
        const unsigned int third = getByte(2) ^ trailingMark;
        const char32_t code = (lead & 0x0FU) << 12U | second << 6U | third;
        if ((second | third) < trailingLimit && code >= firstOfThreeBytes &&
            code - firstSurrogate >= surrogates) {
            position += 3;
            return code;
        }
    } else if (lead >= 0xC2U && lead < 0xE0U && end - position > 1) {
        const unsigned int second = getByte(1) ^ trailingMark;
        if (second < trailingLimit) {
            position += 2;
            return (lead & 0x1FU) << 6U | second;
        }
    }
    return decodeUtf8(position, end);
}

/// The character that begins at `offset`, which is before the end.
inline char32_t decodeAt(std::string_view text, std::uint32_t offset) {
    const char* position = text.data() + offset;
    return decodeNext(position, text.data() + text.size());
}

/// Where the character behind the one at `offset` begins.
inline std::uint32_t findCharacterBehind(std::string_view text, std::uint32_t offset) {
    const char* position = text.data() + offset;
    decodeNext(position, text.data() + text.size());
    return static_cast<std::uint32_t>(position - text.data());
}

/// Where the character before `offset` begins; 0 at the start.
std::uint32_t findCharacterBefore(std::string_view text, std::uint32_t offset);

/// Whether the characters at two offsets are different ones, or there is none at `other`.
inline bool isOtherCharacter(std::string_view text, std::uint32_t offset, std::uint32_t other) {
    return other >= text.size() || decodeAt(text, offset) != decodeAt(text, other);
}

} // namespace Vell::TextLayout
