#pragma once

#include <FontEngine/FE_GlyphInfo.h>

namespace Vell::FontEngine::Internal {

/// Throws FreeTypeException unless `error` is FreeType's success. `format` has two placeholders: the error
/// code and the index of the glyph.
void throwIfGlyphFailed(const char* format, int error, const GlyphInfo& info);

} // namespace Vell::FontEngine::Internal
