// The indispensable parts of a layout: each floor does what the previous one does, and one more thing.

#include "support/BenchEngine.h"
#include "support/HeavyKeyCache.h"
#include "support/Items.h"
#include "support/PlainCache.h"

#include <Utils/Public/Utf8.h>

#include <benchmark/benchmark.h>

#include <mutex>

namespace Vell::Benchmarks {

namespace {

/// Collects one result per character, line by line.
template <typename Result, typename Hit>
void hitAll(benchmark::State& state, const Workload& workload, const Hit& hit) {
    std::vector<std::vector<unsigned int>> lines;
    for (const std::string& line : workload.lines) {
        lines.push_back(decode(line));
    }
    const auto layOutAll = [&] {
        for (const std::vector<unsigned int>& line : lines) {
            std::vector<Result> run;
            run.reserve(line.size());
            for (const unsigned int code : line) {
                run.push_back(hit(code));
            }
            benchmark::DoNotOptimize(run.data());
            benchmark::ClobberMemory();
        }
    };
    layOutAll();
    for (auto step : state) {
        layOutAll();
    }
    countItems(state, workload.countCharacters());
}

/// Decodes the text and takes each character's advance from the table of the face.
void decodeAndAdvance(benchmark::State& state, const Workload& workload) {
    const BenchEngine engine(workload);
    const Gfx::CharMap& charMap = engine.font.getFace()->getBasicMetrics().getCharMap();
    float pen = 0.0F;
    for (auto step : state) {
        for (const std::string& line : workload.lines) {
            const char* position = line.data();
            while (position != line.data() + line.size()) {
                pen += charMap[decodeUtf8(position, line.data() + line.size())].advance;
            }
        }
        benchmark::DoNotOptimize(pen);
        pen = 0.0F;
    }
    countItems(state, workload.countCharacters());
}

void hitPlainKeys(benchmark::State& state, const Workload& workload) {
    PlainCache<int> cache;
    hitAll<int>(state, workload, [&](unsigned int code) { return cache.getOrPut(code, 1); });
}

void hitLocked(benchmark::State& state, const Workload& workload) {
    PlainCache<int> cache;
    std::recursive_mutex mutex;
    hitAll<int>(state, workload, [&](unsigned int code) {
        const std::lock_guard<std::recursive_mutex> lock(mutex);
        return cache.getOrPut(code, 1);
    });
}

void hitShared(benchmark::State& state, const Workload& workload) {
    using Value = std::shared_ptr<const int>;
    PlainCache<Value> cache;
    const Value value = std::make_shared<const int>(1);
    std::recursive_mutex mutex;
    hitAll<Value>(state, workload, [&](unsigned int code) {
        const std::lock_guard<std::recursive_mutex> lock(mutex);
        return cache.getOrPut(code, value);
    });
}

/// The least that a cache with the engine's guarantees needs for each glyph: a key with a mutex and a shared
/// pointer of its own, one locked hit that moves the entry to the front, and a copy of the shared result.
void hitHeavyKeys(benchmark::State& state, const Workload& workload) {
    HeavyKeyCache cache;
    hitAll<std::shared_ptr<const int>>(state, workload,
                                       [&](unsigned int code) { return cache.getOrMake(code); });
}

const bool areRegistered = [] {
    for (const Workload* workload : getWorkloads()) {
        const std::string name = "layout/" + workload->name + "/floor: ";
        benchmark::RegisterBenchmark((name + "decode, advance").c_str(), decodeAndAdvance, *workload);
        benchmark::RegisterBenchmark((name + "64-bit key").c_str(), hitPlainKeys, *workload);
        benchmark::RegisterBenchmark((name + "64-bit key, locked").c_str(), hitLocked, *workload);
        benchmark::RegisterBenchmark((name + "64-bit key, locked, shared").c_str(), hitShared, *workload);
        benchmark::RegisterBenchmark((name + "heavy key, locked, shared").c_str(), hitHeavyKeys, *workload);
    }
    return true;
}();

} // namespace

} // namespace Vell::Benchmarks
