#pragma once

#include <FontEngine/Private/FE_GlyphSources.h>
#include <FontEngine/Private/FE_RecursiveMutex.h>
#include <FontEngine/Renderer/FE_OutlineGlyph.h>
#include <Gfx/Public/Painter.h>

#include <memory>
#include <vector>

namespace Vell::FontEngine {
class FontFactory;
}

namespace Vell::FontEngine::Internal {

class GlyphService;
struct HeldGlyphs;

/// Keeps a factory alive; null as long as nothing needs that.
using FactoryPin = std::shared_ptr<const FontFactory>;

/// The way of faces, which may outlive their factory, to its glyphs. It is shut when the factory ends:
/// nothing is appended from then on. A text whose glyphs are all cached counts no reference to the factory.
class GlyphDoor {
public:
    GlyphDoor(const GlyphService& glyphs, std::shared_ptr<RecursiveMutex> bitmapMutex,
              std::shared_ptr<RecursiveMutex> outlineMutex);

    // GlyphService::append under its lock.
    void append(BitmapSource& source, const LaidGlyphs& laid, HeldGlyphs& run, FactoryPin& pin) const;
    void append(OutlineSource& source, const LaidOutlines& laid, Gfx::Painter& painter,
                std::vector<OutlineGlyph>& glyphs, FactoryPin& pin) const;

    /// Waits until other threads have appended what they are about to.
    void shut();

private:
    std::shared_ptr<RecursiveMutex> _bitmapMutex;
    std::shared_ptr<RecursiveMutex> _outlineMutex;
    const GlyphService* _bitmaps VELL_GUARDED_BY(*_bitmapMutex);
    const GlyphService* _outlines VELL_GUARDED_BY(*_outlineMutex);
};

} // namespace Vell::FontEngine::Internal
