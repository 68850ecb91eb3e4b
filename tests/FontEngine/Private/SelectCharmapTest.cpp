#include <FontEngine/AssertionText.h>
#include <FontEngine/Private/CharMapFont.h>

#include <support/ErrorText.h>
#include <support/spy/FreeTypeSpy.h>

#include <FontEngine/Private/FE_FreeTypeUtilsInternal.h>
#include <FontLoaders/Public/Exceptions.h>

#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace Vell::FontEngine::Internal {
namespace {

using FontLoaders::FreeTypeException;
using Testing::CharMapKind;
using testing::ElementsAre;
using Testing::FreeTypeSpy;
using Testing::getErrorText;
using Testing::OpenedFont;
using Testing::printsAssertion;

std::vector<std::string> listSelections(const OpenedFont& font, bool isSymbolic, bool isSfnt) {
    const FreeTypeSpy spy;
    selectFTCharmap(font.face, isSymbolic, isSfnt);
    return spy.getLines();
}

TEST(SelectCharmap, RequestsTheEncodingForTheKindOfFont) {
    const OpenedFont font = openWithCharMaps({CharMapKind::Symbol, CharMapKind::Unicode});
    EXPECT_THAT(listSelections(font, false, false), ElementsAre("FT_Select_Charmap unic"));
    EXPECT_THAT(listSelections(font, false, true), ElementsAre("FT_Select_Charmap unic"));
    EXPECT_EQ(font->charmap->encoding, FT_ENCODING_UNICODE);
    EXPECT_THAT(listSelections(font, true, true), ElementsAre("FT_Select_Charmap symb"));
    EXPECT_EQ(font->charmap->encoding, FT_ENCODING_MS_SYMBOL);
    EXPECT_THAT(listSelections(font, true, false),
                ElementsAre("FT_Select_Charmap ADBC", "FT_Select_Charmap unic"));
    EXPECT_EQ(font->charmap->encoding, FT_ENCODING_UNICODE);
}

TEST(SelectCharmap, PrefersUnicodeToTheCurrentCharmap) {
    const OpenedFont font = openWithCharMaps({CharMapKind::MacRoman, CharMapKind::Unicode});
    ASSERT_EQ(FT_Set_Charmap(font.get(), font->charmaps[0]), 0);
    EXPECT_THAT(listSelections(font, true, true),
                ElementsAre("FT_Select_Charmap symb", "FT_Select_Charmap unic"));
    EXPECT_EQ(font->charmap->encoding, FT_ENCODING_UNICODE);
}

TEST(SelectCharmap, RequestsUnicodeTwiceAndKeepsTheCurrentCharmap) {
    const OpenedFont font = openWithCharMaps({CharMapKind::MacRoman, CharMapKind::Symbol});
    ASSERT_EQ(FT_Set_Charmap(font.get(), font->charmaps[1]), 0);
    EXPECT_THAT(listSelections(font, false, true),
                ElementsAre("FT_Select_Charmap unic", "FT_Select_Charmap unic"));
    EXPECT_EQ(font->charmap, font->charmaps[1]);
}

TEST(SelectCharmap, SelectsTheFirstCharmapIfNoneIsCurrent) {
    const OpenedFont font = openWithCharMaps({CharMapKind::MacRoman, CharMapKind::Symbol});
    ASSERT_EQ(font->charmap, nullptr);
    EXPECT_THAT(listSelections(font, false, true),
                ElementsAre("FT_Select_Charmap unic", "FT_Select_Charmap unic", "FT_Set_Charmap 1 0"));
    EXPECT_EQ(font->charmap, font->charmaps[0]);
}

TEST(SelectCharmap, ThrowsIfFreeTypeRefusesTheFirstCharmap) {
    const OpenedFont font = openWithCharMaps({CharMapKind::MacRoman});
    FreeTypeSpy spy;
    spy.failCall("FT_Set_Charmap");
    EXPECT_EQ(getErrorText<FreeTypeException>([&] { selectFTCharmap(font.face, false, true); }),
              "FT_Set_Charmap failed");
}

TEST(SelectCharmapDeathTest, AssertsThatThereIsACharmap) {
    const OpenedFont font = openWithCharMaps({});
    EXPECT_DEATH(
        selectFTCharmap(font.face, false, true),
        printsAssertion("FontEngine/Private/FE_FreeTypeUtilsInternal:513", "face->num_charmaps > 0"));
}

TEST(SelectCharmapDeathTest, AssertsThatSelectingHasAnEffect) {
    const OpenedFont font = openWithCharMaps({CharMapKind::MacRoman});
    FreeTypeSpy spy;
    spy.failCall("FT_Select_Charmap", 1, FT_Err_Ok);
    EXPECT_DEATH(
        selectFTCharmap(font.face, false, true),
        printsAssertion("FontEngine/Private/FE_FreeTypeUtilsInternal:522", "nullptr != face->charmap"));
}

} // namespace
} // namespace Vell::FontEngine::Internal
