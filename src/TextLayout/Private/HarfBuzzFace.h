#pragma once

#include <FontEngine/FE_FontFace.h>
#include <TextLayout/Private/HarfBuzzHandles.h>

namespace Vell::TextLayout {

/// The file of a face as HarfBuzz reads it. It shares the bytes. Web fonts are unpacked, because HarfBuzz
/// does not read them. For files that are no fonts to HarfBuzz, it has no glyphs.
HarfBuzzPtr<hb_face_t> makeHarfBuzzFace(const FontEngine::FontFace& face);

} // namespace Vell::TextLayout
