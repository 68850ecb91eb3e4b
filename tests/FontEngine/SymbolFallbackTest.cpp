#include <FontEngine/AssertionText.h>
#include <FontEngine/Engine.h>

#include <FontLoaders/Public/Exceptions.h>
#include <FontLoaders/Public/UnicodeRangeMap.h>

#include <gmock/gmock.h>

namespace Vell::FontEngine {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Testing::makeExtFontInfo;
using Testing::makeFaceInfo;
using Testing::makeFontInfo;

constexpr unsigned int snowman = 0x2603;
constexpr unsigned int nowhere = 0x40000; // in no block

/// An engine with a fallback family for the snowman's range.
struct SymbolEngine : Engine {
    SymbolEngine() {
        Testing::FontBuilder font("Symbols");
        font.setNotdef(Testing::makeBoxGlyph(111, 0, 0, 10, 10));
        font.addGlyphs(6, Testing::makeBoxGlyph(900, 0, 0, 800, 800));
        font.map(snowman, 6);
        loader->setFont("Symbols", false, false, font.build());
        loader->setRangeFamily(range, "Symbols");
    }

    unsigned int range = FontLoaders::UnicodeRangeMap::find(snowman);
    std::string rangeCall = "getFamilyNameForRange " + std::to_string(range);
};

TEST(SymbolFallback, IsNullOutsideAllRangesWithoutCallingTheLoader) {
    const SymbolEngine engine;
    ASSERT_EQ(FontLoaders::UnicodeRangeMap::find(nowhere), 0U);
    EXPECT_EQ(engine.factory->getDefaultFontForSymbol(nowhere, makeFontInfo()), nullptr);
    EXPECT_THAT(engine.loader->getCalls(), IsEmpty());
}

TEST(SymbolFallback, IsNullWithoutAFamilyForTheRange) {
    SymbolEngine engine;
    engine.loader->setRangeFamily(engine.range, "");
    EXPECT_EQ(engine.factory->getDefaultFontForSymbol(snowman, makeFontInfo()), nullptr);
    EXPECT_THAT(engine.loader->getCalls(), ElementsAre(engine.rangeCall));
}

TEST(SymbolFallback, KeepsStyleSizeAndPosition) {
    const SymbolEngine engine;
    const auto font = engine.factory->getDefaultFontForSymbol(
        snowman,
        makeFontInfo(makeFaceInfo("Test Sans", true, true), 12.0F, Gfx::TextPositionType::Subscript));
    ASSERT_NE(font, nullptr);
    EXPECT_EQ(font->getFontInfo()->getSize(), 12.0F);
    EXPECT_EQ(font->getFontInfo()->getTextPositionType(), Gfx::TextPositionType::Subscript);
    const auto face = font->getFontInfo()->getFontFaceInfo();
    EXPECT_EQ(face->getName(), "Symbols");
    EXPECT_TRUE(face->isBold());
    EXPECT_TRUE(face->isItalic());
    EXPECT_EQ(font->getFace()->getTransform(), GlyphTransform::EmboldenAndSlant);
    EXPECT_THAT(engine.loader->getCalls(),
                ElementsAre(engine.rangeCall, "loadFont \"Symbols\" bold italic",
                            "loadFont \"Symbols\" regular", "loadFont \"Symbols\" bold"));
}

TEST(SymbolFallback, IsANewFontWithTheSharedFaceEachTime) {
    const SymbolEngine engine;
    const auto first = engine.factory->getDefaultFontForSymbol(snowman, makeFontInfo());
    const auto second = engine.factory->getDefaultFontForSymbol(snowman, makeFontInfo());
    EXPECT_NE(first, second);
    EXPECT_EQ(first->getFace(), second->getFace());
    EXPECT_THAT(engine.loader->getCalls(),
                ElementsAre(engine.rangeCall, "loadFont \"Symbols\" regular", engine.rangeCall))
        << "the family is requested each time, the font once";
}

TEST(SymbolFallback, UsesTheDefaultFontIfTheFamilyCannotBeLoaded) {
    SymbolEngine engine;
    engine.loader->setRangeFamily(engine.range, "Missing");
    try {
        engine.factory->getDefaultFontForSymbol(snowman, makeFontInfo());
        ADD_FAILURE() << "there is no default font";
    } catch (const FontLoaders::FontLoaderException& error) {
        EXPECT_STREQ(error.what(), "getFace() failed: cannot load font");
    }
    engine.loader->setDefaultFont(false, false, makeTestFont("Default").build());
    engine.factory->flush();
    const auto font = engine.factory->getDefaultFontForSymbol(snowman, makeFontInfo());
    EXPECT_STREQ(font->getFace()->getHandle()->family_name, "Default");
    EXPECT_EQ(font->getFontInfo()->getFontFaceInfo()->getName(), "Missing");
}

TEST(SymbolFallbackForAGlyph, UsesTheEntryOfTheFallbackFace) {
    const SymbolEngine engine;
    Gfx::CharMap::GlyphIndexWithAdvance glyph(0, 0.5F);
    engine.getFont().trySubstituteGlyph(makeExtFontInfo(), snowman, glyph);
    EXPECT_EQ(glyph.glyphIndex, 6);
    EXPECT_EQ(glyph.advance, 0.9F);
}

TEST(SymbolFallbackForAGlyph, UsesTheDefaultEntryIfTheFallbackFaceLacksTheCharacter) {
    const SymbolEngine engine;
    Gfx::CharMap::GlyphIndexWithAdvance glyph(77, 0.5F);
    engine.getFont().trySubstituteGlyph(makeExtFontInfo(), snowman + 1, glyph);
    EXPECT_EQ(glyph.glyphIndex, 0);
    EXPECT_EQ(glyph.advance, 0.111F);
}

TEST(SymbolFallbackForAGlyph, LeavesTheGlyphUnchangedWithoutAFallback) {
    const SymbolEngine engine;
    Gfx::CharMap::GlyphIndexWithAdvance glyph(77, 0.25F);
    engine.getFont().trySubstituteGlyph(makeExtFontInfo(), nowhere, glyph);
    EXPECT_EQ(glyph.glyphIndex, 77);
    EXPECT_EQ(glyph.advance, 0.25F);
}

TEST(SymbolFallbackForAGlyph, UsesTheStyleOfTheTextNotOfTheFont) {
    const SymbolEngine engine;
    Gfx::CharMap::GlyphIndexWithAdvance glyph(0, 0.5F);
    const auto bold = makeExtFontInfo(makeFontInfo(makeFaceInfo("Test Sans", true)));
    engine.getFont().trySubstituteGlyph(bold, snowman, glyph);
    EXPECT_EQ(engine.loader->countCalls("loadFont \"Symbols\" bold"), 1U);
}

TEST(SymbolFallbackForAGlyph, WidensTextsByTheFallbacksAdvance) {
    const SymbolEngine engine;
    EXPECT_FLOAT_EQ(engine.getFont().getTextWidth("A\xE2\x98\x83", makeExtFontInfo()), 6.0F + 9.0F);
    EXPECT_FLOAT_EQ(engine.getFont().getTextWidth("\xF1\x80\x80\x80", makeExtFontInfo()), 5.0F)
        << "of the missing glyph";
}

TEST(SymbolFallbackDeathTest, AssertsOnNullPointersAndALostFactory) {
    SymbolEngine engine;
    Gfx::CharMap::GlyphIndexWithAdvance glyph(0, 0);
    const Font font = engine.getFont();
    const auto null = Testing::makeMovedFrom(makeExtFontInfo());
    EXPECT_DEATH(font.trySubstituteGlyph(null, snowman, glyph), Testing::printsNullDereference());
    const auto nullFont = Testing::makeMovedFrom(makeFontInfo());
    EXPECT_DEATH(engine.factory->getDefaultFontForSymbol(snowman, nullFont),
                 Testing::printsNullDereference());
    engine.factory = Engine().factory;
    EXPECT_DEATH(font.trySubstituteGlyph(makeExtFontInfo(), snowman, glyph),
                 Testing::printsAssertion("Utils/Public/Ptr/PtrUtils:254", "plainPtr"));
}

} // namespace
} // namespace Vell::FontEngine
