#pragma once

#include <FontEngine/FontEngine.h>

namespace Vell::Tool {

/// Whether the font file tells how high its capitals are. The library answers with the ascender for a file
/// without an OS/2 table of version 2 or later, and with 0 for one that leaves the field at 0.
bool hasCapHeight(const FontEngine::FontFace& face);

} // namespace Vell::Tool
