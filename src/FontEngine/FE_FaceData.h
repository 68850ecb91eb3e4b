#pragma once

#include <FontEngine/FE_GlyphTransform.h>
#include <Utils/Public/Ptr/CheckedPtr.h>

#include <vector>

namespace Vell::FontEngine {

/// What a face is made from: a font file, and the styling that must be added because the file lacks it.
struct FaceData {
    NNPtr<const std::vector<unsigned char>> bytes; ///< the whole file, shared
    GlyphTransform transform;                      ///< applied to every glyph of the face
};

} // namespace Vell::FontEngine
