#pragma once

#include <FontEngine/Private/FE_LockedCache.h>
#include <FontEngine/Private/FE_Strike.h>
#include <FontEngine/Renderer/FE_BitmapGlyphRun.h>
#include <FontEngine/Renderer/FE_PlacedGlyphRun.h>

#include <boost/intrusive/list.hpp>

#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

namespace Vell::FontEngine::Internal {

class RunHolds;

/// Keeps the glyphs of one run alive. While the cache keeps the bitmaps, the run has no references to them.
/// Most runs are destroyed before any entry leaves its strike, so they never write to memory that other
/// threads read. The lock of the bitmap cache guards the hold.
class RunHold
    : public boost::intrusive::list_base_hook<boost::intrusive::link_mode<boost::intrusive::auto_unlink>> {
public:
    RunHold(RunHolds& holds, std::shared_ptr<RecursiveMutex> mutex)
        : _holds(holds)
        , _mutex(std::move(mutex)) {}

    /// Sets the number of glyphs that the run has so far.
    void setSize(std::size_t size) noexcept { _size = size; }

    /// Whether this mutex guards the cache that the glyphs come from.
    bool isGuardedBy(const RecursiveMutex& mutex) const { return _mutex.get() == &mutex; }

private:
    friend class RunHolds;
    friend struct RunHoldEnd;

    void addReferences() noexcept;
    void own() noexcept;

    RunHolds& _holds; // valid while the hold is watched
    std::shared_ptr<RecursiveMutex> _mutex;
    BitmapGlyph* _glyphs = nullptr;
    std::size_t _size = 0;
    std::size_t _referencedSize = 0; // the first glyphs, which have references
};

/// Watches the holds whose glyphs may lack references, and adds the references before an entry leaves its
/// strike. The lock of the bitmap cache guards this object.
class RunHolds final : public UnlinkObserver {
public:
    RunHolds() = default;
    RunHolds(const RunHolds&) = delete;
    RunHolds& operator=(const RunHolds&) = delete;
    /// No hold may be watched any more.
    ~RunHolds() override;

    /// Starts to watch the hold; makes it first if it is null. `glyphs` must have room for all glyphs of the
    /// run, so that they stay where they are. May throw std::bad_alloc.
    void watch(RunHoldPtr& hold, std::vector<BitmapGlyph>& glyphs,
               const std::shared_ptr<RecursiveMutex>& mutex) {
        if (hold == nullptr || !hold->is_linked()) {
            add(hold, glyphs, mutex);
        }
    }

    /// Adds the missing references of all watched holds and stops watching them.
    void addAllReferences() noexcept;
    void beforeUnlink() noexcept override { addAllReferences(); }

private:
    friend struct RunHoldEnd;

    using Holds = boost::intrusive::list<RunHold, boost::intrusive::constant_time_size<false>>;

    void add(RunHoldPtr& hold, std::vector<BitmapGlyph>& glyphs,
             const std::shared_ptr<RecursiveMutex>& mutex);
    void recycle(RunHold& hold) noexcept;

    Holds _watched;
    Holds _spare;
    std::size_t _spareCount = 0;
};

inline BitmapGlyphRun HeldGlyphs::finish() && {
    return BitmapGlyphRun(std::move(glyphs), box.get(), std::move(hold));
}

} // namespace Vell::FontEngine::Internal
