#include <support/FontAxis.h>
#include <support/FontBuilder.h>
#include <support/OpenedFont.h>

#include <FontLoaders/Private/FreeTypeBounds/AutoHinterCharacters.h>
#include <FontLoaders/Public/CompositeGlyphs.h>

#include <gtest/gtest.h>

#include FT_ADVANCES_H

#include <dlfcn.h>

#include <set>

namespace {

/// The glyphs that FreeType loads while it loads another one. The test runs on one thread.
std::set<FT_UInt> askedGlyphs;
unsigned int callDepth = 0;

template <class Function, class... Arguments>
FT_Error forward(Function* function, FT_UInt glyphIndex, Arguments... arguments) {
    if (callDepth > 0) {
        askedGlyphs.insert(glyphIndex);
    }
    ++callDepth;
    const FT_Error error = function(arguments...);
    --callDepth;
    return error;
}

} // namespace

// FreeType calls its own public functions through the dynamic linker, so it finds those of the executable.

FT_Error FT_Load_Glyph(FT_Face face, FT_UInt glyphIndex, FT_Int32 flags) {
    static auto* const next = reinterpret_cast<decltype(&FT_Load_Glyph)>(dlsym(RTLD_NEXT, "FT_Load_Glyph"));
    return forward(next, glyphIndex, face, glyphIndex, flags);
}

FT_Error FT_Get_Advance(FT_Face face, FT_UInt glyphIndex, FT_Int32 flags, FT_Fixed* advance) {
    static auto* const next = reinterpret_cast<decltype(&FT_Get_Advance)>(dlsym(RTLD_NEXT, "FT_Get_Advance"));
    return forward(next, glyphIndex, face, glyphIndex, flags, advance);
}

