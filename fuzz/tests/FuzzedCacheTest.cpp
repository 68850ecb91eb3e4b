#include <fuzz/support/CacheHarness.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

namespace Vell::Fuzz {

namespace {

Testing::Bytes makeStream() {
    std::mt19937 random(1);
    Testing::Bytes bytes = {8, 0, 0}; // eight entries
    for (int i = 0; i < 3000; ++i) {
        bytes.push_back(static_cast<unsigned char>(random()));
    }
    return bytes;
}

template <class Cache>
void play() {
    const Testing::Bytes stream = makeStream();
    ByteReader reader(stream);
    CacheDuel<Cache>(reader).run();
}

/// Does not count lookups as uses: evicts in the order of insertion.
class ForgetfulCache : public FuzzedCache {
public:
    using FuzzedCache::FuzzedCache;

    const DataNode* get(unsigned int key) {
        const DataNode* const node = FuzzedCache::get(key);
        for (const unsigned int added : _added) {
            FuzzedCache::get(added);
        }
        return node;
    }
    const DataNode* put(unsigned int key, const DataNode& node) {
        const DataNode* const added = FuzzedCache::put(key, node);
        if (added != nullptr) {
            _added.push_back(key);
        }
        return added;
    }

private:
    std::vector<unsigned int> _added;
};

/// Keeps one entry more than its limit.
class GreedyCache : public FuzzedCache {
public:
    GreedyCache(std::uint64_t maxEntries, std::uint64_t maxBytes)
        : FuzzedCache(maxEntries + 1, maxBytes)
        , _claimedMaxEntries(maxEntries) {}

    std::uint64_t getMaxEntries() const { return _claimedMaxEntries; }

private:
    std::uint64_t _claimedMaxEntries;
};

/// Returns the existing entry as if it were new.
class DuplicateAcceptingCache : public FuzzedCache {
public:
    using FuzzedCache::FuzzedCache;

    const DataNode* put(unsigned int key, const DataNode& node) {
        const DataNode* const added = FuzzedCache::put(key, node);
        return added != nullptr ? added : FuzzedCache::get(key);
    }
};

} // namespace

TEST(FuzzedCache, AgreesWithTheList) {
    EXPECT_NO_THROW(play<FuzzedCache>());
}

TEST(FuzzedCache, IsCaughtWhenItForgetsUses) {
    EXPECT_THROW(play<ForgetfulCache>(), Finding);
}

TEST(FuzzedCache, IsCaughtWhenItKeepsTooMuch) {
    EXPECT_THROW(play<GreedyCache>(), Finding);
}

TEST(FuzzedCache, IsCaughtWhenItAcceptsDuplicates) {
    EXPECT_THROW(play<DuplicateAcceptingCache>(), Finding);
}

TEST(FuzzedCache, HasWeightsWhoseSumNeverOverflows) {
    std::uint64_t heaviest = 0;
    for (unsigned int number = 0; number < 0x10000; ++number) {
        heaviest = std::max(heaviest, toWeight(number));
    }
    EXPECT_EQ(heaviest, std::uint64_t(1) << 40);
}

} // namespace Vell::Fuzz
