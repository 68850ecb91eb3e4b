#include <FontEngine/Private/FE_HeldGlyphs.h>

#include <algorithm>

namespace Vell::FontEngine::Internal {

void RunHold::addReferences() noexcept {
    for (; _referencedSize != _size; ++_referencedSize) {
        _glyphs[_referencedSize].hold(*this);
    }
}

void RunHold::own() noexcept {
    for (std::size_t i = 0; i != _referencedSize; ++i) {
        _glyphs[i].own(*this);
    }
}

void RunHoldEnd::operator()(RunHold* hold) const noexcept {
    {
        const RecursiveLock lock(*hold->_mutex);
        const bool wasWatched = hold->is_linked();
        hold->unlink();
        if (wasWatched && hold->_referencedSize == 0) {
            hold->_holds.recycle(*hold);
            return;
        }
    }
    hold->own();
    delete hold;
}

RunHolds::~RunHolds() {
    _spare.clear_and_dispose([](RunHold* hold) { delete hold; });
}

void RunHolds::add(RunHoldPtr& hold, std::vector<BitmapGlyph>& glyphs,
                   const std::shared_ptr<RecursiveMutex>& mutex) {
    if (hold == nullptr && !_spare.empty()) {
        hold.reset(&_spare.front());
        hold->unlink();
        --_spareCount;
    } else if (hold == nullptr) {
        hold.reset(new RunHold(*this, mutex));
    }
    hold->_glyphs = glyphs.data();
    hold->_size = glyphs.size();
    _watched.push_back(*hold);
}

void RunHolds::addAllReferences() noexcept {
    while (!_watched.empty()) {
        _watched.front().addReferences();
        _watched.pop_front();
    }
}

void RunHolds::recycle(RunHold& hold) noexcept {
    constexpr std::size_t maxSpareCount = 32; // more than the number of threads that lay out text at one time
    if (_spareCount == maxSpareCount) {
        delete &hold;
        return;
    }
    _spare.push_front(hold);
    ++_spareCount;
}

void HeldGlyphs::makeRoom(std::size_t count, const RecursiveMutex& mutex) {
    const std::size_t size = glyphs.size() + count;
    const bool isLargeEnough = size <= glyphs.capacity();
    if (isLargeEnough && (hold == nullptr || hold->isGuardedBy(mutex))) {
        return;
    }
    std::vector<BitmapGlyph> owners; // copies, which own references
    owners.reserve(isLargeEnough ? glyphs.capacity() : std::max(size, 2 * glyphs.capacity()));
    owners.insert(owners.end(), glyphs.begin(), glyphs.end());
    hold.reset();
    glyphs.swap(owners);
}

} // namespace Vell::FontEngine::Internal
