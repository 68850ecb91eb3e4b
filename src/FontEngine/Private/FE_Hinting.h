#pragma once

#include <FontEngine/FE_BitmapGlyphInfo.h>

namespace Vell::FontEngine::Internal {

/// Returns the load flags that select the hinting of a glyph; 0 leaves the choice to FreeType. Some families
/// look better with the auto-hinter or with light hinting, sometimes only some of their characters in some
/// styles. `family` is the family name in the font file, which is compared exactly. It may be null.
int getHintingFlags(const char* family, const BitmapGlyphInfo& info);

} // namespace Vell::FontEngine::Internal
