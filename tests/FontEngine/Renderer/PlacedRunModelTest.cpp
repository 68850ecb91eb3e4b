// Compares thousands of random texts of the raster painter with the same glyphs, placed.

#include <FontEngine/Renderer/LayoutModel.h>

#include <support/RecordingGlyphPainter.h>
#include <support/RecordingPainter.h>

#include <FontEngine/Renderer/FE_PlacedGlyphRun.h>
#include <FontEngine/Renderer/FE_RasterTextPainter.h>

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace Vell::FontEngine {
namespace {

/// A random text in a random setting, as the raster painter lays it out.
struct RandomLayout {
    RandomLayout(const ModelFonts& fonts, std::mt19937& random)
        : text(makeRandomText(random).bytes)
        , setting(makeRandomSetting(random))
        , run(layOut(fonts)) {}

    BitmapGlyphRun layOut(const ModelFonts& fonts) const {
        Testing::RecordingPainter painter;
        Testing::RecordingGlyphPainter glyphPainter;
        const auto extFontInfo = setting.makeExtFontInfo();
        return RasterTextPainter(painter, glyphPainter, setting.flipVertically)
            .createGlyphRun(text, extFontInfo, fonts.getFactory()->getFont(extFontInfo->getFontInfo()),
                            setting.ratio, setting.scale);
    }

    std::string text;
    ModelSetting setting;
    BitmapGlyphRun run;
};

/// Gives the glyphs of a run to a builder, each part of one face in a call of its own.
BitmapGlyphRun placeAgain(const RandomLayout& layout, const FontFactory& factory) {
    const std::vector<BitmapGlyph>& glyphs = layout.run.getGlyphs();
    PlacedGlyphRun placed(layout.setting.ratio, layout.setting.scale, layout.setting.flipVertically,
                          glyphs.size());
    for (std::size_t i = 0; i < glyphs.size();) {
        const Testing::FaceInfoPtr& faceInfo = glyphs[i].getInfo().getFaceInfo();
        std::vector<PlacedGlyph> part;
        for (; i < glyphs.size() && glyphs[i].getInfo().getFaceInfo()->getName() == faceInfo->getName();
             ++i) {
            const BitmapGlyphInfo& key = glyphs[i].getInfo();
            part.push_back({static_cast<unsigned short>(key.getGlyphIndex()), key.isLast(), key.getUnicode(),
                            glyphs[i].getPos()});
        }
        placed.append(faceInfo, factory.shareFace(faceInfo), layout.setting.getGlyphSize(), part.data(),
                      part.size());
    }
    return std::move(placed).finish();
}

void expectSameKeys(const BitmapGlyphRun& placed, const BitmapGlyphRun& laid) {
    ASSERT_EQ(placed.getGlyphs().size(), laid.getGlyphs().size());
    for (std::size_t i = 0; i < laid.getGlyphs().size(); ++i) {
        const BitmapGlyph& glyph = placed.getGlyphs()[i];
        const BitmapGlyph& expected = laid.getGlyphs()[i];
        EXPECT_EQ(glyph.getInfo(), expected.getInfo()) << i;
        EXPECT_EQ(glyph.getInfo().getUnicode(), expected.getInfo().getUnicode()) << i;
        EXPECT_EQ(glyph.getPos(), expected.getPos()) << i;
    }
    const FT_BBox& box = placed.getBBox();
    const FT_BBox& expected = laid.getBBox();
    EXPECT_EQ(std::tie(box.xMin, box.yMin, box.xMax, box.yMax),
              std::tie(expected.xMin, expected.yMin, expected.xMax, expected.yMax));
}

std::vector<const FT_BitmapGlyphRec_*> listBitmaps(const BitmapGlyphRun& run) {
    std::vector<const FT_BitmapGlyphRec_*> bitmaps;
    for (const BitmapGlyph& glyph : run.getGlyphs()) {
        bitmaps.push_back(glyph.getData().get());
    }
    return bitmaps;
}

TEST(PlacedRunModel, IsTheRunOfTheRasterPainterToTheBit) {
    const ModelFonts fonts;
    std::mt19937 random(4); // the same texts in every run
    for (int i = 0; i < 2000 && !HasFailure(); ++i) {
        SCOPED_TRACE(i);
        const RandomLayout layout(fonts, random);
        const std::uint64_t misses = fonts.getFactory()->getCacheFigures().bitmaps.misses;
        const BitmapGlyphRun placed = placeAgain(layout, *fonts.getFactory());
        expectSameKeys(placed, layout.run);
        EXPECT_EQ(listBitmaps(placed), listBitmaps(layout.run));
        EXPECT_EQ(fonts.getFactory()->getCacheFigures().bitmaps.misses, misses);
        if (i % 64 == 0) {
            fonts.getFactory()->flush();
        }
    }
}

TEST(PlacedRunModel, UsesTheCacheAsTheRasterPainterDoes) {
    const ModelFonts laid;
    const ModelFonts placed;
    for (const ModelFonts* const fonts : {&laid, &placed}) {
        fonts->getFactory()->reset(0, 20000); // evicts often
    }
    std::mt19937 random(5);
    for (int i = 0; i < 1000 && !HasFailure(); ++i) {
        SCOPED_TRACE(i);
        const RandomLayout layout(laid, random);
        expectSameKeys(placeAgain(layout, *placed.getFactory()), layout.run);
        const CacheFigures expected = laid.getFactory()->getCacheFigures().bitmaps;
        const CacheFigures figures = placed.getFactory()->getCacheFigures().bitmaps;
        EXPECT_EQ(
            std::tie(figures.entries, figures.bytes, figures.evictions, figures.hits, figures.misses),
            std::tie(expected.entries, expected.bytes, expected.evictions, expected.hits, expected.misses));
    }
}

} // namespace
} // namespace Vell::FontEngine
