#include <TextLayout/Public/BidiLine.h>

#include <TextLayout/Private/BidiLevels.h>
#include <TextLayout/Private/CharacterTraits.h>
#include <TextLayout/Private/Utf16Text.h>
#include <TextLayout/Private/VisualOrder.h>
#include <Utils/Public/Utf8.h>

#include <string>
#include <utility>

namespace Vell::TextLayout {

namespace {

/// Finds the levels of a text, one paragraph after the other.
class LevelFinder {
public:
    LevelFinder(std::string_view text, ParagraphDirection direction)
        : _position(text.data())
        , _end(text.data() + text.size())
        , _direction(direction) {
        _levels.reserve(text.size());
    }

    bool isAtEnd() const { return _position == _end; }

    /// Returns the base level of the next paragraph.
    BidiLevel addParagraph() {
        const char* const begin = _position;
        const BidiLevel level = findUniformLevel(skipParagraph(), _direction);
        const std::string_view paragraph(begin, static_cast<std::size_t>(_position - begin));
        return level == mixedLevels ? addMixed(paragraph) : addUniform(paragraph, level);
    }

    std::vector<BidiLevel> finish() { return std::move(_levels); }

private:
    /// Returns the masks of the bidi classes in the paragraph.
    std::uint32_t skipParagraph() {
        std::uint32_t classes = 0;
        while (_position != _end && (classes & U_MASK(U_BLOCK_SEPARATOR)) == 0) {
            const unsigned int codePoint = decodeUtf8(_position, _end);
            classes |= U_MASK(getTraits(codePoint).getBidiClass());
            if (codePoint == '\r' && _position != _end && *_position == '\n') {
                ++_position;
            }
        }
        return classes;
    }

    BidiLevel addUniform(std::string_view paragraph, BidiLevel level) {
        const char* const end = paragraph.data() + paragraph.size();
        for (const char* position = paragraph.data(); position != end;) {
            const CharacterTraits traits = getTraits(decodeUtf8(position, end));
            _levels.push_back(traits.isRemovedFromLine() ? removedFromLine : level);
        }
        return level;
    }

    BidiLevel addMixed(std::string_view paragraph) {
        toUtf16(paragraph, _units);
        const ParagraphLevels levels = resolveLevels(_units, _direction);
        _levels.insert(_levels.end(), levels.characters.begin(), levels.characters.end());
        return levels.base;
    }

    const char* _position;
    const char* _end;
    ParagraphDirection _direction;
    std::u16string _units;
    std::vector<BidiLevel> _levels;
};

/// Rule L2 over the code points that are on the line.
std::vector<std::uint32_t> orderVisually(const std::vector<BidiLevel>& levels) {
    std::vector<std::uint32_t> present;
    std::vector<BidiLevel> presentLevels;
    present.reserve(levels.size());
    presentLevels.reserve(levels.size());
    for (std::size_t i = 0; i < levels.size(); ++i) {
        if (levels[i] != removedFromLine) {
            present.push_back(static_cast<std::uint32_t>(i));
            presentLevels.push_back(levels[i]);
        }
    }
    std::vector<std::uint32_t> visual;
    reorderVisually(presentLevels.data(), presentLevels.size(), visual);
    for (std::uint32_t& place : visual) {
        place = present[place];
    }
    return visual;
}

} // namespace

BidiLine::BidiLine(std::string_view text, ParagraphDirection direction) {
    checkLength(text);
    LevelFinder levels(text, direction);
    _baseLevel = levels.addParagraph();
    while (!levels.isAtEnd()) {
        levels.addParagraph();
    }
    _levels = levels.finish();
    _visualOrder = orderVisually(_levels);
}

} // namespace Vell::TextLayout
