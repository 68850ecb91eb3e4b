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

/// A value of an MRUCache with its weight. Immutable.
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

/// Keeps values by key in the order of their most recent use, and drops those used least recently while there
/// are more entries, or more bytes, than the limits allow.
///
///     MRUCache<Key, std::shared_ptr<const Glyph>, KeyHash, AreDeeplyEqualComparator> cache(0, 1 << 20);
///     if (const auto* node = cache.get(key)) return node->getValue();
///     return cache.put(key, {glyph, bytes})->getValue();
///
/// The weight of an entry in bytes is whatever its owner says. A limit of 0 means none, equality with a limit
/// is within it, and the only entry is never dropped, however large.
///
/// Ownership: keys and values are held by value; store shared pointers, so that a value survives its
/// eviction. A node that is handed out stays valid until the next put that evicts it, or clear, or the end of
/// the cache. The destructors of keys and values may call back into the cache: an entry ends when it is no
/// part of the cache any more. Hash and Equal may not. Threads: none; even get changes the order. The owner
/// serialises all calls. Errors: what Hash, Equal or an allocation throws passes through and leaves the cache
/// as it was.
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
    MRUCache(MRUCache&&) = default;
    MRUCache& operator=(const MRUCache& other) { return *this = MRUCache(other); }
    MRUCache& operator=(MRUCache&&) = default;
    ~MRUCache() = default;

    std::size_t size() const { return _data.size(); }
    std::uint64_t getEffectiveSizeInBytes() const { return _effectiveSizeInBytes; }
    /// How many entries the limits have pushed out since construction or clear. An entry counts once its key
    /// and value have been released.
    std::uint64_t getEvictedCount() const { return _evictedCount; }
    /// How often `get` has found an entry since construction or clear, and how often it has not.
    std::uint64_t getHitCount() const { return _hitCount; }
    std::uint64_t getMissCount() const { return _missCount; }
    std::uint64_t getMaxEntries() const { return _maxEntries; }
    std::uint64_t getMaxSizeInBytes() const { return _maxSizeInBytes; }

    /// The entry of an equal key, which becomes the most recently used one; null when there is none.
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

    /// What `get` does for the key of an entry, for who knows the entry already: it must be held by this
    /// cache.
    void use(const DataNode& held) {
        ++_hitCount;
        _uses.add(static_cast<const Entry&>(held), _data);
    }

    /// The key of an entry that is held. Valid as long as the entry.
    static const Key& getKey(const DataNode& held) { return static_cast<const Entry&>(held).key; }

    /// Adds an entry as the most recently used one and evicts what the limits no longer allow. Null, with
    /// nothing changed, when an equal key is held already: a value that was handed out is never superseded.
    /// Null, too, when the entry has gone again, because of what the end of an evicted one did.
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
        // Searched for only then: a key that does not even equal itself is not found.
        return change == _changes.count ? &*added : find(key);
    }

    /// get, or else put of what `makeNode()` returns. What makeNode throws passes through with nothing added.
    /// Asserts that makeNode did not itself add an entry of this key, and that the entry is held in the end.
    template <class MakeNode>
    const DataNode& getOrPut(const Key& key, const MakeNode& makeNode) {
        if (const DataNode* const held = get(key)) {
            return *held;
        }
        return putNew(key, makeNode());
    }

    /// put of a key that is not held. Asserts that it was not, and that the entry is held in the end.
    const DataNode& putNew(const Key& key, DataNode node) {
        const DataNode* const value = put(key, std::move(node));
        if (value == nullptr) {
            doFailAssert(file, 199, "value");
        }
        return *value;
    }

    /// Evicts from the least recently used end until the limits hold or one entry is left. Every put ends
    /// with it, so there is nothing left to do for others.
    void checkAndPopLast() {
        while (_data.size() != 1 && isOverLimit()) {
            popLast();
        }
    }

    /// Drops all entries; the limits stay, the counts restart at zero. Entries end when the cache is empty
    /// already: what their end adds stays.
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
    /// Ends with its value, then its key.
    struct Entry : EntryKey, DataNode {
        Entry(const Key& entryKey, DataNode&& node)
            : EntryKey{entryKey}
            , DataNode(std::move(node)) {}

        mutable bool isSettled = false; // its latest use, while uses are settled
    };
    using Data = boost::multi_index_container<
        Entry, boost::multi_index::indexed_by<
                   boost::multi_index::hashed_unique<
                       boost::multi_index::member<EntryKey, const Key, &EntryKey::key>, Hash, Equal>,
                   boost::multi_index::sequenced<>>>;
    /// What the end of an evicted entry may have done meanwhile. An assignment to the cache is one more of
    /// both.
    struct Changes {
        Changes() = default;
        Changes(const Changes&) = default;
        Changes& operator=(const Changes&) {
            ++count;
            ++restarts;
            return *this;
        }

        std::uint64_t count = 0;    // of puts and clears
        std::uint64_t restarts = 0; // of the counts, by clears
    };

    static constexpr int byRecency = 1; // front: most recently used
    static constexpr int byKey = 0;
    static constexpr const char* file = "Utils/Public/MRUCache";

    /// The uses that the order of the entries does not show yet. Only the order of the latest uses matters,
    /// and only when an entry leaves: moving each entry once for many uses saves most of the work, and leaves
    /// the links of the entries alone, so that several processors can read them.
    class Uses {
    public:
        /// Makes room for so many uses that settling costs little each. May throw std::bad_alloc.
        void reserveFor(std::size_t entryCount) {
            constexpr std::size_t usesPerEntry = 32;
            constexpr std::size_t minCount = 16;
            constexpr std::size_t maxCount = 2048; // 16 KB
            const std::size_t count = _entries.capacity();
            if (count < maxCount && count < usesPerEntry * entryCount) {
                _entries.reserve(std::max(minCount, 2 * count));
            }
        }

        void add(const Entry& entry, Data& data) noexcept {
            if (_entries.size() == _entries.capacity()) {
                settle(data);
            }
            if (_entries.capacity() != 0) {
                _entries.push_back(&entry);
            } else { // in a copy of a cache, to which nothing has been added
                moveTo(data.template get<byRecency>().begin(), entry, data);
            }
        }

        /// Brings the entries into the order of their latest uses. Of no entry that leaves may a use be left.
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

    /// clear without memory: an entry that the end of another one asks for may stay.
    void dropOneByOne() {
        for (std::size_t count = _data.size(); count != 0 && !_data.empty(); --count) {
            dropLast();
        }
    }

    /// The sizes are right before the entry ends.
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
