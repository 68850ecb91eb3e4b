#include <FontEngine/Renderer/FE_BitmapGlyph.h>

#include <utility>

namespace Vell::FontEngine {

namespace {

/// The bitmap of a glyph that a client has made.
struct ClientBitmap : Internal::KeyedBitmap {
    ClientBitmap(std::shared_ptr<const FT_BitmapGlyphRec_> clientData, const BitmapGlyphInfo& info)
        : KeyedBitmap(info)
        , source(std::move(clientData)) {}

    std::shared_ptr<const FT_BitmapGlyphRec_> source;
};

} // namespace

void Internal::KeyedBitmap::end() noexcept {
    const std::shared_ptr<const FT_BitmapGlyphRec_> last = std::move(data);
}

BitmapGlyph::BitmapGlyph(std::shared_ptr<const FT_BitmapGlyphRec_> data, cinder::Vec2<float> pos,
                         const BitmapGlyphInfo& info)
    : _pos(pos) {
    const auto keyed = std::make_shared<ClientBitmap>(std::move(data), info);
    keyed->data = std::shared_ptr<const FT_BitmapGlyphRec_>(keyed, keyed->source.get());
    _keyed = keyed.get();
    Pointer::set_bits(_keyed, ownerBit);
}

} // namespace Vell::FontEngine
