#pragma once

#include <support/FontBuilder.h>

#include <ft2build.h>
#include FT_FREETYPE_H

#include <cstddef>
#include <set>
#include <string>
#include <vector>

namespace Vell::FontEngine {

enum class Reaction { Throws, CachesNull };

/// A call that fails while a glyph is made.
struct GlyphFault {
    const char* call;
    FT_Error error;
    Reaction reaction;
    const char* text; ///< of the exception
    bool hasGlyph;    ///< the text ends with the glyph and a space
};

const std::vector<GlyphFault>& getBitmapFaults();
const std::vector<GlyphFault>& getOutlineFaults();

/// A call that fails while a face is opened.
struct FaceFault {
    const char* call;
    std::size_t number; ///< which of these calls, 1 for the first
    FT_Error error;
    const char* outcome; ///< the text of the exception, or the face
    bool isBold = false;
    Testing::CharMapKind charMap = Testing::CharMapKind::Unicode;
};

const std::vector<FaceFault>& getFaceFaults();

/// The calls that are made for a colour glyph and may fail.
const std::vector<const char*>& getColorCalls();

/// Calls that return no error, and calls that release, after whose errors nothing can be done.
const std::set<std::string>& getInfallibleCalls();

/// The functions of FreeType that the libraries import.
std::set<std::string> listImportedCalls();

} // namespace Vell::FontEngine
