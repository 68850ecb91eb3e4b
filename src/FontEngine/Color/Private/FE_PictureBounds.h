#pragma once

#include <FontEngine/Color/Private/FE_ColorFace.h>

#include <cstdint>

namespace Vell::FontEngine::Internal {

/// The largest number of pixels of a bitmap in a font: a square of 4,096 pixels. Fonts in use have bitmaps of
/// a few hundred pixels in each direction.
constexpr std::uint64_t maxStrikePixels = std::uint64_t(1) << 24U;

/// Whether FreeType may read the bitmap of a glyph in a strike. It hands PNG files to a library that
/// allocates on its own and unpacks texts and colour profiles of a thousand times their length, which nobody
/// asked for. So this looks into the file first. Returns false if the font has no bitmap there, if the PNG
/// file has more than maxStrikePixels, or more than 64 KiB that is neither pixels nor palette, or if finding
/// it takes too many steps.
bool isPictureBounded(FT_Face face, const ColorStrike& strike, unsigned int glyphIndex);

} // namespace Vell::FontEngine::Internal
