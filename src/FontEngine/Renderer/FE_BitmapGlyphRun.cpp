#include <FontEngine/Renderer/FE_BitmapGlyphRun.h>

#include <FontEngine/Private/FE_HeldGlyphs.h>

#include <utility>

namespace Vell::FontEngine {

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
