#include <FontEngine/Renderer/FE_BitmapGlyph.h>

#include <utility>

namespace Vell::FontEngine {

BitmapGlyph::BitmapGlyph(std::shared_ptr<const FT_BitmapGlyphRec_> data, cinder::Vec2<float> pos,
                         const BitmapGlyphInfo& info)
    : _pos(pos) {
    auto keyed = std::make_shared<Internal::KeyedBitmap>(info);
    keyed->data = std::move(data);
    _keyed = keyed.get();
    _owner = std::shared_ptr<const FT_BitmapGlyphRec_>(keyed, keyed->data.get());
}

} // namespace Vell::FontEngine
