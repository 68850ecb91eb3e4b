#pragma once

#include <FontEngine/FE_FontDescriptions.h>
#include <FontEngine/Private/FE_LockedCache.h>
#include <FontEngine/Private/FE_Strike.h>

#include <cstdint>
#include <utility>

namespace Vell::FontEngine::Internal {

/// A value with its place in a strike.
template <class T>
struct Seated {
    Seated(T content)
        : data(std::move(content)) {}

    T data;
    typename Strike<Seated>::Seat seat;
};

/// The strike that somebody asks for glyph after glyph. May be kept while the lock of its cache is free.
template <class Value>
class StrikeRoad {
public:
    /// The description is kept by the caller as long as the road.
    explicit StrikeRoad(const StrikeInfo& info)
        : _info(info)
        , _isPlain(info.isPlain()) {}

    const StrikeInfo& getInfo() const { return _info; }
    bool isPlain() const { return _isPlain; }

private:
    template <class Key, class T, class Hash>
    friend class StrikeCache;

    StrikeInfo _info;
    bool _isPlain;
    Strike<Value>* _strike = nullptr; // good while the strikes have not changed, and under the lock
    std::uint64_t _changes = 0;
};

/// A cache of glyphs whose hits in one strike cost no hash of a key:
///
///     const RecursiveLock lock(cache.getMutex());
///     cache.open(road);
///     if (const auto* node = cache.find(road, slot)) {
///         cache.use(*node);
///     } else {
///         cache.prepare(road, faceInfo);
///         node = &...; // get, or else putNew
///         cache.remember(road, slot, *node);
///     }
///
/// The entries, their order of use and all figures are those of the cache; a strike only remembers where
/// entries are. A node is good while the caller holds the lock and adds nothing.
template <class Key, class T, class Hash>
class StrikeCache : public LockedCache<Key, Seated<T>, Hash> {
    using Base = LockedCache<Key, Seated<T>, Hash>;
    using Base::_cache;
    using Base::_mutex;

public:
    using typename Base::Cache;
    using typename Base::Node;
    using Road = StrikeRoad<Seated<T>>;

    /// `watcher`, which may be null, is called under the lock.
    explicit StrikeCache(SeatWatcher* watcher = nullptr)
        : _strikes(watcher) {}
    ~StrikeCache() {
        const RecursiveLock lock(*_mutex);
        _strikes.clear();
    }
    StrikeCache(const StrikeCache&) = delete;
    StrikeCache& operator=(const StrikeCache&) = delete;

    /// Looks for the road's strike: before a find under a new lock, or after anything was added.
    void open(Road& road) const VELL_REQUIRES(*_mutex) {
        if (road._isPlain && (road._strike == nullptr || road._changes != _strikes.getChanges())) {
            road._strike = _strikes.find(road._info);
            road._changes = _strikes.getChanges();
        }
    }

    /// The entry that is remembered in a slot; null if there is none, and the cache has to be asked. Not
    /// used yet.
    const Node* find(const Road& road, std::uint32_t slot) const VELL_REQUIRES(*_mutex) {
        return road._strike == nullptr ? nullptr : road._strike->find(slot);
    }

    /// Makes room for one more entry, so that it can be remembered. May throw std::bad_alloc.
    void prepare(const Road& road, const NNPtr<const Gfx::FontFaceInfo>& faceInfo) const
        VELL_REQUIRES(*_mutex) {
        if (road._isPlain) {
            _strikes.findOrAdd(road._info, faceInfo).reserveOne();
        }
    }

    /// Remembers the entry that the cache has for the key of a slot, where it can: what has made the entry
    /// may have emptied the cache and used the room. Opens the road.
    void remember(Road& road, std::uint32_t slot, const Node& node) const VELL_REQUIRES(*_mutex) {
        open(road);
        if (road._strike != nullptr && slot != noSlot && road._strike->hasRoom() &&
            FontFaceInfo::isExactly(*Cache::getKey(node).getFaceInfo())) {
            road._strike->add(slot, node);
        }
    }

    void clear() VELL_NO_THREAD_SAFETY_ANALYSIS {
        _strikes.clear();
        Base::clear();
    }

    void exchange(Cache& other) VELL_NO_THREAD_SAFETY_ANALYSIS {
        _strikes.clear();
        Base::exchange(other);
    }

private:
    mutable Strikes<Seated<T>> _strikes VELL_GUARDED_BY(*_mutex);
};

} // namespace Vell::FontEngine::Internal
