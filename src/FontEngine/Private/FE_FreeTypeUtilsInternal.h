#pragma once

#include <FontEngine/FE_BitmapGlyphPainter.h>
#include <FontEngine/FE_FontFace.h>
#include <FontEngine/FE_GlyphInfo.h>
#include <FontLoaders/Public/FreeType.h>
#include <Gfx/Public/CharMap.h>
#include <Utils/Public/Export.h>
#include <Utils/Public/Ptr/CheckedPtr.h>
#include <cinder/Color.h>

#include FT_GLYPH_H
#include FT_OUTLINE_H

#include <memory>
#include <utility>

/// The engine's functions for FreeType faces and glyphs. None of them owns the face that it is given. Because
/// they change the state of the face (charmap, size, transform, glyph slot), only one thread at a time may
/// work on a face. They report FreeType's errors as FreeTypeException.
namespace Vell::FontEngine::Internal {

// --- What the engine reads once, when it opens a face. Lengths are in ems.

/// Selects the Unicode charmap or, for a symbol font, the font's own (Microsoft's symbol encoding in SFNT
/// files, Adobe's custom encoding in others). If the face does not have it, falls back to Unicode, then to
/// the current charmap, then to the first. Asserts that the face has a charmap.
VELL_API void selectFTCharmap(const FontLoaders::FTFacePtr& face, bool isSymbolic, bool isSfnt);

/// Selects the charmap and reads the glyph and the advance of every code. The default entry is glyph 0 with
/// its advance. Glyph indices keep their low 16 bits.
///
/// Throws FreeTypeException if FreeType fails, if the charmap has more codes than Unicode (1,114,112), or if
/// reading it takes more of the thread's time than five seconds and 20 microseconds per code. Throws
/// BadNumCastError if a code does not fit into 32 bits.
VELL_API Gfx::CharMap makeCharMap(const FontLoaders::FTFacePtr& face, GlyphTransform transform);

/// Maps a symbol font's other customary code to the same glyph, unless a glyph has that code already: 00xx
/// for U+F0xx in SFNT files, U+F0xx for 00xx in others. Uses only the low 32 bits of `charCode`.
VELL_API void addCharCodeAliasIfRequired(Gfx::CharMap& map, const Gfx::CharMap::GlyphIndexWithAdvance& glyph,
                                         unsigned long charCode, bool isSymbolic, bool isSfnt);

/// Returns the cap height and the lower edge of the strike-out stroke. If the font does not specify them,
/// they are the ascender and a third of the ascender.
VELL_API std::pair<float, float> getCapHeightAndStrikeOutPosition(const FontLoaders::FTFacePtr& face);

// --- Glyphs. A result owns its FreeType glyph and shares the library that the glyph needs. Any thread may
// release it.

/// The coordinates of an outline: 26.6 pixels at the face's current size, or font units.
enum class OutlineScale : int { Scaled = 0, FontUnits = 1 };

/// Emboldens by 1/24 em, then slants by about 12 degrees. `transform` selects either, both or none.
VELL_API void applyGlyphTransform(const FontLoaders::FTFacePtr& face, FT_Outline* outline,
                                  GlyphTransform transform, OutlineScale scale);

/// Renders a glyph of a face that already has its size. `flipVertically` reverses the order of the rows.
VELL_API std::shared_ptr<const FT_BitmapGlyphRec_>
createBitmapGlyph(const BitmapGlyphInfo& info, const FontLoaders::FTFacePtr& face, bool flipVertically);

/// Loads the outline of a glyph in font units, unhinted.
VELL_API std::shared_ptr<FT_GlyphRec_> createOutlineGlyph(const GlyphInfo& info,
                                                          const NNPtr<const FontFace>& fontFace);

// --- Colour.

/// Returns the integer part of 255 (value / 255)^gamma, computed in single precision. A value outside the
/// range of int becomes the nearest int.
VELL_API unsigned int encodeGamma(unsigned int value, float gamma);

/// Like encodeGamma, but with the exponent 1 / gamma. Both truncate, so decoding an encoded value may give
/// one less than the original.
VELL_API unsigned int decodeGamma(unsigned int value, float gamma);

/// Returns the glyph in the text colour over white, with near-white pixels transparent, or null unless the
/// bitmap is FT_PIXEL_MODE_LCD. BitmapGlyphImage describes the pixels. Ignores the alpha of `color`.
VELL_API std::shared_ptr<BitmapGlyphImageWithDeleter>
getColoredGlyphImage(const FT_BitmapGlyphRec_& glyph, const cinder::ColorAT<unsigned char>& color);

} // namespace Vell::FontEngine::Internal