namespace Vell::FontLoaders {
namespace {

using Testing::FontBuilder;
using Testing::FontComponent;
using Testing::FontGlyph;
using Testing::OpenedFont;

std::set<std::uint32_t> getKnownCharacters() {
    std::set<std::uint32_t> characters;
    for (const Internal::CharacterRange& range : Internal::autoHinterCharacters) {
        for (std::uint32_t i = 0; i < range.count; ++i) {
            characters.insert(range.first + i);
        }
    }
    return characters;
}

/// Loads every glyph of a font of these characters with the auto-hinter, and returns the characters of the
/// glyphs that the auto-hinter loaded in addition.
std::set<std::uint32_t> findCharactersLoadedInAddition(const std::vector<std::uint32_t>& characters) {
    FontBuilder builder;
    for (const std::uint32_t character : characters) {
        builder.map(character, builder.addGlyph(Testing::makeBoxGlyph(500, 0, 0, 500, 500)));
    }
    const OpenedFont font(builder.build());
    FT_Set_Char_Size(font.get(), 0, 12 * 64, 72, 0);
    std::set<std::uint32_t> found;
    for (unsigned int glyph = 1; glyph <= characters.size(); ++glyph) {
        askedGlyphs.clear();
        EXPECT_EQ(FT_Load_Glyph(font.get(), glyph, FT_LOAD_FORCE_AUTOHINT), 0);
        askedGlyphs.erase(glyph);
        askedGlyphs.erase(0); // only for its advance, which is in a table
        for (const FT_UInt asked : askedGlyphs) {
            found.insert(characters[asked - 1]);
        }
    }
    return found;
}

/// A font whose glyph 1 is a box and whose glyph 2 contains itself.
FontBuilder makeFontWithLoop() {
    FontBuilder font;
    font.addGlyph(Testing::makeBoxGlyph(500, 0, 0, 500, 500));
    font.addGlyph({500, {}, {}, {{2}}});
    return font.map('A', 1);
}

bool hasBoundedGlyphs(const FontBuilder& font) {
    return FontLoaders::hasBoundedGlyphs(OpenedFont(font.build()).get());
}

/// Makes a font whose glyphs, from 'A' on, have 60,000 parts each.
FontBuilder makeFontWithWideGlyphs(const std::string& characters) {
    FontBuilder font;
    font.addGlyph(FontGlyph());
    for (const char character : characters) {
        const FontGlyph wide{500, {}, {}, std::vector<FontComponent>(59'999, FontComponent{1})};
        font.map(static_cast<unsigned char>(character), font.addGlyph(wide));
    }
    return font;
}

} // namespace

TEST(AutoHinterGlyphs, BelongToKnownCharacters) {
    const std::set<std::uint32_t> known = getKnownCharacters();
    std::vector<std::uint32_t> others;
    for (std::uint32_t character = 0x20; character < 0x20000; ++character) {
        const bool isSurrogate = character >= 0xD800 && character <= 0xDFFF;
        if (!isSurrogate && known.count(character) == 0) {
            others.push_back(character);
        }
    }
    constexpr std::size_t glyphsPerFont = 60'000;
    for (std::size_t begin = 0; begin < others.size(); begin += glyphsPerFont) {
        const auto first = others.begin() + static_cast<std::ptrdiff_t>(begin);
        const auto last = others.size() - begin > glyphsPerFont ? first + glyphsPerFont : others.end();
        EXPECT_EQ(findCharactersLoadedInAddition({first, last}), std::set<std::uint32_t>());
    }
}

TEST(AutoHinterGlyphs, IncludeNearlyAllKnownCharacters) {
    const std::set<std::uint32_t> known = getKnownCharacters();
    std::set<std::uint32_t> found = findCharactersLoadedInAddition({known.begin(), known.end()});
    EXPECT_GT(found.size(), known.size() * 9 / 10) << "some stand in for others that a font lacks";
    EXPECT_EQ(found.count('o'), 1U);
    EXPECT_EQ(found.count('0'), 1U);
}

TEST(AutoHinterGlyphs, AreAllBoundedInAnOrdinaryFont) {
    FontBuilder builder;
    builder.addGlyph(Testing::makeBoxGlyph(500, 0, 0, 500, 500));
    builder.map('o', builder.addGlyph({500, {}, {}, {{1}, {1}}}));
    const OpenedFont font(builder.build());
    EXPECT_TRUE(FontLoaders::hasBoundedGlyphs(font.get()));
    EXPECT_TRUE(FontLoaders::hasBoundedGlyphs(font.get())) << "the second answer is the same";
}

TEST(AutoHinterGlyphs, AreUnboundedIfOneContainsItself) {
    EXPECT_FALSE(hasBoundedGlyphs(makeFontWithLoop().map('o', 2)));
    EXPECT_FALSE(hasBoundedGlyphs(makeFontWithLoop().map('7', 2)));
    EXPECT_FALSE(hasBoundedGlyphs(makeFontWithLoop().map(0x2083, 2))) << "a subscript";
    EXPECT_FALSE(hasBoundedGlyphs(makeFontWithLoop().map(0x5B57, 1).map(0x7530, 2))) << "a Han character";
    EXPECT_FALSE(hasBoundedGlyphs(makeFontWithLoop().map(0x1E90C, 2))) << "Adlam";
}

TEST(AutoHinterGlyphs, ExcludeGlyphsThatTheAutoHinterDoesNotLoad) {
    EXPECT_TRUE(hasBoundedGlyphs(makeFontWithLoop())) << "no character leads to glyph 2";
    EXPECT_TRUE(hasBoundedGlyphs(makeFontWithLoop().map(0xE9, 2))) << "the auto-hinter does not measure é";
    EXPECT_TRUE(hasBoundedGlyphs(makeFontWithLoop().map(Testing::CharMapKind::MacRoman, 'o', 2)));
    EXPECT_TRUE(hasBoundedGlyphs(makeFontWithLoop().setNotdef({500, {}, {}, {{0}}})));
}

TEST(AutoHinterGlyphs, ComeFromTheCharmapThatFreeTypeSelects) {
    using Testing::CharMapKind;
    for (const CharMapKind other : {CharMapKind::MacRoman, CharMapKind::Symbol, CharMapKind::Unicode}) {
        FontBuilder font = makeFontWithLoop();
        font.map(CharMapKind::UnicodeFull, 'o', 2).map(other, 'o', 1);
        EXPECT_FALSE(hasBoundedGlyphs(font));
        FontBuilder reversed = makeFontWithLoop();
        reversed.map(CharMapKind::UnicodeFull, 'o', 1).map(other, 'o', 2);
        EXPECT_TRUE(hasBoundedGlyphs(reversed));
        const OpenedFont opened(reversed.build());
        ASSERT_EQ(FT_Select_Charmap(opened.get(), FT_ENCODING_UNICODE), 0);
        EXPECT_EQ(FT_Get_Char_Index(opened.get(), 'o'), 1U);
    }
}

TEST(AutoHinterGlyphs, DoNotComeFromASymbolCharmap) {
    FontBuilder font;
    font.addGlyph({500, {}, {}, {{1}}});
    EXPECT_TRUE(hasBoundedGlyphs(font.map(Testing::CharMapKind::Symbol, 0xF000 + 'o', 1)));
}

TEST(AutoHinterGlyphs, IncludeTheMissingGlyphOfAVariableFont) {
    FontBuilder font = makeFontWithLoop().setNotdef({500, {}, {}, {{0}}});
    EXPECT_TRUE(hasBoundedGlyphs(font));
    EXPECT_FALSE(hasBoundedGlyphs(Testing::addWeightAxis(font, 400)));
}

TEST(AutoHinterGlyphs, ShareOneBound) {
    EXPECT_TRUE(hasBoundedGlyphs(makeFontWithWideGlyphs("ABCDEFHO"))) << "of which it chooses H, E and O";
    EXPECT_TRUE(hasBoundedGlyphs(makeFontWithWideGlyphs("HEOo")));
    EXPECT_FALSE(hasBoundedGlyphs(makeFontWithWideGlyphs("HEOoz")));
}

} // namespace Vell::FontLoaders
