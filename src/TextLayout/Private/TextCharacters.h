#pragma once

#include <Utils/Public/Utf8.h>

#include <cstdint>
#include <string_view>

/// Single characters of a UTF-8 text, ill-formed parts as decodeUtf8 decodes them.
namespace Vell::TextLayout {

/// The character that begins at `offset`, which is before the end.
inline char32_t decodeAt(std::string_view text, std::uint32_t offset) {
    const char* position = text.data() + offset;
    return decodeUtf8(position, text.data() + text.size());
}

/// Where the character behind the one at `offset` begins.
inline std::uint32_t findCharacterBehind(std::string_view text, std::uint32_t offset) {
    const char* position = text.data() + offset;
    decodeUtf8(position, text.data() + text.size());
    return static_cast<std::uint32_t>(position - text.data());
}

/// Where the character before `offset` begins; 0 at the start.
std::uint32_t findCharacterBefore(std::string_view text, std::uint32_t offset);

/// Whether the characters at two offsets are different ones, or there is none at `other`.
inline bool isOtherCharacter(std::string_view text, std::uint32_t offset, std::uint32_t other) {
    return other >= text.size() || decodeAt(text, offset) != decodeAt(text, other);
}

} // namespace Vell::TextLayout
