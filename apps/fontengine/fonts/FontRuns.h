#pragma once

#include "fonts/TextFont.h"

#include <string_view>
#include <vector>

namespace Vell::Tool {

/// A character of a text and the font that draws it.
struct CharacterFont {
    unsigned int codePoint;
    std::string_view bytes; ///< its place in the text, ill-formed bytes included
    TextFont font;
};

/// Neighbouring characters that one font draws.
struct FontRun {
    std::string_view text;
    TextFont font;
    float x; ///< where the run starts on the line, in the units of the font size
};

/// Each character with the font that the raster painter takes for it.
std::vector<CharacterFont> findCharacterFonts(const TextFont& font, std::string_view text);

/// A text as runs, each of which one font draws whole: what the vector painter, which knows no fallback, is
/// to be given. The positions are those that the raster painter's pen takes. The runs refer to the text.
std::vector<FontRun> splitIntoFontRuns(const TextFont& font, std::string_view text);

} // namespace Vell::Tool
