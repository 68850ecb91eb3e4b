#pragma once

#include <FontEngine/FE_BitmapGlyphInfo.h>
#include <FontEngine/FE_GlyphInfo.h>
#include <FontEngine/Private/FE_SizedFace.h>
#include <FontLoaders/Public/FreeType.h>

namespace Vell::FontEngine::Internal {

/// Size a face for a rendering. False when FreeType refuses, and when the size, the scale or the ratio is no
/// number that FreeType could be given (not a number, infinite, out of range); zero and negative sizes are
/// left to FreeType. FreeType is not asked for the size that `sized` knows the face to have.
bool trySizeForBitmap(const FontLoaders::FTFacePtr& face, const BitmapGlyphInfo& info, SizedFace& sized);
bool trySizeForOutline(const FontLoaders::FTFacePtr& face, const GlyphInfo& info, SizedFace& sized);

} // namespace Vell::FontEngine::Internal
