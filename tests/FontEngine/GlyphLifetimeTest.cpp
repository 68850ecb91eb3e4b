#include <FontEngine/FaceThreads.h>

#include <gtest/gtest.h>

#include <memory>
#include <vector>

namespace Vell::FontEngine {
namespace {

TEST(GlyphLifetime, ExtendsBeyondCacheFaceAndFactory) {
    std::vector<GlyphPtr> glyphs;
    std::weak_ptr<const FontFace> watch;
    {
        const Engine engine;
        const FacePtr face = engine.getFace();
        watch = std::shared_ptr<const FontFace>(face);
        glyphs = {render(face, 0), render(face, 8), renderUnderscore(face)};
        engine.factory->flush();
        glyphs.push_back(render(face, 12));
        engine.factory->reset(1, 1);
        glyphs.push_back(render(face, 16));
    }
    ASSERT_TRUE(watch.expired());
    EXPECT_EQ(glyphs[0]->bitmap.buffer[0], 255);
    EXPECT_GT(glyphs[2]->bitmap.buffer[0], 0);
    glyphs.clear();
}

TEST(GlyphLifetime, MayEndOnAnyThread) {
    for (int round = 0; round < 20; ++round) {
        std::vector<std::vector<GlyphPtr>> glyphs(threadCount);
        {
            const Engine engine;
            const FacePtr face = engine.getFace();
            for (unsigned int number = 0; number < 16; ++number) {
                glyphs[number % threadCount].push_back(render(face, number));
            }
            glyphs[0].push_back(renderUnderscore(face));
        }
        runOnThreads([&](unsigned int index) { glyphs[index].clear(); });
    }
}

TEST(GlyphLifetime, MayEndWhileItsFaceRendersOnAnotherThread) {
    Engine engine;
    const FacePtr face = engine.getFace();
    engine.factory->reset(0, 1); // every new glyph evicts the previous one
    runOnThreads([&](unsigned int index) {
        for (unsigned int number = 0; number < 64; ++number) {
            const GlyphPtr glyph = render(face, index * 64 + number);
            EXPECT_NE(glyph, nullptr);
        }
    });
}

TEST(GlyphLifetime, SharesTheMemoryOfItsFaceWithBlocksOfOtherThreads) {
    const Engine engine;
    const FacePtr face = engine.getFace();
    const FT_Memory memory = face->getHandle()->memory;
    runOnThreads([&](unsigned int index) {
        for (unsigned int number = 0; number < 64; ++number) {
            if (index == 0) {
                EXPECT_NE(render(face, number), nullptr);
                continue;
            }
            void* const block = memory->alloc(memory, 100);
            void* const forgotten = memory->alloc(memory, 100);
            void* const grown = memory->realloc(memory, 100, 10'000, block);
            EXPECT_NE(forgotten, nullptr);
            EXPECT_NE(grown, nullptr);
            memory->free(memory, grown);
        }
    });
}

} // namespace
} // namespace Vell::FontEngine
