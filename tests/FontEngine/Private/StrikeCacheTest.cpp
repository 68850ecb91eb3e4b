// Compares a cache of numbers that has strikes with the same cache without strikes.

#include <FontEngine/Private/FE_StrikeCache.h>

#include <support/ClientDescriptions.h>
#include <support/Descriptions.h>

#include <Utils/Public/Hash.h>

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <optional>
#include <random>
#include <string>
#include <vector>

namespace Vell::FontEngine::Internal {
namespace {

/// A number with a face and a size.
struct NumberKey {
    Testing::FaceInfoPtr face;
    float size;
    std::uint32_t number;

    bool operator==(const NumberKey& other) const {
        return size == other.size && number == other.number && *face == *other.face;
    }
    const Testing::FaceInfoPtr& getFaceInfo() const { return face; }
};

struct NumberKeyHash {
    std::size_t operator()(const NumberKey& key) const {
        return combineHash(combineHash(key.face->getHash(), hashFloat(key.size)), key.number);
    }
};

/// Runs a function when its last owner releases it.
struct EndingNumber {
    std::uint32_t number;
    std::function<void()> end;

    ~EndingNumber() {
        if (end) {
            end();
        }
    }
};
using NumberPtr = std::shared_ptr<const EndingNumber>;
using NumberCache = StrikeCache<NumberKey, NumberPtr, NumberKeyHash>;

NumberCache::Node makeNode(std::uint32_t number, std::function<void()> end = nullptr) {
    return {NumberPtr(new EndingNumber{number, std::move(end)}), 10 + number % 7};
}

/// Requests an entry as the factory's services do.
std::uint32_t requestByHandle(const NumberCache& cache, NumberCache::Handle& handle, const NumberKey& key) {
    const RecursiveLock lock(cache.getMutex());
    cache.open(handle);
    if (const NumberCache::Node* const node = cache.find(handle, key.number)) {
        cache.use(*node);
        return node->getValue().data->number;
    }
    cache.prepare(handle, key.face);
    const NumberCache::Node& node = cache.getOrPut(key, [&] { return makeNode(key.number); });
    cache.remember(handle, key.number, node);
    return node.getValue().data->number;
}

std::uint32_t askByKey(const NumberCache& cache, const NumberKey& key) {
    const RecursiveLock lock(cache.getMutex());
    return cache.getOrPut(key, [&] { return makeNode(key.number); }).getValue().data->number;
}

std::vector<std::uint64_t> listFigures(const NumberCache& cache) {
    const CacheFigures figures = cache.getFigures();
    return {figures.entries, figures.bytes,      figures.evictions, figures.hits,
            figures.misses,  figures.maxEntries, figures.maxBytes};
}

TEST(StrikeCache, CountsLikeACacheWithoutStrikes) {
    for (unsigned int seed = 1; seed <= 20 && !HasFailure(); ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        std::mt19937 random(seed);
        NumberCache withStrikes;
        NumberCache without;
        std::vector<Testing::FaceInfoPtr> faces = {Testing::makeFaceInfo("A"), Testing::makeFaceInfo("A"),
                                                   Testing::makeFaceInfo("B"),
                                                   Testing::makeClientFaceInfo("A")};
        std::vector<std::pair<NumberCache::Handle, Testing::FaceInfoPtr>> handles;
        for (int i = 0; i < 60; ++i) {
            const auto& face = faces[random() % faces.size()];
            const float sizes[] = {1.0F, 0.0F, -0.0F, static_cast<float>(random() % 30)};
            handles.emplace_back(NumberCache::Handle({face.get(), sizes[random() % 4], GlyphTransform::None}),
                                 face);
        }
        for (int step = 0; step < 4000 && !HasFailure(); ++step) {
            auto& [handle, face] = handles[random() % handles.size()];
            const NumberKey key{face, handle.getInfo().fontSize, static_cast<std::uint32_t>(random() % 20)};
            const std::uint32_t expected = askByKey(without, key);
            EXPECT_EQ(random() % 4 == 0 ? askByKey(withStrikes, key)
                                        : requestByHandle(withStrikes, handle, key),
                      expected);
            if (random() % 300 == 0) {
                withStrikes.clear();
                without.clear();
            }
            if (random() % 300 == 0) {
                const std::uint64_t entries = random() % 3 == 0 ? 0 : 1 + random() % 200;
                const std::uint64_t bytes = random() % 3 == 0 ? 0 : random() % 2000;
                NumberCache::Cache limited(entries, bytes);
                NumberCache::Cache same(entries, bytes);
                withStrikes.exchange(limited);
                without.exchange(same);
            }
            EXPECT_EQ(listFigures(withStrikes), listFigures(without)) << step;
        }
    }
}

struct OneRoad {
    Testing::FaceInfoPtr face = Testing::makeFaceInfo();
    NumberCache::Handle handle{{face.get(), 10.0F, GlyphTransform::None}};

