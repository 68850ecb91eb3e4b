#include <FontEngine/Color/ColorEngine.h>

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

namespace Vell::FontEngine {
namespace {

/// Requests glyphs at many sizes, and the core's bitmaps of the same face.
void use(const ColorEngine& engine, std::atomic<unsigned int>& absent) {
    const FacePtr face = engine.factory->shareFace(engine.faceInfo);
    for (int round = 0; round != 20; ++round) {
        for (int size = 4; size != 24; ++size) {
            const auto image =
                engine.getColors().getImage(engine.makeKey(TestGlyph::a, static_cast<float>(size)), face);
            absent += image == nullptr || image->buffer == nullptr ? 1 : 0;
            const BitmapGlyphInfo key(engine.faceInfo, FT_RENDER_MODE_NORMAL, TestGlyph::a, 'A',
                                      static_cast<float>(size), {1.0F, 1.0F}, 1.0F, 0, true,
                                      GlyphTransform::None);
            face->getBitmapGlyph(key, false); // null but for the sizes of strikes
        }
        engine.getColors().getFigures();
    }
}

TEST(ColorThreads, ShareTheImagesOfAFace) {
    const ColorEngine engine;
    engine.getColors().reset(10000); // too little for all sizes
    std::atomic<unsigned int> absent{0};
    std::vector<std::thread> threads;
    for (int i = 0; i != 4; ++i) {
        threads.emplace_back([&] { use(engine, absent); });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(absent, 0U);
    const CacheFigures figures = engine.getColors().getFigures();
    EXPECT_EQ(figures.hits + figures.misses, 4U * 20U * 20U);
}

TEST(ColorThreads, MakeEachImageOnce) {
    const ColorEngine engine;
    std::atomic<unsigned int> absent{0};
    std::vector<std::thread> threads;
    for (int i = 0; i != 4; ++i) {
        threads.emplace_back([&] { use(engine, absent); });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(engine.getColors().getFigures().misses, 20U);
}

TEST(ColorThreads, MayFlushWhileOthersLookUp) {
    const ColorEngine engine;
    std::atomic<unsigned int> absent{0};
    std::thread other([&] { use(engine, absent); });
    for (int i = 0; i != 200; ++i) {
        engine.getColors().flush();
        engine.getColors().reset(static_cast<std::uint64_t>(i) * 100);
    }
    other.join();
    EXPECT_EQ(absent, 0U);
}

} // namespace
} // namespace Vell::FontEngine
