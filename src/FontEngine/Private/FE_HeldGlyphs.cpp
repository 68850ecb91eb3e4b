#include <FontEngine/Private/FE_HeldGlyphs.h>

#include <algorithm>

namespace Vell::FontEngine::Internal {

void letGo(std::vector<BitmapGlyph>& glyphs, RecursiveMutex& mutex) noexcept {
    constexpr std::size_t atOnce = 1024; // other threads wait no longer than for these
    for (std::size_t first = 0; first < glyphs.size(); first += atOnce) {
        const RecursiveLock lock(mutex);
        const std::size_t end = std::min(glyphs.size(), first + atOnce);
        for (std::size_t i = first; i != end; ++i) {
            glyphs[i].letGo(lock);
        }
    }
}

} // namespace Vell::FontEngine::Internal
