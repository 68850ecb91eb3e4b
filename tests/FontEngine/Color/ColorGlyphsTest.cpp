// The service of colour glyphs: its cache, and what it leaves alone.

#include <FontEngine/Color/ColorEngine.h>
#include <FontEngine/GlyphKeyFields.h>

#include <support/ClientDescriptions.h>
#include <support/RecordingPainter.h>

#include <gtest/gtest.h>

#include <cmath>

namespace Vell::FontEngine {
namespace {

using Testing::Bytes;

/// The bytes of an entry beside its pixels.
constexpr std::uint64_t recordBytes = 256;

std::uint64_t getBytes(const ColorGlyphImage& image) {
    return recordBytes + std::uint64_t{4} * image.width * image.rows;
}

TEST(ColorGlyphs, AreTheFactorysOwn) {
    const ColorEngine engine;
    const FontFactory& factory = *engine.factory;
    EXPECT_EQ(&factory.getColorGlyphs(), &engine.factory->getColorGlyphs());
}

TEST(ColorGlyphs, KnowWhichFacesHaveThem) {
    const auto has = [](const Bytes& font) {
        const ColorEngine engine(font);
        return engine.getColors().hasColors(*engine.getFace());
    };
    EXPECT_TRUE(has(makeSbixFont(makeTwoStrikes()).build()));
    EXPECT_TRUE(has(makeCbdtFont(makeTwoStrikes()).build()));
    EXPECT_FALSE(has(makeTestFont().build()));
    EXPECT_FALSE(has(makeTestFont().setTable("SVG ", Bytes(10, 0)).build()));
    EXPECT_FALSE(has(makeTestFont().setTable("sbix", Bytes(3, 0)).build()));
}

TEST(ColorGlyphs, CostAPlainFaceNothing) {
    const ColorEngine engine(makeTestFont().build());
    EXPECT_EQ(engine.getImage(TestGlyph::a, 20.0F), nullptr);
    EXPECT_EQ(engine.getFace()->getColorFace(), nullptr) << "no second face";
    EXPECT_EQ(engine.getColors().getFigures().misses, 0U);
}

TEST(ColorGlyphs, AreMadeOnce) {
    const ColorEngine engine;
    const auto image = engine.getImage(TestGlyph::a, 20.0F);
    EXPECT_EQ(engine.getImage(TestGlyph::a, 20.0F), image);
    EXPECT_NE(engine.getImage(TestGlyph::a, 21.0F), image);
    const CacheFigures figures = engine.getColors().getFigures();
    EXPECT_EQ(figures.entries, 2U);
    EXPECT_EQ(figures.hits, 1U);
    EXPECT_EQ(figures.misses, 2U);
}

TEST(ColorGlyphs, WeighTheirBytes) {
    const ColorEngine engine;
    const auto image = engine.getImage(TestGlyph::a, 20.0F);
    EXPECT_EQ(engine.getColors().getFigures().bytes, getBytes(*image));
    engine.getImage(TestGlyph::underscore, 20.0F);
    EXPECT_EQ(engine.getColors().getFigures().bytes, getBytes(*image) + recordBytes) << "absent ones, too";
}

TEST(ColorGlyphs, RememberThatAGlyphIsAbsent) {
    const ColorEngine engine;
    for (int i = 0; i != 3; ++i) {
        EXPECT_EQ(engine.getImage(TestGlyph::underscore, 20.0F), nullptr);
    }
    EXPECT_EQ(engine.getColors().getFigures().misses, 1U);
    EXPECT_EQ(engine.getColors().getFigures().hits, 2U);
}

TEST(ColorGlyphs, OfBitmapsDoNotDependOnColoursOfTheText) {
    const ColorEngine engine;
    const auto image = engine.getImage(TestGlyph::a, 20.0F, {1, 2, 3, 4});
    EXPECT_EQ(engine.getImage(TestGlyph::a, 20.0F, {200, 100, 50, 255}), image);
    const auto palette = std::make_shared<const ColorPalette>(ColorPalette{1, {{0, {1, 2, 3, 4}}}});
    const ColorGlyphInfo key(engine.faceInfo, TestGlyph::a, 20.0F, 1.0F, 1.0F, palette, textColor);
    EXPECT_EQ(engine.getColors().getImage(key, engine.getFace()), image);
    EXPECT_EQ(engine.getColors().getFigures().entries, 1U);
}

TEST(ColorGlyphs, OfSizesThatAreNoNumbersAddAnEntryEachTime) {
    const ColorEngine engine;
    for (int i = 0; i != 3; ++i) {
        EXPECT_EQ(engine.getImage(TestGlyph::a, std::nanf("")), nullptr);
    }
    EXPECT_EQ(engine.getColors().getFigures().entries, 3U);
}

TEST(ColorGlyphs, LeaveInTheOrderOfUse) {
    const ColorEngine engine;
    const auto first = engine.getImage(TestGlyph::a, 20.0F);
    const auto second = engine.getImage(TestGlyph::x, 20.0F);
    engine.getColors().reset(getBytes(*first) + getBytes(*second));
    engine.getImage(TestGlyph::a, 20.0F);
    engine.getImage(TestGlyph::x, 20.0F);
    engine.getImage(TestGlyph::a, 20.0F);
    engine.getImage(TestGlyph::a, 8.0F); // drops the x
    EXPECT_EQ(engine.getColors().getFigures().evictions, 1U);
    engine.getImage(TestGlyph::a, 20.0F);
    EXPECT_EQ(engine.getColors().getFigures().misses, 3U);
    engine.getImage(TestGlyph::x, 20.0F);
    EXPECT_EQ(engine.getColors().getFigures().misses, 4U);
    EXPECT_EQ(copyPixels(*second), copyPixels(*engine.getImage(TestGlyph::x, 20.0F))) << "ours is whole";
}

TEST(ColorGlyphs, StayWithinTheirBudget) {
    const ColorEngine engine;
    constexpr std::uint64_t budget = 5000;
    engine.getColors().reset(budget);
    for (int size = 1; size != 30; ++size) {
        engine.getImage(TestGlyph::a, static_cast<float>(size));
        const CacheFigures figures = engine.getColors().getFigures();
        EXPECT_TRUE(figures.bytes <= budget || figures.entries == 1);
        EXPECT_EQ(figures.maxBytes, budget);
    }
    EXPECT_GT(engine.getColors().getFigures().evictions, 10U);
}

TEST(ColorGlyphs, AreFlushedWithTheFactoryAndKeepTheirLimit) {
    const ColorEngine engine;
    engine.getColors().reset(100000);
    for (const bool isWhole : {false, true}) {
        engine.getImage(TestGlyph::a, 20.0F);
        isWhole ? engine.factory->flush() : engine.getColors().flush();
        const CacheFigures figures = engine.getColors().getFigures();
        EXPECT_EQ(figures.entries + figures.bytes + figures.hits + figures.misses, 0U);
        EXPECT_EQ(figures.maxBytes, 100000U);
    }
}

TEST(ColorGlyphs, AreLeftAloneByTheFactorysReset) {
    const ColorEngine engine;
    const auto image = engine.getImage(TestGlyph::a, 20.0F);
    engine.factory->reset(1, 1);
    EXPECT_EQ(engine.getColors().getFigures().maxBytes, 0U);
    EXPECT_EQ(engine.getImage(TestGlyph::a, 20.0F), image) << "although the face is another one";
}

TEST(ColorGlyphs, OutliveTheirFactory) {
    ColorImagePtr image;
    {
        const ColorEngine engine;
        image = engine.getImage(TestGlyph::a, 20.0F);
    }
    EXPECT_EQ(copyPixels(*image).size(), 18U * 20U * 4U);
}

/// What the core's services give for a glyph at a size.
std::string describeCore(const Engine& engine) {
    const FacePtr face = engine.getFace();
    std::string text;
    for (const float size : {8.0F, 13.0F, 20.0F}) {
        const KeyFields key = KeyFields().with(&KeyFields::size, size);
        try {
            const auto glyph = face->getBitmapGlyph(key.makeBitmap(), false);
            if (glyph == nullptr) {
                text += "null ";
                continue;
            }
            const FT_Bitmap& bitmap = glyph->bitmap;
            text += std::to_string(glyph->left) + ' ' + std::to_string(glyph->top) + ' ' +
                    std::to_string(bitmap.pixel_mode) + ' ' +
                    std::string(bitmap.buffer,
                                bitmap.buffer + bitmap.rows * static_cast<std::size_t>(bitmap.pitch));
        } catch (const BaseRuntimeError& error) {
            text += error.what();
        }
    }
    const FactoryCacheFigures figures = engine.factory->getCacheFigures();
    return text + std::to_string(figures.bitmaps.bytes) + ' ' + std::to_string(figures.bitmaps.misses) + ' ' +
           std::to_string(figures.fontFiles.misses) + ' ' + std::to_string(figures.faces.misses);
}

TEST(ColorGlyphs, ChangeNoAnswerOfTheOtherServices) {
    for (const Bytes& font :
         {makeSbixFont(makeTwoStrikes()).build(), makeCbdtFont(makeTwoStrikes()).build()}) {
        const ColorEngine without(font);
        const std::string expected = describeCore(without);
        const ColorEngine with(font);
        with.factory->getFace(with.faceInfo);
        with.getColors().getImage(with.makeKey(TestGlyph::a, 9.0F), with.factory->getFace(with.faceInfo));
        with.factory->flush();
        EXPECT_EQ(describeCore(with), expected);
        with.getImage(TestGlyph::a, 20.0F);
        with.factory->flush();
        EXPECT_EQ(describeCore(with), expected) << "although the same face has been asked for colours";
    }
}

TEST(ColorGlyphs, MayBeUsedByTheDestructorsOfDescriptions) {
    const ColorEngine engine;
    const auto face = engine.getFace();
    int calls = 0;
    const auto ending = [&] {
        ++calls;
        engine.getImage(TestGlyph::x, 20.0F);
        engine.getColors().getFigures();
    };
    const auto request = [&](float size) {
        const Testing::FaceInfoPtr description = makeNNPtr<const Testing::EndingFaceInfo>(ending);
        engine.getColors().getImage(ColorGlyphInfo(description, TestGlyph::a, size, 1.0F, 1.0F, nullptr, {}),
                                    face);
    };
    request(8.0F);
    engine.getColors().flush();
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(engine.getColors().getFigures().entries, 1U) << "the x";
    request(8.0F);
    engine.getColors().reset(2500);
    EXPECT_EQ(calls, 2);
    request(8.0F);
    engine.getImage(TestGlyph::x, 20.0F);
    request(20.0F); // evicts the one of 8 pixels, whose description asks for the x
    EXPECT_EQ(calls, 3);
    engine.getColors().flush();
    EXPECT_EQ(calls, 4);
}

TEST(ColorGlyphs, MayBeFlushedByTheDestructorsOfDescriptions) {
    const ColorEngine engine;
    {
        const Testing::FaceInfoPtr description =
            makeNNPtr<const Testing::EndingFaceInfo>([&] { engine.getColors().flush(); });
        engine.getColors().getImage(ColorGlyphInfo(description, 1, 8.0F, 1.0F, 1.0F, nullptr, {}),
                                    engine.getFace());
    }
    engine.getColors().flush();
    EXPECT_EQ(engine.getColors().getFigures().entries, 0U);
}

} // namespace
} // namespace Vell::FontEngine
