#include <FontEngine/Engine.h>
#include <FontEngine/GlyphKeyFields.h>

#include <FontEngine/FE_FontFace.h>
#include <FontEngine/Renderer/FE_BitmapGlyphRun.h>
#include <support/RecordingPainter.h>

#include <gtest/gtest.h>

#include <array>

namespace Vell::FontEngine {
namespace {

/// The figures in the order of CacheFigures.
using Figures = std::array<std::uint64_t, 7>;

Figures list(const CacheFigures& figures) {
    return {figures.entries, figures.bytes,      figures.evictions, figures.hits,
            figures.misses,  figures.maxEntries, figures.maxBytes};
}

constexpr Figures none{};

std::shared_ptr<const FT_BitmapGlyphRec_> render(const Engine& engine, const KeyFields& fields) {
    return engine.getFace()->getBitmapGlyph(fields.makeBitmap(), false);
}

TEST(CacheFigures, AreZeroAtFirstAndAreNotChangedByReading) {
    const Engine engine;
    for (int i = 0; i < 2; ++i) {
        const FactoryCacheFigures figures = engine.factory->getCacheFigures();
        for (const CacheFigures& cache :
             {figures.fontFiles, figures.faces, figures.bitmaps, figures.coloredImages, figures.outlines}) {
            EXPECT_EQ(list(cache), none);
        }
    }
}

TEST(CacheFigures, CountFontFilesIncludingAbsentOnes) {
    const Engine engine;
    engine.getFace("Test Sans", true); // bold: the loader has regular only
    engine.getFace("Test Sans", true);
    const FactoryCacheFigures figures = engine.factory->getCacheFigures();
    EXPECT_EQ(figures.fontFiles.entries, engine.loader->countCalls());
    EXPECT_EQ(figures.fontFiles.misses, engine.loader->countCalls());
    EXPECT_GT(figures.fontFiles.entries, 1U);
    EXPECT_EQ(list(figures.faces), (Figures{1, 0, 0, 1, 1, 0, 0}));
}

TEST(CacheFigures, SumTheWeightsOfBitmapsAndColoredImages) {
    const Engine engine;
    const auto glyph = render(engine, KeyFields().with(&KeyFields::mode, FT_RENDER_MODE_LCD));
    const BitmapGlyph placed(glyph, {0, 0},
                             KeyFields().with(&KeyFields::mode, FT_RENDER_MODE_LCD).makeBitmap());
    const auto image = engine.factory->getGlyphBitmapWithSubpixels(placed, {1, 2, 3, 255});
    engine.factory->getGlyphBitmapWithSubpixels(placed, {1, 2, 3, 255});
    const auto bitmapBytes = static_cast<std::uint64_t>(glyph->bitmap.pitch) * glyph->bitmap.rows + 48;
    const std::uint64_t imageBytes = std::uint64_t{4} * image->rows * static_cast<unsigned int>(image->pitch);
    const FactoryCacheFigures figures = engine.factory->getCacheFigures();
    EXPECT_EQ(list(figures.bitmaps), (Figures{1, bitmapBytes, 0, 0, 1, 0, 0}));
    EXPECT_EQ(list(figures.coloredImages), (Figures{1, imageBytes, 0, 1, 1, 0, 0}));
}

TEST(CacheFigures, CountOutlinesAlthoughTheyHaveNoLimit) {
    const Engine engine;
    Testing::RecordingPainter painter;
    engine.factory->reset(5, 1000);
    for (int i = 0; i < 3; ++i) {
        engine.getFace()->getOutlineGlyphPath(KeyFields().makeOutline(), painter);
    }
    EXPECT_EQ(list(engine.factory->getCacheFigures().outlines), (Figures{1, 0, 0, 2, 1, 0, 0}));
}

TEST(CacheFigures, ReportLimitsAndEvictions) {
    const Engine engine;
    engine.factory->reset(1, 1);
    for (const int offset : {0, 4, 8}) {
        render(engine, KeyFields().with(&KeyFields::offset, offset));
    }
    const FactoryCacheFigures figures = engine.factory->getCacheFigures();
    EXPECT_EQ(figures.bitmaps.entries, 1U) << "the only entry stays, however large";
    EXPECT_EQ(figures.bitmaps.evictions, 2U);
    EXPECT_EQ(figures.bitmaps.misses, 3U);
    EXPECT_EQ(figures.bitmaps.maxBytes, 1U);
    EXPECT_EQ(figures.coloredImages.maxBytes, 1U);
    EXPECT_EQ(figures.fontFiles.maxEntries, 1U);
    EXPECT_EQ(figures.faces.maxEntries, 1U);
}

TEST(CacheFigures, RestartWhenTheCacheIsEmptied) {
    const Engine engine;
    Testing::RecordingPainter painter;
    render(engine, KeyFields());
    render(engine, KeyFields());
    engine.getFace()->getOutlineGlyphPath(KeyFields().makeOutline(), painter);
    engine.factory->reset(0, 0);
    EXPECT_EQ(list(engine.factory->getCacheFigures().bitmaps), none);
    EXPECT_EQ(list(engine.factory->getCacheFigures().faces), none);
    EXPECT_EQ(engine.factory->getCacheFigures().outlines.misses, 1U) << "reset leaves outlines alone";
    engine.factory->flush();
    EXPECT_EQ(list(engine.factory->getCacheFigures().outlines), none);
}

} // namespace
} // namespace Vell::FontEngine
