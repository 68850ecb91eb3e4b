// Hits in caches of growing size, in random order: the larger the cache, the slower its memory.

#include "support/Items.h"
#include "support/PlainCache.h"

#include <Utils/Public/MRUCache.h>

#include <benchmark/benchmark.h>

#include <functional>
#include <string>
#include <unordered_map>

namespace Vell::Benchmarks {

namespace {

class EngineCache {
public:
    void put(std::uint64_t key) { _cache.put(key, Cache::DataNode(key, 1)); }
    std::uint64_t hit(std::uint64_t key) { return _cache.get(key)->getValue(); }

private:
    using Cache = MRUCache<std::uint64_t, std::uint64_t, PlainHash, std::equal_to<>>;
    Cache _cache;
};

class MultiIndexCache {
public:
    void put(std::uint64_t key) { _cache.getOrPut(key, key); }
    std::uint64_t hit(std::uint64_t key) { return _cache.getOrPut(key, key); }

private:
    PlainCache<std::uint64_t> _cache;
};

/// Does not keep the order of use.
class HashMap {
public:
    void put(std::uint64_t key) { _map.emplace(key, key); }
    std::uint64_t hit(std::uint64_t key) { return _map.find(key)->second; }

private:
    std::unordered_map<std::uint64_t, std::uint64_t, PlainHash> _map;
};

/// Random numbers below a limit (xorshift), the same for every contestant.
class RandomKeys {
public:
    explicit RandomKeys(std::uint64_t limit)
        : _limit(limit) {}

    std::uint64_t next() {
        _state ^= _state << 13U;
        _state ^= _state >> 7U;
        _state ^= _state << 17U;
        return (_state >> 32U) * _limit >> 32U;
    }

private:
    std::uint64_t _limit;
    std::uint64_t _state = 0x2545F4914F6CDD1DU;
};

template <typename Cache>
void hitRandomly(benchmark::State& state, std::uint64_t size) {
    Cache cache;
    for (std::uint64_t key = 0; key < size; ++key) {
        cache.put(key);
    }
    RandomKeys keys(size);
    for (std::uint64_t i = 0; i < 2 * size; ++i) { // makes the order of use as random as the hits
        benchmark::DoNotOptimize(cache.hit(keys.next()));
    }
    for (auto step : state) {
        benchmark::DoNotOptimize(cache.hit(keys.next()));
    }
    countItems(state, 1);
}

template <typename Cache>
void registerSize(const std::string& contestant, std::uint64_t size) {
    auto* const registered = benchmark::RegisterBenchmark(
        ("cache hit/" + std::to_string(size) + " entries/" + contestant).c_str(), hitRandomly<Cache>, size);
    if (size >= 1'000'000) {
        registered->Iterations(100'000); // avoids the search for a number, which fills the cache each time
    }
}

const bool areRegistered = [] {
    for (std::uint64_t size = 100; size <= 1'000'000; size *= 10) {
        registerSize<EngineCache>("engine", size);
        registerSize<MultiIndexCache>("floor: multi-index", size);
        registerSize<HashMap>("unordered_map, no order", size);
    }
    return true;
}();

} // namespace

} // namespace Vell::Benchmarks
