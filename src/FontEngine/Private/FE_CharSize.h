#pragma once

#include <FontEngine/FE_BitmapGlyphInfo.h>
#include <FontEngine/FE_GlyphInfo.h>
#include <FontLoaders/Public/FreeType.h>

namespace Vell::FontEngine::Internal {

/// Size a face for a rendering. False when FreeType refuses, and when the size, the scale or the ratio is no
/// number that FreeType could be given (not a number, infinite, out of range); zero and negative sizes are
/// left to FreeType.
bool trySizeForBitmap(const FontLoaders::FTFacePtr& face, const BitmapGlyphInfo& info);
bool trySizeForOutline(const FontLoaders::FTFacePtr& face, const GlyphInfo& info);

} // namespace Vell::FontEngine::Internal
