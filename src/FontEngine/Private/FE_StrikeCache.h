#pragma once

#include <FontEngine/FE_FontFaceInfo.h>
#include <FontEngine/Private/FE_LockedCache.h>
#include <FontEngine/Private/FE_Strike.h>

#include <memory>
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

/// The strike that somebody asks for glyph after glyph. It may be kept while the lock of its cache is free,
/// but is looked into only under the lock.
template <class Value>
class StrikeRoad {
public:
    explicit StrikeRoad(StrikeInfo info)
        : _info(std::move(info))
        , _isPlain(_info.isPlain()) {}

    const StrikeInfo& getInfo() const { return _info; }
    bool isPlain() const { return _isPlain; }

private:
    template <class Key, class T, class Hash>
    friend class StrikeCache;

    StrikeInfo _info;
    bool _isPlain;
    std::shared_ptr<Strike<Value>> _strike; // null before the first look
};

/// A cache of glyphs whose hits in one strike cost no hash of a key:
///
///     const RecursiveLock lock(cache.getMutex());
///     cache.open(road);
///     if (const auto* node = cache.find(road, slot)) {
///         cache.use(*node);
///     } else {
///         cache.prepare(road);
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

    /// Looks for the road's strike: before the first find under a lock.
    void open(Road& road) const VELL_REQUIRES(_mutex) {
        if (road._isPlain && road._strike == nullptr) {
            road._strike = _strikes.find(road._info);
        }
    }

    /// The entry that is remembered in a slot; null if there is none, and the cache has to be asked. Not
    /// used yet.
    const Node* find(const Road& road, std::uint32_t slot) const VELL_REQUIRES(_mutex) {
        return road._strike == nullptr ? nullptr : road._strike->find(slot);
    }

    /// Makes room for one more entry, so that it can be remembered. May throw std::bad_alloc.
    void prepare(Road& road) const VELL_REQUIRES(_mutex) {
        if (road._isPlain) {
            road._strike = _strikes.findOrAdd(road._info);
            road._strike->reserveOne();
        }
    }

    /// Remembers the entry that the cache has for the key of a slot, where it can: what has made the entry
    /// may have emptied the cache and used the room.
    void remember(Road& road, std::uint32_t slot, const Node& node) const noexcept VELL_REQUIRES(_mutex) {
        if (road._isPlain && slot != noSlot && road._strike->hasRoom() &&
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
    mutable Strikes<Seated<T>> _strikes VELL_GUARDED_BY(_mutex);
};

} // namespace Vell::FontEngine::Internal
