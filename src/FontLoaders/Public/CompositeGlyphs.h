#pragma once

#include <Utils/Public/Export.h>

#include <ft2build.h>
#include FT_FREETYPE_H

namespace Vell::FontLoaders {

/// TrueType glyphs may be made of other glyphs, those of others again, and FreeType follows them without a
/// bound of its own: a few hundred kilobytes can nest them deep enough to overflow the stack, a few hundred
/// bytes wide enough to keep it busy for years. These functions tell, before FreeType is asked, whether what
/// it would have to load is bounded. No font that is in use comes near the bounds.
///
///     if (isBoundedGlyph(face, glyphIndex)) {
///         FT_Load_Glyph(face, glyphIndex, hasBoundedGlyphs(face) ? flags : flags | FT_LOAD_NO_AUTOHINT);
///     }
///
/// Both are for faces of createFontFace; they know nothing against any other one, nor against TrueType glyphs
/// within a PostScript wrapper (Type 42). One thread at a time, as for all that is done with a face. They
/// throw std::bad_alloc.

/// The most glyphs that loading one glyph may involve, itself included, whether side by side or nested: as
/// many as a font can have.
constexpr unsigned int maxGlyphParts = 65535;

/// The most that all the glyphs together may involve which the auto-hinter loads by itself. They are a
/// thousand in a font that has them all, so an honest font has a few thousand parts.
constexpr unsigned int maxAutoHinterParts = 4 * maxGlyphParts;

/// Whether FreeType can load a glyph on this thread. It cannot if the glyph has more than maxGlyphParts, as
/// one that contains itself has, or if it nests deeper than the stack of this thread allows. 32 levels are
/// always allowed, more of them at 768 bytes each in all but 64 KiB of the stack that is left: about 10,000
/// on a stack of 8 MiB, 240 on one of 256 KiB.
VELL_API bool isBoundedGlyph(FT_Face face, unsigned int glyphIndex);

/// Whether the same holds for the glyphs that FreeType's auto-hinter loads by itself, before the one that it
/// is asked for, and whether they have no more than maxAutoHinterParts together. Which they are is known: the
/// glyphs of the characters that it takes a script's measures from, by the font's Unicode charmap. No other
/// glyph of the font matters. Looks at them once.
///
/// This is so in FreeType 2.12 without HarfBuzz. One that is built with HarfBuzz may also load glyphs that
/// GSUB leads to.
VELL_API bool hasBoundedGlyphs(FT_Face face);

} // namespace Vell::FontLoaders
