#include <FontEngine/Renderer/FE_BitmapGlyphRun.h>

#include <FontEngine/Private/FE_HeldGlyphs.h>

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

BitmapGlyphRun::BitmapGlyphRun(std::vector<BitmapGlyph> glyphs, FT_BBox_ bbox)
    : _glyphs(std::move(glyphs))
    , _bbox(bbox) {}

BitmapGlyphRun::BitmapGlyphRun(std::vector<BitmapGlyph>&& glyphs, FT_BBox_ bbox,
                               Internal::RunHoldPtr hold) noexcept
    : _glyphs(std::move(glyphs))
    , _bbox(bbox)
    , _hold(std::move(hold)) {}

BitmapGlyphRun::BitmapGlyphRun(const BitmapGlyphRun& other)
    : _glyphs(other._glyphs)
    , _bbox(other._bbox) {}

BitmapGlyphRun::BitmapGlyphRun(BitmapGlyphRun&& other) noexcept = default;

BitmapGlyphRun& BitmapGlyphRun::operator=(const BitmapGlyphRun& other) {
    return *this = BitmapGlyphRun(other);
}

BitmapGlyphRun& BitmapGlyphRun::operator=(BitmapGlyphRun&& other) noexcept {
    std::swap(_glyphs, other._glyphs);
    std::swap(_hold, other._hold);
    _bbox = other._bbox;
    return *this;
}

BitmapGlyphRun::~BitmapGlyphRun() = default;

} // namespace Vell::FontEngine
