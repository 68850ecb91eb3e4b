#pragma once

#include "fonts/FontShaper.h"

#include <iosfwd>
#include <string_view>

namespace Vell::Tool {

/// {"runs":[{"family":"DejaVu Sans","file":"/a/b.ttf","index":0,"script":"Latn","direction":"ltr","level":0,
/// "start":0,"end":1,"glyphs":[{"g":68,"cl":0,"dx":0,"dy":0,"ax":1255,"ay":0}]}]}: runs and glyphs in visual
/// order, distances in font units without letter spacing, places in bytes of the text. The file is empty if
/// the font is built into the library.
void printShape(const FontShaper& shaper, std::string_view text, std::ostream& out);

} // namespace Vell::Tool
