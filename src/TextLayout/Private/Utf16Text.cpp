#include <TextLayout/Private/Utf16Text.h>

#include <TextLayout/Public/TextLayoutException.h>
#include <Utils/Public/Utf8.h>

#include <unicode/utf16.h>

namespace Vell::TextLayout {

void checkLength(std::string_view text) {
    if (text.size() > maxTextBytes) {
        throw TextLayoutException("a text of " + std::to_string(text.size()) + " bytes is longer than " +
                                  std::to_string(maxTextBytes));
    }
}

std::u16string toUtf16(std::string_view text) {
    std::u16string units;
    toUtf16(text, units);
    return units;
}

void toUtf16(std::string_view text, std::u16string& units) {
    checkLength(text);
    units.clear();
    units.reserve(text.size());
    const char* const end = text.data() + text.size();
    for (const char* position = text.data(); position != end;) {
        const unsigned int codePoint = decodeUtf8(position, end);
        if (U_IS_BMP(codePoint)) {
            units.push_back(static_cast<char16_t>(codePoint));
        } else {
            units.push_back(static_cast<char16_t>(U16_LEAD(codePoint)));
            units.push_back(static_cast<char16_t>(U16_TRAIL(codePoint)));
        }
    }
}

std::size_t ByteCursor::moveTo(std::size_t unit) {
    const char* position = _text.data() + _byte;
    const char* const end = _text.data() + _text.size();
    while (_unit < unit) {
        _unit += U16_LENGTH(decodeUtf8(position, end));
    }
    _byte = static_cast<std::size_t>(position - _text.data());
    return _byte;
}

} // namespace Vell::TextLayout
