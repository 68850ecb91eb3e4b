#pragma once

#include <FontEngine/Renderer/FE_OutlineGlyph.h>
#include <Utils/Public/Export.h>

#include <vector>

namespace Vell::FontEngine {

/// A text laid out as outlines, in text order. Immutable; any number of threads may read it.
class VELL_API OutlineGlyphRun {
public:
    OutlineGlyphRun(std::vector<OutlineGlyph> glyphs, unsigned short unitsPerEM);

    const std::vector<OutlineGlyph>& getGlyphs() const { return _glyphs; }
    /// The font units per em of the outlines' face: drawing scales by font size / units per em.
    unsigned short getUnitsPerEM() const { return _unitsPerEM; }

private:
    std::vector<OutlineGlyph> _glyphs;
    unsigned short _unitsPerEM;
};

} // namespace Vell::FontEngine
