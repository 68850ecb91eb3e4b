#pragma once

#include <FontEngine/Private/FE_RecursiveMutex.h>
#include <FontEngine/Renderer/FE_BitmapGlyph.h>
#include <FontEngine/Renderer/FE_BitmapGlyphRun.h>

#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

namespace Vell::FontEngine::Internal {

/// Ends what a run holds, under the lock of its cache. What ends with it ends with the glyphs, after the
/// lock.
void letGo(std::vector<BitmapGlyph>& glyphs, RecursiveMutex& mutex) noexcept;

/// The glyphs of a run that is being laid out, held as in the finished run.
class HeldGlyphs {
public:
    HeldGlyphs(std::size_t capacity, std::shared_ptr<RecursiveMutex> mutex)
        : _mutex(std::move(mutex)) {
        glyphs.reserve(capacity);
    }
    ~HeldGlyphs() {
        if (_mutex != nullptr) {
            letGo(glyphs, *_mutex);
        }
    }
    HeldGlyphs(const HeldGlyphs&) = delete;
    HeldGlyphs& operator=(const HeldGlyphs&) = delete;

    BitmapGlyphRun finish(FT_BBox box) && {
        return BitmapGlyphRun(std::move(glyphs), box, std::move(_mutex));
    }

    std::vector<BitmapGlyph> glyphs;

private:
    std::shared_ptr<RecursiveMutex> _mutex;
};

} // namespace Vell::FontEngine::Internal
