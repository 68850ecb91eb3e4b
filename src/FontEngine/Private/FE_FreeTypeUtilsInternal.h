#pragma once

#include <FontEngine/FE_BitmapGlyphImage.h>
#include <FontEngine/FE_BitmapGlyphInfo.h>
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

/// What the engine does with FreeType faces and glyphs. None of these functions owns the face that it is
/// given; all of them change its state (charmap, size, transform, glyph slot), so one thread at a time may
/// work on a face. Errors of FreeType are FreeTypeException, with the texts that stand in the sources.
namespace Vell::FontEngine::Internal {

// --- What is read once, when a face is opened. Lengths are in ems.

/// Makes the right charmap current: Unicode, or for symbol fonts their own (Microsoft's symbol encoding in
/// SFNT files, Adobe's custom encoding in others); else Unicode, else the one that is current, else the
/// first. A face without any charmap is a failed assertion.
VELL_API void selectFTCharmap(const FontLoaders::FTFacePtr& face, bool isSymbolic, bool isSfnt);

/// Selects the charmap and reads all of it: each code's glyph and advance. The default entry is glyph 0 with
/// its advance. Glyph indices keep their low 16 bits. Throws FreeTypeException, also for a charmap with more
/// codes than Unicode has (1,114,112) and for one that takes more than five seconds, and BadNumCastError
/// for a code above 32 bits.
VELL_API Gfx::CharMap makeCharMap(const FontLoaders::FTFacePtr& face, GlyphTransform transform);

/// Lets the glyph of a symbol font answer to its other customary code, too, unless a glyph has that code
/// already: U+F0xx also to 00xx in SFNT files, 00xx also to U+F0xx in others. Looks at the low 32 bits of
/// `charCode`.
VELL_API void addCharCodeAliasIfRequired(Gfx::CharMap& map, const Gfx::CharMap::GlyphIndexWithAdvance& glyph,
                                         unsigned long charCode, bool isSymbolic, bool isSfnt);

/// The cap height (the ascender where the font does not tell) and the lower edge of the strike-out stroke (a
/// third of the ascender where the font does not tell).
VELL_API std::pair<float, float> getCapHeightAndStrikeOutPosition(const FontLoaders::FTFacePtr& face);

// --- Glyphs. The results own their FreeType glyph and the library that it needs; they may be released on any
// thread.

/// The coordinates of an outline: 26.6 pixels at the face's current size, or font units.
enum class OutlineScale : int { Scaled = 0, FontUnits = 1 };

/// Emboldens by 1/24 em and then slants by about 12 degrees, as `transform` says.
VELL_API void applyGlyphTransform(const FontLoaders::FTFacePtr& face, FT_Outline* outline,
                                  GlyphTransform transform, OutlineScale scale);

/// Renders a glyph of a face that has been sized already. `flipVertically` reverses the order of the rows.
VELL_API std::shared_ptr<const FT_BitmapGlyphRec_>
createBitmapGlyph(const BitmapGlyphInfo& info, const FontLoaders::FTFacePtr& face, bool flipVertically);

/// Loads the outline of a glyph in font units, unhinted.
VELL_API std::shared_ptr<FT_GlyphRec_> createOutlineGlyph(const GlyphInfo& info,
                                                          const NNPtr<const FontFace>& fontFace);

// --- Colour.

/// The integer part of 255 (value / 255)^gamma, in single precision. What no int can hold becomes the nearest
/// int.
VELL_API unsigned int encodeGamma(unsigned int value, float gamma);

/// The same with the exponent 1 / gamma. Because of the truncations it may give one less than was encoded.
VELL_API unsigned int decodeGamma(unsigned int value, float gamma);

/// The glyph in the text colour over white, near-white pixels transparent; null unless the bitmap is
/// FT_PIXEL_MODE_LCD. See BitmapGlyphImage for the pixels. Alpha is not read.
VELL_API std::shared_ptr<BitmapGlyphImageWithDeleter>
getColoredGlyphImage(const FT_BitmapGlyphRec_& glyph, const cinder::ColorAT<unsigned char>& color);

} // namespace Vell::FontEngine::Internal
