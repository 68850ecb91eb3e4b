#pragma once

#include <Utils/Public/Export.h>

namespace Vell {

/// What stands for an ill-formed part of a text.
constexpr unsigned int replacementCharacter = 0xFFFD;

/// Decodes the code point at `position` and moves `position` behind it. Needs `position != end`.
///
/// Ill-formed text follows the Unicode practice: each maximal subpart of an ill-formed sequence gives one
/// U+FFFD, so `F0 9F 98 41` is U+FFFD U+0041, and overlong forms, surrogates and the bytes C0, C1 and F5..FF
/// give one U+FFFD a byte. A truncated tail is one U+FFFD. No byte at or behind `end` is read.
VELL_API unsigned int decodeUtf8(const char*& position, const char* end);

} // namespace Vell
