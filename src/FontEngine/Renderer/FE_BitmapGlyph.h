#pragma once

#include <FontEngine/FE_BitmapGlyphInfo.h>
#include <Utils/Public/Export.h>
#include <cinder/Vector.h>

#include <ft2build.h>
#include FT_GLYPH_H

#include <memory>
#include <utility>

namespace Vell::FontEngine {

namespace Internal {
struct RenderedGlyph;
}

/// A rendered glyph at its place in a run. Shares the bitmap with the cache that it came from and keeps it
/// alive. A glyph that was moved from has no bitmap, but still its key.
class VELL_API BitmapGlyph {
public:
    /// `pos` is the pen position of the glyph's origin in the painter's logical units, unrounded. Nothing is
    /// checked; the painters need `data` not to be null.
    BitmapGlyph(std::shared_ptr<const FT_BitmapGlyphRec_> data, cinder::Vec2<float> pos,
                const BitmapGlyphInfo& info);
    /// For the layout, without a copy of the key: `data` owns `rendered`.
    BitmapGlyph(const std::shared_ptr<const FT_BitmapGlyphRec_>& data, cinder::Vec2<float> pos,
                const Internal::RenderedGlyph& rendered);
    BitmapGlyph(const BitmapGlyph&) = default;
    BitmapGlyph(BitmapGlyph&& other) noexcept
        : _data(std::move(other._data))
        , _info(other._info)
        , _pos(other._pos) {
        other.dropData(_data);
    }
    BitmapGlyph& operator=(const BitmapGlyph&) = default;
    BitmapGlyph& operator=(BitmapGlyph&& other) noexcept {
        if (this != &other) {
            _data = std::move(other._data);
            _info = other._info;
            _pos = other._pos;
            other.dropData(_data);
        }
        return *this;
    }
    ~BitmapGlyph() = default;

    const std::shared_ptr<const FT_BitmapGlyphRec_>& getData() const { return _data; }
    cinder::Vec2<float> getPos() const { return _pos; }
    /// The key that the bitmap was rendered from.
    const BitmapGlyphInfo& getInfo() const { return *_info; }

private:
    void dropData(const std::shared_ptr<const FT_BitmapGlyphRec_>& owner) {
        _data = std::shared_ptr<const FT_BitmapGlyphRec_>(owner, nullptr);
    }

    std::shared_ptr<const FT_BitmapGlyphRec_> _data; // owns what it points to and the key
    const BitmapGlyphInfo* _info;
    cinder::Vec2<float> _pos;
};

} // namespace Vell::FontEngine
