#include <FontEngine/Private/FE_GlyphDoor.h>

#include <FontEngine/Private/FE_GlyphService.h>

#include <utility>

namespace Vell::FontEngine::Internal {

GlyphDoor::GlyphDoor(const GlyphService& glyphs, std::shared_ptr<RecursiveMutex> bitmapMutex,
                     std::shared_ptr<RecursiveMutex> outlineMutex)
    : _bitmapMutex(std::move(bitmapMutex))
    , _outlineMutex(std::move(outlineMutex))
    , _bitmaps(&glyphs)
    , _outlines(&glyphs) {}

// The analysis does not know that these are the locks of the service.
void GlyphDoor::append(BitmapSource& source, const LaidGlyphs& laid, HeldGlyphs& run,
                       FactoryPin& pin) const VELL_NO_THREAD_SAFETY_ANALYSIS {
    const RecursiveLock lock(*_bitmapMutex);
    if (_bitmaps != nullptr) {
        _bitmaps->append(source, laid, run, pin);
    }
}

void GlyphDoor::append(OutlineSource& source, const LaidOutlines& laid, Gfx::Painter& painter,
                       std::vector<OutlineGlyph>& glyphs,
                       FactoryPin& pin) const VELL_NO_THREAD_SAFETY_ANALYSIS {
    const RecursiveLock lock(*_outlineMutex);
    if (_outlines != nullptr) {
        _outlines->append(source, laid, painter, glyphs, pin);
    }
}

void GlyphDoor::shut() {
    {
        const RecursiveLock lock(*_bitmapMutex);
        _bitmaps = nullptr;
    }
    const RecursiveLock lock(*_outlineMutex);
    _outlines = nullptr;
}

} // namespace Vell::FontEngine::Internal
