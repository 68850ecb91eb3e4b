#pragma once

#include <FontEngine/FE_BitmapGlyphInfo.h>
#include <Utils/Public/Export.h>
#include <cinder/Vector.h>

#include <ft2build.h>
#include FT_GLYPH_H

#include <boost/intrusive/pointer_plus_bits.hpp>

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>

namespace Vell::FontEngine {

namespace Internal {

class RunHold;
struct RenderedGlyph;

/// A bitmap with the key that it was rendered for. Ends with the last of its references.
struct VELL_API KeyedBitmap : BitmapGlyphInfo {
    explicit KeyedBitmap(const BitmapGlyphInfo& info)
        : BitmapGlyphInfo(info) {}

    void addReference() noexcept { references.fetch_add(1, std::memory_order_relaxed); }
    void dropReference() noexcept {
        if (references.fetch_sub(1, std::memory_order_acq_rel) == 1) {
            end();
        }
    }

    std::atomic<std::uint32_t> references{1};
    /// Owns this very object as long as there are references.
    std::shared_ptr<const FT_BitmapGlyphRec_> data;

private:
    void end() noexcept;
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
    /// For a run that holds `rendered`; at `x` on the base line.
    BitmapGlyph(Internal::RenderedGlyph& rendered, float x);
    BitmapGlyph(const BitmapGlyph& other) noexcept
        : _keyed(other.share())
        , _pos(other._pos) {}
    BitmapGlyph& operator=(const BitmapGlyph& other) noexcept {
        Internal::KeyedBitmap* const shared = other.share();
        release();
        _keyed = shared;
        _pos = other._pos;
        return *this;
    }
    ~BitmapGlyph() { release(); }

    const std::shared_ptr<const FT_BitmapGlyphRec_>& getData() const { return getKeyed().data; }
    cinder::Vec2<float> getPos() const { return _pos; }
    /// The key that the bitmap was rendered from, with the character of this glyph. Its description is that
    /// of the text; one of Internal::FontFaceInfo may be another object of equal value.
    const BitmapGlyphInfo& getInfo() const { return getKeyed(); }

    /// For the run that keeps the bitmap: adds the reference of this glyph to it, without changing the glyph.
    void hold(const Internal::RunHold&) const noexcept {
        if (!isOwner()) {
            getKeyed().addReference();
        }
    }
    /// The reference that was added is the glyph's own from now on.
    void own(const Internal::RunHold&) noexcept { Pointer::set_bits(_keyed, ownerBit); }

private:
    using Pointer = boost::intrusive::pointer_plus_bits<Internal::KeyedBitmap*, 1>;
    static constexpr std::size_t ownerBit = 1;

    Internal::KeyedBitmap& getKeyed() const noexcept { return *Pointer::get_pointer(_keyed); }
    bool isOwner() const noexcept { return Pointer::get_bits(_keyed) == ownerBit; }

    /// What an owner's `_keyed` is.
    Internal::KeyedBitmap* share() const noexcept {
        getKeyed().addReference();
        Internal::KeyedBitmap* shared = &getKeyed();
        Pointer::set_bits(shared, ownerBit);
        return shared;
    }
    void release() const noexcept {
        if (isOwner()) {
            getKeyed().dropReference();
        }
    }

    Internal::KeyedBitmap* _keyed; // with a bit: whether it is a reference; if not, the run holds the bitmap
    cinder::Vec2<float> _pos;
};

} // namespace Vell::FontEngine
