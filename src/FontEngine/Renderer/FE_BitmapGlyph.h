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

/// A bitmap with the key that it was rendered for.
struct KeyedBitmap : BitmapGlyphInfo {
    explicit KeyedBitmap(const BitmapGlyphInfo& info)
        : BitmapGlyphInfo(info) {}

    /// How often the bitmap cache and runs hold it, which do so without owning it. Guarded by the lock of
    /// that cache.
    std::uint32_t holds = 0;
    /// Owns this very object as long as it is held.
    std::shared_ptr<const FT_BitmapGlyphRec_> data;
};

} // namespace Internal

/// A rendered glyph at its place in a run. Shares the bitmap with the cache that it came from and keeps it
/// alive: by itself, or, as long as it stands in the run that it was laid out in, by that run. What is moved
/// from a glyph is copied.
class VELL_API BitmapGlyph {
public:
    /// `pos` is the pen position of the glyph's origin in the painter's logical units, unrounded. Nothing is
    /// checked; the painters need `data` not to be null.
    BitmapGlyph(std::shared_ptr<const FT_BitmapGlyphRec_> data, cinder::Vec2<float> pos,
                const BitmapGlyphInfo& info);
    /// For a run that holds `rendered`.
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
    /// The key that the bitmap was rendered from, with the character of this glyph. Its description is that
    /// of the text; one of Internal::FontFaceInfo may be another object of equal value.
    const BitmapGlyphInfo& getInfo() const { return *_keyed; }

    /// For the run that holds the bitmap and lets go of it: from now on the glyph has no bitmap, or is its
    /// last owner.
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
    std::shared_ptr<const FT_BitmapGlyphRec_> _owner; // of `_keyed`, too; empty where the run holds it
    cinder::Vec2<float> _pos;
};

} // namespace Vell::FontEngine
