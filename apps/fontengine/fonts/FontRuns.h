#pragma once

#include "fonts/TextFont.h"

#include <string_view>
#include <vector>

namespace Vell::Tool {

/// A character of a text and the font that draws it.
struct CharacterFont {
    unsigned int codePoint;
    std::string_view bytes; ///< in the text, ill-formed ones included
    TextFont font;
};

/// Adjacent characters that the same font draws.
struct FontRun {
    std::string_view text;
    TextFont font;
    float x; ///< where the run starts on the line, in the units of the font size
};

/// Each character with the font that the raster painter uses for it.
std::vector<CharacterFont> findCharacterFonts(const TextFont& font, std::string_view text);

/// Splits a text into runs that one font draws completely, for the vector painter, which has no fallback.
/// Positions are those of the raster painter's pen. The runs refer to the text.
std::vector<FontRun> splitIntoFontRuns(const TextFont& font, std::string_view text);

} // namespace Vell::Tool
