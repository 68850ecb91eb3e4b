#pragma once

#include <FontEngine/FE_BitmapGlyphInfo.h>

namespace Vell::FontEngine::Internal {

/// How FreeType shall hint a glyph: load flags, 0 for FreeType's own choice. Some families are drawn better,
/// or only some of their characters in some styles, by the auto-hinter or by light hinting. `family` is the
/// family name as the font file has it, compared exactly; it may be null.
int getHintingFlags(const char* family, const BitmapGlyphInfo& info);

} // namespace Vell::FontEngine::Internal
