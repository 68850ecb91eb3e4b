#pragma once

#include <FontEngine/FE_GlyphInfo.h>
#include <Utils/Public/Export.h>
#include <cinder/Vector.h>

#include <ft2build.h>
#include FT_GLYPH_H
#include FT_IMAGE_H

#include <boost/intrusive/pointer_plus_bits.hpp>

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace Vell::FontEngine {

namespace Internal {

class RunHold;
struct RenderedGlyph;

/// A bitmap and the key that it was rendered for. It is destroyed with its last reference.
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
    /// Owns this object itself as long as there are references.
    std::shared_ptr<const FT_BitmapGlyphRec_> data;

private:
    void end() noexcept;
};

struct RunHoldEnd {
    void operator()(RunHold* hold) const noexcept;
};

using RunHoldPtr = std::unique_ptr<RunHold, RunHoldEnd>;

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
    /// Only for a run that holds `rendered`. `x` and `y` are the position.
    BitmapGlyph(Internal::RenderedGlyph& rendered, float x, float y);
    BitmapGlyph(const BitmapGlyph& other) noexcept
        : _keyed(other.share())
        , _pos(other._pos) {}
    BitmapGlyph& operator=(const BitmapGlyph& other) noexcept {
        if (this != &other) {
            Internal::KeyedBitmap* const shared = other.share();
            _pos = other._pos;
            release(); // may destroy what a client put into a key, and with it `other`
            _keyed = shared;
        }
        return *this;
    }
    ~BitmapGlyph() { release(); }

    const std::shared_ptr<const FT_BitmapGlyphRec_>& getData() const { return getKeyed().data; }
    cinder::Vec2<float> getPos() const { return _pos; }
    /// The key that the bitmap was rendered for, with the character of this glyph. Its face description is
    /// the text's or, for descriptions of class Internal::FontFaceInfo, possibly another object of equal
    /// value.
    const BitmapGlyphInfo& getInfo() const { return getKeyed(); }

    /// Only for the run, to add a reference for this glyph without changing the glyph, which others may read.
    void hold(const Internal::RunHold&) const noexcept {
        if (!isOwner()) {
            getKeyed().addReference();
        }
    }
    /// Only for the run, to hand that reference over to the glyph.
    void own(const Internal::RunHold&) noexcept { Pointer::set_bits(_keyed, ownerBit); }

private:
    using Pointer = boost::intrusive::pointer_plus_bits<Internal::KeyedBitmap*, 1>;
    static constexpr std::size_t ownerBit = 1;

    Internal::KeyedBitmap& getKeyed() const noexcept { return *Pointer::get_pointer(_keyed); }
    bool isOwner() const noexcept { return Pointer::get_bits(_keyed) == ownerBit; }

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

    Internal::KeyedBitmap* _keyed; // the lowest bit is set if the glyph owns a reference
    cinder::Vec2<float> _pos;
};

/// A text laid out as bitmaps, in text order. Only assignment changes a run.
///
/// A run from a text painter or a PlacedGlyphRun holds its bitmaps together, which costs a fraction of
/// counting a reference to each. A copy of the run counts them one by one.
///
/// Threads: any number of threads may read one run at once, and any thread may destroy it. Its destructor
/// takes the lock of the bitmap cache that the bitmaps came from, which outlives the factory.
class VELL_API BitmapGlyphRun {
public:
    BitmapGlyphRun(std::vector<BitmapGlyph> glyphs, FT_BBox_ bbox);
    /// Only for the layout. `hold` keeps the bitmaps of the glyphs that own no reference.
    BitmapGlyphRun(std::vector<BitmapGlyph>&& glyphs, FT_BBox_ bbox, Internal::RunHoldPtr hold) noexcept;
    BitmapGlyphRun(const BitmapGlyphRun& other);
    BitmapGlyphRun(BitmapGlyphRun&& other) noexcept;
    BitmapGlyphRun& operator=(const BitmapGlyphRun& other);
    BitmapGlyphRun& operator=(BitmapGlyphRun&& other) noexcept;
    ~BitmapGlyphRun();

    const std::vector<BitmapGlyph>& getGlyphs() const { return _glyphs; }

    /// The union of the glyphs' boxes in device pixels, y pointing up, each box relative to the origin of its
    /// own glyph. Its height is the ink height of the run, but its width is not the run's width. All zero for
    /// an empty run.
    const FT_BBox_& getBBox() const { return _bbox; }

private:
    std::vector<BitmapGlyph> _glyphs;
    FT_BBox_ _bbox;
    Internal::RunHoldPtr _hold; // null if all glyphs own their references; ends before them
};

} // namespace Vell::FontEngine
