// The caches of the engine with instances of one variable font.

#include <FontEngine/GlyphKeyFields.h>
#include <FontLoaders/VaryingFonts.h>

#include <FontEngine/FE_FontFace.h>
#include <FontEngine/FE_FontFactory.h>
#include <FontEngine/Renderer/FE_BitmapGlyphRun.h>
#include <FontLoaders/FontLoaders.h>
#include <support/CountingLoader.h>
#include <support/RecordingPainter.h>

#include <gtest/gtest.h>

namespace Vell::FontEngine {
namespace {

constexpr const char* light = "Vary:wght=400";
constexpr const char* heavy = "Vary:wght=900";
constexpr const char* almostHeavy = "Vary:wght=899.9"; // its outlines have the same points

NNPtr<FontFactory> makeFactory() {
    auto loader = std::make_shared<Testing::CountingLoader>();
    loader->setFont("Vary", false, false, Testing::makeVaryingFont().build());
    return FontFactory::create(FontLoaders::createVariationLoader(loader), "Vary");
}

class VariationCaches : public ::testing::Test {
protected:
    NNPtr<const FontFace> getFace(const char* name) const {
        return _factory->getFace(Testing::makeFaceInfo(name));
    }

    static BitmapGlyphInfo makeKey(const char* name) {
        return makeFields(name).with(&KeyFields::mode, FT_RENDER_MODE_LCD).makeBitmap();
    }

    std::shared_ptr<const FT_BitmapGlyphRec_> render(const char* name) const {
        return getFace(name)->getBitmapGlyph(makeKey(name), false);
    }

    std::shared_ptr<const Gfx::Path> outline(const char* name) const {
        Testing::RecordingPainter painter;
        return getFace(name)->getOutlineGlyphPath(makeFields(name).makeOutline(), painter);
    }

    static KeyFields makeFields(const char* name) {
        return KeyFields().with(&KeyFields::face, Testing::makeFaceInfo(name));
    }

    /// Uses the instances one after the other, twice.
    template <class Use>
    void useTwice(const Use& use) const {
        for (int i = 0; i < 2; ++i) {
            for (const char* name : {light, heavy, almostHeavy}) {
                use(name);
            }
        }
    }

    static void expectThreeEntries(const CacheFigures& figures) {
        EXPECT_EQ(figures.entries, 3U);
        EXPECT_EQ(figures.misses, 3U);
        EXPECT_EQ(figures.hits, 3U);
    }

    const NNPtr<FontFactory> _factory = makeFactory();
};

TEST_F(VariationCaches, HaveAFaceForEachInstance) {
    useTwice([&](const char* name) { getFace(name); });
    expectThreeEntries(_factory->getCacheFigures().faces);
    EXPECT_NE(getFace(light).get(), getFace(heavy).get());
    EXPECT_NE(getFace(heavy)->getFaceData().bytes, getFace(almostHeavy)->getFaceData().bytes);
    EXPECT_EQ(getFace(light)->getBasicMetrics().getCharMap()['A'].advance, 0.5F);
    EXPECT_EQ(getFace(heavy)->getBasicMetrics().getCharMap()['A'].advance, 0.7F);
}

TEST_F(VariationCaches, HaveABitmapForEachInstance) {
    useTwice([&](const char* name) { render(name); });
    expectThreeEntries(_factory->getCacheFigures().bitmaps);
    EXPECT_GT(render(heavy)->bitmap.width, render(light)->bitmap.width);
}

TEST_F(VariationCaches, HaveAColouredImageForEachInstance) {
    useTwice([&](const char* name) {
        _factory->getGlyphBitmapWithSubpixels(BitmapGlyph(render(name), {0, 0}, makeKey(name)),
                                              {1, 2, 3, 255});
    });
    expectThreeEntries(_factory->getCacheFigures().coloredImages);
}

TEST_F(VariationCaches, HaveAnOutlineForEachInstance) {
    useTwice([&](const char* name) { outline(name); });
    expectThreeEntries(_factory->getCacheFigures().outlines);
    EXPECT_NE(outline(heavy), outline(almostHeavy));
}

} // namespace
} // namespace Vell::FontEngine
