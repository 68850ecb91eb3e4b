#pragma once

#include <FontEngine/FE_BitmapGlyphInfo.h>
#include <Utils/Public/Export.h>
#include <cinder/Vector.h>

#include <ft2build.h>
#include FT_GLYPH_H

#include <cstdint>
#include <memory>
#include <utility>

namespace Vell::FontEngine {

namespace Internal {

class RecursiveLock;
struct RenderedGlyph;

/// A bitmap and the key that it was rendered for.
struct KeyedBitmap : BitmapGlyphInfo {
    explicit KeyedBitmap(const BitmapGlyphInfo& info)
        : BitmapGlyphInfo(info) {}

    /// The number of holders: the bitmap cache and runs hold this object without owning it. Guarded by the
    /// lock of the cache.
    std::uint32_t holds = 0;
    /// Owns this object itself as long as it has holders.
    std::shared_ptr<const FT_BitmapGlyphRec_> data;
};

} // namespace Internal

/// A rendered glyph at its position in a run. It shares its bitmap with the cache. A glyph in the run that it
/// was laid out in relies on that run to keep the bitmap alive; a copy keeps the bitmap alive itself. Moving
/// a glyph copies it.
class VELL_API BitmapGlyph {
public:
    /// `pos` is the pen position of the glyph's origin in the painter's logical units, unrounded. The
    /// constructor checks nothing, but the painters require that `data` is not null.
    BitmapGlyph(std::shared_ptr<const FT_BitmapGlyphRec_> data, cinder::Vec2<float> pos,
                const BitmapGlyphInfo& info);
    /// Only for a run that holds `rendered`.
    BitmapGlyph(Internal::RenderedGlyph& rendered, cinder::Vec2<float> pos);
    BitmapGlyph(const BitmapGlyph& other) noexcept
        : _keyed(other._keyed)
        , _owner(other.shareOwner())
        , _pos(other._pos) {}
    BitmapGlyph& operator=(const BitmapGlyph& other) noexcept {
        if (this != &other) {
            _owner = other.shareOwner();
            _keyed = other._keyed;
            _pos = other._pos;
        }
        return *this;
    }
    ~BitmapGlyph() = default;

    const std::shared_ptr<const FT_BitmapGlyphRec_>& getData() const {
        return _owner != nullptr ? _owner : _keyed->data;
    }
    cinder::Vec2<float> getPos() const { return _pos; }
    /// The key that the bitmap was rendered for, with the character of this glyph. Its face description is
    /// the text's or, for descriptions of class Internal::FontFaceInfo, possibly another object of equal
    /// value.
    const BitmapGlyphInfo& getInfo() const { return *_keyed; }

    /// Only for the run, to end its hold. After this the glyph has no bitmap, or is the bitmap's last owner.
    void letGo(const Internal::RecursiveLock&) noexcept {
        if (isHeld() && --_keyed->holds == 0) {
            _owner = std::move(_keyed->data);
        }
    }

private:
    bool isHeld() const { return _owner.use_count() == 0; }

    const std::shared_ptr<const FT_BitmapGlyphRec_>& shareOwner() const noexcept {
        return isHeld() ? _keyed->data : _owner;
    }

    Internal::KeyedBitmap* _keyed;
    std::shared_ptr<const FT_BitmapGlyphRec_> _owner; // owns `_keyed`, too; empty if the run holds it
    cinder::Vec2<float> _pos;
};

} // namespace Vell::FontEngine
