#pragma once

#include "fonts/TextFont.h"

#include <string>
#include <string_view>
#include <vector>

namespace Vell::Tool {

/// Splits a text at LF, CR LF and CR. A line end at the end of the text begins no further line; an empty text
/// is one empty line.
std::vector<std::string> splitLines(std::string_view text);

/// Breaks a text into lines of at most the given width: at spaces if possible, otherwise between characters.
/// A character that is wider gets a line of its own. Line ends in the text remain.
std::vector<std::string> wrapText(const TextFont& font, std::string_view text, float width);

} // namespace Vell::Tool
