#include <FontEngine/Renderer/FE_BitmapGlyphRun.h>

#include <utility>

namespace Vell::FontEngine {

BitmapGlyphRun::BitmapGlyphRun(std::vector<BitmapGlyph> glyphs, FT_BBox_ bbox)
    : _glyphs(std::move(glyphs))
    , _bbox(bbox) {}

} // namespace Vell::FontEngine
