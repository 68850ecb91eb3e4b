#pragma once

#include <TextLayout/Private/ShapingFont.h>

#include <string_view>

namespace Vell::TextLayout {

/// Whether HarfBuzz finds a glyph for everything that is visible in a cluster. It composes and decomposes
/// characters, makes spaces out of others and hides what is ignorable. The font must be one that it can
/// shape. Throws std::bad_alloc.
bool hasAllGlyphs(ShapingFont& font, std::u32string_view cluster);

/// Whether hasAllGlyphs may be true although the font has no glyph for the first character: a quick answer
/// for most clusters in scripts that the font lacks.
bool mayDoWithoutFirst(std::u32string_view cluster);

} // namespace Vell::TextLayout
