#pragma once

#include <ft2build.h>
#include FT_FREETYPE_H

namespace Vell::FontEngine::Internal {

/// Whether a call of FreeType has succeeded. What fails because of the font makes a glyph absent; what fails
/// for lack of memory is no property of the font, so this throws FreeTypeException.
bool isCallDone(FT_Error error, const char* call);

} // namespace Vell::FontEngine::Internal
