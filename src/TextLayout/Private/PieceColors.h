#pragma once

#include <TextLayout/Private/GlyphPiece.h>
#include <TextLayout/Public/TextDrawing.h>

namespace Vell::TextLayout {

inline bool areEqual(const TextColor& lhs, const TextColor& rhs) {
    return lhs.r == rhs.r && lhs.g == rhs.g && lhs.b == rhs.b && lhs.a == rhs.a;
}

/// Gives the client's painters the colours of the pieces, and the text's colour back at the end.
class PieceColors {
public:
    PieceColors(const TextColor& color, const TextColorSetter& setColor)
        : _textColor(color)
        , _setColor(setColor)
        , _current(color) {}

    TextColor get(const GlyphPiece& piece) const {
        const TextStyle& style = getStyle(piece);
        return _setColor && style.color ? *style.color : _textColor;
    }
    void use(const TextColor& color) {
        if (!areEqual(color, _current)) {
            _setColor(color);
            _current = color;
        }
    }
    void restore() { use(_textColor); }

private:
    TextColor _textColor;
    const TextColorSetter& _setColor;
    TextColor _current; // of the painters
};

} // namespace Vell::TextLayout
