#include <TextLayout/Private/BidiInput.h>

#include <TextLayout/Private/BracketNesting.h>

#include <utility>

namespace Vell::TextLayout {

namespace {

constexpr char16_t overrides[] = u"\u202D\u202E";
constexpr std::u16string_view isolateInitiators = u"\u2066\u2067\u2068";
constexpr char16_t isolateEnd = 0x2069;
constexpr char16_t nonspacingMark = 0x0300;
constexpr char16_t paragraphOfBothDirections[] = u"\u2029\u05D0 a";

bool isInitiator(char32_t codePoint) {
    return codePoint >= isolateInitiators.front() && codePoint <= isolateInitiators.back();
}

} // namespace

BidiInput::BidiInput(std::u16string text)
    : _units(std::move(text)) {
    const bool hasOverrides = _units.find_first_of(overrides) != std::u16string::npos;
    if (hasOverrides) {
        replaceOverriddenBrackets(_units);
    }
    limitBracketNesting(_units);
    _hasMarks = hasOverrides && _units.find_first_of(isolateInitiators) != std::u16string::npos;
    if (_hasMarks) {
        markIsolates();
    }
    _units += paragraphOfBothDirections;
}

void BidiInput::markIsolates() {
    std::u16string marked;
    marked.reserve(_units.size() * 2);
    for (const char16_t unit : _units) {
        marked.append(countBefore(unit), nonspacingMark);
        marked.push_back(unit);
        marked.append(countBehind(unit), nonspacingMark);
    }
    _units = std::move(marked);
}

std::size_t BidiInput::countBefore(char32_t codePoint) const {
    return _hasMarks && isInitiator(codePoint) ? 1 : 0;
}

std::size_t BidiInput::countBehind(char32_t codePoint) const {
    return _hasMarks && codePoint == isolateEnd ? 1 : 0;
}

} // namespace Vell::TextLayout
