#pragma once

#include <FontEngine/FE_FontDescriptions.h>
#include <FontEngine/Private/FE_LockedCache.h>
#include <FontEngine/Private/FE_Strike.h>

#include <cstdint>
#include <utility>

namespace Vell::FontEngine::Internal {

/// A value that a strike can find.
template <class T>
struct StrikeEntry {
    StrikeEntry(T content)
        : data(std::move(content)) {}

    T data;
    typename Strike<StrikeEntry>::Link link;
};

/// Refers to a strike for many lookups. A handle may outlive the strike, and the caller may keep it while it
/// does not hold the lock of the cache.
template <class Value>
class StrikeHandle {
public:
    /// The caller keeps the description alive as long as the handle.
    explicit StrikeHandle(const StrikeInfo& info)
        : _info(info)
        , _isPlain(info.isPlain()) {}

    const StrikeInfo& getInfo() const { return _info; }
    bool isPlain() const { return _isPlain; }

private:
    template <class Key, class T, class Hash>
    friend class StrikeCache;

    StrikeInfo _info;
    bool _isPlain;
    Strike<Value>* _strike = nullptr; // valid under the lock, while the strikes have not changed
    std::uint64_t _changes = 0;
};

/// A cache of glyphs that computes no hash of a key for a hit in a strike:
///
///     const RecursiveLock lock(cache.getMutex());
///     cache.open(handle);
///     if (const auto* node = cache.find(handle, slot)) {
///         cache.use(*node);
///     } else {
///         cache.prepare(handle, faceInfo);
///         node = &...; // get, or else putNew
///         cache.remember(handle, slot, *node);
///     }
///
/// The cache has the entries, their order of use and all figures; a strike only remembers where entries are.
/// A node is valid while the caller holds the lock and adds nothing.
template <class Key, class T, class Hash>
class StrikeCache : public LockedCache<Key, StrikeEntry<T>, Hash> {
    using Base = LockedCache<Key, StrikeEntry<T>, Hash>;
    using Base::_cache;
    using Base::_mutex;

public:
    using typename Base::Cache;
    using typename Base::Node;
    using Handle = StrikeHandle<StrikeEntry<T>>;

    /// The cache calls `observer`, which may be null, under the lock.
    explicit StrikeCache(UnlinkObserver* observer = nullptr)
        : _strikes(observer) {}
    ~StrikeCache() {
        const RecursiveLock lock(*_mutex);
        _strikes.clear();
    }
    StrikeCache(const StrikeCache&) = delete;
    StrikeCache& operator=(const StrikeCache&) = delete;

    /// Finds the strike of a handle. Call it each time that you have taken the lock, and after you have added
    /// an entry.
    void open(Handle& handle) const VELL_REQUIRES(*_mutex) {
        if (handle._isPlain && (handle._strike == nullptr || handle._changes != _strikes.getChanges())) {
            handle._strike = _strikes.find(handle._info);
            handle._changes = _strikes.getChanges();
        }
    }

    /// Returns the entry that the strike remembers for a slot. If it is null, the cache may still have an
    /// entry. Does not count as a use of the entry.
    const Node* find(const Handle& handle, std::uint32_t slot) const VELL_REQUIRES(*_mutex) {
        return handle._strike == nullptr ? nullptr : handle._strike->find(slot);
    }

    /// Makes room in the strike for one more entry, which remember then adds. May throw std::bad_alloc.
    void prepare(const Handle& handle, const NNPtr<const Gfx::FontFaceInfo>& faceInfo) const
        VELL_REQUIRES(*_mutex) {
        if (handle._isPlain) {
            _strikes.findOrAdd(handle._info, faceInfo).reserveOne();
        }
    }

    /// Opens the handle and remembers the cache's entry for a slot. Does nothing if there is no room: the
    /// code that made the entry may have cleared the cache or used the room.
    void remember(Handle& handle, std::uint32_t slot, const Node& node) const VELL_REQUIRES(*_mutex) {
        open(handle);
        if (handle._strike != nullptr && slot != noSlot && handle._strike->hasRoom() &&
            FontFaceInfo::isExactly(*Cache::getKey(node).getFaceInfo())) {
            handle._strike->add(slot, node);
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
    mutable Strikes<StrikeEntry<T>> _strikes VELL_GUARDED_BY(*_mutex);
};

} // namespace Vell::FontEngine::Internal
