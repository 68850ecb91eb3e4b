#pragma once

#include <FontEngine/FE_CacheFigures.h>
#include <FontEngine/Private/FE_GlyphCaches.h>
#include <FontEngine/Private/FE_GlyphSources.h>
#include <FontEngine/Private/FE_HeldGlyphs.h>
#include <FontEngine/Renderer/FE_BitmapGlyph.h>
#include <FontEngine/Renderer/FE_OutlineGlyphRun.h>
#include <Gfx/Public/Painter.h>
#include <cinder/Color.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

namespace Vell::FontEngine::Internal {

class GlyphDoor;

/// Keeps a factory alive; null as long as nothing needs that.
using FactoryPin = std::shared_ptr<const FontFactory>;

/// The glyphs of a factory, each rendered once: the one way to them for factory, faces and text painters. The
/// three caches are locked one by one; an entry is looked up and made under the lock.
///
/// Errors: those of FontFactory's services, with nothing cached for the glyph that failed.
class GlyphService {
public:
    GlyphService();
    ~GlyphService();
    GlyphService(const GlyphService&) = delete;
    GlyphService& operator=(const GlyphService&) = delete;

    // --- One glyph by its key. A find gives a reference to what the cache holds: it is to be copied before
    // another thread can evict it. A copy is safe.

    const BitmapPtr& findBitmap(const BitmapGlyphInfo& info, const FontFace& face, bool flipVertically) const;
    BitmapPtr copyBitmap(const BitmapGlyphInfo& info, const FontFace& face, bool flipVertically) const;
    ImagePtr copyImage(const BitmapGlyph& glyph, const cinder::ColorAT<unsigned char>& color) const;
    const PathPtr& findPath(const GlyphInfo& info, const NNPtr<const FontFace>& face,
                            Gfx::Painter& painter) const;
    PathPtr copyPath(const GlyphInfo& info, const NNPtr<const FontFace>& face, Gfx::Painter& painter) const;

    // --- Glyphs of a run, as if each were asked for by its key, one after the other. The lock is taken once
    // for all glyphs of a call.

    const std::shared_ptr<GlyphDoor>& shareDoor() const { return _door; }
    /// Appends those that have a bitmap. There must be room for all. A glyph that has to be made needs the
    /// factory, which `pin` keeps from then on; where the factory is about to end, nothing more is appended.
    void append(BitmapSource& source, const LaidGlyphs& laid, HeldGlyphs& run, FactoryPin& pin) const
        VELL_REQUIRES(_bitmaps.getMutex());
    /// `road` is empty at first and belongs to the run from then on.
    ImagePtr copyImage(std::optional<ImageCache::Road>& road, const BitmapGlyph& glyph,
                       const cinder::ColorAT<unsigned char>& color) const;
    /// Appends those that have an outline.
    void append(OutlineSource& source, const LaidOutlines& laid, Gfx::Painter& painter,
                std::vector<OutlineGlyph>& glyphs, FactoryPin& pin) const VELL_REQUIRES(_outlines.getMutex());

    // --- The caches as such.

    CacheFigures getBitmapFigures() const { return _bitmaps.getFigures(); }
    CacheFigures getImageFigures() const { return _images.getFigures(); }
    CacheFigures getOutlineFigures() const { return _outlines.getFigures(); }

    /// Ends all glyphs, bitmaps first. The caller has the caches to itself; runs may end on other threads.
    void clear();

    /// Empty caches with a limit in bytes each; what they have taken over ends with them, bitmaps first.
    struct Budget {
        explicit Budget(std::uint64_t maxBytes)
            : images(0, maxBytes)
            , bitmaps(std::in_place, 0, maxBytes) {}
        ~Budget();
        Budget(const Budget&) = delete;
        Budget& operator=(const Budget&) = delete;

        ImageCache::Cache images;
        std::optional<BitmapCache::Cache> bitmaps;
        std::shared_ptr<RecursiveMutex> mutex; ///< of the bitmaps taken over
    };
    /// Takes over the limits and leaves bitmaps and images to `budget`. Outlines stay. Takes no lock.
    void exchange(Budget& budget);

private:
    const BitmapCache::Node& getBitmap(const BitmapGlyphInfo& info, const FontFace& face,
                                       bool flipVertically) const VELL_REQUIRES(_bitmaps.getMutex());
    const BitmapCache::Node& getBitmapOf(BitmapSource& source, const LaidGlyph& glyph) const
        VELL_REQUIRES(_bitmaps.getMutex());
    const ImageCache::Node& getImage(const BitmapGlyph& glyph,
                                     const cinder::ColorAT<unsigned char>& color) const
        VELL_REQUIRES(_images.getMutex());
    const OutlineCache::Node& getPath(const GlyphInfo& info, const NNPtr<const FontFace>& face,
                                      Gfx::Painter& painter) const VELL_REQUIRES(_outlines.getMutex());

    // Destroyed from the last to the first.
    mutable RunHolds _holds VELL_GUARDED_BY(_bitmaps.getMutex());
    BitmapCache _bitmaps;
    ImageCache _images;
    OutlineCache _outlines;
    std::shared_ptr<GlyphDoor> _door;
};

/// The way of faces, which may outlive their factory, to its glyphs. It is shut when the factory ends:
/// nothing is appended from then on. A text whose glyphs are all cached counts no reference to the factory.
class GlyphDoor {
public:
    GlyphDoor(const GlyphService& glyphs, std::shared_ptr<RecursiveMutex> bitmapMutex,
              std::shared_ptr<RecursiveMutex> outlineMutex);

    // GlyphService::append, under its lock.
    void append(BitmapSource& source, const LaidGlyphs& laid, HeldGlyphs& run, FactoryPin& pin) const;
    void append(OutlineSource& source, const LaidOutlines& laid, Gfx::Painter& painter,
                std::vector<OutlineGlyph>& glyphs, FactoryPin& pin) const;

    /// Waits for threads that are appending.
    void shut();

private:
    std::shared_ptr<RecursiveMutex> _bitmapMutex;
    std::shared_ptr<RecursiveMutex> _outlineMutex;
    const GlyphService* _bitmaps VELL_GUARDED_BY(*_bitmapMutex);
    const GlyphService* _outlines VELL_GUARDED_BY(*_outlineMutex);
};

} // namespace Vell::FontEngine::Internal
