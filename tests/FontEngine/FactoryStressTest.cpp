// Many threads use factories and faces, within the rules of FontFactory and FontFace. The tests compare what
// each thread gets with what a single thread gets.

#include <FontEngine/FactoryStress.h>

#include <support/Descriptions.h>
#include <support/Threads.h>

#include <gtest/gtest.h>

#include <vector>

namespace Vell::FontEngine {
namespace {

using Testing::runOnThreads;

constexpr unsigned int threadCount = 8;
constexpr unsigned int roundsPerThread = 6;

/// The digests of all rounds of each thread.
using Results = std::vector<std::vector<std::uint64_t>>;

std::vector<std::uint64_t> runRounds(const StressEngine& engine, unsigned int thread) {
    std::vector<std::uint64_t> digests;
    for (unsigned int round = 0; round < roundsPerThread; ++round) {
        digests.push_back(engine.work(thread * 3 + round));
    }
    return digests;
}

/// The results that the threads should get, computed on this thread in a separate factory.
Results workAlone() {
    const StressEngine engine;
    Results results(threadCount);
    for (unsigned int thread = 0; thread < threadCount; ++thread) {
        results[thread] = runRounds(engine, thread);
    }
    return results;
}

Results workTogether(const StressEngine& engine) {
    Results results(threadCount);
    runOnThreads(threadCount, [&](unsigned int thread) { results[thread] = runRounds(engine, thread); });
    return results;
}

TEST(FactoryStress, GivesEachRoundItsOwnDigest) {
    const StressEngine engine;
    EXPECT_NE(engine.work(0), engine.work(1));
    EXPECT_EQ(engine.work(0), engine.work(0));
    EXPECT_EQ(engine.work(0), StressEngine().work(0));
}

TEST(FactoryStress, GivesEightThreadsWhatOneThreadGets) {
    const auto loader = StressEngine::makeLoader();
    EXPECT_EQ(workTogether(StressEngine(loader)), workAlone());
    EXPECT_EQ(loader->countCalls("loadFont"), StressEngine::familyCount + 1U) << "every file is loaded once";
}

TEST(FactoryStress, GivesTheSameUnderConstantEviction) {
    const StressEngine engine;
    engine.getFactory().reset(3, 2000);
    EXPECT_EQ(workTogether(engine), workAlone());
}

TEST(FactoryStress, KeepsTwoFactoriesWithOneLoaderApart) {
    const auto loader = StressEngine::makeLoader();
    const StressEngine engines[2] = {StressEngine(loader), StressEngine(loader)};
    engines[1].getFactory().reset(5, 4000);
    Results results(threadCount);
    runOnThreads(threadCount,
                 [&](unsigned int thread) { results[thread] = runRounds(engines[thread % 2], thread); });
    EXPECT_EQ(results, workAlone());
}

TEST(FactoryStress, LetsThreadsMakeAndDestroyFactories) {
    const auto loader = StressEngine::makeLoader();
    Results results(threadCount);
    runOnThreads(threadCount, [&](unsigned int thread) {
        for (unsigned int round = 0; round < roundsPerThread; ++round) {
            results[thread].push_back(StressEngine(loader).work(thread * 3 + round));
        }
    });
    EXPECT_EQ(results, workAlone());
}

TEST(FactoryStress, GivesAllThreadsTheSameFontsMetricsAndFallbacks) {
    const auto ask = [](const StressEngine& engine, unsigned int family) {
        const Testing::FontInfoPtr info = engine.getFont(family, 12.0F).getFontInfo();
        const FontFactory& factory = engine.getFactory();
        const auto metrics = factory.getFontMetrics(info);
        const auto fallback = factory.getDefaultFontForSymbol(0x2603, info);
        Digest digest;
        digest.add(metrics->getHeight());
        digest.add(metrics->getTextWidth("A\xE2\x98\x83", Testing::makeExtFontInfo(info)));
        digest.add(fallback->getHeight());
        digest.add(fallback->getFace()->getBasicMetrics().getCharMap()[0x2603].advance);
        digest.add(factory.getFaceData(info->getFontFaceInfo())->bytes->size());
        return digest.get();
    };
    const StressEngine alone;
    std::vector<std::uint64_t> expected;
    for (unsigned int family = 0; family < StressEngine::familyCount; ++family) {
        expected.push_back(ask(alone, family));
    }
    const StressEngine shared;
    Results results(threadCount);
    runOnThreads(threadCount, [&](unsigned int thread) {
        for (unsigned int family = 0; family < StressEngine::familyCount; ++family) {
            results[thread].push_back(ask(shared, family));
        }
    });
    EXPECT_EQ(results, Results(threadCount, expected));
}

} // namespace
} // namespace Vell::FontEngine
