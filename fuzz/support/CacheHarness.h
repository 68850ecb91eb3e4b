#pragma once

#include <fuzz/support/ByteReader.h>
#include <fuzz/support/Finding.h>
#include <support/ListCache.h>

#include <Utils/Public/MRUCache.h>

#include <cstddef>
#include <cstdint>
#include <functional>

namespace Vell::Fuzz {

using Testing::ListCache;

/// One step of a stream of operations, from three bytes: the operation, the key, and a number whose meaning
/// depends on the operation.
struct CacheOperation {
    enum class Kind { Get, Put, GetOrPut, FailedGetOrPut, Clear, Limit };

    Kind kind;
    unsigned int key;
    unsigned int number;
};

CacheOperation takeCacheOperation(ByteReader& reader);
/// Returns 0 to 2^40, so that no sum of weights overflows. Most weights are small, some are far apart.
std::uint64_t toWeight(unsigned int number);

/// Gives all keys one of five hash values, so that they collide in the hash table.
struct CollidingHash {
    std::size_t operator()(unsigned int key) const { return key % 5; }
};

using FuzzedCache = MRUCache<unsigned int, std::uint32_t, CollidingHash, std::equal_to<>>;

/// Applies a stream of operations both to `Cache`, which has the interface of MRUCache, and to a list.
template <class Cache>
class CacheDuel {
public:
    explicit CacheDuel(ByteReader& reader)
        : _reader(reader)
        , _cache(0, 0)
        , _model(0, 0) {
        const std::uint64_t maxEntries = _reader.takeU8();
        limit(maxEntries, toWeight(_reader.takeU16()));
    }

    void run() {
        while (!_reader.isAtEnd()) {
            play(takeCacheOperation(_reader));
            compareTotals();
        }
        compareEntries();
    }

private:
    using Kind = CacheOperation::Kind;
    struct MakingFailed {};

    void play(const CacheOperation& operation) {
        switch (operation.kind) {
        case Kind::Get:
            compare(_cache.get(operation.key), _model.get(operation.key));
            break;
        case Kind::Put:
            put(operation);
            break;
        case Kind::GetOrPut:
            getOrPut(operation);
            break;
        case Kind::FailedGetOrPut:
            failGetOrPut(operation.key);
            break;
        case Kind::Clear:
            _cache.clear();
            _model.clear();
            break;
        case Kind::Limit:
            limit(operation.key, toWeight(operation.number));
            break;
        }
    }

    void limit(std::uint64_t maxEntries, std::uint64_t maxBytes) {
        _cache = Cache(maxEntries, maxBytes);
        _model = ListCache(maxEntries, maxBytes);
    }

    ListCache::Entry makeEntry(const CacheOperation& operation) {
        return {operation.key, ++_lastValue, toWeight(operation.number)};
    }

    void put(const CacheOperation& operation) {
        const ListCache::Entry entry = makeEntry(operation);
        compare(_cache.put(entry.key, {entry.value, entry.bytes}), _model.put(entry));
        compareEvictions();
    }

    void getOrPut(const CacheOperation& operation) {
        const ListCache::Entry entry = makeEntry(operation);
        bool isMade = false;
        const auto& node = _cache.getOrPut(entry.key, [&] {
            isMade = true;
            return typename Cache::DataNode(entry.value, entry.bytes);
        });
        const ListCache::Entry* const held = _model.get(entry.key);
        require(isMade == (held == nullptr), "getOrPut makes a value if and only if there is none");
        compare(&node, held != nullptr ? held : _model.put(entry));
        compareEvictions();
    }

    void failGetOrPut(unsigned int key) {
        const auto fail = []() -> typename Cache::DataNode { throw MakingFailed(); };
        try {
            const auto& node = _cache.getOrPut(key, fail);
            compare(&node, _model.get(key));
        } catch (const MakingFailed&) {
            require(_model.get(key) == nullptr, "getOrPut makes no value for a key that is held");
        }
    }

    template <class Node>
    static void compare(const Node* node, const ListCache::Entry* entry) {
        require((node == nullptr) == (entry == nullptr), "the cache holds the entries that the list holds");
        if (node != nullptr) {
            require(node->getValue() == entry->value, "an entry keeps its value");
            require(node->getEffectiveSizeInBytes() == entry->bytes, "an entry keeps its weight");
        }
    }

    void compareTotals() const {
        require(_cache.size() == _model.getEntries().size(), "the cache has as many entries as the list");
        require(_cache.getEffectiveSizeInBytes() == _model.countBytes(),
                "the cache has as many bytes as the list");
        require(_cache.getEvictedCount() == _model.getEvictedCount(), "evictions are counted");
        require(_cache.getMaxEntries() == _model.getMaxEntries(), "the limit of entries does not change");
        require(_cache.getMaxSizeInBytes() == _model.getMaxBytes(), "the limit of bytes does not change");
    }

    /// Evictions reveal the order of use. Looking up a key that is not held does not change it.
    void compareEvictions() {
        for (const unsigned int key : _model.getLastEvicted()) {
            require(_cache.get(key) == nullptr, "the least recently used entries are evicted first");
        }
    }

    void compareEntries() {
        for (const ListCache::Entry& entry : _model.getEntries()) {
            compare(_cache.get(entry.key), &entry);
        }
    }

    ByteReader& _reader;
    Cache _cache;
    ListCache _model;
    std::uint32_t _lastValue = 0;
};

} // namespace Vell::Fuzz
