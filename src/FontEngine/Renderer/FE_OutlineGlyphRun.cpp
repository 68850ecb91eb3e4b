#include <FontEngine/Renderer/FE_OutlineGlyphRun.h>

#include <utility>

namespace Vell::FontEngine {

OutlineGlyphRun::OutlineGlyphRun(std::vector<OutlineGlyph> glyphs, unsigned short unitsPerEM)
    : _glyphs(std::move(glyphs))
    , _unitsPerEM(unitsPerEM) {}

} // namespace Vell::FontEngine
