#include <TextLayout/Public/BidiLine.h>

#include <TextLayout/Private/BidiInput.h>
#include <TextLayout/Private/IcuErrors.h>
#include <TextLayout/Private/PairedBrackets.h>
#include <TextLayout/Private/Utf16Text.h>

#include <unicode/ubidi.h>
#include <unicode/uchar.h>
#include <unicode/utf16.h>

#include <memory>
#include <string>
#include <utility>

namespace Vell::TextLayout {

namespace {

using BidiPtr = std::unique_ptr<UBiDi, decltype(&ubidi_close)>;

BidiPtr makeBidi() {
    BidiPtr bidi(ubidi_open(), &ubidi_close);
    if (!bidi) {
        throw std::bad_alloc();
    }
    return bidi;
}

UBiDiLevel getParagraphLevel(ParagraphDirection direction) {
    switch (direction) {
    case ParagraphDirection::LeftToRight:
        return 0;
    case ParagraphDirection::RightToLeft:
        return 1;
    case ParagraphDirection::Auto:
        break;
    }
    return UBIDI_DEFAULT_LTR;
}

/// The levels of a text, read from the front to the back.
class LevelReader {
public:
    LevelReader(const UBiDi* bidi, const UBiDiLevel* unitLevels, const BidiInput& input)
        : _bidi(bidi)
        , _unitLevels(unitLevels)
        , _input(input) {}

    void append(UChar32 codePoint) {
        const auto character = static_cast<char32_t>(codePoint);
        _unit += _input.countBefore(character);
        enterParagraph();
        const UCharDirection bidiClass = u_charDirection(codePoint);
        const auto level = static_cast<BidiLevel>(_unitLevels[_unit]);
        const bool isOnBracket = bidiClass == U_DIR_NON_SPACING_MARK && _hasBracket;
        appendLevel(bidiClass, isOnBracket ? _bracketLevel : level);
        followBracket(codePoint, bidiClass, level);
        _unit += static_cast<std::size_t>(U16_LENGTH(codePoint)) + _input.countBehind(character);
    }

    std::vector<BidiLevel> finish() {
        resetTrailingSpace();
        return std::move(_levels);
    }

private:
    void enterParagraph() {
        while (_unit >= static_cast<std::size_t>(_paragraphEnd)) {
            UErrorCode status = U_ZERO_ERROR;
            UBiDiLevel level = 0;
            ubidi_getParagraphByIndex(_bidi, _paragraph++, nullptr, &_paragraphEnd, &level, &status);
            throwIfFailed("ubidi_getParagraphByIndex", status);
            _paragraphLevel = static_cast<BidiLevel>(level);
        }
    }

    /// The marks on a paired bracket have its level (the end of rule N0), which ubidi leaves out.
    void followBracket(UChar32 codePoint, UCharDirection bidiClass, BidiLevel level) {
        if (bidiClass == U_DIR_NON_SPACING_MARK || bidiClass == U_BOUNDARY_NEUTRAL) {
            return;
        }
        _hasBracket = bidiClass == U_OTHER_NEUTRAL && getBracketType(codePoint) != U_BPT_NONE;
        _bracketLevel = level;
    }

    /// Applies rules X9 and L1.
    void appendLevel(UCharDirection bidiClass, BidiLevel level) {
        switch (bidiClass) {
        case U_LEFT_TO_RIGHT_EMBEDDING:
        case U_RIGHT_TO_LEFT_EMBEDDING:
        case U_LEFT_TO_RIGHT_OVERRIDE:
        case U_RIGHT_TO_LEFT_OVERRIDE:
        case U_POP_DIRECTIONAL_FORMAT:
        case U_BOUNDARY_NEUTRAL:
            _levels.push_back(removedFromLine);
            break;
        case U_SEGMENT_SEPARATOR:
        case U_BLOCK_SEPARATOR:
            resetTrailingSpace();
            _levels.push_back(_paragraphLevel);
            _textEnd = _levels.size();
            break;
        case U_WHITE_SPACE_NEUTRAL:
        case U_LEFT_TO_RIGHT_ISOLATE:
        case U_RIGHT_TO_LEFT_ISOLATE:
        case U_FIRST_STRONG_ISOLATE:
        case U_POP_DIRECTIONAL_ISOLATE:
            _levels.push_back(level);
            break;
        default:
            _levels.push_back(level);
            _textEnd = _levels.size();
        }
    }

    void resetTrailingSpace() {
        for (std::size_t i = _textEnd; i < _levels.size(); ++i) {
            _levels[i] = _levels[i] == removedFromLine ? removedFromLine : _paragraphLevel;
        }
    }

    const UBiDi* _bidi;
    const UBiDiLevel* _unitLevels;
    const BidiInput& _input;
    std::size_t _unit = 0;
    std::int32_t _paragraph = 0;
    std::int32_t _paragraphEnd = 0;
    BidiLevel _paragraphLevel = 0;
    bool _hasBracket = false; ///< only nonspacing marks stand behind a bracket
    BidiLevel _bracketLevel = 0;
    std::vector<BidiLevel> _levels;
    std::size_t _textEnd = 0; ///< behind the last code point that is neither white space nor removed
};

/// Rule L2 over the code points that are on the line.
std::vector<std::uint32_t> orderVisually(const std::vector<BidiLevel>& levels) {
    std::vector<std::uint32_t> present;
    std::vector<UBiDiLevel> presentLevels;
    present.reserve(levels.size());
    presentLevels.reserve(levels.size());
    for (std::size_t i = 0; i < levels.size(); ++i) {
        if (levels[i] != removedFromLine) {
            present.push_back(static_cast<std::uint32_t>(i));
            presentLevels.push_back(static_cast<UBiDiLevel>(levels[i]));
        }
    }
    std::vector<std::int32_t> order(present.size());
    ubidi_reorderVisual(presentLevels.data(), static_cast<std::int32_t>(presentLevels.size()), order.data());
    std::vector<std::uint32_t> visual(present.size());
    for (std::size_t i = 0; i < order.size(); ++i) {
        visual[i] = present[static_cast<std::size_t>(order[i])];
    }
    return visual;
}

} // namespace

BidiLine::BidiLine(std::string_view text, ParagraphDirection direction) {
    const std::u16string units = toUtf16(text);
    const BidiInput input(units);
    const BidiPtr bidi = makeBidi();
    UErrorCode status = U_ZERO_ERROR;
    ubidi_setPara(bidi.get(), input.getUnits().data(), static_cast<std::int32_t>(input.getUnits().size()),
                  getParagraphLevel(direction), nullptr, &status);
    throwIfFailed("ubidi_setPara", status);
    const UBiDiLevel* const unitLevels = ubidi_getLevels(bidi.get(), &status);
    throwIfFailed("ubidi_getLevels", status);
    UBiDiLevel baseLevel = 0;
    ubidi_getParagraphByIndex(bidi.get(), 0, nullptr, nullptr, &baseLevel, &status);
    throwIfFailed("ubidi_getParagraphByIndex", status);
    _baseLevel = static_cast<BidiLevel>(baseLevel);
    LevelReader levels(bidi.get(), unitLevels, input);
    for (std::size_t next = 0; next < units.size();) {
        UChar32 codePoint = 0;
        U16_NEXT(units.data(), next, units.size(), codePoint);
        levels.append(codePoint);
    }
    _levels = levels.finish();
    _visualOrder = orderVisually(_levels);
}

} // namespace Vell::TextLayout
