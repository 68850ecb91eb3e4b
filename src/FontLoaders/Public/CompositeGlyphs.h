#pragma once

#include <Utils/Public/Export.h>

#include <ft2build.h>
#include FT_FREETYPE_H

#include <cstdint>

namespace Vell::FontLoaders {

/// TrueType glyphs may be made of other glyphs, those of others again, and FreeType follows them without a
/// bound of its own: a few hundred kilobytes can nest them deep enough to overflow the stack, a few hundred
/// bytes wide enough to keep it busy for years. Each of them may bring a program, and the program of the
/// whole runs over the points of all. These functions tell, before FreeType is asked, whether what it would
/// have to load is bounded. No font that is in use comes near the bounds.
///
///     const int restrained = hasBoundedGlyphs(face) ? flags : flags | FT_LOAD_NO_AUTOHINT;
///     FT_Error error = findGlyphError(face, glyphIndex, restrained);
///     error = error != FT_Err_Ok ? error : FT_Load_Glyph(face, glyphIndex, restrained);
///
/// All are for faces of createFontFace; they know nothing against any other one, nor against TrueType glyphs
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

/// The most work that the programs of a glyph and of its parts may be to FreeType's interpreter: the sum of
/// the length of each, in bytes, times the points that one of its instructions may go through. The points are
/// all those of the glyph or of the twilight zone, or a 16th of the stack's elements, whichever are most, and
/// 8 more for the instruction itself. A 16th of the control values and of the storage is added for each
/// program, which counts as 2,000 bytes long at least.
///
/// As long as no instruction is executed twice, so much takes a second at most. Programs that jump back or
/// call functions can take longer: FreeType gives each up after a million instructions.
constexpr std::uint64_t maxProgramWork = 250'000'000;

/// Why FreeType must not be asked to load a glyph with these flags, as its own error number:
/// FT_Err_Invalid_Composite unless isBoundedGlyph, FT_Err_Execution_Too_Long if programs of more than
/// maxProgramWork would run, otherwise FT_Err_Ok. No programs run if the load is unhinted or auto-hinted,
/// unless the font is one that FreeType cannot draw without them (FT_IS_TRICKY).
VELL_API FT_Error findGlyphError(FT_Face face, unsigned int glyphIndex, int loadFlags);

} // namespace Vell::FontLoaders
