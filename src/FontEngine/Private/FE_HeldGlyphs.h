#pragma once

#include <FontEngine/Private/FE_GlyphSources.h>
#include <FontEngine/Private/FE_RecursiveMutex.h>
#include <FontEngine/Private/FE_Strike.h>
#include <FontEngine/Renderer/FE_BitmapGlyph.h>
#include <FontEngine/Renderer/FE_BitmapGlyphRun.h>

#include <boost/intrusive/list.hpp>

#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

namespace Vell::FontEngine::Internal {

class RunHolds;

/// The hold of one run on its glyphs. While the entries of the cache keep the bitmaps, the run references
/// none of them: most runs end before an entry leaves its strike, and never write to memory that other
/// threads read. The lock of the bitmap cache guards the hold.
class RunHold
    : public boost::intrusive::list_base_hook<boost::intrusive::link_mode<boost::intrusive::auto_unlink>> {
public:
    RunHold(RunHolds& holds, std::shared_ptr<RecursiveMutex> mutex)
        : _holds(holds)
        , _mutex(std::move(mutex)) {}

    /// The run has so many glyphs now.
    void noteSize(std::size_t size) noexcept { _size = size; }

private:
    friend class RunHolds;
    friend struct RunHoldEnd;

    void count() noexcept;
    void own() noexcept;

    RunHolds& _holds; // good while the hold is watched
    std::shared_ptr<RecursiveMutex> _mutex;
    BitmapGlyph* _glyphs = nullptr;
    std::size_t _size = 0;
    std::size_t _countedSize = 0; // the first ones are counted
};

/// Watches the holds whose glyphs are not all counted, and counts them before it is too late. The lock of the
/// bitmap cache guards it.
class RunHolds : public SeatWatcher {
public:
    RunHolds() = default;
    RunHolds(const RunHolds&) = delete;
    RunHolds& operator=(const RunHolds&) = delete;
    /// Nothing is watched any more.
    ~RunHolds();

    /// Makes the hold if there is none. `glyphs` has room for all glyphs of the run. May throw
    /// std::bad_alloc.
    void watch(RunHoldPtr& hold, std::vector<BitmapGlyph>& glyphs,
               const std::shared_ptr<RecursiveMutex>& mutex) {
        if (hold == nullptr || !hold->is_linked()) {
            add(hold, glyphs, mutex);
        }
    }

    /// Leaves nothing watched.
    void countAll() noexcept;
    void beforeLeaving() noexcept override { countAll(); }

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

/// The glyphs of a run that is being laid out, held as in the finished run.
struct HeldGlyphs {
    /// `capacity` is enough for all glyphs to come.
    explicit HeldGlyphs(std::size_t capacity) { glyphs.reserve(capacity); }

    BitmapGlyphRun finish() && { return BitmapGlyphRun(std::move(glyphs), box.get(), std::move(hold)); }

    std::vector<BitmapGlyph> glyphs;
    BoxUnion box;
    RunHoldPtr hold; // ends before the glyphs; null as long as there are none
};

} // namespace Vell::FontEngine::Internal
