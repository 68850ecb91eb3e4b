#pragma once

#include "commands/Commands.h"

#include <iosfwd>
#include <string>

namespace Vell::Tool {

/// Prints under the property "coverage" why each grapheme cluster of a shaped text has its font, one a line,
/// in the order in which they appear first:
///
///     U+0061 a: own font
///     U+4E2D 中: Noto Sans CJK JP Bold, /a/font.ttc (face 0), first in the order for "DejaVu Sans" in ja
///     U+2764 U+FE0F: emoji presentation, Some Emoji Regular, /a/e.ttf (face 0), first in the order
///     U+0378: none
///
/// Prints nothing if the tool is built without TextLayout.
void printCoverage(const FallbackOptions& options, const std::string& text, std::ostream& out);

} // namespace Vell::Tool
