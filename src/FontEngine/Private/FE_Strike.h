#pragma once

#include <FontEngine/Private/FE_StrikeInfo.h>
#include <Gfx/Public/FontFaceInfo.h>
#include <Utils/Public/MRUCache.h>
#include <Utils/Public/Ptr/CheckedPtr.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <unordered_map>
#include <utility>
#include <vector>

namespace Vell::FontEngine::Internal {

/// Is told before an entry leaves its seat: when it leaves its cache, above all.
class SeatWatcher {
public:
    virtual void beforeLeaving() noexcept = 0;

protected:
    ~SeatWatcher() = default;
};

/// The entries of a cache for the glyphs of one face at one size, found by their slots: a shortcut past the
/// hash of a whole key. A strike owns no entry. An entry that leaves its cache leaves its strike first,
/// because its value, a `Value`, has a `Seat seat` as its last member.
///
/// Threads: the lock of the cache guards its strikes.
template <class Value>
class Strike {
public:
    using Node = MRUCacheNode<Value>;

    /// The place of an entry in at most one strike.
    class Seat {
    public:
        Seat() = default;
        /// A value moves into its cache before it takes a seat.
        Seat(Seat&&) noexcept {}
        ~Seat() { leave(); }

        bool isTaken() const { return _strike != nullptr; }

    private:
        friend class Strike;

        void leave() const {
            if (_strike != nullptr) {
                std::exchange(_strike, nullptr)->empty(_slot);
            }
        }

        mutable Strike* _strike = nullptr;
        mutable std::uint32_t _slot = noSlot;
    };

    /// `watcher` may be null.
    explicit Strike(SeatWatcher* watcher = nullptr)
        : _watcher(watcher) {}
    ~Strike() { clear(); }
    Strike(const Strike&) = delete;
    Strike& operator=(const Strike&) = delete;

    bool isEmpty() const { return _count == 0; }

    /// The entry in a slot, or null.
    const Node* find(std::uint32_t slot) const { return _cells.empty() ? nullptr : _cells[findCell(slot)]; }

    bool hasRoom() const { return (_count + 1) * 3 <= _cells.size() * 2; }

    void reserveOne() {
        if (!hasRoom()) {
            grow();
        }
    }

    /// Puts an entry into a slot that is empty, or its own. There must be room.
    void add(std::uint32_t slot, const Node& node) noexcept {
        const Seat& seat = node.getValue().seat;
        seat.leave();
        seat._strike = this;
        seat._slot = slot;
        _cells[findCell(slot)] = &node;
        ++_count;
    }

    void clear() {
        warn();
        for (const Node* const node : _cells) {
            if (node != nullptr) {
                node->getValue().seat._strike = nullptr;
            }
        }
        _cells.clear();
        _count = 0;
    }

private:
    void warn() const {
        if (_watcher != nullptr && _count != 0) {
            _watcher->beforeLeaving();
        }
    }

    static std::uint32_t getSlot(const Node& node) { return node.getValue().seat._slot; }

    std::size_t getMask() const { return _cells.size() - 1; }

    /// Where a slot belongs; neighbours in a text have slots far from each other.
    std::size_t getHome(std::uint32_t slot) const {
        constexpr std::uint64_t spread = 0x9E3779B97F4A7C15U; // 2^64 divided by the golden ratio
        return static_cast<std::size_t>((slot * spread) >> 32U) & getMask();
    }

    /// The cell of a slot, or the empty one where it would go.
    std::size_t findCell(std::uint32_t slot) const {
        std::size_t cell = getHome(slot);
        while (_cells[cell] != nullptr && getSlot(*_cells[cell]) != slot) {
            cell = (cell + 1) & getMask();
        }
        return cell;
    }

    void grow() {
        constexpr std::size_t smallest = 16;
        std::vector<const Node*> old(std::max(smallest, 2 * _cells.size()), nullptr);
        old.swap(_cells);
        for (const Node* const node : old) {
            if (node != nullptr) {
                _cells[findCell(getSlot(*node))] = node;
            }
        }
    }

    void empty(std::uint32_t slot) {
        warn();
        std::size_t hole = findCell(slot);
        --_count;
        // What was put behind the hole because its own place was taken moves up.
        for (std::size_t next = (hole + 1) & getMask(); _cells[next] != nullptr;
             next = (next + 1) & getMask()) {
            const std::size_t home = getHome(getSlot(*_cells[next]));
            if (((next - home) & getMask()) >= ((next - hole) & getMask())) {
                _cells[hole] = _cells[next];
                hole = next;
            }
        }
        _cells[hole] = nullptr;
    }

    std::vector<const Node*> _cells; // a power of two of them, or none; at most two thirds are taken
    std::size_t _count = 0;
    SeatWatcher* _watcher;
};

/// The strikes of one cache, each while it has entries.
template <class Value>
class Strikes {
public:
    using Strike = Internal::Strike<Value>;

    explicit Strikes(SeatWatcher* watcher = nullptr)
        : _watcher(watcher) {}

    /// Null if there is none. Good until `getChanges` answers something else.
    Strike* find(const StrikeInfo& info) {
        if (_last != nullptr && _last->first == info) {
            return &_last->second.strike;
        }
        const auto found = _strikes.find(info);
        if (found == _strikes.end()) {
            return nullptr;
        }
        _last = &*found;
        return &found->second.strike;
    }

    /// The same, with a new one if there is none; shares the description then.
    Strike& findOrAdd(StrikeInfo info, const NNPtr<const Gfx::FontFaceInfo>& faceInfo) {
        if (Strike* const found = find(info)) {
            return *found;
        }
        if (_strikes.size() >= _sweepAt) {
            sweep();
        }
        return _strikes.try_emplace(info, faceInfo, _watcher).first->second.strike;
    }

    /// How often strikes have ended.
    std::uint64_t getChanges() const { return _changes; }

    /// All entries leave their strikes, before their cache ends them.
    void clear() {
        drop();
        _strikes.clear();
    }

private:
    struct Owning {
        Owning(const NNPtr<const Gfx::FontFaceInfo>& info, SeatWatcher* watcher)
            : faceInfo(info)
            , strike(watcher) {}

        NNPtr<const Gfx::FontFaceInfo> faceInfo; // of the key
        Strike strike;
    };
    using Map = std::unordered_map<StrikeInfo, Owning, StrikeInfoHash>;

    /// At times when there are twice as many as were in use the last time, so that it costs little a strike.
    void sweep() {
        drop();
        for (auto entry = _strikes.begin(); entry != _strikes.end();) {
            entry = entry->second.strike.isEmpty() ? _strikes.erase(entry) : std::next(entry);
        }
        _sweepAt = std::max(firstSweep, 2 * _strikes.size());
    }

    void drop() {
        _last = nullptr;
        ++_changes;
    }

    static constexpr std::size_t firstSweep = 16;

    Map _strikes;
    typename Map::value_type* _last = nullptr; // the one found last: texts come in the same few fonts
    std::size_t _sweepAt = firstSweep;
    SeatWatcher* _watcher;
    std::uint64_t _changes = 0;
};

} // namespace Vell::FontEngine::Internal
