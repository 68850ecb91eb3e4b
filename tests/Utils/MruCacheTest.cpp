#include <Utils/Public/MRUCache.h>
#include <Utils/Public/Ptr/CheckedPtr.h>
#include <Utils/Public/Ptr/PtrUtils.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <random>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <vector>

namespace Vell {
namespace {

using Value = std::shared_ptr<const std::string>;
using Cache = MRUCache<int, Value, std::hash<int>, AreDeeplyEqualComparator>;

Value makeValue(const std::string& text) {
    return std::make_shared<const std::string>(text);
}

const Cache::DataNode* put(Cache& cache, int key, std::uint64_t bytes = 0) {
    return cache.put(key, Cache::DataNode(makeValue(std::to_string(key)), bytes));
}

TEST(MruCache, StartsEmptyAndUnlimited) {
    const Cache cache;
    EXPECT_EQ(cache.size(), 0U);
    EXPECT_EQ(cache.getEffectiveSizeInBytes(), 0U);
    EXPECT_EQ(cache.getEvictedCount(), 0U);
    EXPECT_EQ(cache.getMaxEntries(), 0U);
    EXPECT_EQ(cache.getMaxSizeInBytes(), 0U);
}

TEST(MruCache, StartsWithTheGivenLimits) {
    const Cache cache = 3;
    EXPECT_EQ(cache.getMaxEntries(), 3U);
    EXPECT_EQ(cache.getMaxSizeInBytes(), 0U);
    const Cache both = {3, 100};
    EXPECT_EQ(both.getMaxSizeInBytes(), 100U);
}

TEST(MruCache, HasNothingToEvictOnceItsLimitsHold) {
    Cache empty(1, 1);
    empty.checkAndPopLast();
    EXPECT_EQ(empty.size(), 0U);
    Cache cache(2, 20);
    put(cache, 1, 10);
    put(cache, 2, 10);
    cache.checkAndPopLast();
    EXPECT_EQ(cache.size(), 2U);
    Cache heavy(0, 5);
    put(heavy, 1, 10);
    heavy.checkAndPopLast();
    EXPECT_EQ(heavy.size(), 1U) << "the only entry stays";
    EXPECT_EQ(heavy.getEvictedCount(), 0U);
}

TEST(MruCache, ReturnsTheNodeThatWasPut) {
    Cache cache;
    const Value value = makeValue("one");
    const Cache::DataNode* const node = cache.put(1, {value, 77});
    ASSERT_NE(node, nullptr);
    EXPECT_EQ(node->getValue(), value);
    EXPECT_EQ(node->getEffectiveSizeInBytes(), 77U);
    EXPECT_EQ(cache.get(1), node);
    EXPECT_EQ(cache.get(2), nullptr);
    EXPECT_EQ(cache.size(), 1U);
    EXPECT_EQ(cache.getEffectiveSizeInBytes(), 77U);
}

TEST(MruCache, NeverEvictsWithoutLimits) {
    Cache cache;
    for (int key = 0; key < 1000; ++key) {
        ASSERT_NE(put(cache, key, 1U << 30), nullptr);
    }
    EXPECT_EQ(cache.size(), 1000U);
    EXPECT_EQ(cache.getEvictedCount(), 0U);
    EXPECT_EQ(cache.getEffectiveSizeInBytes(), 1000ULL << 30);
    EXPECT_NE(cache.get(0), nullptr);
}

TEST(MruCache, EvictsTheOldestEntry) {
    Cache cache(3);
    for (int key = 1; key <= 4; ++key) {
        put(cache, key);
    }
    EXPECT_EQ(cache.size(), 3U);
    EXPECT_EQ(cache.getEvictedCount(), 1U);
    EXPECT_EQ(cache.get(1), nullptr);
    EXPECT_NE(cache.get(2), nullptr);
}

TEST(MruCache, KeepsTheEntryThatWasReadLast) {
    Cache cache(3);
    for (int key = 1; key <= 3; ++key) {
        put(cache, key);
    }
    EXPECT_NE(cache.get(1), nullptr);
    put(cache, 4);
    EXPECT_EQ(cache.get(2), nullptr) << "the next oldest entry is evicted instead";
    EXPECT_NE(cache.get(1), nullptr);
}

TEST(MruCache, LeavesTheOrderAloneWhenTheFrontIsRead) {
    Cache cache(2);
    put(cache, 1);
    put(cache, 2);
    EXPECT_NE(cache.get(2), nullptr);
    EXPECT_EQ(cache.get(9), nullptr);
    put(cache, 3);
    EXPECT_EQ(cache.get(1), nullptr);
    EXPECT_NE(cache.get(2), nullptr);
}

TEST(MruCache, KeepsTheOnlyEntryAboveTheByteLimit) {
    Cache cache(0, 100);
    EXPECT_NE(put(cache, 1, 500), nullptr);
    EXPECT_EQ(cache.size(), 1U);
    EXPECT_EQ(cache.getEffectiveSizeInBytes(), 500U);
    EXPECT_EQ(cache.getEvictedCount(), 0U);
}

TEST(MruCache, EvictsALargeEntryForANewOne) {
    Cache cache(0, 100);
    put(cache, 1, 500);
    const Cache::DataNode* const node = put(cache, 2, 600);
    ASSERT_NE(node, nullptr);
    EXPECT_EQ(*node->getValue(), "2") << "never the new one";
    EXPECT_EQ(cache.get(1), nullptr);
    EXPECT_EQ(cache.size(), 1U);
    EXPECT_EQ(cache.getEffectiveSizeInBytes(), 600U);
}

TEST(MruCache, AllowsATotalEqualToTheLimit) {
    Cache cache(0, 100);
    put(cache, 1, 60);
    put(cache, 2, 40);
    EXPECT_EQ(cache.size(), 2U);
    put(cache, 3, 1);
    EXPECT_EQ(cache.get(1), nullptr);
    EXPECT_EQ(cache.size(), 2U);
    EXPECT_EQ(cache.getEffectiveSizeInBytes(), 41U);
}

TEST(MruCache, EvictsAsManyEntriesAsNecessary) {
    Cache cache(0, 100);
    for (int key = 1; key <= 10; ++key) {
        put(cache, key, 10);
    }
    EXPECT_EQ(cache.size(), 10U);
    put(cache, 11, 95);
    EXPECT_EQ(cache.size(), 1U) << "one more entry of 10 would be too much";
    EXPECT_EQ(cache.getEvictedCount(), 10U);
    EXPECT_EQ(cache.getEffectiveSizeInBytes(), 95U);
}

TEST(MruCache, EvictsWeightlessEntriesOnTheWay) {
    Cache cache(0, 100);
    put(cache, 1, 0);
    put(cache, 2, 100);
    EXPECT_EQ(cache.size(), 2U);
    put(cache, 3, 1);
    EXPECT_EQ(cache.size(), 1U);
    EXPECT_NE(cache.get(3), nullptr);
}

TEST(MruCache, ObeysWhicheverLimitIsTighter) {
    Cache cache(2, 100);
    put(cache, 1, 10);
    put(cache, 2, 10);
    put(cache, 3, 10);
    EXPECT_EQ(cache.size(), 2U);
    put(cache, 4, 95);
    EXPECT_EQ(cache.size(), 1U);
}

TEST(MruCache, KeepsOneEntryUnderALimitOfOne) {
    Cache cache(1);
    put(cache, 1);
    put(cache, 2);
    EXPECT_EQ(cache.size(), 1U);
    EXPECT_NE(cache.get(2), nullptr);
}

TEST(MruCache, PutChangesNothingIfTheKeyIsPresent) {
    Cache cache(2);
    const Value first = makeValue("first");
    cache.put(1, {first, 5});
    put(cache, 2, 7);
    const Value second = makeValue("second");
    EXPECT_EQ(cache.put(1, {second, 1000}), nullptr);
    EXPECT_EQ(second.use_count(), 1) << "the rejected value is released";
    EXPECT_EQ(cache.getEffectiveSizeInBytes(), 12U);
    EXPECT_EQ(cache.size(), 2U);
    EXPECT_EQ(cache.getEvictedCount(), 0U);

    put(cache, 3);
    EXPECT_EQ(cache.get(1), nullptr) << "the refused put did not make the entry a recent one";
    EXPECT_NE(cache.get(2), nullptr);
}

TEST(MruCache, ValuesMayOutliveTheirEviction) {
    Cache cache(1);
    const Value held = put(cache, 1)->getValue();
    put(cache, 2);
    EXPECT_EQ(held.use_count(), 1);
    EXPECT_EQ(*held, "1");
}

TEST(MruCache, ClearKeepsTheLimits) {
    Cache cache(2, 100);
    for (int key = 1; key <= 3; ++key) {
        put(cache, key, 10);
    }
    const Value held = cache.get(3)->getValue();
    cache.clear();
    EXPECT_EQ(cache.size(), 0U);
    EXPECT_EQ(cache.getEffectiveSizeInBytes(), 0U);
    EXPECT_EQ(cache.getEvictedCount(), 0U);
    EXPECT_EQ(cache.getMaxEntries(), 2U);
    EXPECT_EQ(cache.getMaxSizeInBytes(), 100U);
    EXPECT_EQ(held.use_count(), 1);
    EXPECT_EQ(cache.get(3), nullptr);
    EXPECT_NE(put(cache, 3, 10), nullptr);
}

TEST(MruCache, CountsHitsAndMisses) {
    Cache cache(2);
    EXPECT_EQ(cache.getHitCount() + cache.getMissCount(), 0U);
    cache.get(1);
    put(cache, 1);
    put(cache, 1); // neither finds nor misses
    cache.get(1);
    cache.get(1);
    EXPECT_EQ(cache.getHitCount(), 2U);
    EXPECT_EQ(cache.getMissCount(), 1U);
    cache.getOrPut(2, [] { return Cache::DataNode(makeValue("two"), 0); });
    cache.getOrPut(2, [] { return Cache::DataNode(makeValue("two"), 0); });
    EXPECT_EQ(cache.getHitCount(), 3U);
    EXPECT_EQ(cache.getMissCount(), 2U);
    cache.clear();
    EXPECT_EQ(cache.getHitCount(), 0U);
    EXPECT_EQ(cache.getMissCount(), 0U);
}

TEST(MruCache, CountsAMissEvenIfMakingTheValueFails) {
    Cache cache;
    const auto fail = []() -> Cache::DataNode { throw std::runtime_error("no value"); };
    EXPECT_THROW(cache.getOrPut(1, fail), std::runtime_error);
    EXPECT_EQ(cache.getMissCount(), 1U);
    EXPECT_EQ(cache.getHitCount(), 0U);
}

TEST(MruCache, FindsAnEntryByAnotherEqualKey) {
    using Key = NNPtr<const std::string>;
    MRUCache<Key, int, std::hash<Key>, AreDeeplyEqualComparator> cache;
    cache.put(makeNNPtr<std::string>("key"), {1, 0});
    EXPECT_NE(cache.get(makeNNPtr<std::string>("key")), nullptr);
    EXPECT_EQ(cache.put(makeNNPtr<std::string>("key"), {2, 0}), nullptr);
    EXPECT_NE(cache.put(makeNNPtr<std::string>("other"), {2, 0}), nullptr);
    EXPECT_EQ(cache.size(), 2U);
}

TEST(MruCache, MakesAnEntryOnlyOnAMiss) {
    Cache cache;
    int made = 0;
    const auto make = [&] {
        ++made;
        return Cache::DataNode(makeValue("made"), 3);
    };
    const Cache::DataNode& node = cache.getOrPut(1, make);
    EXPECT_EQ(*node.getValue(), "made");
    EXPECT_EQ(&cache.getOrPut(1, make), &node);
    EXPECT_EQ(made, 1);
    EXPECT_EQ(cache.getEffectiveSizeInBytes(), 3U);
}

TEST(MruCache, AddsNothingIfMakingAnEntryFails) {
    Cache cache;
    EXPECT_THROW(cache.getOrPut(1, []() -> Cache::DataNode { throw 5; }), int);
    EXPECT_EQ(cache.size(), 0U);
    EXPECT_EQ(cache.get(1), nullptr);
}

TEST(MruCache, EvictsByTheLatestOfManyUses) {
    constexpr int count = 40;
    constexpr int useCount = 20000; // more than the cache remembers before it moves entries
    Cache cache(count);
    std::vector<int> order;
    for (int key = 0; key != count; ++key) {
        put(cache, key);
        order.push_back(key);
    }
    std::minstd_rand random(1);
    for (int use = 0; use != useCount; ++use) {
        const auto position = order.begin() + static_cast<std::ptrdiff_t>(random() % count);
        EXPECT_NE(cache.get(*position), nullptr);
        std::rotate(position, position + 1, order.end());
    }
    for (int i = 0; i != count; ++i) {
        put(cache, count + i); // evicts one
        Cache copy = cache;
        EXPECT_EQ(copy.get(order[static_cast<std::size_t>(i)]), nullptr) << i;
        EXPECT_TRUE(i + 1 == count || copy.get(order[static_cast<std::size_t>(i) + 1]) != nullptr) << i;
    }
}

TEST(MruCache, CopiesTheOrderOfUse) {
    Cache cache(3);
    put(cache, 1);
    put(cache, 2);
    put(cache, 3);
    cache.get(1);
    Cache copy = cache;
    EXPECT_EQ(copy.getHitCount(), 1U);
    copy.get(2);
    put(copy, 4);
    EXPECT_EQ(copy.get(3), nullptr);
    EXPECT_NE(copy.get(1), nullptr);
    EXPECT_NE(copy.get(2), nullptr);
    put(cache, 5);
    EXPECT_EQ(cache.get(2), nullptr) << "uses of the copy are its own";
    Cache assigned;
    assigned = copy;
    EXPECT_EQ(assigned.getMaxEntries(), 3U);
    EXPECT_NE(assigned.get(4), nullptr);
}

TEST(MruCache, AcceptsOtherEntriesWhileMakingOne) {
    Cache cache(2);
    const Cache::DataNode& node = cache.getOrPut(1, [&] {
        put(cache, 2);
        put(cache, 3);
        return Cache::DataNode(makeValue("outer"), 0);
    });
    EXPECT_EQ(*node.getValue(), "outer");
    EXPECT_EQ(cache.get(2), nullptr);
    EXPECT_NE(cache.get(3), nullptr);
}

} // namespace
} // namespace Vell
