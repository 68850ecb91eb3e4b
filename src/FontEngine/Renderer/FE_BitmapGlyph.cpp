#include <FontEngine/Renderer/FE_BitmapGlyph.h>

namespace Vell::FontEngine {

namespace {

/// A bitmap of whoever it may be with a key for it.
struct KeyedBitmap {
    std::shared_ptr<const FT_BitmapGlyphRec_> data;
    BitmapGlyphInfo info;
};

} // namespace

BitmapGlyph::BitmapGlyph(std::shared_ptr<const FT_BitmapGlyphRec_> data, cinder::Vec2<float> pos,
                         const BitmapGlyphInfo& info)
    : _pos(pos) {
    const auto keyed = std::make_shared<const KeyedBitmap>(KeyedBitmap{std::move(data), info});
    _data = std::shared_ptr<const FT_BitmapGlyphRec_>(keyed, keyed->data.get());
    _info = &keyed->info;
}

} // namespace Vell::FontEngine
