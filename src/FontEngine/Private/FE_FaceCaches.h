#pragma once

#include <FontEngine/FE_FontFace.h>
#include <FontEngine/Private/FE_LockedCache.h>
#include <FontLoaders/Public/FontLoader.h>
#include <Gfx/Public/FontFaceInfo.h>
#include <Utils/Public/Ptr/CheckedPtr.h>

#include <functional>
#include <memory>
#include <vector>

namespace Vell::FontEngine::Internal {

using FaceKey = NNPtr<const Gfx::FontFaceInfo>;
using FacePtr = NNPtr<const FontFace>;

/// The font files and the faces of a factory, by description. The lock of the faces is taken before that of
/// the files. Destroyed from the last to the first: faces before the files that they were made from.
struct FaceCaches {
    LockedCache<FaceKey, FontLoaders::FontBytes, std::hash<FaceKey>> files;
    LockedCache<FaceKey, FacePtr, std::hash<FaceKey>> faces;
};

} // namespace Vell::FontEngine::Internal
