// One thread lays out, draws and destroys runs while others evict their glyphs and request them one by one.

#include <FontEngine/Engine.h>
#include <FontEngine/GlyphKeyFields.h>

#include <support/ClientDescriptions.h>
#include <support/RecordingGlyphPainter.h>
#include <support/RecordingPainter.h>
#include <support/Threads.h>

#include <FontEngine/Renderer/FE_RasterTextPainter.h>

#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace Vell::FontEngine {
namespace {

constexpr const char* runText = "Ax_A__ xAx_ AAx";
constexpr std::size_t runLength = 15;
constexpr std::size_t underscores = 4;
constexpr unsigned int rounds = 150;
constexpr unsigned long fewBytes = 4000; // room for a run of one size, but not for the runs of all sizes

float getSize(unsigned int round) {
    return 10.0F + static_cast<float>(round % 5);
}

/// Every second description has a client's class.
Testing::ExtFontInfoPtr describeRun(unsigned int round) {
    const auto face = round % 2 == 0 ? Testing::makeFaceInfo() : Testing::makeClientFaceInfo("Test Sans");
    return Testing::makeExtFontInfo(Testing::makeFontInfo(face, getSize(round)));
}

/// Lays a run out, draws it, and returns the drawn pixels.
std::vector<Testing::Bytes> drawRun(const Engine& engine, unsigned int round) {
    Testing::RecordingPainter painter;
    Testing::RecordingGlyphPainter glyphPainter;
    RasterTextPainter textPainter(painter, glyphPainter, false);
    const auto extFontInfo = describeRun(round);
    const Font font = engine.factory->getFont(extFontInfo->getFontInfo());
    const BitmapGlyphRun run = textPainter.createGlyphRun(runText, extFontInfo, font, 1.0F, {1, 1});
    textPainter.drawGlyphRun(run, font, {200, 30, 1, 255}, 1.0F);
    std::vector<Testing::Bytes> drawn;
    for (const Testing::DrawnGlyph& glyph : glyphPainter.getDrawnGlyphs()) {
        drawn.push_back(glyph.pixels);
    }
    return drawn;
}

/// Makes keys for the glyphs of those runs.
BitmapGlyphInfo makeRunKey(unsigned int number) {
    KeyFields fields;
    fields.face = number % 3 == 0 ? Testing::makeClientFaceInfo("Test Sans") : Testing::makeFaceInfo();
    fields.glyph = number % 2 == 0 ? TestGlyph::a : TestGlyph::x;
    fields.unicode = number % 2 == 0 ? 'A' : 'x';
    fields.size = getSize(number);
    fields.offset = static_cast<unsigned char>(number / 5 % 16 * 4);
    fields.isLast = number % 7 != 0;
    return fields.makeBitmap();
}

/// Makes a key of another size for each number. Its bitmap is never cached, so rendering it evicts another.
BitmapGlyphInfo makeEvictingKey(unsigned int number) {
    return KeyFields()
        .with(&KeyFields::face, Testing::makeFaceInfo("Other"))
        .with(&KeyFields::size, 20.0F + static_cast<float>(number) / 16.0F)
        .makeBitmap();
}

TEST(SharedRuns, StayIntactWhileTheirGlyphsAreEvicted) {
    std::vector<std::vector<Testing::Bytes>> expected;
    for (unsigned int round = 0; round < 5; ++round) {
        expected.push_back(drawRun(Engine(), round));
        ASSERT_EQ(expected.back().size(), runLength);
    }
    Engine engine;
    engine.loader->setFont("Other", false, false, makeTestFont("Other").build());
    engine.factory->reset(0, fewBytes);
    const FacePtr face = engine.getFace();
    const FacePtr otherFace = engine.getFace("Other");
    unsigned int wrongRuns = 0;
    unsigned int missing = 0;
    Testing::runOnThreads(3, [&](unsigned int thread) {
        if (thread == 0) {
            for (unsigned int round = 0; round < rounds; ++round) {
                wrongRuns += drawRun(engine, round) == expected[round % 5] ? 0 : 1;
            }
        } else if (thread == 1) {
            for (unsigned int number = 0; number < 4 * rounds; ++number) {
                otherFace->getBitmapGlyph(makeEvictingKey(number), false);
            }
        } else {
            for (unsigned int number = 0; number < 8 * rounds; ++number) {
                missing += face->getBitmapGlyph(makeRunKey(number), false) != nullptr ? 0 : 1;
            }
        }
    });
    EXPECT_EQ(wrongRuns, 0U);
    EXPECT_EQ(missing, 0U);
    const FactoryCacheFigures figures = engine.factory->getCacheFigures();
    EXPECT_EQ(figures.bitmaps.hits + figures.bitmaps.misses, rounds * (runLength + 4 + 8));
    EXPECT_EQ(figures.coloredImages.hits + figures.coloredImages.misses, rounds * underscores);
    for (const CacheFigures& cache : {figures.bitmaps, figures.coloredImages}) {
        EXPECT_EQ(cache.entries + cache.evictions, cache.misses);
        EXPECT_LE(cache.bytes, fewBytes);
    }
    EXPECT_GT(figures.bitmaps.evictions, 4 * rounds / 2);
}

TEST(SharedRuns, MayBeDestroyedOnOtherThreads) {
    Engine engine;
    engine.factory->reset(0, fewBytes);
    std::vector<BitmapGlyphRun> runs;
    std::vector<std::weak_ptr<const FT_BitmapGlyphRec_>> watches;
    Testing::RecordingPainter painter;
    Testing::RecordingGlyphPainter glyphPainter;
    RasterTextPainter textPainter(painter, glyphPainter, false);
    for (unsigned int round = 0; round < 40; ++round) {
        const auto extFontInfo = describeRun(round);
        const Font font = engine.factory->getFont(extFontInfo->getFontInfo());
        runs.push_back(textPainter.createGlyphRun(runText, extFontInfo, font, 1.0F, {1, 1}));
        for (const BitmapGlyph& glyph : runs.back().getGlyphs()) {
            watches.emplace_back(glyph.getData());
        }
    }
    const FacePtr face = engine.getFace();
    Testing::runOnThreads(3, [&](unsigned int thread) {
        if (thread == 0) {
            runs.clear();
            return;
        }
        for (unsigned int number = 0; number < rounds; ++number) {
            face->getBitmapGlyph(makeRunKey(number + thread), false);
        }
    });
    engine.factory->flush();
    for (const auto& watch : watches) {
        EXPECT_TRUE(watch.expired());
    }
}

/// No strike remembers bitmaps of a client's description, so only the end of the factory stops the watch over
/// these runs.
TEST(SharedRuns, OfClientsDescriptionsMayOutliveTheirFactory) {
    std::optional<Engine> engine(std::in_place);
    std::vector<BitmapGlyphRun> runs;
    Testing::RecordingPainter painter;
    Testing::RecordingGlyphPainter glyphPainter;
    RasterTextPainter textPainter(painter, glyphPainter, false);
    for (unsigned int round = 1; round < 20; round += 2) {
        const auto extFontInfo = describeRun(round);
        const Font font = engine->factory->getFont(extFontInfo->getFontInfo());
        runs.push_back(textPainter.createGlyphRun(runText, extFontInfo, font, 1.0F, {1, 1}));
    }
    const std::weak_ptr<const FT_BitmapGlyphRec_> watch = runs.back().getGlyphs().back().getData();
    std::atomic<bool> hasEnded = false;
    Testing::runOnThreads(2, [&](unsigned int thread) {
        if (thread == 0) {
            engine.reset();
            hasEnded.store(true, std::memory_order_relaxed); // so that only the locks order memory
            return;
        }
        while (!hasEnded.load(std::memory_order_relaxed)) {
            std::this_thread::yield();
        }
        EXPECT_FALSE(watch.expired());
        runs.clear();
    });
    EXPECT_TRUE(watch.expired());
}

} // namespace
} // namespace Vell::FontEngine
