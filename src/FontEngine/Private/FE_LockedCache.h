#pragma once

#include <FontEngine/FE_CacheFigures.h>
#include <FontEngine/Private/FE_RecursiveMutex.h>
#include <Utils/Public/MRUCache.h>
#include <Utils/Public/Ptr/CheckedPtr.h>

#include <memory>
#include <optional>
#include <utility>

namespace Vell::FontEngine::Internal {

/// A cache with the lock that guards it. Every look-up holds the lock while it looks, makes and inserts, so
/// that an entry is made once.
///
/// Reentrancy: what makes an entry, and the end of keys and values, may look up, `clear` and `exchange` on
/// the same thread. Errors: whatever `makeNode` throws, with nothing added and no lock held.
template <class Key, class Value, class Hash>
class LockedCache {
public:
    using Cache = MRUCache<Key, Value, Hash, AreDeeplyEqualComparator>;
    using Node = typename Cache::DataNode;

    LockedCache() = default;
    /// Entries end under the lock.
    ~LockedCache() {
        const RecursiveLock lock(*_mutex);
        _cache.reset();
    }
    LockedCache(const LockedCache&) = delete;
    LockedCache& operator=(const LockedCache&) = delete;

    RecursiveMutex& getMutex() const VELL_RETURN_CAPABILITY(*_mutex) { return *_mutex; }
    /// For what needs the lock when the cache may have gone.
    const std::shared_ptr<RecursiveMutex>& shareMutex() const { return _mutex; }

    /// The value of a key, made by `makeNode()` if there is none; a copy, which no other thread can take
    /// away.
    template <class MakeNode>
    Value copy(const Key& key, const MakeNode& makeNode) const {
        const RecursiveLock lock(*_mutex);
        return getOrPut(key, makeNode).getValue();
    }

    // As in MRUCache, under a lock that the caller holds as long as it uses the entry.
    const Node* get(const Key& key) const VELL_REQUIRES(*_mutex) { return _cache->get(key); }
    void use(const Node& held) const VELL_REQUIRES(*_mutex) { _cache->use(held); }
    const Node& putNew(const Key& key, Node node) const VELL_REQUIRES(*_mutex) {
        return _cache->putNew(key, std::move(node));
    }
    template <class MakeNode>
    const Node& getOrPut(const Key& key, const MakeNode& makeNode) const VELL_REQUIRES(*_mutex) {
        return _cache->getOrPut(key, makeNode);
    }

    CacheFigures getFigures() const {
        const RecursiveLock lock(*_mutex);
        return {_cache->size(),
                _cache->getEffectiveSizeInBytes(),
                _cache->getEvictedCount(),
                _cache->getHitCount(),
                _cache->getMissCount(),
                _cache->getMaxEntries(),
                _cache->getMaxSizeInBytes()};
    }

    /// Ends all entries and keeps the limits. Takes no lock: the caller has the cache to itself.
    void clear() VELL_NO_THREAD_SAFETY_ANALYSIS { _cache->clear(); }

    /// Takes over the limits of `other`, which is empty, and leaves the entries to it. Takes no lock.
    void exchange(Cache& other) VELL_NO_THREAD_SAFETY_ANALYSIS { *_cache = std::move(other); }

protected:
    std::shared_ptr<RecursiveMutex> _mutex = std::make_shared<RecursiveMutex>();
    mutable std::optional<Cache> _cache VELL_GUARDED_BY(*_mutex){std::in_place};
};

} // namespace Vell::FontEngine::Internal
