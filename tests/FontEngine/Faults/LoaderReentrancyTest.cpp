// Loaders that call the factory from inside a request, on the same thread.

#include <FontEngine/Engine.h>

#include <support/ExpectAssertion.h>

#include <gmock/gmock.h>

#include <functional>
#include <memory>
#include <string>
#include <utility>

namespace Vell::FontEngine {
namespace {

using testing::IsEmpty;

constexpr const char* keyAddedMeanwhile = "Utils/Public/MRUCache:199: assertion failed: value";

/// Runs a function once, while it loads its first font.
class CallingLoader : public Testing::CountingLoader {
public:
    std::shared_ptr<const Testing::Bytes>
    loadFont(const NNPtr<const Gfx::FontFaceInfo>& face) const override {
        auto bytes = CountingLoader::loadFont(face);
        if (const auto once = std::exchange(call, nullptr)) {
            once();
        }
        return bytes;
    }

    mutable std::function<void()> call;
};

struct CallingEngine {
    CallingEngine() {
        for (const char* const family : {"Test Sans", "Other", "Third"}) {
            loader->setFont(family, false, false, makeTestFont(family).build());
        }
    }

    FacePtr getFace(const std::string& name = "Test Sans") const {
        return factory->getFace(Testing::makeFaceInfo(name));
    }
    std::string getFamily(const std::string& name = "Test Sans") const {
        return getFace(name)->getHandle()->family_name;
    }

    std::shared_ptr<CallingLoader> loader = std::make_shared<CallingLoader>();
    FactoryPtr factory = FontFactory::create(loader, "Default Family");
};

TEST(LoaderReentrancy, MayRequestOtherFacesWhichStayCached) {
    const CallingEngine engine;
    std::string inner;
    engine.loader->call = [&] { inner = engine.getFamily("Other"); };
    EXPECT_EQ(engine.getFamily(), "Test Sans");
    EXPECT_EQ(inner, "Other");
    engine.loader->clearCalls();
    EXPECT_EQ(engine.getFamily("Other") + engine.getFamily(), "OtherTest Sans");
    EXPECT_THAT(engine.loader->getCalls(), IsEmpty());
}

TEST(LoaderReentrancy, MayFillTheCacheWithOtherFaces) {
    const CallingEngine engine;
    engine.factory->reset(1, 0);
    engine.loader->call = [&] {
        EXPECT_EQ(engine.getFamily("Other") + engine.getFamily("Third"), "OtherThird");
    };
    EXPECT_EQ(engine.getFamily(), "Test Sans");
    engine.loader->clearCalls();
    EXPECT_EQ(engine.getFamily(), "Test Sans");
    EXPECT_THAT(engine.loader->getCalls(), IsEmpty()) << "the outer face came last";
    EXPECT_EQ(engine.getFamily("Third"), "Third");
    EXPECT_EQ(engine.loader->countCalls(), 1U);
}

/// The answers to a request during which the caches are emptied, also by a request for the same face.
void expectFaceAndCacheAfter(const std::function<void(CallingEngine&)>& empty) {
    CallingEngine engine;
    engine.getFace("Other");
    engine.loader->call = [&] { empty(engine); };
    EXPECT_EQ(engine.getFamily(), "Test Sans");
    engine.loader->clearCalls();
    EXPECT_EQ(engine.getFamily(), "Test Sans");
    EXPECT_THAT(engine.loader->getCalls(), IsEmpty()) << "cached by the outer request";
    EXPECT_EQ(engine.getFamily("Other"), "Other");
    EXPECT_EQ(engine.loader->countCalls(), 1U) << "evicted by the inner call";
}

TEST(LoaderReentrancy, MayEmptyTheCaches) {
    expectFaceAndCacheAfter([](CallingEngine& engine) { engine.factory->flush(); });
    expectFaceAndCacheAfter([](CallingEngine& engine) { engine.factory->reset(5, 5); });
    expectFaceAndCacheAfter([](CallingEngine& engine) {
        EXPECT_EQ(engine.getFamily(), "Test Sans") << "the same face";
        engine.factory->flush();
    });
    expectFaceAndCacheAfter([](CallingEngine& engine) {
        EXPECT_EQ(engine.getFamily(), "Test Sans");
        engine.factory->reset(5, 5);
    });
}

TEST(LoaderReentrancyDeathTest, AssertsThatTheRequestedFaceWasNotAdded) {
    const CallingEngine engine;
    engine.loader->call = [&] { engine.getFace(); };
    VELL_EXPECT_ASSERTION(engine.getFace(), keyAddedMeanwhile);
    engine.loader->call = [&] { engine.factory->getFaceDataBytes(Testing::makeFaceInfo()); };
    VELL_EXPECT_ASSERTION(engine.getFace(), keyAddedMeanwhile);
}

TEST(LoaderReentrancyDeathTest, AssertsThatAnUnknownFaceWasNotAdded) {
    VELL_EXPECT_ASSERTION(
        {
            const CallingEngine engine;
            engine.loader->setDefaultFont(false, false, makeTestFont("Default").build());
            engine.loader->call = [&] { engine.getFace("Unknown"); };
            engine.getFace("Unknown");
        },
        keyAddedMeanwhile);
}

} // namespace
} // namespace Vell::FontEngine
