// Compares the cache with a model: the same cache, written as plainly as possible.

#include <support/ListCache.h>

#include <Utils/Public/MRUCache.h>
#include <Utils/Public/Ptr/CheckedPtr.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <random>

namespace Vell {
namespace {

using Testing::ListCache;
using Entry = ListCache::Entry;

struct Limits {
    std::uint64_t entries;
    std::uint64_t bytes;
};

/// Applies the same operations to both caches.
class Comparison {
public:
    using Cache = MRUCache<unsigned int, std::uint32_t, std::hash<unsigned int>, AreDeeplyEqualComparator>;

    explicit Comparison(const Limits& limits)
        : _cache(limits.entries, limits.bytes)
        , _plain(limits.entries, limits.bytes) {}

    /// Applies one random operation: one in ten thousand clears, half of the others read.
    bool step(std::mt19937& random) {
        const std::uint64_t choice = random() % 10000;
        const auto key = static_cast<unsigned int>(random() % keyCount);
        const Entry entry{key, static_cast<std::uint32_t>(random() % 1000000), random() % 90};
        if (choice == 0) {
            _cache.clear();
            _plain.clear();
            return hasSameTotals();
        }
        if (choice < 5000) {
            return isSame(_cache.get(key), _plain.get(key)) && hasSameTotals();
        }
        if (choice < 8000) {
            return isSame(_cache.put(key, {entry.value, entry.bytes}), _plain.put(entry)) && hasSameTotals();
        }
        return getOrPutBoth(entry) && hasSameTotals();
    }

    /// Returns whether both hold the same entries, and evict the same entries when new ones come in.
    bool hasSameOrder() const {
        Comparison copy(*this);
        bool isAlike = copy.hasSameEntries();
        for (unsigned int newKey = keyCount; newKey < 2 * keyCount && isAlike; ++newKey) {
            const Entry entry{newKey, newKey, 20};
            isAlike = isSame(copy._cache.put(newKey, {entry.value, entry.bytes}), copy._plain.put(entry)) &&
                      Comparison(copy).hasSameEntries();
        }
        return isAlike;
    }

private:
    static bool isSame(const Cache::DataNode* node, const Entry* entry) {
        if (node == nullptr || entry == nullptr) {
            return node == nullptr && entry == nullptr;
        }
        return node->getValue() == entry->value && node->getEffectiveSizeInBytes() == entry->bytes;
    }
    bool hasSameTotals() const {
        return _cache.size() == _plain.getEntries().size() &&
               _cache.getEffectiveSizeInBytes() == _plain.countBytes() &&
               _cache.getEvictedCount() == _plain.getEvictedCount();
    }
    bool hasSameEntries() {
        bool isAlike = true;
        for (unsigned int key = 0; key < 2 * keyCount; ++key) {
            isAlike = isAlike && isSame(_cache.get(key), _plain.get(key));
        }
        return isAlike;
    }
    bool getOrPutBoth(const Entry& entry) {
        const Entry* const held = _plain.get(entry.key);
        const Entry expected = held != nullptr ? *held : *_plain.put(entry);
        const auto make = [&entry] { return Cache::DataNode(entry.value, entry.bytes); };
        return isSame(&_cache.getOrPut(entry.key, make), &expected);
    }

    static constexpr unsigned int keyCount = 29;

    Cache _cache;
    ListCache _plain;
};

TEST(MruCacheModel, BehavesLikeAPlainListOverAMillionRandomOperations) {
    constexpr Limits limits[] = {{0, 0}, {1, 0},   {2, 0},   {7, 0},    {28, 0},
                                 {0, 1}, {0, 300}, {9, 200}, {5, 1000}, {1, 1}};
    constexpr int stepsPerLimit = 100000;
    std::mt19937 random(20240607); // NOLINT(cert-msc51-cpp): the same operations in every run
    for (const Limits& limit : limits) {
        Comparison comparison(limit);
        for (int step = 0; step < stepsPerLimit; ++step) {
            ASSERT_TRUE(comparison.step(random))
                << "step " << step << " under " << limit.entries << " entries, " << limit.bytes << " bytes";
            ASSERT_TRUE(step % 1000 != 0 || comparison.hasSameOrder()) << "step " << step;
        }
    }
}

} // namespace
} // namespace Vell
