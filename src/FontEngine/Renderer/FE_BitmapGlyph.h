#pragma once

#include <FontEngine/FE_BitmapGlyphInfo.h>
#include <FontEngine/FE_RunAccessTag.h>
#include <Utils/Public/Export.h>
#include <cinder/Vector.h>

#include <ft2build.h>
#include FT_GLYPH_H

#include <memory>
#include <utility>

namespace Vell::FontEngine {

/// A rendered glyph at its place in a run. Shares the bitmap with the cache that it came from and keeps it
/// alive.
class VELL_API BitmapGlyph {
public:
    /// `pos` is the pen position of the glyph's origin in the painter's logical units, unrounded. Nothing is
    /// checked; the painters need `data` not to be null.
    BitmapGlyph(std::shared_ptr<const FT_BitmapGlyphRec_> data, cinder::Vec2<float> pos,
                const BitmapGlyphInfo& info)
        : _data(std::move(data))
        , _pos(pos)
        , _info(info) {}
    /// Without a bitmap, over a key that is built from the other arguments.
    template <class... KeyFields>
    BitmapGlyph(Internal::RunAccessTag tag, const cinder::Vec2<float>& pos, KeyFields&&... keyFields)
        : _pos(pos)
        , _info(tag, std::forward<KeyFields>(keyFields)...) {}

    const std::shared_ptr<const FT_BitmapGlyphRec_>& getData() const { return _data; }
    cinder::Vec2<float> getPos() const { return _pos; }
    /// The key that the bitmap was rendered from.
    const BitmapGlyphInfo& getInfo() const { return _info; }

private:
    friend class Internal::RunServices;

    std::shared_ptr<const FT_BitmapGlyphRec_> _data;
    cinder::Vec2<float> _pos;
    BitmapGlyphInfo _info;
};

} // namespace Vell::FontEngine
