#pragma once

#include <FontEngine/FE_FontDescriptions.h>
#include <FontEngine/FE_FontFace.h>
#include <FontLoaders/Public/FontLoader.h>
#include <Utils/Public/CallableRef.h>

#include <memory>

namespace Vell::FontEngine::Internal {

/// Returns the font file of the requested family in one style, or null if there is none.
using StyleProbe = CallableRef<FontLoaders::FontBytes(bool bold, bool italic)>;

/// Whether a file of exactly the requested style may serve this family.
bool mayUseExactStyle(const FontFaceInfo& request);

/// Chooses another style of the family and the synthetic styles to add to it. Returns null if the family has
/// no style at all.
std::shared_ptr<const FaceData> findSimilarStyle(const FontFaceInfo& request, const StyleProbe& probe);

} // namespace Vell::FontEngine::Internal
