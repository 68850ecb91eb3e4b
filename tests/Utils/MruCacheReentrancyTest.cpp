// Entries whose destructors call their cache.

#include <support/ExpectAssertion.h>
#include <support/FailingAllocations.h>

#include <Utils/Public/MRUCache.h>
#include <Utils/Public/Ptr/CheckedPtr.h>

#include <functional>
#include <limits>
#include <memory>
#include <utility>
#include <vector>

namespace Vell {
namespace {

using Value = std::shared_ptr<const int>;
using Cache = MRUCache<int, Value, std::hash<int>, AreDeeplyEqualComparator>;

/// A value that runs a function when its last owner releases it.
Value makeValue(std::function<void()> end) {
    return Value(new int(0), [end = std::move(end)](const int* number) {
        delete number;
        end();
    });
}

std::vector<int> getHeldKeys(Cache& cache) {
    std::vector<int> keys;
    for (int key = 0; key < 100; ++key) {
        if (cache.get(key) != nullptr) {
            keys.push_back(key);
        }
    }
    return keys;
}

using Keys = std::vector<int>;

TEST(MruCacheReentrancy, LetsADyingEntryAddAnother) {
    Cache cache(3);
    cache.put(1, {makeValue([&] { EXPECT_NE(cache.put(10, {nullptr, 7}), nullptr); }), 1});
    cache.put(2, {nullptr, 2});
    cache.put(3, {nullptr, 3});
    const Cache::DataNode* const added = cache.put(4, {nullptr, 4});
    EXPECT_EQ(added, cache.get(4));
    EXPECT_EQ(getHeldKeys(cache), (Keys{3, 4, 10})) << "the other put had to evict as well";
    EXPECT_EQ(cache.getEffectiveSizeInBytes(), 14U);
    EXPECT_EQ(cache.getEvictedCount(), 2U);
}

TEST(MruCacheReentrancy, DoesNotContainAnEntryThatIsBeingDestroyed) {
    Cache cache(1);
    std::size_t size = 0;
    std::uint64_t bytes = 0;
    std::uint64_t evicted = 0;
    const Cache::DataNode* self = nullptr;
    cache.put(1, {makeValue([&] {
                      self = cache.get(1);
                      size = cache.size();
                      bytes = cache.getEffectiveSizeInBytes();
                      evicted = cache.getEvictedCount();
                  }),
                  5});
    cache.put(2, {nullptr, 9});
    EXPECT_EQ(self, nullptr);
    EXPECT_EQ(size, 1U);
    EXPECT_EQ(bytes, 9U);
    EXPECT_EQ(evicted, 0U) << "the eviction is counted after the entry is destroyed";
    EXPECT_EQ(cache.getEvictedCount(), 1U);
}

TEST(MruCacheReentrancy, CountsAnEvictionAfterItsEntryIsDestroyed) {
    Cache cache(0, 10);
    std::vector<std::uint64_t> counts;
    for (int key = 0; key < 3; ++key) {
        cache.put(key, {makeValue([&] { counts.push_back(cache.getEvictedCount()); }), 3});
    }
    cache.put(3, {nullptr, 10});
    EXPECT_EQ(counts, (std::vector<std::uint64_t>{0, 1, 2}));
    EXPECT_EQ(cache.getEvictedCount(), 3U);
}

TEST(MruCacheReentrancy, MayEvictWhileAnEntryIsBeingDestroyed) {
    Cache cache(1);
    cache.put(1, {makeValue([&] { cache.checkAndPopLast(); }), 0});
    EXPECT_NE(cache.put(2, {nullptr, 0}), nullptr);
    EXPECT_EQ(getHeldKeys(cache), Keys{2});
    EXPECT_EQ(cache.getEvictedCount(), 1U);
}

TEST(MruCacheReentrancy, ChecksTheWeightOfTheEntryThatItEvictsNext) {
    constexpr std::uint64_t tooMuch = std::numeric_limits<std::uint64_t>::max();
    Cache cache(0, 1000);
    cache.put(1, {makeValue([&] { EXPECT_NE(cache.get(2), nullptr); }), 1});
    cache.put(2, {nullptr, tooMuch}); // the total wraps around to 0; evicting this entry would assert
    cache.put(3, {nullptr, 5});
    cache.put(4, {nullptr, 1000});
    EXPECT_EQ(getHeldKeys(cache), (Keys{2, 4}));
    EXPECT_EQ(cache.getEvictedCount(), 2U);
    EXPECT_EQ(cache.getEffectiveSizeInBytes(), 999U);
}

TEST(MruCacheReentrancy, ReturnsNullWhenADyingEntryEvictsTheNewOne) {
    Cache cache(1);
    cache.put(1, {makeValue([&] { cache.put(3, {nullptr, 30}); }), 10});
    EXPECT_EQ(cache.put(2, {nullptr, 20}), nullptr);
    EXPECT_EQ(getHeldKeys(cache), Keys{3});
    EXPECT_EQ(cache.getEffectiveSizeInBytes(), 30U);
    EXPECT_EQ(cache.getEvictedCount(), 2U);
}

TEST(MruCacheReentrancy, ReturnsNullWhenADyingEntryClearsTheCache) {
    Cache cache(0, 15);
    cache.put(1, {makeValue([&] { cache.clear(); }), 10});
    EXPECT_EQ(cache.put(2, {nullptr, 10}), nullptr);
    EXPECT_EQ(cache.size(), 0U);
    EXPECT_EQ(cache.getEffectiveSizeInBytes(), 0U);
    EXPECT_EQ(cache.getEvictedCount(), 0U);
    EXPECT_NE(cache.put(2, {nullptr, 100}), nullptr) << "the cache is usable and keeps its limit:";
    EXPECT_NE(cache.put(3, {nullptr, 1}), nullptr);
    EXPECT_EQ(getHeldKeys(cache), Keys{3});
}

TEST(MruCacheReentrancy, ReturnsNullWhenADyingEntryReplacesTheCache) {
    Cache cache(1);
    cache.put(1, {makeValue([&] {
                      cache = Cache(7); // its counts restart and reach the values that the first put left
                      cache.put(3, {nullptr, 1});
                      cache.put(4, {nullptr, 1});
                  }),
                  0});
    EXPECT_EQ(cache.put(2, {nullptr, 0}), nullptr);
    EXPECT_EQ(getHeldKeys(cache), (Keys{3, 4}));
    EXPECT_EQ(cache.getEvictedCount(), 0U) << "the entry was the old cache's";
}

TEST(MruCacheReentrancy, EvictsForAKeyThatDoesNotEqualItself) {
    MRUCache<float, Value, std::hash<float>, AreDeeplyEqualComparator> cache(1);
    cache.put(1.0F, {nullptr, 3});
    EXPECT_NE(cache.put(std::numeric_limits<float>::quiet_NaN(), {nullptr, 4}), nullptr);
    EXPECT_EQ(cache.get(1.0F), nullptr);
    EXPECT_EQ(cache.getEffectiveSizeInBytes(), 4U);
}

TEST(MruCacheReentrancyDeathTest, AssertsThatTheNewEntryIsStillThere) {
    VELL_EXPECT_ASSERTION(
        {
            Cache cache(1);
            cache.put(1, {makeValue([&] { cache.clear(); }), 0});
            cache.getOrPut(2, [] { return Cache::DataNode(nullptr, 0); });
        },
        "Utils/Public/MRUCache:199: assertion failed: value");
}

TEST(MruCacheReentrancy, ReturnsTheEntryThatADyingOneMadeForTheSameKey) {
    Cache cache(1);
    const Value remade = std::make_shared<const int>(2);
    cache.put(1, {makeValue([&] {
                      cache.clear();
                      cache.put(2, {remade, 0});
                  }),
                  0});
    EXPECT_EQ(cache.getOrPut(2, [] { return Cache::DataNode(nullptr, 0); }).getValue(), remade);
}

TEST(MruCacheReentrancy, LooksEmptyToEntriesThatClearDestroys) {
    Cache cache;
    std::vector<std::size_t> sizes;
    for (int key = 0; key < 4; ++key) {
        cache.put(key, {makeValue([&] {
                            sizes.push_back(getHeldKeys(cache).size());
                            EXPECT_EQ(sizes.back(), cache.size());
                            EXPECT_EQ(cache.getEffectiveSizeInBytes(), 0U);
                        }),
                        2});
    }
    cache.clear();
    EXPECT_EQ(sizes, (std::vector<std::size_t>{0, 0, 0, 0}));
}

/// Adds entries that, when destroyed, look up a neighbour and add another entry.
void addCallingEntries(Cache& cache) {
    for (int key = 0; key < 5; ++key) {
        cache.put(key, {makeValue([&cache, key] {
                            cache.get((key + 1) % 5);
                            cache.put(key + 10, {nullptr, 3});
                        }),
                        1});
    }
}

TEST(MruCacheReentrancy, ClearDropsEntriesThatDyingOnesRead) {
    Cache cache;
    addCallingEntries(cache);
    cache.clear();
    EXPECT_EQ(getHeldKeys(cache), (Keys{10, 11, 12, 13, 14}));
}

TEST(MruCacheReentrancy, StaysConsistentWhenItIsClearedWithoutMemory) {
    Cache cache(0, 100);
    addCallingEntries(cache);
    const std::size_t before = cache.size();
    {
        const Testing::FailingAllocations failing(1);
        cache.clear();
        EXPECT_TRUE(failing.hasFailed());
    }
    EXPECT_EQ(getHeldKeys(cache).size(), cache.size());
    cache.clear();
    cache.clear();
    EXPECT_EQ(before, 5U);
    EXPECT_EQ(cache.size(), 0U);
    EXPECT_EQ(cache.getEffectiveSizeInBytes(), 0U);
}

TEST(MruCacheReentrancy, CanBeClearedWithoutMemory) {
    bool hasFailed = true;
    for (std::size_t number = 1; hasFailed; ++number) {
        Cache cache(2, 100);
        for (int key = 0; key < 5; ++key) {
            cache.put(key, {nullptr, 7});
        }
        const Testing::FailingAllocations failing(number);
        cache.clear();
        hasFailed = failing.hasFailed();
        EXPECT_TRUE(hasFailed || number > 1);
        EXPECT_EQ(cache.size(), 0U);
        EXPECT_EQ(cache.getEffectiveSizeInBytes(), 0U);
        EXPECT_EQ(cache.getEvictedCount(), 0U);
    }
}

TEST(MruCacheReentrancy, KeepsWhatADyingEntryAddsDuringClear) {
    Cache cache;
    for (int key = 0; key < 5; ++key) {
        cache.put(key, {makeValue([&cache, key] { cache.put(key + 10, {nullptr, 3}); }), 1});
    }
    cache.clear();
    EXPECT_EQ(getHeldKeys(cache), (Keys{10, 11, 12, 13, 14}));
    EXPECT_EQ(cache.size(), 5U);
    EXPECT_EQ(cache.getEffectiveSizeInBytes(), 15U);
    cache.clear();
    EXPECT_EQ(cache.size(), 0U);
    EXPECT_EQ(cache.getEffectiveSizeInBytes(), 0U);
}

TEST(MruCacheReentrancy, ClearReturnsEvenIfEveryDyingEntryAddsAnother) {
    bool isAdding = true;
    Cache cache;
    std::function<void()> addAgain = [&] {
        if (isAdding) {
            cache.put(1, {makeValue(addAgain), 1});
        }
    };
    cache.put(1, {makeValue(addAgain), 1});
    cache.clear();
    EXPECT_EQ(getHeldKeys(cache), Keys{1});
    isAdding = false;
}

TEST(MruCacheReentrancy, MayBeClearedDuringClear) {
    Cache cache;
    int ends = 0;
    for (int key = 0; key < 5; ++key) {
        cache.put(key, {makeValue([&] {
                            ++ends;
                            cache.clear();
                        }),
                        1});
    }
    cache.clear();
    EXPECT_EQ(ends, 5);
    EXPECT_EQ(cache.size(), 0U);
    EXPECT_EQ(cache.getEffectiveSizeInBytes(), 0U);
}

TEST(MruCacheReentrancy, MayBeReplacedByADyingEntryThatLooksItselfUp) {
    Cache cache(2);
    const Cache::DataNode* found = nullptr;
    cache.put(1, {makeValue([&] {
                      found = cache.get(2);
                      cache.put(3, {nullptr, 5});
                  }),
                  1});
    cache.put(2, {nullptr, 1});
    cache = Cache(7, 0);
    EXPECT_EQ(found, nullptr);
    EXPECT_EQ(getHeldKeys(cache), Keys{3});
    EXPECT_EQ(cache.getEffectiveSizeInBytes(), 5U);
    EXPECT_EQ(cache.getMaxEntries(), 7U);
}

} // namespace
} // namespace Vell
