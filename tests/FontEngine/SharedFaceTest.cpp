#include <FontEngine/FaceThreads.h>

#include <support/RecordingPainter.h>

#include <FontEngine/Renderer/FE_BitmapGlyphRun.h>

#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <string>
#include <vector>

namespace Vell::FontEngine {
namespace {

TEST(SharedFace, RendersAGlyphOnceForAllThreads) {
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

TEST(SharedFace, ColorsAnImageOnceForAllThreads) {
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

TEST(SharedFace, BuildsAPathOnceForAllThreads) {
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

TEST(SharedFace, WorksWhileOtherFacesAreUsed) {
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

TEST(SharedFace, IsOpenedOnceForAllThreads) {
    const Engine engine;
    std::vector<std::shared_ptr<const FontFace>> faces(threadCount);
    runOnThreads([&](unsigned int index) { faces[index] = engine.getFace("Test Sans", true); });
    for (const auto& face : faces) {
        EXPECT_EQ(face, faces[0]);
    }
    EXPECT_EQ(engine.loader->countCalls("loadFont \"Test Sans\" bold"), 1U);
    EXPECT_EQ(engine.loader->countCalls("loadFont \"Test Sans\" regular"), 1U);
}

TEST(SharedFace, HashesItsDescriptionOnceForAllThreads) {
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
