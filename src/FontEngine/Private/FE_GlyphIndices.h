#pragma once

#include <ft2build.h>
#include FT_FREETYPE_H

namespace Vell::FontEngine::Internal {

/// Whether a face has a glyph of this index. FreeType must not be asked for any other one: not all of its
/// drivers look before they read.
inline bool hasGlyph(const FT_FaceRec& face, unsigned long glyphIndex) {
    return face.num_glyphs > 0 && glyphIndex < static_cast<unsigned long>(face.num_glyphs);
}

} // namespace Vell::FontEngine::Internal
