#pragma once

#include <FontEngine/FE_GlyphTransform.h>
#include <Utils/Public/Ptr/CheckedPtr.h>

#include <vector>

namespace Vell::FontEngine {

/// What a face is made from: a font file, and the synthetic styles to add because the file lacks them.
struct FaceData {
    NNPtr<const std::vector<unsigned char>> bytes; ///< the whole file, shared
    GlyphTransform transform;                      ///< applies to every glyph of the face
};

} // namespace Vell::FontEngine
