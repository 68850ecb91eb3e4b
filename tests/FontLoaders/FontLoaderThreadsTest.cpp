#include "LoaderFonts.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

namespace Vell::Testing {

using namespace FontLoaders;

namespace {

constexpr int threadCount = 8;

/// Runs `work` in many threads at once.
template <class Work>
void runTogether(const Work& work) {
    std::atomic<int> waiting{threadCount};
    std::vector<std::thread> threads;
    for (int i = 0; i < threadCount; ++i) {
        threads.emplace_back([&waiting, &work, i] {
            --waiting;
            while (waiting > 0) {
                std::this_thread::yield();
            }
            work(i);
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

void fill(const FontSandbox& sandbox) {
    sandbox.write("a.ttf", makeBlankFont("Alpha").build());
    sandbox.write("b.ttf", makeBlankFont("Beta", 400, false, {{0x370, 0x3FF}}).build());
    sandbox.write("c.ttc", buildCollection({makeBlankFont("Gamma"), makeBlankFont("Delta")}));
}

} // namespace

TEST(FontLoaderThreads, MayUseOneLoaderAtOnce) {
    const FontSandbox sandbox;
    fill(sandbox);
    const auto loader = createPlatformDefaultFontLoader("Alpha");
    runTogether([&loader](int) {
        for (int round = 0; round < 20; ++round) {
            EXPECT_NE(load(loader, "Alpha"), nullptr);
            EXPECT_NE(load(loader, "Delta"), nullptr);
            EXPECT_EQ(load(loader, "Missing"), nullptr);
            EXPECT_NE(load(loader, "serif"), nullptr);
            EXPECT_NE(loader->loadDefaultFont(false, false), nullptr);
            EXPECT_EQ(loader->getFamilyNameForRange(UnicodeRangeMap::find(0x3B1)), "Beta");
        }
    });
}

TEST(FontLoaderThreads, ShareOneVectorPerFace) {
    const FontSandbox sandbox;
    fill(sandbox);
    const auto loader = createPlatformDefaultFontLoader("Alpha");
    std::shared_ptr<const Bytes> found[threadCount];
    runTogether([&](int i) { found[i] = load(loader, "Gamma"); });
    for (const auto& bytes : found) {
        ASSERT_NE(bytes, nullptr);
        EXPECT_EQ(bytes.get(), found[0].get());
    }
}

TEST(FontLoaderThreads, MayUseSeparateLoaders) {
    const FontSandbox sandbox;
    fill(sandbox);
    runTogether([](int i) {
        const auto loader = createPlatformDefaultFontLoader(i % 2 == 0 ? "Alpha" : "Missing");
        EXPECT_NE(load(loader, "Gamma"), nullptr);
        EXPECT_NE(loader->loadDefaultFont(false, false), nullptr);
        EXPECT_EQ(loader->getFamilyNameForRange(UnicodeRangeMap::find(0x3B1)), "Beta");
    });
}

TEST(FontLoaderThreads, MayAskOneFallbackWhileTheyLoad) {
    const FontSandbox sandbox;
    fill(sandbox);
    sandbox.write("m.ttf", FontBuilder("Mute").build());
    const auto loader = createPlatformDefaultFontLoader("Alpha");
    const auto fallback = createPlatformCoverageFallback(*loader);
    const auto face = makeClientFaceInfo("Alpha");
    runTogether([&](int i) {
        for (char32_t code = 0x370; code < 0x380; ++code) {
            const std::u32string cluster(1, code);
            const auto found = fallback->findFace({cluster, face, i % 2 == 0 ? "el" : "ja"});
            ASSERT_TRUE(found);
            EXPECT_EQ(found->face->getName(), "Beta");
            EXPECT_NE(loader->loadFont(found->face), nullptr);
            EXPECT_EQ(load(loader, "Mute"), nullptr); // whose removal makes the fallback forget
            EXPECT_FALSE(fallback->findFace({U"\u0416", face}));
        }
    });
}

TEST(FontLoaderThreads, MayReleaseFontsOfOneLibrary) {
    const auto library = createFreeTypeLibrary();
    runTogether([&library](int) {
        for (int round = 0; round < 100; ++round) {
            const FTLibraryPtr mine = shareFreeTypeLibrary(library.get());
            EXPECT_EQ(mine.get(), library.get());
        }
    });
}

} // namespace Vell::Testing
