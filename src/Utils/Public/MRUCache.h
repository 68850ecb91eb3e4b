#pragma once

#include <Utils/Public/Assert.h>

#include <boost/multi_index/hashed_index.hpp>
#include <boost/multi_index/member.hpp>
#include <boost/multi_index/sequenced_index.hpp>
#include <boost/multi_index_container.hpp>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <new>
#include <utility>
#include <vector>

namespace Vell {

/// A value in an MRUCache, with its size. Immutable.
template <class Value>
class MRUCacheNode {
public:
    MRUCacheNode(Value value, std::uint64_t effectiveSizeInBytes)
        : _value(std::move(value))
        , _effectiveSizeInBytes(effectiveSizeInBytes) {}

    const Value& getValue() const { return _value; }
    std::uint64_t getEffectiveSizeInBytes() const { return _effectiveSizeInBytes; }

private:
    Value _value;
    std::uint64_t _effectiveSizeInBytes;
};

/// A cache that keeps the most recently used entries: it evicts the least recently used ones when it holds
/// more entries, or more bytes, than its limits allow.
///
///     MRUCache<Key, std::shared_ptr<const Glyph>, KeyHash, AreDeeplyEqualComparator> cache(0, 1 << 20);
///     return cache.getOrPut(key, [&] { return Node(makeGlyph(key), bytes); }).getValue();
///
/// The size of an entry, its effective size, is whatever the caller of put says. A limit of 0 means that
/// there is no limit. A cache whose size equals a limit is within that limit. The last remaining entry is
/// never evicted, however large it is.
///
/// Ownership: the cache stores keys and values by value. Store shared pointers if a value must survive its
/// eviction. A pointer to a node is valid until a put evicts the node, clear is called, or the cache is
/// destroyed or assigned to. A moved-from cache may only be assigned to or destroyed.
///
/// Callbacks: destructors of keys and values may call the cache, because an entry is destroyed only after it
/// has left the cache. Hash and Equal, which are default-constructed, must not call it.
///
/// Threads: the owner serialises all calls. Even get changes the order.
///
/// Errors: exceptions from Hash, Equal and allocations pass through and leave the cache unchanged.
template <class Key, class Value, class Hash, class Equal>
class MRUCache {
public:
    using DataNode = MRUCacheNode<Value>;

    MRUCache(std::uint64_t maxEntries = 0, std::uint64_t maxSizeInBytes = 0)
        : _maxEntries(maxEntries)
        , _maxSizeInBytes(maxSizeInBytes) {}
    MRUCache(const MRUCache& other)
        : _data(other.settle())
        , _maxEntries(other._maxEntries)
        , _maxSizeInBytes(other._maxSizeInBytes)
        , _evictedCount(other._evictedCount)
        , _hitCount(other._hitCount)
        , _missCount(other._missCount)
        , _effectiveSizeInBytes(other._effectiveSizeInBytes) {}
    // The container allocates when it is moved.
    MRUCache(MRUCache&&) = default; // NOLINT(performance-noexcept-move-constructor)
    MRUCache& operator=(const MRUCache& other) { return *this = MRUCache(other); }
    MRUCache& operator=(MRUCache&&) = default; // NOLINT(performance-noexcept-move-constructor)
    ~MRUCache() = default;

    std::size_t size() const { return _data.size(); }
    std::uint64_t getEffectiveSizeInBytes() const { return _effectiveSizeInBytes; }
    /// The number of evictions since construction or the last clear. An eviction is counted only after the
    /// entry's key and value have been destroyed.
    std::uint64_t getEvictedCount() const { return _evictedCount; }
    /// How often get has found an entry since construction or the last clear, and how often it has not.
    std::uint64_t getHitCount() const { return _hitCount; }
    std::uint64_t getMissCount() const { return _missCount; }
    std::uint64_t getMaxEntries() const { return _maxEntries; }
    std::uint64_t getMaxSizeInBytes() const { return _maxSizeInBytes; }

    /// Finds the entry with an equal key and makes it the most recently used one. Null if there is none.
    const DataNode* get(const Key& key) {
        const auto& index = _data.template get<byKey>();
        const auto found = index.find(key);
        if (found == index.end()) {
            ++_missCount;
            return nullptr;
        }
        use(*found);
        return &*found;
    }

