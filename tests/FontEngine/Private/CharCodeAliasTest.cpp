#include <FontEngine/Private/FE_FreeTypeUtilsInternal.h>

#include <gmock/gmock.h>

#include <vector>

namespace Vell::FontEngine::Internal {
namespace {

using testing::ElementsAre;

using Entry = Gfx::CharMap::GlyphIndexWithAdvance;

/// Adds the alias of a code and returns all mapped codes.
std::vector<unsigned int> listAliases(unsigned long code, bool isSymbolic, bool isSfnt) {
    Gfx::CharMap map(Entry(0, 0));
    addCharCodeAliasIfRequired(map, Entry(5, 0.5F), code, isSymbolic, isSfnt);
    std::vector<unsigned int> aliases;
    for (unsigned int candidate = 0; candidate <= 0x20000; ++candidate) {
        if (map[candidate].glyphIndex == 5 && map[candidate].advance == 0.5F) {
            aliases.push_back(candidate);
        }
    }
    EXPECT_EQ(map.size(), aliases.size());
    return aliases;
}

TEST(CharCodeAlias, ExistsOnlyForSymbolFonts) {
    for (const unsigned long code : {0x41UL, 0xF041UL}) {
        EXPECT_THAT(listAliases(code, false, false), ElementsAre());
        EXPECT_THAT(listAliases(code, false, true), ElementsAre());
    }
}

TEST(CharCodeAlias, StripsTheSymbolAreaOfSfntFonts) {
    EXPECT_THAT(listAliases(0xF000, true, true), ElementsAre(0U));
    EXPECT_THAT(listAliases(0xF0FF, true, true), ElementsAre(0xFFU));
    for (const unsigned long code : {0x41UL, 0xEFFFUL, 0xF100UL, 0x1F041UL}) {
        EXPECT_THAT(listAliases(code, true, true), ElementsAre());
    }
    EXPECT_THAT(listAliases(0x70000F041UL, true, true), ElementsAre(0x41U)) << "by its low 32 bits";
}

TEST(CharCodeAlias, AddsTheSymbolAreaOfOtherFonts) {
    EXPECT_THAT(listAliases(0, true, false), ElementsAre(0xF000U));
    EXPECT_THAT(listAliases(0xFF, true, false), ElementsAre(0xF0FFU));
    for (const unsigned long code : {0x141UL, 0xF041UL}) {
        EXPECT_THAT(listAliases(code, true, false), ElementsAre());
    }
    EXPECT_THAT(listAliases(0x700000041UL, true, false), ElementsAre(0xF041U)) << "by its low 32 bits";
}

TEST(CharCodeAlias, DoesNotReplaceACodeOfTheFont) {
    Gfx::CharMap map(Entry(0, 0));
    map.insert('A', Entry(1, 0.1F), true);
    addCharCodeAliasIfRequired(map, Entry(5, 0.5F), 0xF041, true, true);
    EXPECT_EQ(map['A'].glyphIndex, 1);
    EXPECT_EQ(map.size(), 1U);
}

} // namespace
} // namespace Vell::FontEngine::Internal
