#pragma once

#include <TextLayout/TextLayout.h>

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// A text that is being edited: its paragraph, a caret, and a selection between an anchor and the caret. Each
/// change shapes the text again, which costs a look-up for each word that stays as it was. Movements and
/// widths shape nothing.
class TextEditor {
public:
    using FactoryPtr = Vell::NNPtr<const Vell::FontEngine::FontFactory>;
    using Movement = Vell::TextLayout::TextMovement;

    TextEditor(const FactoryPtr& factory, Vell::TextLayout::TextStyle style, const std::string& text)
        : _shaper(factory)
        , _style(std::move(style))
        , _paragraph(_shaper.shape(text, _style))
        , _caret{text.size()}
        , _anchor(text.size()) {}

    const Vell::TextLayout::Paragraph& getParagraph() const { return _paragraph; }
    const std::string& getText() const { return _paragraph.getText()->getText(); }
    Vell::TextLayout::Caret getCaret() const { return _paragraph.getCaret(_caret); }
    std::vector<Vell::TextLayout::TextRectangle> getSelection() const {
        return _paragraph.makeSelection(getBegin(), getEnd());
    }
    std::string getSelectedText() const { return getText().substr(getBegin(), getEnd() - getBegin()); }
    Vell::FontEngine::CacheFigures getWordFigures() const { return _shaper.getCacheFigures(); }

    void setWidth(float width) {
        if (width != _paragraphStyle.width) {
            _paragraphStyle.width = width;
            _paragraph = Vell::TextLayout::Paragraph(_paragraph.getText(), _paragraphStyle);
        }
    }

    /// Puts `text` in place of the selection.
    void insert(std::string_view text) { replace(getBegin(), getEnd(), text); }

    /// Takes away the selection. Without one, takes away what the movement passes over.
    void erase(Movement movement) {
        if (_anchor == _caret.offset) {
            _anchor = _paragraph.move(_caret, movement).offset;
        }
        insert("");
    }

    void move(Movement movement, bool isSelecting) {
        const bool isLeavingSelection = _anchor != _caret.offset && !isSelecting;
        if (isLeavingSelection && (movement == Movement::Left || movement == Movement::Right)) {
            placeCaret(findSelectionEdge(movement), false);
        } else {
            placeCaret(_paragraph.move(_caret, movement), isSelecting);
        }
    }

    void moveByLines(std::ptrdiff_t lines, bool isSelecting) {
        const float x = _goalX.value_or(getCaret().x);
        placeCaret(_paragraph.moveByLines(_caret, lines, x), isSelecting);
        _goalX = x; // a short line on the way does not change the column
    }

    /// Puts the caret where a click at `point` of the paragraph wants it.
    void moveTo(const cinder::Vec2<float>& point, bool isSelecting) {
        placeCaret(_paragraph.hitTest(point).place, isSelecting);
    }

    void selectWord() {
        const Vell::TextLayout::TextPlace end = _paragraph.move(_caret, Movement::NextWord);
        _anchor = _paragraph.move(end, Movement::PreviousWord).offset;
        placeCaret(end, true);
    }

    void selectAll() {
        _anchor = 0;
        placeCaret({getText().size()}, true);
    }

private:
    std::size_t getBegin() const { return std::min(_anchor, _caret.offset); }
    std::size_t getEnd() const { return std::max(_anchor, _caret.offset); }

    void placeCaret(const Vell::TextLayout::TextPlace& place, bool isSelecting) {
        _caret = place;
        _anchor = isSelecting ? _anchor : place.offset;
        _goalX.reset();
    }

    void replace(std::size_t begin, std::size_t end, std::string_view text) {
        using Vell::TextLayout::CaretAffinity;
        std::string changed = getText();
        changed.replace(begin, end - begin, text);
        _paragraph = Vell::TextLayout::Paragraph(_shaper.shape(changed, _style), _paragraphStyle);
        // Where directions meet, the caret stays beside what was typed.
        const bool isTyped = !text.empty() && text.back() != '\n';
        placeCaret({begin + text.size(), isTyped ? CaretAffinity::Upstream : CaretAffinity::Automatic},
                   false);
    }

    /// The end of the selection that lies further to the left, or to the right.
    Vell::TextLayout::TextPlace findSelectionEdge(Movement movement) const {
        const Vell::TextLayout::TextPlace anchor{_anchor};
        const auto isFurtherLeft = [](const Vell::TextLayout::Caret& a, const Vell::TextLayout::Caret& b) {
            return a.line != b.line ? a.line < b.line : a.x < b.x;
        };
        const bool isAnchorLeft = isFurtherLeft(_paragraph.getCaret(anchor), getCaret());
        return isAnchorLeft == (movement == Movement::Left) ? anchor : _caret;
    }

    Vell::TextLayout::TextShaper _shaper;
    Vell::TextLayout::TextStyle _style;
    Vell::TextLayout::ParagraphStyle _paragraphStyle;
    Vell::TextLayout::Paragraph _paragraph;
    Vell::TextLayout::TextPlace _caret;
    std::size_t _anchor;         ///< where the selection began
    std::optional<float> _goalX; ///< of movements by lines
};
