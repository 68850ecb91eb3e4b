#pragma once

#include <TextLayout/Public/ShapedText.h>

#include <cstdint>

namespace Vell::TextLayout {

/// Adjacent glyphs of a run and where they are drawn. A line of a paragraph is a list of pieces: a run is
/// divided where a line ends, and where justification and tabs move what follows.
struct GlyphPiece {
    const ShapedText* text;   ///< the text, or a hyphen or an ellipsis
    std::uint32_t run;        ///< of the text
    std::uint32_t glyphBegin; ///< of the text's glyphs
    std::uint32_t glyphEnd;
    float x; ///< of the first pen position, in the units of the font size, to the right
    float y; ///< of the base line, down
    /// Whether the piece begins where the one before it in the list ends, on the same base line. Its glyphs
    /// then stand where they would stand in one piece.
    bool continuesLast = false;
};

inline const ShapedRun& getRun(const GlyphPiece& piece) {
    return piece.text->getRuns()[piece.run];
}

inline const RunFont& getFont(const GlyphPiece& piece) {
    return piece.text->getFont(getRun(piece));
}

inline const TextStyle& getStyle(const GlyphPiece& piece) {
    return piece.text->getStyle(getRun(piece));
}

} // namespace Vell::TextLayout
