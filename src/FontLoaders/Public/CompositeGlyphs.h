#pragma once

#include <Utils/Public/Export.h>

#include <ft2build.h>
#include FT_FREETYPE_H

#include <cstdint>

namespace Vell::FontLoaders {

/// Checks that are made before FreeType loads a glyph: is what the load involves bounded?
///
/// TrueType glyphs may consist of other glyphs, and those of others again. FreeType follows them without a
/// bound: a font of a few hundred kilobytes can nest them deeply enough to overflow the stack, and one of a
/// few hundred bytes can nest them widely enough to keep FreeType busy for years. Each glyph may also have a
/// program, and the program of a composite glyph runs over the points of all its parts. No font in use comes
/// near the bounds.
///
///     const int safeFlags = hasBoundedGlyphs(face) ? flags : flags | FT_LOAD_NO_AUTOHINT;
///     FT_Error error = findGlyphError(face, glyphIndex, safeFlags);
///     error = error != FT_Err_Ok ? error : FT_Load_Glyph(face, glyphIndex, safeFlags);
///
/// All functions are for faces from createFontFace. They find nothing wrong with any other face, nor with
/// TrueType glyphs in a PostScript wrapper (Type 42).
///
/// Threads: like all functions on a face, one at a time. Errors: std::bad_alloc.

/// The most glyphs that loading one glyph may involve, including itself and however they are nested: as many
/// as a font can have.
constexpr unsigned int maxGlyphParts = 65535;

/// The most glyphs that may be involved when the auto-hinter loads glyphs on its own, all of them together. A
/// font that has all of them has a thousand, which in an honest font have a few thousand parts.
constexpr unsigned int maxAutoHinterParts = 4 * maxGlyphParts;

/// Whether FreeType can load a glyph on this thread. It cannot if the glyph has more than maxGlyphParts, as a
/// glyph that contains itself has, or if it is nested more deeply than this thread's stack allows. 32 levels
/// are always allowed. More levels are allowed if all levels, at 768 bytes each, leave 64 KiB of the
/// remaining stack free: about 10,000 on a stack of 8 MiB, and 240 on one of 256 KiB.
VELL_API bool isBoundedGlyph(FT_Face face, unsigned int glyphIndex);

/// Whether isBoundedGlyph holds for each glyph that FreeType's auto-hinter loads on its own, before the glyph
/// that it is asked for, and whether together they have at most maxAutoHinterParts. These are the glyphs of a
/// fixed set of characters, from which the auto-hinter takes the measures of each script through the font's
/// Unicode charmap. They are examined once for each face.
///
/// This describes FreeType 2.12 without HarfBuzz. If FreeType is built with HarfBuzz, the auto-hinter may
/// also load glyphs that it finds through the GSUB table.
VELL_API bool hasBoundedGlyphs(FT_Face face);

/// The most work that the programs of a glyph and of its parts may together give FreeType's interpreter. The
/// work of one program is its length in bytes, which counts as at least 2,000, times the points that one
/// instruction may visit, plus a 16th of the number of control values and storage elements. The points are
/// those of the glyph, those of the twilight zone, or a 16th of the number of stack elements, whichever
/// number is largest, plus 8 for the instruction itself.
///
/// If no instruction is executed twice, this much work takes at most a second. Programs that loop or call
/// functions can take longer: FreeType aborts each program after a million instructions.
constexpr std::uint64_t maxProgramWork = 250'000'000;

/// The reason why FreeType must not load a glyph with these flags, as one of FreeType's error codes:
/// FT_Err_Invalid_Composite if isBoundedGlyph is false, FT_Err_Execution_Too_Long if programs with more work
/// than maxProgramWork would run, otherwise FT_Err_Ok. Unhinted and auto-hinted loads run no programs, unless
/// FreeType cannot draw the font without them (FT_IS_TRICKY).
VELL_API FT_Error findGlyphError(FT_Face face, unsigned int glyphIndex, int loadFlags);

} // namespace Vell::FontLoaders
