#pragma once

#include <Utils/Public/Export.h>

#include <ft2build.h>
#include FT_FREETYPE_H

namespace Vell::FontLoaders {

/// TrueType glyphs may be made of other glyphs, those of others again, and FreeType follows them without a
/// bound of its own: a few hundred kilobytes can nest them deep enough to overflow the stack, a few hundred
/// bytes wide enough to keep it busy for years. These functions tell, before FreeType is asked, whether what
/// it would have to load is bounded. No font that is in use comes near the bound.
///
/// Both are for faces of createFontFace; they know nothing against any other one, nor against TrueType glyphs
/// within a PostScript wrapper (Type 42). One thread at a time, as for all that is done with a face.

/// The most glyphs that loading one glyph may involve, itself included, whether side by side or nested.
constexpr unsigned int maxGlyphParts = 256;

/// Whether one glyph keeps the bound. A glyph that contains itself does not.
VELL_API bool isBoundedGlyph(FT_Face face, unsigned int glyphIndex);

/// Whether all glyphs do: FreeType's auto-hinter loads glyphs of its own choice. Looks at the font once.
VELL_API bool hasBoundedGlyphs(FT_Face face);

} // namespace Vell::FontLoaders
