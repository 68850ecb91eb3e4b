#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace Vell::TextLayout {

/// Throws TextLayoutException if the text is longer than maxTextBytes.
void checkLength(std::string_view text);

/// The text as ICU reads it. Each ill-formed part is one U+FFFD, as decodeUtf8 decodes it. Calls checkLength.
std::u16string toUtf16(std::string_view text);

/// The same, in place of what `units` held.
void toUtf16(std::string_view text, std::u16string& units);

/// Translates offsets in the result of toUtf16 into byte offsets of the text, from the front to the back.
class ByteCursor {
public:
    explicit ByteCursor(std::string_view text)
        : _text(text) {}

    /// The byte offset of the code point at `unit`, which must not be less than in the call before.
    std::size_t moveTo(std::size_t unit);

private:
    std::string_view _text;
    std::size_t _byte = 0;
    std::size_t _unit = 0;
};

} // namespace Vell::TextLayout
