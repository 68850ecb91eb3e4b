#include <FontEngine/Renderer/FE_BitmapGlyph.h>

#include <utility>

namespace Vell::FontEngine {

BitmapGlyph::BitmapGlyph(std::shared_ptr<const FT_BitmapGlyphRec_> data, cinder::Vec2<float> pos,
                         const BitmapGlyphInfo& info)
    : _data(std::move(data))
    , _pos(pos)
    , _info(info) {}

} // namespace Vell::FontEngine
