#pragma once

#include <FontEngine/FE_CacheFigures.h>
#include <FontEngine/Private/FE_GlyphCaches.h>
#include <FontEngine/Private/FE_GlyphSources.h>
#include <FontEngine/Private/FE_HeldGlyphs.h>
#include <FontEngine/Renderer/FE_BitmapGlyphRun.h>
#include <FontEngine/Renderer/FE_OutlineGlyphRun.h>
#include <Gfx/Public/Painter.h>
#include <cinder/Color.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

namespace Vell::FontEngine::Internal {

class GlyphAccess;

/// Keeps a factory alive. Null until something needs the factory.
using FactoryPin = std::shared_ptr<const FontFactory>;

/// The glyphs of a factory, each rendered once. The factory, its faces and the text painters all get their
/// glyphs here. Each of the three caches has its own lock, and an entry is looked up and made under that
/// lock.
///
/// Errors: those of FontFactory's services. A glyph that fails is not cached.
class GlyphService {
public:
    GlyphService();
    ~GlyphService();
    GlyphService(const GlyphService&) = delete;
    GlyphService& operator=(const GlyphService&) = delete;

    // --- One glyph by its key. A `find` returns a reference into the cache; copy the pointer before another
    // thread can evict the entry. A `copy` does that under the lock.

    const BitmapPtr& findBitmap(const BitmapGlyphInfo& info, const FontFace& face, bool flipVertically) const;
    BitmapPtr copyBitmap(const BitmapGlyphInfo& info, const FontFace& face, bool flipVertically) const;
    ImagePtr copyImage(const BitmapGlyph& glyph, const cinder::ColorAT<unsigned char>& color) const;
    const PathPtr& findPath(const GlyphInfo& info, const NNPtr<const FontFace>& face,
                            Gfx::Painter& painter) const;
    PathPtr copyPath(const GlyphInfo& info, const NNPtr<const FontFace>& face, Gfx::Painter& painter) const;

    // --- Glyphs of a run. The caches behave as if the caller had requested each glyph by its key, one after
    // the other, but one lock serves all glyphs of a call.

    const std::shared_ptr<GlyphAccess>& shareAccess() const { return _access; }
    /// Appends the glyphs that have a bitmap. The run must have room for all. Making a glyph needs the
    /// factory, which `pin` keeps alive from then on. If the factory is being destroyed, the call stops at
    /// the first glyph that it would have to make.
    void append(BitmapSource& source, const PendingGlyphs& pending, HeldGlyphs& run, FactoryPin& pin) const
        VELL_REQUIRES(_bitmaps.getMutex());
    /// `strike` is empty for the first glyph of a run. Pass the same object for the run's other glyphs.
    ImagePtr copyImage(std::optional<ImageCache::Handle>& strike, const BitmapGlyph& glyph,
                       const cinder::ColorAT<unsigned char>& color) const;
    /// Appends the glyphs that have an outline, like append for bitmaps.
    void append(OutlineSource& source, const PendingOutlines& pending, Gfx::Painter& painter,
                std::vector<OutlineGlyph>& glyphs, FactoryPin& pin) const VELL_REQUIRES(_outlines.getMutex());
    /// Sets `paths[i]` to the path of `glyphIndices[i]`. Stops like append.
    void copyPaths(OutlineSource& source, const unsigned short* glyphIndices, std::size_t count,
                   Gfx::Painter& painter, PathPtr* paths, FactoryPin& pin) const
        VELL_REQUIRES(_outlines.getMutex());

    // --- The caches themselves.

    CacheFigures getBitmapFigures() const { return _bitmaps.getFigures(); }
    CacheFigures getImageFigures() const { return _images.getFigures(); }
    CacheFigures getOutlineFigures() const { return _outlines.getFigures(); }

    /// Destroys all glyphs, bitmaps first. The caller needs exclusive use of the caches, but other threads
    /// may destroy runs.
    void clear();

