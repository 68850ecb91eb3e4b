#include <TextLayout/Private/BidiInput.h>

#include <TextLayout/Private/BracketNesting.h>

#include <algorithm>
#include <utility>

namespace Vell::TextLayout {

namespace {

constexpr char16_t leftOverride = 0x202D;
constexpr char16_t rightOverride = 0x202E;
constexpr char16_t nonspacingMark = 0x0300;
constexpr char16_t paragraphOfBothDirections[] = u"\u2029\u05D0 a";

bool contains(const std::u16string& units, char16_t first, char16_t last) {
    return std::any_of(units.begin(), units.end(),
                       [=](char16_t unit) { return unit >= first && unit <= last; });
}

} // namespace

BidiInput::BidiInput(std::u16string text)
    : _units(std::move(text)) {
    const bool hasOverrides = contains(_units, leftOverride, rightOverride);
    if (hasOverrides) {
        replaceOverriddenBrackets(_units);
    }
    limitBracketNesting(_units);
    _hasMarks = hasOverrides && contains(_units, firstInitiator, lastInitiator);
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

} // namespace Vell::TextLayout
