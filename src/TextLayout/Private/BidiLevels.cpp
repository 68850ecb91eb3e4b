#include <TextLayout/Private/BidiLevels.h>

#include <TextLayout/Private/BidiClasses.h>
#include <TextLayout/Private/BidiInput.h>
#include <TextLayout/Private/IcuErrors.h>
#include <TextLayout/Private/PairedBrackets.h>

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

UBiDiLevel getRequestedLevel(ParagraphDirection direction) {
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

/// The levels of a paragraph, read from the front to the back.
class LevelReader {
public:
    LevelReader(BidiLevel base, const UBiDiLevel* unitLevels, const BidiInput& input)
        : _unitLevels(unitLevels)
        , _input(input)
        , _levels{base, {}} {
        _levels.characters.reserve(input.getUnits().size());
    }

    void append(UChar32 codePoint) {
        const auto character = static_cast<char32_t>(codePoint);
        _unit += _input.countBefore(character);
        const UCharDirection bidiClass = getTraits(character).getBidiClass();
        const auto level = static_cast<BidiLevel>(_unitLevels[_unit]);
        const bool isOnBracket = bidiClass == U_DIR_NON_SPACING_MARK && _hasBracket;
        appendLevel(bidiClass, isOnBracket ? _bracketLevel : level);
        followBracket(codePoint, bidiClass, level);
        _unit += static_cast<std::size_t>(U16_LENGTH(codePoint)) + _input.countBehind(character);
    }

    ParagraphLevels finish() {
        resetTrailingSpace();
        return std::move(_levels);
    }

private:
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
            _levels.characters.push_back(removedFromLine);
            break;
        case U_SEGMENT_SEPARATOR:
        case U_BLOCK_SEPARATOR:
            resetTrailingSpace();
            _levels.characters.push_back(_levels.base);
            _textEnd = _levels.characters.size();
            break;
        case U_WHITE_SPACE_NEUTRAL:
        case U_LEFT_TO_RIGHT_ISOLATE:
        case U_RIGHT_TO_LEFT_ISOLATE:
        case U_FIRST_STRONG_ISOLATE:
        case U_POP_DIRECTIONAL_ISOLATE:
            _levels.characters.push_back(level);
            break;
        default:
            _levels.characters.push_back(level);
            _textEnd = _levels.characters.size();
        }
    }

    void resetTrailingSpace() {
        std::vector<BidiLevel>& levels = _levels.characters;
        for (std::size_t i = _textEnd; i < levels.size(); ++i) {
            levels[i] = levels[i] == removedFromLine ? removedFromLine : _levels.base;
        }
    }

    const UBiDiLevel* _unitLevels;
    const BidiInput& _input;
    std::size_t _unit = 0;
    bool _hasBracket = false; ///< only nonspacing marks stand behind a bracket
    BidiLevel _bracketLevel = 0;
    ParagraphLevels _levels;
    std::size_t _textEnd = 0; ///< behind the last code point that is neither white space nor removed
};

} // namespace

ParagraphLevels resolveLevels(const std::u16string& paragraph, ParagraphDirection direction) {
    const BidiInput input(paragraph);
    const BidiPtr bidi = makeBidi();
    UErrorCode status = U_ZERO_ERROR;
    ubidi_setPara(bidi.get(), input.getUnits().data(), static_cast<std::int32_t>(input.getUnits().size()),
                  getRequestedLevel(direction), nullptr, &status);
    throwIfFailed("ubidi_setPara", status);
    const UBiDiLevel* const unitLevels = ubidi_getLevels(bidi.get(), &status);
    throwIfFailed("ubidi_getLevels", status);
    UBiDiLevel base = 0;
    ubidi_getParagraphByIndex(bidi.get(), 0, nullptr, nullptr, &base, &status);
    throwIfFailed("ubidi_getParagraphByIndex", status);
    LevelReader levels(static_cast<BidiLevel>(base), unitLevels, input);
    for (std::size_t next = 0; next < paragraph.size();) {
        UChar32 codePoint = 0;
        U16_NEXT(paragraph.data(), next, paragraph.size(), codePoint);
        levels.append(codePoint);
    }
    return levels.finish();
}

BidiLevel findUniformLevel(std::uint32_t classes, ParagraphDirection direction) {
    if (direction != ParagraphDirection::RightToLeft && (classes & BidiClasses::raisingInLeftToRight) == 0) {
        return 0;
    }
    const bool mayRunRight =
        direction == ParagraphDirection::RightToLeft ||
        (direction == ParagraphDirection::Auto && (classes & BidiClasses::strongRight) != 0);
    return mayRunRight && (classes & BidiClasses::raisingInRightToLeft) == 0 ? 1 : mixedLevels;
}

} // namespace Vell::TextLayout
