#if defined(__GNUC__) && !defined(__clang__)
// In optimised builds GCC 12 warns about tables with 2^61 buckets, which the container cannot have.
#pragma GCC diagnostic ignored "-Waggressive-loop-optimizations"
#endif

#include <support/ExpectAssertion.h>
#include <support/FailingAllocations.h>

#include <Utils/Public/MRUCache.h>
#include <Utils/Public/Ptr/CheckedPtr.h>
#include <Utils/Public/Ptr/PtrUtils.h>

#include <functional>
#include <limits>
#include <memory>
#include <new>
#include <string>
#include <utility>

namespace Vell {
namespace {

using Value = std::shared_ptr<const int>;
using Cache = MRUCache<int, Value, std::hash<int>, AreDeeplyEqualComparator>;

TEST(MruCacheFailuresDeathTest, AssertsWhenTheTotalWeightHasWrappedAround) {
    Cache cache(1);
    cache.put(1, {nullptr, std::numeric_limits<std::uint64_t>::max()});
    VELL_EXPECT_ASSERTION(cache.put(2, {nullptr, 2}),
                          "Utils/Public/MRUCache:281: assertion failed: "
                          "_effectiveSizeInBytes >= value.second.getEffectiveSizeInBytes()");
}

TEST(MruCacheFailuresDeathTest, AssertsWhenMakingAnEntryAddsItsKey) {
    Cache cache;
    const auto make = [&] {
        cache.put(1, {nullptr, 0});
        return Cache::DataNode(nullptr, 0);
    };
    VELL_EXPECT_ASSERTION(cache.getOrPut(1, make), "Utils/Public/MRUCache:199: assertion failed: value");
}

TEST(MruCacheFailuresDeathTest, AssertsOnANullKey) {
    using Key = NNPtr<const std::string>;
    MRUCache<Key, int, std::hash<Key>, AreDeeplyEqualComparator> cache;
    Key key = makeNNPtr<std::string>("key");
    const Key taken = std::move(key);
    constexpr const char* line = "Utils/Public/Ptr/CheckedPtr:145: assertion failed: _ptr";
    VELL_EXPECT_ASSERTION(cache.get(key), line);
    VELL_EXPECT_ASSERTION(cache.put(key, {1, 0}), line);
    EXPECT_TRUE(taken);
}

/// A key whose hash and comparison fail on demand.
struct Key {
    int number;
    friend bool operator==(const Key& lhs, const Key& rhs) {
        if (Key::isComparisonFailing) {
            throw 1;
        }
        return lhs.number == rhs.number;
    }
    static bool isHashFailing;
    static bool isComparisonFailing;
};
bool Key::isHashFailing = false;
bool Key::isComparisonFailing = false;

struct KeyHash {
    std::size_t operator()(const Key&) const {
        if (Key::isHashFailing) {
            throw 2;
        }
        return 0; // one bucket, so that every search compares
    }
};

using FailingCache = MRUCache<Key, Value, KeyHash, AreDeeplyEqualComparator>;

class MruCacheFailures : public testing::Test {
protected:
    MruCacheFailures() {
        cache.put(Key{1}, {nullptr, 10});
        cache.put(Key{2}, {nullptr, 20});
    }
    ~MruCacheFailures() override { Key::isHashFailing = Key::isComparisonFailing = false; }

    void expectUnchanged() {
        Key::isHashFailing = Key::isComparisonFailing = false;
        EXPECT_EQ(cache.size(), 2U);
        EXPECT_EQ(cache.getEffectiveSizeInBytes(), 30U);
        EXPECT_EQ(cache.getEvictedCount(), 0U);
        EXPECT_NE(cache.put(Key{4}, {nullptr, 1}), nullptr);
        EXPECT_EQ(cache.get(Key{1}), nullptr) << "was the oldest and still is";
        EXPECT_NE(cache.get(Key{2}), nullptr);
    }

    FailingCache cache{2};
};

TEST_F(MruCacheFailures, LeaveTheCacheAsItWasWhenHashingFails) {
    const Value value = std::make_shared<const int>(3);
    Key::isHashFailing = true;
    EXPECT_THROW(cache.get(Key{1}), int);
    EXPECT_THROW(cache.put(Key{3}, {value, 5}), int);
    EXPECT_EQ(value.use_count(), 1);
    expectUnchanged();
}

TEST_F(MruCacheFailures, LeaveTheCacheAsItWasWhenComparingFails) {
    const Value value = std::make_shared<const int>(3);
    Key::isComparisonFailing = true;
    EXPECT_THROW(cache.get(Key{1}), int);
    EXPECT_THROW(cache.put(Key{3}, {value, 5}), int);
    EXPECT_EQ(value.use_count(), 1);
    expectUnchanged();
}

TEST_F(MruCacheFailures, LeaveTheCacheAsItWasWhenAllocatingFails) {
    const Value value = std::make_shared<const int>(3);
    {
        const Testing::FailingAllocations failing(1);
        EXPECT_THROW(cache.put(Key{3}, {value, 5}), std::bad_alloc);
    }
    EXPECT_EQ(value.use_count(), 1);
    expectUnchanged();
}

TEST(MruCacheFailuresOfMemory, LeaveTheCacheIntactAtEveryAllocation) {
    bool hasFailed = true;
    for (std::size_t number = 1; hasFailed; ++number) {
        Cache cache;
        int held = 0;
        {
            const Testing::FailingAllocations failing(number);
            hasFailed = false;
            for (int key = 0; key < 200; ++key) {
                try {
                    held += cache.put(key, {nullptr, 1}) != nullptr ? 1 : 0;
                } catch (const std::bad_alloc&) {
                    hasFailed = true;
                }
            }
        }
        ASSERT_EQ(cache.size(), static_cast<std::size_t>(held));
        ASSERT_EQ(cache.getEffectiveSizeInBytes(), static_cast<std::uint64_t>(held));
        ASSERT_GE(held, 199);
        for (int key = 0; key < 200; ++key) {
            ASSERT_TRUE(cache.get(key) != nullptr || held == 199) << key;
        }
    }
}

} // namespace
} // namespace Vell
