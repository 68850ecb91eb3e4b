#include <FontEngine/Engine.h>
#include <FontEngine/Private/CharMapFont.h>

#include <support/BdfFont.h>
#include <support/CffFont.h>
#include <support/ErrorText.h>
#include <support/Type1Font.h>
#include <support/spy/FreeTypeSpy.h>

#include <FontEngine/Private/FE_FreeTypeUtilsInternal.h>
#include <FontLoaders/Public/Exceptions.h>

#include <gmock/gmock.h>

#include <limits>

namespace Vell::FontEngine::Internal {
namespace {

using FontLoaders::FreeTypeException;
using Testing::CharMapKind;
using testing::ElementsAre;
using Testing::FontBuilder;
using Testing::FreeTypeSpy;
using Testing::getErrorText;
using Testing::makeBoxGlyph;
using Testing::OpenedFont;

using Entry = Gfx::CharMap::GlyphIndexWithAdvance;

TEST(MakeCharMap, HoldsEveryCodeWithItsAdvanceInEms) {
    FontBuilder builder = makeTestFont().setUnitsPerEm(2048);
    builder.map(0x1F600, 3);
    const OpenedFont font(builder.build());
    const Gfx::CharMap map = makeCharMap(font.face, GlyphTransform::None);
    EXPECT_EQ(map.size(), 5U);
    EXPECT_EQ(map['A'].glyphIndex, 1);
    EXPECT_EQ(map['A'].advance, 600.0F / 2048.0F);
    EXPECT_EQ(map[0x1F600].glyphIndex, 3);
    EXPECT_EQ(map[0x1F600].advance, 400.0F / 2048.0F);
    EXPECT_EQ(map['B'].glyphIndex, 0);
    EXPECT_EQ(map['B'].advance, 500.0F / 2048.0F) << "of the missing glyph";
}

TEST(MakeCharMap, HasOnlyTheDefaultEntryIfNothingIsMapped) {
    const OpenedFont font(FontBuilder().addCharMap(CharMapKind::Unicode).build());
    const Gfx::CharMap map = makeCharMap(font.face, GlyphTransform::None);
    EXPECT_EQ(map.size(), 0U);
    EXPECT_EQ(map['A'].advance, 0.5F);
}

TEST(MakeCharMap, WalksTheCharmapUnscaled) {
    const OpenedFont font(makeTestFont().build());
    const FreeTypeSpy spy;
    makeCharMap(font.face, GlyphTransform::Slant);
    EXPECT_THAT(spy.getLines(),
                ElementsAre("FT_Select_Charmap unic", "FT_Get_Advance 0 1", "FT_Get_First_Char",
                            "FT_Get_Advance 4 1", "FT_Get_Next_Char 32", "FT_Get_Advance 1 1",
                            "FT_Get_Next_Char 65", "FT_Get_Advance 2 1", "FT_Get_Next_Char 95",
                            "FT_Get_Advance 3 1", "FT_Get_Next_Char 120"));
}

TEST(MakeCharMap, SizesAScalableFaceThatWillBeEmboldened) {
    const OpenedFont font = openWithCharMaps({CharMapKind::Unicode});
    for (const GlyphTransform transform : {GlyphTransform::Embolden, GlyphTransform::EmboldenAndSlant}) {
        const FreeTypeSpy spy;
        makeCharMap(font.face, transform);
        EXPECT_THAT(spy.getLines(),
                    ElementsAre("FT_Select_Charmap unic", "FT_Get_Advance 0 1", "FT_Set_Char_Size 0 0 0 0",
                                "FT_Get_First_Char", "FT_Get_Advance 1 1", "FT_Get_Next_Char 65"));
    }
}

TEST(MakeCharMap, DoesNotSizeABitmapFont) {
    Testing::BdfFont builder;
    builder.glyphs.push_back({'A', 6, 5, 0, 0, {{0xF8}}});
    const OpenedFont font(builder.build());
    const FreeTypeSpy spy;
    const Gfx::CharMap map = makeCharMap(font.face, GlyphTransform::Embolden);
    EXPECT_EQ(spy.countCalls("FT_Set_Char_Size"), 0U);
    EXPECT_EQ(map['A'].advance, std::numeric_limits<float>::infinity()) << "no em size";
}

TEST(MakeCharMap, AddsPlainCodesToASymbolFont) {
    FontBuilder builder("Wingdings");
    builder.addGlyph(makeBoxGlyph(600, 0, 0, 100, 100));
    builder.addGlyph(makeBoxGlyph(700, 0, 0, 100, 100));
    builder.map(CharMapKind::Symbol, 0xF020, 1).map(CharMapKind::Symbol, 0xF0FF, 2);
    builder.map(CharMapKind::Symbol, 0xF100, 2).map('x', 2);
    const OpenedFont font(builder.build());
    const Gfx::CharMap map = makeCharMap(font.face, GlyphTransform::None);
    EXPECT_EQ(font->charmap->encoding, FT_ENCODING_MS_SYMBOL);
    EXPECT_EQ(map.size(), 5U);
    for (const unsigned int code : {0xF020U, 0x20U}) {
        EXPECT_EQ(map[code].glyphIndex, 1);
        EXPECT_EQ(map[code].advance, 0.6F);
    }
    EXPECT_EQ(map[0xFF].glyphIndex, 2);
    EXPECT_EQ(map[0xF100].glyphIndex, 2);
    EXPECT_EQ(map[0x00].glyphIndex, 0) << "outside the symbol area there is no alias";
    EXPECT_EQ(map['x'].glyphIndex, 0) << "the Unicode charmap is not read";
}

TEST(MakeCharMap, AddsTheSymbolAreaToAType1SymbolFont) {
    Testing::Type1Font builder;
    builder.family = "Symbol";
    builder.glyphs.push_back({"alpha", 0x41, makeBoxGlyph(600, 0, 0, 100, 100)});
    const OpenedFont font(builder.build());
    const Gfx::CharMap map = makeCharMap(font.face, GlyphTransform::None);
    EXPECT_EQ(font->charmap->encoding, FT_ENCODING_ADOBE_CUSTOM);
    EXPECT_EQ(map.size(), 2U);
    EXPECT_EQ(map[0x41].glyphIndex, 1);
    EXPECT_EQ(map[0xF041].glyphIndex, 1);
    EXPECT_EQ(map[0xF041].advance, 0.6F);
}

TEST(MakeCharMap, TreatsANamelessFontAsAnOrdinaryOne) {
    const OpenedFont font(makeTestFont().omitTable("name").build());
    ASSERT_EQ(font->family_name, nullptr);
    const FreeTypeSpy spy;
    EXPECT_EQ(makeCharMap(font.face, GlyphTransform::None)['A'].glyphIndex, 1);
    EXPECT_THAT(spy.getLines({"FT_Select_Charmap"}), ElementsAre("FT_Select_Charmap unic"));
}

TEST(MakeCharMap, KeepsTheLow16BitsOfAGlyphIndex) {
    const OpenedFont font = openWithCharMaps({CharMapKind::Unicode});
    font->num_glyphs = 0x20000;
    FreeTypeSpy spy;
    spy.setCharacters({{'A', 0x12345}, {'B', 0x10000}});
    spy.failCall("FT_Get_Advance", 2, FT_Err_Ok);
    spy.failCall("FT_Get_Advance", 3, FT_Err_Ok);
    const Gfx::CharMap map = makeCharMap(font.face, GlyphTransform::None);
    EXPECT_EQ(map['A'].glyphIndex, 0x2345);
    EXPECT_EQ(map['B'].glyphIndex, 0) << "the walk continues with the whole index";
    EXPECT_EQ(map.size(), 2U);
    EXPECT_THAT(spy.getLines({"FT_Get_Advance"}),
                ElementsAre("FT_Get_Advance 0 1", "FT_Get_Advance 74565 1", "FT_Get_Advance 65536 1"));
}

TEST(MakeCharMap, RequestsNoAdvanceOfAGlyphThatTheFaceLacks) {
    const OpenedFont font = openWithCharMaps({CharMapKind::Unicode});
    FreeTypeSpy spy;
    spy.setCharacters({{'A', static_cast<FT_UInt>(font->num_glyphs)}});
    EXPECT_EQ(getErrorText<FreeTypeException>([&] { makeCharMap(font.face, GlyphTransform::None); }),
              "Error making char to glyph advance cache. FT_Get_Advance() failed.");
    font->num_glyphs = 0;
    EXPECT_EQ(getErrorText<FreeTypeException>([&] { makeCharMap(font.face, GlyphTransform::None); }),
              "FT_Get_Advance() failed. It can't find glyph advance for undefined character code.");
    EXPECT_THAT(spy.getLines({"FT_Get_Advance"}), ElementsAre("FT_Get_Advance 0 1"));
}

TEST(MakeCharMap, RefusesCodesAbove32Bits) {
    const OpenedFont font = openWithCharMaps({CharMapKind::Unicode});
    FreeTypeSpy spy;
    spy.setCharacters({{0xFFFFFFFFUL, 1}});
    EXPECT_EQ(makeCharMap(font.face, GlyphTransform::None)[0xFFFFFFFFU].glyphIndex, 1);
    spy.setCharacters({{'A', 1}, {0x100000000UL, 1}});
    EXPECT_EQ(getErrorText<BadNumCastError>([&] { makeCharMap(font.face, GlyphTransform::None); }),
              "bad numeric conversion: positive overflow");
}

/// A font of a few hundred bytes that maps all codes from 0 to `last` to glyph 1, with one group of a format
/// 13 charmap.
OpenedFont openWithCodesUpTo(std::uint32_t last) {
    Testing::Bytes cmap{0, 0,  0, 1, 0, 3, 0, 10, 0, 0, 0, 12, // one charmap, of Microsoft's 32-bit Unicode
                        0, 13, 0, 0, 0, 0, 0, 28, 0, 0, 0, 0,  0, 0, 0, 1, 0, 0, 0, 0};
    for (const int shift : {24, 16, 8, 0}) {
        cmap.push_back(static_cast<unsigned char>(last >> shift & 0xFFU));
    }
    cmap.insert(cmap.end(), {0, 0, 0, 1});
    FontBuilder builder;
    builder.addGlyph(makeBoxGlyph(600, 0, 0, 100, 100));
    return OpenedFont(builder.setTable("cmap", cmap).build());
}

TEST(MakeCharMap, AcceptsAsManyCodesAsUnicodeHas) {
    const OpenedFont font = openWithCodesUpTo(0x10FFFF);
    const Gfx::CharMap map = makeCharMap(font.face, GlyphTransform::None);
    EXPECT_EQ(map.size(), 0x110000U);
    EXPECT_EQ(map[0x10FFFF], Entry(1, 0.6F));
}

TEST(MakeCharMap, RefusesMoreCodesThanUnicodeHas) {
    for (const std::uint32_t last : {0x110000U, 0xFFFFFFFFU}) {
        const OpenedFont font = openWithCodesUpTo(last);
        EXPECT_EQ(getErrorText<FreeTypeException>([&] { makeCharMap(font.face, GlyphTransform::None); }),
                  "The charmap has more codes than Unicode, 1114112");
    }
}

TEST(MakeCharMap, RefusesAFontWhoseAdvancesTakeMinutesToCompute) {
    const OpenedFont font(Testing::makeBusyCffFont(229, 5).build());
    EXPECT_EQ(getErrorText<FreeTypeException>([&] { makeCharMap(font.face, GlyphTransform::None); }),
              "The charmap takes too long to read");
}

TEST(MakeCharMap, ThrowsWithoutTheAdvanceOfTheMissingGlyph) {
    const OpenedFont font = openWithCharMaps({CharMapKind::Unicode});
    FreeTypeSpy spy;
    spy.failCall("FT_Get_Advance");
    EXPECT_EQ(getErrorText<FreeTypeException>([&] { makeCharMap(font.face, GlyphTransform::Embolden); }),
              "FT_Get_Advance() failed. It can't find glyph advance for undefined character code.");
    EXPECT_EQ(spy.countCalls("FT_Set_Char_Size"), 0U) << "the size comes after";
}

TEST(MakeCharMap, ThrowsWithoutTheAdvanceOfAMappedGlyph) {
    const OpenedFont font = openWithCharMaps({CharMapKind::Unicode});
    FreeTypeSpy spy;
    spy.failCall("FT_Get_Advance", 2);
    EXPECT_EQ(getErrorText<FreeTypeException>([&] { makeCharMap(font.face, GlyphTransform::None); }),
              "Error making char to glyph advance cache. FT_Get_Advance() failed.");
}

TEST(MakeCharMap, ThrowsTheCodeOfARefusedSize) {
    const OpenedFont font = openWithCharMaps({CharMapKind::Unicode});
    FreeTypeSpy spy;
    spy.failCall("FT_Set_Char_Size", 1, FT_Err_Invalid_Pixel_Size);
    EXPECT_EQ(getErrorText<FreeTypeException>([&] { makeCharMap(font.face, GlyphTransform::Embolden); }),
              "FT_Set_Char_Size() failed: 23");
    EXPECT_EQ(spy.countCalls("FT_Get_First_Char"), 0U);
}

} // namespace
} // namespace Vell::FontEngine::Internal
