// The images that the service makes of a font's bitmaps.

#include <FontEngine/Color/ColorEngine.h>

#include <FontEngine/Color/Private/FE_ColorScaling.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <map>

namespace Vell::FontEngine {
namespace {

using Testing::addPngChunk;
using Testing::Bytes;
using Testing::GlyphPicture;
using Testing::makeGlyphPicture;
using Testing::makeMixedPicture;
using Testing::OpenedFont;
using Testing::PictureStrike;

constexpr const char* notoEmoji = "/usr/share/fonts/truetype/noto/NotoColorEmoji.ttf";

/// What FreeType itself loads from a strike.
ColorImagePtr loadByFreeType(const OpenedFont& font, int strike, unsigned int glyph) {
    EXPECT_EQ(FT_Select_Size(font.get(), strike), FT_Err_Ok);
    EXPECT_EQ(FT_Load_Glyph(font.get(), glyph, FT_LOAD_COLOR), FT_Err_Ok);
    const FT_GlyphSlot slot = font->glyph;
    EXPECT_EQ(slot->bitmap.pixel_mode, FT_PIXEL_MODE_BGRA);
    auto image = Internal::makeColorImage(
        {slot->bitmap_left, slot->bitmap_top, slot->bitmap.width, slot->bitmap.rows});
    for (unsigned int y = 0; y != image->rows; ++y) {
        std::copy_n(slot->bitmap.buffer + y * static_cast<std::size_t>(slot->bitmap.pitch), image->pitch,
                    image->buffer + y * static_cast<std::size_t>(image->pitch));
    }
    return image;
}

void expectSame(const ColorImagePtr& actual, const ColorImagePtr& expected) {
    ASSERT_NE(actual, nullptr);
    EXPECT_EQ(actual->left, expected->left);
    EXPECT_EQ(actual->top, expected->top);
    EXPECT_EQ(actual->pixelMode, FT_PIXEL_MODE_BGRA);
    ASSERT_EQ(actual->width, expected->width);
    ASSERT_EQ(actual->rows, expected->rows);
    EXPECT_EQ(copyPixels(*actual), copyPixels(*expected));
}

TEST(ColorBitmaps, OfTheRequestedSizeAreThoseOfFreeType) {
    for (const Bytes& file :
         {makeSbixFont(makeTwoStrikes()).build(), makeCbdtFont(makeTwoStrikes()).build()}) {
        const ColorEngine engine(file);
        const OpenedFont font(file);
        expectSame(engine.getImage(TestGlyph::a, 8.0F), loadByFreeType(font, 0, TestGlyph::a));
        expectSame(engine.getImage(TestGlyph::a, 20.0F), loadByFreeType(font, 1, TestGlyph::a));
        expectSame(engine.getImage(TestGlyph::x, 20.0F), loadByFreeType(font, 1, TestGlyph::x));
    }
}

TEST(ColorBitmaps, AreFoundInEveryFormatOfPositions) {
    const PictureStrike strike = {
        10,
        {makeGlyphPicture(TestGlyph::a, 1, 7, makeMixedPicture(9, 8)),
         makeGlyphPicture(TestGlyph::underscore, 1, 7, makeMixedPicture(9, 8)),
         makeGlyphPicture(TestGlyph::x, 1, 7, Testing::makeFlatPicture(9, 8, {1, 2, 3, 255}))}};
    for (const unsigned int format : {1U, 2U, 3U, 4U, 5U}) {
        SCOPED_TRACE(format);
        PictureStrike formatted = strike;
        formatted.indexFormat = format;
        const Bytes file = makeCbdtFont({makeTwoStrikes().front(), formatted}).build();
        const ColorEngine engine(file);
        const OpenedFont font(file);
        for (const unsigned int glyph : {TestGlyph::a, TestGlyph::underscore, TestGlyph::x}) {
            expectSame(engine.getImage(glyph, 10.0F), loadByFreeType(font, 1, glyph));
        }
        EXPECT_EQ(engine.getImage(TestGlyph::space, 10.0F), nullptr);
    }
}

TEST(ColorBitmaps, MayHaveShortTextsInTheirFiles) {
    GlyphPicture picture = makeGlyphPicture(TestGlyph::a, 1, 8, makeMixedPicture(8, 8));
    picture.file = addPngChunk(picture.file, "tEXt", Bytes(1000, 'a'));
    for (const Bytes& file :
         {makeSbixFont({{8, {picture}}}).build(), makeCbdtFont({{8, {picture}}}).build()}) {
        EXPECT_NE(ColorEngine(file).getImage(TestGlyph::a, 8.0F), nullptr);
    }
}

TEST(ColorBitmaps, LieWhereTheFontSays) {
    for (const Bytes& file :
         {makeSbixFont(makeTwoStrikes()).build(), makeCbdtFont(makeTwoStrikes()).build()}) {
        const auto image = ColorEngine(file).getImage(TestGlyph::x, 20.0F);
        ASSERT_NE(image, nullptr);
        EXPECT_EQ(image->left, -3);
        EXPECT_EQ(image->top, 10);
        EXPECT_EQ(copyPixels(*image)[0], 50) << "blue comes first";
        EXPECT_EQ(copyPixels(*image)[2], 200);
    }
}

TEST(ColorBitmaps, OfNotoColorEmojiAreThoseOfFreeType) {
    const Bytes file = readFont(notoEmoji);
    ASSERT_FALSE(file.empty()) << "needs the package fonts-noto-color-emoji";
    const ColorEngine engine(file);
    const OpenedFont font(file);
    const Gfx::CharMap& charMap = engine.getFace()->getBasicMetrics().getCharMap();
    for (const unsigned int character : {0x1F600U, 0x1F44DU, 0x2764U, 0x1F680U}) {
        const unsigned int glyph = charMap[character].glyphIndex;
        ASSERT_NE(glyph, 0U);
        expectSame(engine.getImage(glyph, 109.0F), loadByFreeType(font, 0, glyph));
    }
}

TEST(ColorBitmaps, AreReducedFromTheNextLargerStrike) {
    const ColorEngine engine;
    for (const auto& [size, strike] : std::map<float, float>{{5.0F, 8.0F}, {9.0F, 20.0F}, {19.5F, 20.0F}}) {
        const auto source = engine.getImage(TestGlyph::a, strike);
        const float scale = size / strike;
        expectSame(engine.getImage(TestGlyph::a, size), Internal::scaleColorImage(*source, {scale, scale}));
    }
}

TEST(ColorBitmaps, AreEnlargedFromTheLargestStrike) {
    const ColorEngine engine;
    expectSame(engine.getImage(TestGlyph::a, 50.0F),
               Internal::scaleColorImage(*engine.getImage(TestGlyph::a, 20.0F), {2.5F, 2.5F}));
}

TEST(ColorBitmaps, ComeFromAnotherStrikeIfTheBestOneLacksTheGlyph) {
    const ColorEngine engine;
    expectSame(engine.getImage(TestGlyph::x, 8.0F),
               Internal::scaleColorImage(*engine.getImage(TestGlyph::x, 20.0F), {0.4F, 0.4F}));
    const ColorEngine reversed(makeSbixFont({{8, {makeGlyphPicture(1, 0, 8, makeMixedPicture(8, 8))}},
                                             {20, {makeGlyphPicture(3, 0, 20, makeMixedPicture(20, 20))}}})
                                   .build());
    EXPECT_EQ(reversed.getImage(1, 16.0F)->width, 18U) << "twice 8 and its soft edges";
}

TEST(ColorBitmaps, HaveTheProductOfSizeScaleAndRatio) {
    const ColorEngine engine;
    const ColorGlyphInfo key(engine.faceInfo, TestGlyph::a, 4.0F, 2.5F, 2.0F, nullptr, textColor);
    expectSame(engine.getColors().getImage(key, engine.getFace()), engine.getImage(TestGlyph::a, 20.0F));
    const ColorGlyphInfo inexact(engine.faceInfo, TestGlyph::a, 0.1F, 200.0F, 1.0F, nullptr, textColor);
    expectSame(engine.getColors().getImage(inexact, engine.getFace()), engine.getImage(TestGlyph::a, 20.0F));
}

TEST(ColorBitmaps, AreAbsentForGlyphsWithoutPictures) {
    for (const Bytes& file :
         {makeSbixFont(makeTwoStrikes()).build(), makeCbdtFont(makeTwoStrikes()).build()}) {
        const ColorEngine engine(file);
        EXPECT_EQ(engine.getImage(TestGlyph::underscore, 20.0F), nullptr);
        EXPECT_EQ(engine.getImage(TestGlyph::missing, 20.0F), nullptr);
        EXPECT_EQ(engine.getImage(1000, 20.0F), nullptr);
        EXPECT_EQ(engine.getImage(0x100000001, 20.0F), nullptr) << "not glyph 1";
    }
}

TEST(ColorBitmaps, AreAbsentForSizesThatAreNone) {
    const ColorEngine engine;
    constexpr float infinity = std::numeric_limits<float>::infinity();
    for (const float size : {0.0F, -8.0F, infinity, -infinity, std::nanf(""), 1e30F, 1e6F}) {
        EXPECT_EQ(engine.getImage(TestGlyph::a, size), nullptr) << size;
    }
    EXPECT_NE(engine.getImage(TestGlyph::a, 1e-20F), nullptr) << "one pixel";
}

TEST(ColorBitmaps, OfADuplicateAreThoseOfItsOriginal) {
    GlyphPicture duplicate = makeGlyphPicture(TestGlyph::x, 1, 8, makeMixedPicture(8, 8));
    duplicate.type = "dupe";
    duplicate.file = {0, TestGlyph::a};
    const ColorEngine engine(
        makeSbixFont({{8, {makeGlyphPicture(TestGlyph::a, 1, 8, makeMixedPicture(8, 8)), duplicate}}})
            .build());
    const auto original = engine.getImage(TestGlyph::a, 8.0F);
    ASSERT_NE(original, nullptr);
    ASSERT_NE(engine.getImage(TestGlyph::x, 8.0F), nullptr);
    EXPECT_EQ(copyPixels(*engine.getImage(TestGlyph::x, 8.0F)), copyPixels(*original));
}

TEST(ColorBitmaps, AreAbsentForOtherKindsOfFiles) {
    for (const char* type : {"jpg ", "tiff", "pdf ", "mask", "????"}) {
        GlyphPicture picture = makeGlyphPicture(TestGlyph::a, 1, 8, makeMixedPicture(8, 8));
        picture.type = type;
        EXPECT_EQ(ColorEngine(makeSbixFont({{8, {picture}}}).build()).getImage(TestGlyph::a, 8.0F), nullptr)
            << type;
    }
}

TEST(ColorBitmaps, ArePaintedAsTheNearestStrikeInFontUnits) {
    struct Target : ColorPaintTarget {
        void pushTransform(const cinder::MatrixAffine2<float>&) override { FAIL(); }
        void popTransform() override { FAIL(); }
        void pushClip(unsigned short) override { FAIL(); }
        void pushClip(const PaintBox&) override { FAIL(); }
        void popClip() override { FAIL(); }
        void fill(const PaintColor&) override { FAIL(); }
        void fill(const LinearGradient&) override { FAIL(); }
        void fill(const RadialGradient&) override { FAIL(); }
        void fill(const SweepGradient&) override { FAIL(); }
        void pushGroup() override { FAIL(); }
        void popGroup(CompositeMode) override { FAIL(); }
        void drawImage(const BitmapGlyphImage& image, const PaintBox& box) override {
            drawn = dynamic_cast<const ColorGlyphImage*>(&image);
            place = box;
        }

        const ColorGlyphImage* drawn = nullptr;
        PaintBox place{};
    };
    // FreeType adds the left bearing of the outline, 100 units, to the place in sbix.
    for (const auto& [file, left] :
         {std::pair(makeSbixFont(makeTwoStrikes()).build(), 200.0F),
          std::pair(makeCbdtFont(makeTwoStrikes()).build(), 100.0F)}) { // 2 of 20 pixels
        const ColorEngine engine(file);
        EXPECT_EQ(ColorGlyphs::getUnitsPerEm(*engine.getFace()), 1000.0F);
        for (const float size : {12.0F, 100.0F}) {
            Target target;
            EXPECT_TRUE(
                engine.getColors().paint(engine.makeKey(TestGlyph::a, size), engine.getFace(), target));
            EXPECT_EQ(target.drawn, engine.getImage(TestGlyph::a, 20.0F).get());
            EXPECT_FLOAT_EQ(target.place.left, left);
            EXPECT_FLOAT_EQ(target.place.top, 750.0F);
            EXPECT_FLOAT_EQ(target.place.right, left + 900.0F);
            EXPECT_FLOAT_EQ(target.place.bottom, -250.0F);
        }
        Target target;
        for (const unsigned long glyph : {TestGlyph::underscore, 1000U}) {
            EXPECT_FALSE(engine.getColors().paint(engine.makeKey(glyph, 20.0F), engine.getFace(), target));
        }
        EXPECT_EQ(target.drawn, nullptr);
    }
}

} // namespace
} // namespace Vell::FontEngine