    /// Empty caches with a limit in bytes each. After exchange they hold the old entries, which the
    /// destructor destroys, bitmaps first.
    struct Budget {
        explicit Budget(std::uint64_t maxBytes)
            : images(0, maxBytes)
            , bitmaps(std::in_place, 0, maxBytes) {}
        ~Budget();
        Budget(const Budget&) = delete;
        Budget& operator=(const Budget&) = delete;

        ImageCache::Cache images;
        std::optional<BitmapCache::Cache> bitmaps;
        std::shared_ptr<RecursiveMutex> mutex; ///< of the old bitmaps; null before exchange
    };
    /// Takes over the limits of `budget` and moves the bitmaps and images into it. Outlines stay. The caller
    /// needs exclusive use of the caches, but other threads may destroy runs.
    void exchange(Budget& budget);

private:
    const BitmapCache::Node& getBitmap(const BitmapGlyphInfo& info, const FontFace& face,
                                       bool flipVertically) const VELL_REQUIRES(_bitmaps.getMutex());
    const BitmapCache::Node& getBitmapFor(BitmapSource& source, const PendingGlyph& glyph) const
        VELL_REQUIRES(_bitmaps.getMutex());
    const ImageCache::Node& getImage(const BitmapGlyph& glyph,
                                     const cinder::ColorAT<unsigned char>& color) const
        VELL_REQUIRES(_images.getMutex());
    const OutlineCache::Node& getPath(const GlyphInfo& info, const NNPtr<const FontFace>& face,
                                      Gfx::Painter& painter) const VELL_REQUIRES(_outlines.getMutex());
    /// Returns null if the factory is being destroyed and the path is not cached.
    const OutlineCache::Node* getPathFor(OutlineSource& source, unsigned short glyphIndex,
                                         Gfx::Painter& painter, FactoryPin& pin) const
        VELL_REQUIRES(_outlines.getMutex());
    /// getPathFor for a path that the strike does not know.
    const OutlineCache::Node* makePathFor(OutlineSource& source, unsigned short glyphIndex,
                                          Gfx::Painter& painter, FactoryPin& pin) const
        VELL_REQUIRES(_outlines.getMutex());

    // The destructor destroys the last member first.
    mutable RunHolds _holds VELL_GUARDED_BY(_bitmaps.getMutex());
    BitmapCache _bitmaps;
    ImageCache _images;
    OutlineCache _outlines;
    std::shared_ptr<GlyphAccess> _access;
};

/// Gives faces access to the glyphs of their factory, which they may outlive. The factory's destructor closes
/// the access, which appends nothing from then on. A text whose glyphs are all cached takes no reference to
/// the factory.
class GlyphAccess {
public:
    GlyphAccess(const GlyphService& glyphs, std::shared_ptr<RecursiveMutex> bitmapMutex,
                std::shared_ptr<RecursiveMutex> outlineMutex);

    /// Prepares the run for `count` more glyphs that append adds.
    void makeRoom(HeldGlyphs& run, std::size_t count) const { run.makeRoom(count, *_bitmapMutex); }

    // The operations of GlyphService, under its lock.
    void append(BitmapSource& source, const PendingGlyphs& pending, HeldGlyphs& run, FactoryPin& pin) const;
    void append(OutlineSource& source, const PendingOutlines& pending, Gfx::Painter& painter,
                std::vector<OutlineGlyph>& glyphs, FactoryPin& pin) const;
    void copyPaths(OutlineSource& source, const unsigned short* glyphIndices, std::size_t count,
                   Gfx::Painter& painter, PathPtr* paths, FactoryPin& pin) const;

    /// Closes the access. Waits for threads that are appending.
    void close();

private:
    std::shared_ptr<RecursiveMutex> _bitmapMutex;
    std::shared_ptr<RecursiveMutex> _outlineMutex;
    const GlyphService* _bitmaps VELL_GUARDED_BY(*_bitmapMutex);
    const GlyphService* _outlines VELL_GUARDED_BY(*_outlineMutex);
};

} // namespace Vell::FontEngine::Internal
