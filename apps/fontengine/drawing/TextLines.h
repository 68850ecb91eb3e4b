#pragma once

#include "fonts/TextFont.h"

#include <string>
#include <string_view>
#include <vector>

namespace Vell::Tool {

/// The lines between LF, CR LF and CR. A line end at the end of the text starts no further line; an empty
/// text is one empty line.
std::vector<std::string> splitLines(std::string_view text);

/// Breaks a text into lines of at most the given width, at spaces where there are any, else between
/// characters; a character that is wider by itself gets a line of its own. Line ends in the text stay line
/// ends.
std::vector<std::string> wrapText(const TextFont& font, std::string_view text, float width);

} // namespace Vell::Tool
