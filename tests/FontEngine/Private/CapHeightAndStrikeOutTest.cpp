#include <FontEngine/Engine.h>

#include <support/BdfFont.h>
#include <support/OpenedFont.h>
#include <support/Type1Font.h>
#include <support/spy/FreeTypeSpy.h>

#include <FontEngine/Private/FE_FreeTypeUtilsInternal.h>

#include <gmock/gmock.h>

#include <limits>

namespace Vell::FontEngine::Internal {
namespace {

using Testing::FontBuilder;
using Testing::FreeTypeSpy;
using Testing::OpenedFont;
using Testing::Os2Table;
using testing::Pair;

std::pair<float, float> measure(const OpenedFont& font) {
    return getCapHeightAndStrikeOutPosition(font.face);
}

std::pair<float, float> measure(const Os2Table& table) {
    return measure(OpenedFont(FontBuilder().setOs2(table).build()));
}

TEST(CapHeightAndStrikeOut, ComeFromTheTableSinceVersionTwo) {
    for (unsigned int version = 0; version <= 4; ++version) {
        Os2Table table;
        table.version = version;
        table.capHeight = 690;
        table.strikeoutPosition = 260;
        table.strikeoutSize = 45;
        const float capHeight = version >= 2 ? 690.0F / 1000.0F : 800.0F / 1000.0F;
        EXPECT_THAT(measure(table), Pair(capHeight, 215.0F / 1000.0F)) << "version " << version;
    }
}

TEST(CapHeightAndStrikeOut, ComeFromTheAscenderWithoutATable) {
    const OpenedFont font(FontBuilder().setOs2(std::nullopt).build());
    EXPECT_THAT(measure(font), Pair(0.8F, 266.0F / 1000.0F)) << "whole units";
}

TEST(CapHeightAndStrikeOut, ComeFromTheAscenderInOtherFormats) {
    Testing::Type1Font builder;
    builder.glyphs.push_back({"A", 0x41, Testing::makeBoxGlyph(600, 0, 0, 100, 100)});
    const OpenedFont font(builder.build());
    ASSERT_EQ(font->ascender, 800);
    const FreeTypeSpy spy;
    EXPECT_THAT(measure(font), Pair(0.8F, 266.0F / 1000.0F));
    EXPECT_TRUE(spy.getLines().empty()) << "no table is requested";
}

TEST(CapHeightAndStrikeOut, RoundTheThirdOfTheAscenderTowardsZero) {
    const OpenedFont font(FontBuilder().setOs2(std::nullopt).setLine(-3, -300).build());
    ASSERT_EQ(font->ascender, -3);
    EXPECT_THAT(measure(font), Pair(-3.0F / 1000.0F, -1.0F / 1000.0F));
    EXPECT_THAT(measure(OpenedFont(FontBuilder().setOs2(std::nullopt).setLine(-5, -300).build())),
                Pair(-5.0F / 1000.0F, -1.0F / 1000.0F));
}

TEST(CapHeightAndStrikeOut, AreSubtractedIn16Bits) {
    Os2Table table;
    table.strikeoutPosition = -32768;
    table.strikeoutSize = 1;
    EXPECT_EQ(measure(table).second, 32767.0F / 1000.0F);
    table.strikeoutPosition = 32767;
    table.strikeoutSize = -1;
    EXPECT_EQ(measure(table).second, -32768.0F / 1000.0F);
}

TEST(CapHeightAndStrikeOut, ReadTheTableOnce) {
    const OpenedFont font(FontBuilder().build());
    FreeTypeSpy spy;
    EXPECT_THAT(measure(font), Pair(0.7F, 250.0F / 1000.0F));
    EXPECT_THAT(spy.getLines(), testing::ElementsAre("FT_Get_Sfnt_Table 2"));
    spy.failCall("FT_Get_Sfnt_Table");
    EXPECT_THAT(measure(font), Pair(0.8F, 266.0F / 1000.0F));
}

TEST(CapHeightAndStrikeOut, AreNotFiniteWithoutAnEmSize) {
    Testing::BdfFont builder;
    builder.ascent = 1;
    builder.glyphs.push_back({'A', 6, 5, 0, 0, {{0xF8}}});
    const OpenedFont font(builder.build());
    ASSERT_EQ(font->units_per_EM, 0);
    const auto [capHeight, strikeOut] = measure(font);
    EXPECT_TRUE(capHeight != capHeight || capHeight == std::numeric_limits<float>::infinity());
    EXPECT_TRUE(strikeOut != strikeOut || strikeOut == std::numeric_limits<float>::infinity());
}

} // namespace
} // namespace Vell::FontEngine::Internal
