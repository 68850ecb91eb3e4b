#pragma once

#include <FontEngine/FE_CacheFigures.h>
#include <FontEngine/Private/FE_RecursiveMutex.h>
#include <Utils/Public/MRUCache.h>
#include <Utils/Public/Ptr/CheckedPtr.h>

#include <memory>
#include <optional>
#include <utility>

namespace Vell::FontEngine::Internal {

/// A cache with the lock that guards it. A lookup holds the lock while it searches, makes and inserts, so
/// each entry is made once.
///
/// Reentrancy: `makeNode` and the destructors of keys and values may look up, `clear` and `exchange` on the
/// same thread.
///
/// Errors: exceptions from `makeNode` pass through. Then nothing is added and the lock is free.
template <class Key, class Value, class Hash>
class LockedCache {
public:
    using Cache = MRUCache<Key, Value, Hash, AreDeeplyEqualComparator>;
    using Node = typename Cache::DataNode;

    LockedCache() = default;
    /// Destroys the entries under the lock.
    ~LockedCache() {
        const RecursiveLock lock(*_mutex);
        _cache.reset();
    }
    LockedCache(const LockedCache&) = delete;
    LockedCache& operator=(const LockedCache&) = delete;

    RecursiveMutex& getMutex() const VELL_RETURN_CAPABILITY(*_mutex) { return *_mutex; }
    /// For objects that need the lock and may outlive the cache.
    const std::shared_ptr<RecursiveMutex>& shareMutex() const { return _mutex; }

    /// Returns a copy of the value of a key, which other threads cannot evict. Puts what `makeNode()` returns
    /// if the cache does not have the key.
    template <class MakeNode>
    Value copy(const Key& key, const MakeNode& makeNode) const {
        const RecursiveLock lock(*_mutex);
        return getOrPut(key, makeNode).getValue();
    }

    // Like the operations of MRUCache. The caller holds the lock as long as it uses the entry.
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

    /// Destroys all entries and keeps the limits. Takes no lock: the caller holds it or has exclusive use of
    /// the cache.
    void clear() VELL_NO_THREAD_SAFETY_ANALYSIS { _cache->clear(); }

    /// Takes over the limits of `other`, which must be empty, and moves the entries into it. Takes no lock,
    /// like clear.
    void exchange(Cache& other) VELL_NO_THREAD_SAFETY_ANALYSIS { *_cache = std::move(other); }

protected:
    std::shared_ptr<RecursiveMutex> _mutex = std::make_shared<RecursiveMutex>();
    mutable std::optional<Cache> _cache VELL_GUARDED_BY(*_mutex){std::in_place};
};

} // namespace Vell::FontEngine::Internal