    NumberKey makeKey(std::uint32_t number) const { return {face, 10.0F, number}; }
};

const NumberCache::Node* find(const NumberCache& cache, OneRoad& one, std::uint32_t number) {
    const RecursiveLock lock(cache.getMutex());
    cache.open(one.handle);
    return cache.find(one.handle, number);
}

TEST(StrikeCache, RemembersRequestedEntries) {
    const NumberCache cache;
    OneRoad one;
    EXPECT_EQ(find(cache, one, 5), nullptr);
    requestByHandle(cache, one.handle, one.makeKey(5));
    ASSERT_NE(find(cache, one, 5), nullptr);
    OneRoad other; // with an equal description
    EXPECT_EQ(find(cache, other, 5), find(cache, one, 5));
    EXPECT_EQ(find(cache, one, 6), nullptr);
}

TEST(StrikeCache, ForgetsEvictedEntries) {
    NumberCache cache;
    NumberCache::Cache limited(2, 0);
    cache.exchange(limited);
    OneRoad one;
    for (const std::uint32_t number : {1U, 2U, 1U, 3U}) {
        requestByHandle(cache, one.handle, one.makeKey(number));
    }
    EXPECT_NE(find(cache, one, 1), nullptr) << "used through the handle";
    EXPECT_EQ(find(cache, one, 2), nullptr);
    EXPECT_NE(find(cache, one, 3), nullptr);
}

TEST(StrikeCache, ForgetsAllEntriesWhenItIsEmptied) {
    NumberCache cache;
    OneRoad one;
    requestByHandle(cache, one.handle, one.makeKey(1));
    cache.clear();
    EXPECT_EQ(find(cache, one, 1), nullptr);
    requestByHandle(cache, one.handle, one.makeKey(1));
    NumberCache::Cache other(0, 0);
    cache.exchange(other);
    EXPECT_EQ(other.size(), 1U);
    EXPECT_EQ(find(cache, one, 1), nullptr) << "although the entry still exists";
}

TEST(StrikeCache, ReopensARoadWhoseStrikeWasSwept) {
    NumberCache cache;
    OneRoad one;
    requestByHandle(cache, one.handle, one.makeKey(1));
    NumberCache::Cache limited(1, 0);
    cache.exchange(limited);
    for (int size = 1; size <= 300; ++size) { // one entry at a time, so all earlier strikes are empty
        NumberCache::Handle handle({one.face.get(), static_cast<float>(size), GlyphTransform::None});
        requestByHandle(cache, handle, {one.face, static_cast<float>(size), 1});
    }
    EXPECT_EQ(requestByHandle(cache, one.handle, one.makeKey(1)), 1U);
    EXPECT_NE(find(cache, one, 1), nullptr);
}

TEST(StrikeCache, DoesNotRememberDescriptionsOfClients) {
    const NumberCache cache;
    const auto face = Testing::makeClientFaceInfo("Test Sans");
    NumberCache::Handle handle({face.get(), 10.0F, GlyphTransform::None});
    const NumberKey key{face, 10.0F, 1};
    requestByHandle(cache, handle, key);
    const RecursiveLock lock(cache.getMutex());
    cache.open(handle);
    EXPECT_EQ(cache.find(handle, 1), nullptr);
    OneRoad own;
    EXPECT_EQ(requestByHandle(cache, own.handle, own.makeKey(1)), 1U);
    EXPECT_EQ(cache.getFigures().hits, 1U) << "the client's description is equal";
    cache.open(own.handle);
    EXPECT_EQ(cache.find(own.handle, 1), nullptr) << "but may become another one";
}

TEST(StrikeCache, LetsADyingEntryRequestOthers) {
    NumberCache cache;
    NumberCache::Cache limited(3, 0);
    cache.exchange(limited);
    OneRoad one;
    std::uint32_t answer = 0;
    {
        const RecursiveLock lock(cache.getMutex());
        cache.prepare(one.handle, one.face);
        const auto& node = cache.getOrPut(one.makeKey(0), [&] {
            return makeNode(0, [&] {
                answer = requestByHandle(cache, one.handle, one.makeKey(50)) +
                         requestByHandle(cache, one.handle, one.makeKey(2));
            });
        });
        cache.remember(one.handle, 0, node);
    }
    for (const std::uint32_t number : {1U, 2U, 3U}) {
        EXPECT_EQ(requestByHandle(cache, one.handle, one.makeKey(number)), number);
    }
    EXPECT_EQ(answer, 52U);
    EXPECT_EQ(find(cache, one, 0), nullptr);
    EXPECT_EQ(find(cache, one, 1), nullptr) << "evicted by the request of the dying entry";
    EXPECT_NE(find(cache, one, 2), nullptr);
    EXPECT_NE(find(cache, one, 3), nullptr);
    EXPECT_NE(find(cache, one, 50), nullptr);
}

/// Empties the cache while each dying entry requests all of them.
template <class Empty>
void expectAllAreMadeAgain(const Empty& empty) {
    constexpr std::uint32_t count = 8;
    NumberCache cache;
    OneRoad one;
    std::uint32_t ends = 0;
    const auto askForAll = [&] {
        ++ends;
        for (std::uint32_t number = 0; number < count; ++number) {
            EXPECT_EQ(requestByHandle(cache, one.handle, one.makeKey(number)), number)
                << "not one that is being destroyed";
        }
    };
    for (std::uint32_t number = 0; number < count; ++number) {
        const RecursiveLock lock(cache.getMutex());
        cache.prepare(one.handle, one.face);
        cache.remember(one.handle, number, cache.getOrPut(one.makeKey(number), [&] {
            return makeNode(number + count, askForAll);
        }));
    }
    empty(cache);
    EXPECT_EQ(ends, count);
    const CacheFigures figures = cache.getFigures();
    EXPECT_EQ(figures.entries, count);
    EXPECT_EQ(figures.misses, count);
    EXPECT_EQ(figures.hits, (count - 1) * count);
}

TEST(StrikeCache, FindsNoDyingEntryWhileItIsEmptied) {
    expectAllAreMadeAgain([](NumberCache& cache) { cache.clear(); });
    expectAllAreMadeAgain([](NumberCache& cache) {
        NumberCache::Cache other(0, 0);
        cache.exchange(other);
    });
}

TEST(StrikeCache, MayBeEmptiedWhileAnEntryIsMade) {
    NumberCache cache;
    OneRoad one;
    requestByHandle(cache, one.handle, one.makeKey(1));
    const RecursiveLock lock(cache.getMutex());
    cache.prepare(one.handle, one.face);
    const auto& node = cache.getOrPut(one.makeKey(2), [&] {
        cache.clear();
        requestByHandle(cache, one.handle, one.makeKey(3));
        return makeNode(2);
    });
    cache.remember(one.handle, 2, node);
    EXPECT_EQ(node.getValue().data->number, 2U);
    EXPECT_EQ(find(cache, one, 1), nullptr);
    EXPECT_EQ(find(cache, one, 2), &node);
    EXPECT_NE(find(cache, one, 3), nullptr);
    EXPECT_EQ(cache.getFigures().entries, 2U);
}

/// Requests an entry whose making requests the entry before it, and so on down to number 0.
std::uint32_t requestNested(const NumberCache& cache, OneRoad& one, std::uint32_t number) {
    const RecursiveLock lock(cache.getMutex());
    cache.prepare(one.handle, one.face);
    const auto& node = cache.getOrPut(one.makeKey(number), [&] {
        return makeNode(number == 0 ? 0 : requestNested(cache, one, number - 1) + 1);
    });
    cache.remember(one.handle, number, node);
    return node.getValue().data->number;
}

TEST(StrikeCache, ForgoesEntriesWhoseRoomWasUsedWhileTheyWereMade) {
    constexpr std::uint32_t outermost = 12; // the first prepare makes room for fewer entries
    const NumberCache cache;
    OneRoad one;
    EXPECT_EQ(requestNested(cache, one, outermost), outermost);
    EXPECT_NE(find(cache, one, 0), nullptr) << "added first";
    EXPECT_EQ(find(cache, one, outermost), nullptr);
    EXPECT_EQ(requestByHandle(cache, one.handle, one.makeKey(outermost)), outermost);
    EXPECT_NE(find(cache, one, outermost), nullptr) << "the next request makes room";
    EXPECT_EQ(cache.getFigures().misses, outermost + 1);
}

} // namespace
} // namespace Vell::FontEngine::Internal
