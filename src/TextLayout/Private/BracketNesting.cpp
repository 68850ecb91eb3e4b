#include <TextLayout/Private/BracketNesting.h>

#include <TextLayout/Private/DirectionalStack.h>
#include <TextLayout/Private/PairedBrackets.h>

#include <unicode/uchar.h>

#include <algorithm>
#include <array>

namespace Vell::TextLayout {

namespace {

/// U+2022 BULLET: a neutral character, and no bracket.
constexpr char16_t plainNeutral = 0x2022;

/// The brackets that are open in a paragraph, as rule BD16 keeps them.
class OpenBrackets {
public:
    bool isFull() const { return _isFull; }
    bool isUntouched() const { return _count == 0 && !_isFull; }

    void reset() {
        _count = 0;
        _isFull = false;
    }

    void open(UChar32 closing) {
        _isFull = _count == _closings.size();
        if (!_isFull) {
            _closings[_count++] = closing;
        }
    }

    /// Closes the innermost bracket of the kind with all that are inside it, if there is one.
    void close(UChar32 closing) {
        const auto outermost = _closings.rend();
        const auto innermost = outermost - static_cast<std::ptrdiff_t>(_count);
        const auto found = std::find(innermost, outermost, closing);
        if (found != outermost) {
            _count = static_cast<std::size_t>(outermost - found) - 1;
        }
    }

private:
    std::array<UChar32, 63> _closings{}; // the size is BD16's
    std::size_t _count = 0;
    bool _isFull = false;
};

void follow(OpenBrackets& brackets, char16_t unit, UBidiPairedBracketType type) {
    if (type == U_BPT_OPEN) {
        brackets.open(getClosingBracket(unit));
    } else if (type == U_BPT_CLOSE) {
        brackets.close(getCanonicalBracket(unit));
    }
}

} // namespace

void limitBracketNesting(std::u16string& units) {
    OpenBrackets brackets;
    for (char16_t& unit : units) { // all paired brackets are one unit long
        const UBidiPairedBracketType type = getBracketType(unit);
        if (type != U_BPT_NONE) {
            if (!brackets.isFull()) {
                follow(brackets, unit, type);
            }
            if (brackets.isFull()) {
                unit = plainNeutral;
            }
        } else if (!brackets.isUntouched() && u_charDirection(unit) == U_BLOCK_SEPARATOR) {
            brackets.reset();
        }
    }
}

void replaceOverriddenBrackets(std::u16string& units) {
    DirectionalStack stack;
    for (char16_t& unit : units) { // all formatting characters are one unit long, too
        if (stack.isOverridden() && getBracketType(unit) != U_BPT_NONE) {
            unit = plainNeutral;
        }
        stack.follow(u_charDirection(unit));
    }
}

} // namespace Vell::TextLayout
