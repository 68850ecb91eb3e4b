// Hits in caches of growing size, in random order: what grows is the way to the memory.

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

/// Keeps no order.
class HashMap {
public:
    void put(std::uint64_t key) { _map.emplace(key, key); }
    std::uint64_t hit(std::uint64_t key) { return _map.find(key)->second; }

private:
    std::unordered_map<std::uint64_t, std::uint64_t, PlainHash> _map;
};

/// Numbers below a limit, the same ones for every contestant (xorshift).
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
    for (std::uint64_t i = 0; i < 2 * size; ++i) { // the order of use is as random as the hits
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
        registered->Iterations(100'000); // filling takes its time, also in the search for a number
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