    /// Does what get does when it finds this entry. For callers that already know the entry, which must be in
    /// this cache.
    void use(const DataNode& held) {
        ++_hitCount;
        _uses.add(static_cast<const Entry&>(held), _data);
    }

    /// The key of an entry that is in a cache. Valid as long as the entry is.
    static const Key& getKey(const DataNode& held) { return static_cast<const Entry&>(held).key; }

    /// Adds an entry as the most recently used one and evicts what the limits no longer allow. If the cache
    /// has an equal key already, it changes nothing and returns null: a cached value is never replaced. Also
    /// null if the destructor of an evicted entry called the cache and thereby removed the new one.
    const DataNode* put(const Key& key, DataNode node) {
        _uses.reserveFor(_data.size() + 1);
        auto& recency = _data.template get<byRecency>();
        const auto [added, isNew] = recency.emplace_back(key, std::move(node));
        if (!isNew) {
            return nullptr;
        }
        settle();
        recency.relocate(recency.begin(), added);
        _effectiveSizeInBytes += added->getEffectiveSizeInBytes();
        const std::uint64_t change = ++_changes.count;
        checkAndPopLast();
        // Search only if the cache has changed meanwhile: a key that does not equal itself would not be
        // found.
        return change == _changes.count ? &*added : find(key);
    }

    /// Returns the entry that get finds, or else puts what `makeNode()` returns. Exceptions from makeNode
    /// pass through, and nothing is added. Asserts that makeNode did not itself add this key, and that the
    /// new entry is still in the cache afterwards.
    template <class MakeNode>
    const DataNode& getOrPut(const Key& key, const MakeNode& makeNode) {
        if (const DataNode* const held = get(key)) {
            return *held;
        }
        return putNew(key, makeNode());
    }

    /// Puts a new key. Asserts that the cache did not have it, and that the entry is still in the cache
    /// afterwards.
    const DataNode& putNew(const Key& key, DataNode node) {
        const DataNode* const value = put(key, std::move(node));
        if (value == nullptr) {
            doFailAssert(file, 199, "value");
        }
        return *value;
    }

    /// Evicts the least recently used entries until the limits hold or one entry is left. Every put ends with
    /// this, so other callers find nothing to evict.
    void checkAndPopLast() {
        while (_data.size() != 1 && isOverLimit()) {
            popLast();
        }
    }

    /// Removes all entries and sets the counts to zero. The limits stay. The entries are destroyed after the
    /// cache has become empty, so whatever their destructors add stays. If memory is exhausted, they are
    /// destroyed one by one, and their destructors find the others.
    void clear() {
        ++_changes.count;
        ++_changes.restarts;
        _evictedCount = 0;
        _hitCount = 0;
        _missCount = 0;
        try {
            Data ended;
            settle();
            ended.swap(_data);
            _effectiveSizeInBytes = 0;
        } catch (const std::bad_alloc&) {
            dropOneByOne();
        }
    }

private:
    struct EntryKey {
        const Key key;
    };
    /// The value is destroyed before the key.
    struct Entry : EntryKey, DataNode {
        Entry(const Key& entryKey, DataNode&& node)
            : EntryKey{entryKey}
            , DataNode(std::move(node)) {}

        mutable bool isSettled = false; // while uses are settled: whether the latest use is
    };
    using Data = boost::multi_index_container<
        Entry, boost::multi_index::indexed_by<
                   boost::multi_index::hashed_unique<
                       boost::multi_index::member<EntryKey, const Key, &EntryKey::key>, Hash, Equal>,
                   boost::multi_index::sequenced<>>>;
    /// Counts changes, to detect those that the destructor of an evicted entry makes. Assigning to the cache
    /// increments both counts.
    struct Changes {
        Changes() = default;
        Changes(const Changes&) = default;
        Changes& operator=(const Changes&) {
            ++count;
            ++restarts;
            return *this;
        }

        std::uint64_t count = 0;    // of puts and clears
        std::uint64_t restarts = 0; // of clears, which reset the counts
    };

