#pragma once

#include <FontEngine/FE_FontFace.h>
#include <Gfx/Public/FontInfo.h>
#include <Gfx/Public/Painter.h>
#include <Utils/Public/Export.h>
#include <Utils/Public/Ptr/CheckedPtr.h>

#include <cstddef>
#include <memory>
#include <vector>

namespace Vell::FontEngine {

/// Returns the outlines of glyphs that a client's layout has chosen, in font units: one path for each index,
/// in the same order, from the cache that VectorTextPainter uses. `painter` builds the paths that are not
/// cached yet. A path is null if the glyph has no outline, the face cannot be sized, or its factory was
/// destroyed.
///
///     const auto paths = fetchOutlines(faceInfo, face, fontSize, indices.data(), indices.size(), painter);
///
/// `faceInfo` is the description of the face, and `fontSize` is in logical units; both are part of the key.
/// Takes the lock of the outline cache once for each 64 glyphs.
///
/// Lifetime: the caller keeps `faceInfo` and `face` alive until the call returns. The paths outlive both.
/// Threads: any thread may call; one thread at a time uses the painter.
/// Errors: those of FontFactory::getOutlineGlyphPath. Paths built before the error stay cached.
VELL_API std::vector<std::shared_ptr<const Gfx::Path>>
fetchOutlines(const NNPtr<const Gfx::FontFaceInfo>& faceInfo, const NNPtr<const FontFace>& face,
              float fontSize, const unsigned short* glyphIndices, std::size_t count, Gfx::Painter& painter);

} // namespace Vell::FontEngine
