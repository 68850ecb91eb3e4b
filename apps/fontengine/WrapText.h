#pragma once

#include "TextFont.h"

#include <string>
#include <string_view>
#include <vector>

namespace Vell::Tool {

/// Breaks a text into lines of at most the given width, at spaces where there are any, else between
/// characters; a character that is wider by itself gets a line of its own. Line ends in the text stay line
/// ends.
std::vector<std::string> wrapText(const TextFont& font, std::string_view text, float width);

} // namespace Vell::Tool
