#pragma once

#include <FontEngine/FE_CacheFigures.h>
#include <Utils/Public/MRUCache.h>
#include <Utils/Public/Ptr/CheckedPtr.h>

#include <memory>
#include <mutex>
#include <optional>
#include <utility>

/// Annotations for clang's thread safety analysis (-Wthread-safety). Other compilers ignore them.
#if defined(__clang__)
#define VELL_THREAD_SAFETY(attribute) __attribute__((attribute))
#else
#define VELL_THREAD_SAFETY(attribute)
#endif

#define VELL_CAPABILITY(name) VELL_THREAD_SAFETY(capability(name))
#define VELL_SCOPED_CAPABILITY VELL_THREAD_SAFETY(scoped_lockable)
/// Code may use the member only while it holds the lock.
#define VELL_GUARDED_BY(mutex) VELL_THREAD_SAFETY(guarded_by(mutex))
/// The caller holds the lock.
#define VELL_REQUIRES(mutex) VELL_THREAD_SAFETY(requires_capability(mutex))
#define VELL_ACQUIRE(...) VELL_THREAD_SAFETY(acquire_capability(__VA_ARGS__))
#define VELL_RELEASE(...) VELL_THREAD_SAFETY(release_capability(__VA_ARGS__))
#define VELL_RETURN_CAPABILITY(mutex) VELL_THREAD_SAFETY(lock_returned(mutex))
/// The analysis skips the function, for the reason given beside it.
#define VELL_NO_THREAD_SAFETY_ANALYSIS VELL_THREAD_SAFETY(no_thread_safety_analysis)

namespace Vell::FontEngine::Internal {

/// A recursive mutex for the thread safety analysis. While another thread holds it, lock() retries for up to
/// a tenth of a millisecond before the thread sleeps. The guarded work rarely takes longer than that, but
/// waking up would.
class VELL_CAPABILITY("mutex") RecursiveMutex {
public:
    void lock() VELL_ACQUIRE() {
        if (!_mutex.try_lock()) {
            lockContended();
        }
    }
    void unlock() VELL_RELEASE() { _mutex.unlock(); }

private:
    void lockContended() {
        constexpr int attempts = 1000;
        for (int attempt = 0; attempt != attempts; ++attempt) {
            pause();
            if (_mutex.try_lock()) {
                return;
            }
        }
        _mutex.lock();
    }

    /// Leaves the core's other hardware thread and the memory bus to the thread that holds the lock.
    static void pause() {
#if defined(__x86_64__) || defined(__i386__)
        __builtin_ia32_pause();
#elif defined(__aarch64__)
        asm volatile("yield");
#endif
    }

    std::recursive_mutex _mutex;
};

/// Holds a RecursiveMutex as long as it lives.
class VELL_SCOPED_CAPABILITY RecursiveLock {
public:
    explicit RecursiveLock(RecursiveMutex& mutex) VELL_ACQUIRE(mutex)
        : _mutex(mutex) {
        _mutex.lock();
    }
    ~RecursiveLock() VELL_RELEASE() { _mutex.unlock(); }
    RecursiveLock(const RecursiveLock&) = delete;
    RecursiveLock& operator=(const RecursiveLock&) = delete;

private:
    RecursiveMutex& _mutex;
};

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
