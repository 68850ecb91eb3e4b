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
    /// Font units in the em of the face that the outlines came from: drawing scales by font size / this.
    unsigned short getUnitsPerEM() const { return _unitsPerEM; }

private:
    std::vector<OutlineGlyph> _glyphs;
    unsigned short _unitsPerEM;
};

} // namespace Vell::FontEngine
