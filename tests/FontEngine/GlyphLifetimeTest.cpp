#include <FontEngine/Engine.h>
#include <FontEngine/GlyphKeyFields.h>

#include <support/RecordingPainter.h>
#include <support/Threads.h>

#include <FontEngine/Renderer/FE_BitmapGlyph.h>

#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <vector>

namespace Vell::FontEngine {
namespace {

using GlyphPtr = std::shared_ptr<const FT_BitmapGlyphRec_>;

constexpr unsigned int threadCount = 4;

template <class Work>
void runOnThreads(const Work& work) {
    Testing::runOnThreads(threadCount, work);
}

GlyphPtr render(const FacePtr& face, unsigned int number) {
    return face->getBitmapGlyph(KeyFields().with(&KeyFields::offset, number).makeBitmap(), false);
}

GlyphPtr renderUnderscore(const FacePtr& face) {
    KeyFields fields;
    fields.glyph = TestGlyph::underscore;
    fields.unicode = '_';
    fields.mode = FT_RENDER_MODE_LCD;
    fields.isLast = false;
    fields.size = 40.0F;
    return face->getBitmapGlyph(fields.makeBitmap(), false);
}

TEST(GlyphLifetime, OutlastsCacheFaceAndFactory) {
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

TEST(GlyphLifetime, EndsOnAnyThread) {
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

TEST(GlyphLifetime, EndsWhileItsFaceRendersOnAnotherThread) {
    Engine engine;
    const FacePtr face = engine.getFace();
    engine.factory->reset(0, 1); // every new glyph pushes the one before out of the cache
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

TEST(GlyphServices, RenderAGlyphOnceForAllThreads) {
    const Engine engine;
    const FacePtr face = engine.getFace();
    std::vector<std::vector<GlyphPtr>> glyphs(threadCount);
    runOnThreads([&](unsigned int index) {
        for (unsigned int number = 0; number < 32; ++number) {
            glyphs[index].push_back(render(face, number));
        }
    });
    for (const std::vector<GlyphPtr>& seen : glyphs) {
        EXPECT_EQ(seen, glyphs[0]);
    }
}

TEST(GlyphServices, PaintAnImageOnceForAllThreads) {
    const Engine engine;
    const FacePtr face = engine.getFace();
    const BitmapGlyph glyph(renderUnderscore(face), {0, 0}, KeyFields().makeBitmap());
    std::vector<std::shared_ptr<const BitmapGlyphImageWithDeleter>> images(threadCount);
    runOnThreads([&](unsigned int index) {
        images[index] = face->getGlyphBitmapWithSubpixels(glyph, {1, 2, 3, 4});
        glyph.getInfo().hash();
    });
    for (const auto& image : images) {
        EXPECT_EQ(image, images[0]);
    }
}

TEST(GlyphServices, BuildAPathOnceForAllThreads) {
    const Engine engine;
    const FacePtr face = engine.getFace();
    std::vector<std::shared_ptr<const Gfx::Path>> paths(threadCount);
    runOnThreads([&](unsigned int index) {
        Testing::RecordingPainter painter;
        paths[index] = face->getOutlineGlyphPath(KeyFields().makeOutline(), painter);
    });
    for (const auto& path : paths) {
        EXPECT_EQ(path, paths[0]);
    }
}

TEST(GlyphServices, WorkOnDifferentFacesAtOnce) {
    Engine engine;
    for (unsigned int index = 0; index < threadCount; ++index) {
        engine.loader->setFont(std::to_string(index), false, false, makeTestFont().build());
    }
    runOnThreads([&](unsigned int index) {
        const FacePtr face = engine.getFace(std::to_string(index));
        Testing::RecordingPainter painter;
        for (unsigned int number = 0; number < 16; ++number) {
            KeyFields fields;
            fields.face = Testing::makeFaceInfo(std::to_string(index));
            fields.offset = static_cast<unsigned char>(number);
            EXPECT_NE(face->getBitmapGlyph(fields.makeBitmap(), false), nullptr);
            EXPECT_NE(face->getOutlineGlyphPath(fields.makeOutline(), painter), nullptr);
        }
    });
}

TEST(FaceLookup, OpensAFaceOnceForAllThreads) {
    const Engine engine;
    std::vector<std::shared_ptr<const FontFace>> faces(threadCount);
    runOnThreads([&](unsigned int index) { faces[index] = engine.getFace("Test Sans", true); });
    for (const auto& face : faces) {
        EXPECT_EQ(face, faces[0]);
    }
    EXPECT_EQ(engine.loader->countCalls("loadFont \"Test Sans\" bold"), 1U);
    EXPECT_EQ(engine.loader->countCalls("loadFont \"Test Sans\" regular"), 1U);
}

TEST(FaceLookup, HashesASharedDescriptionOnceForAllThreads) {
    const auto face = Testing::makeFaceInfo();
    const GlyphInfo key = KeyFields().with(&KeyFields::face, face).makeOutline();
    std::atomic<bool> areAlike = true;
    const std::uint64_t expected = KeyFields().makeOutline().hash();
    runOnThreads([&](unsigned int) {
        if (key.hash() != expected || face->getHash() != Testing::makeFaceInfo()->getHash()) {
            areAlike = false;
        }
    });
    EXPECT_TRUE(areAlike);
}

} // namespace
} // namespace Vell::FontEngine