    static constexpr int byRecency = 1; // front: most recently used
    static constexpr int byKey = 0;
    static constexpr const char* file = "Utils/Public/MRUCache"; // assertions are known by file and number

    /// The uses that the order of the entries does not reflect yet. The order matters only when an entry
    /// leaves, and then only the latest use of each entry counts. So one move settles many uses of an entry,
    /// which saves most of the work. Until then the links of the entries do not change, so several processors
    /// can read them without contention.
    class Uses {
    public:
        /// Reserves memory for enough uses that settling is cheap per use. May throw std::bad_alloc.
        void reserveFor(std::size_t entryCount) {
            constexpr std::size_t fewEntries = 16;
            constexpr std::size_t usesOfFew = 128; // 1 KB
            constexpr std::size_t maxUses = 2048;  // 16 KB
            if (entryCount > fewEntries) {
                _entries.reserve(maxUses);
            } else {
                _entries.reserve(usesOfFew);
            }
        }

        void add(const Entry& entry, Data& data) noexcept {
            if (_entries.size() == _entries.capacity()) {
                settle(data);
            }
            if (_entries.capacity() != 0) {
                _entries.push_back(&entry);
            } else { // in a copied cache that has had no put yet
                moveTo(data.template get<byRecency>().begin(), entry, data);
            }
        }

        /// Brings the entries into the order of their latest uses and forgets the uses. Call it before an
        /// entry leaves, because uses point to their entries.
        void settle(Data& data) noexcept {
            auto position = data.template get<byRecency>().begin();
            auto settled = _entries.end();
            for (auto use = _entries.end(); use != _entries.begin();) {
                const Entry& entry = **--use;
                if (!std::exchange(entry.isSettled, true)) {
                    position = std::next(moveTo(position, entry, data));
                    *--settled = &entry;
                }
            }
            for (; settled != _entries.end(); ++settled) {
                (*settled)->isSettled = false;
            }
            _entries.clear();
        }

    private:
        template <class Position>
        static Position moveTo(const Position& position, const Entry& entry, Data& data) noexcept {
            auto& recency = data.template get<byRecency>();
            const auto moved = recency.iterator_to(entry);
            recency.relocate(position, moved);
            return moved;
        }

        std::vector<const Entry*> _entries;
    };

    const Data& settle() const {
        _uses.settle(_data);
        return _data;
    }

    const DataNode* find(const Key& key) const {
        const auto& index = _data.template get<byKey>();
        const auto found = index.find(key);
        return found == index.end() ? nullptr : &*found;
    }

    bool isOverLimit() const {
        return (_maxEntries != 0 && _data.size() > _maxEntries) ||
               (_maxSizeInBytes != 0 && _effectiveSizeInBytes > _maxSizeInBytes);
    }

    void popLast() {
        if (_data.empty()) {
            doFailAssert(file, 279, "!_data.empty()");
        }
        const Entry& value = settle().template get<byRecency>().back();
        if (_effectiveSizeInBytes < value.getEffectiveSizeInBytes()) {
            doFailAssert(file, 281, "_effectiveSizeInBytes >= value.second.getEffectiveSizeInBytes()");
        }
        const std::uint64_t restarts = _changes.restarts;
        dropLast();
        if (restarts == _changes.restarts) {
            ++_evictedCount;
        }
    }

    /// Does what clear does, but needs no memory. Destructors still find the entries that remain, and an
    /// entry that they use may stay.
    void dropOneByOne() {
        for (std::size_t count = _data.size(); count != 0 && !_data.empty(); --count) {
            dropLast();
        }
    }

    /// Updates the size before the entry is destroyed.
    void dropLast() {
        settle();
        auto& recency = _data.template get<byRecency>();
        _effectiveSizeInBytes -= recency.back().getEffectiveSizeInBytes();
        recency.pop_back();
    }

    mutable Data _data; // but for its order, a const cache does not change
    mutable Uses _uses; // of entries in the data
    std::uint64_t _maxEntries;
    std::uint64_t _maxSizeInBytes;
    std::uint64_t _evictedCount = 0;
    std::uint64_t _hitCount = 0;
    std::uint64_t _missCount = 0;
    std::uint64_t _effectiveSizeInBytes = 0;
    Changes _changes;
};

} // namespace Vell
