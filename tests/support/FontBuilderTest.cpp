#include <support/FontBuilder.h>
#include <support/OpenedFont.h>

#include <FontLoaders/Public/Exceptions.h>

#include <gmock/gmock.h>

#include FT_ADVANCES_H
#include FT_SFNT_NAMES_H
#include FT_TRUETYPE_TABLES_H

#include <string>
#include <utility>
#include <vector>

namespace Vell::Testing {
namespace {

using testing::ElementsAre;
using testing::Pair;

std::vector<std::pair<unsigned long, unsigned int>> listCharacters(FT_Face face) {
    std::vector<std::pair<unsigned long, unsigned int>> characters;
    FT_UInt glyph = 0;
    for (FT_ULong code = FT_Get_First_Char(face, &glyph); glyph != 0;
         code = FT_Get_Next_Char(face, code, &glyph)) {
        characters.emplace_back(code, glyph);
    }
    return characters;
}

std::vector<std::pair<long, long>> loadPoints(FT_Face face, unsigned int glyph) {
    EXPECT_EQ(FT_Load_Glyph(face, glyph, FT_LOAD_NO_SCALE), 0);
    std::vector<std::pair<long, long>> points;
    for (int i = 0; i < face->glyph->outline.n_points; ++i) {
        points.emplace_back(face->glyph->outline.points[i].x, face->glyph->outline.points[i].y);
    }
    return points;
}

TEST(FontBuilder, HasDefaultMetrics) {
    const OpenedFont font(FontBuilder().build());
    EXPECT_STREQ(font->family_name, "Test Sans");
    EXPECT_STREQ(font->style_name, "Regular");
    EXPECT_EQ(font->units_per_EM, 1000);
    EXPECT_EQ(font->ascender, 800);
    EXPECT_EQ(font->descender, -200);
    EXPECT_EQ(font->height, 1000);
    EXPECT_EQ(font->num_glyphs, 1);
    EXPECT_EQ(font->num_charmaps, 0);
    EXPECT_EQ(font->style_flags, 0);
    EXPECT_TRUE(FT_IS_SFNT(font.get()));
    EXPECT_TRUE(FT_IS_SCALABLE(font.get()));
}

TEST(FontBuilder, WritesTheGivenMetrics) {
    FontBuilder builder;
    builder.setUnitsPerEm(2048).setLine(1000, -3, 90).setStyle(true, true).setFixedPitch(true);
    const OpenedFont font(builder.build());
    EXPECT_EQ(font->units_per_EM, 2048);
    EXPECT_EQ(font->ascender, 1000);
    EXPECT_EQ(font->descender, -3);
    EXPECT_EQ(font->height, 1093);
    EXPECT_EQ(font->style_flags, FT_STYLE_FLAG_BOLD | FT_STYLE_FLAG_ITALIC);
    EXPECT_STREQ(font->style_name, "Bold Italic");
    EXPECT_TRUE(FT_IS_FIXED_WIDTH(font.get()));
}

TEST(FontBuilder, WritesOutlinesAndAdvances) {
    FontBuilder builder;
    builder.setNotdef(makeBoxGlyph(321, 0, 0, 10, 10));
    const unsigned int box = builder.addGlyph(makeBoxGlyph(600, 100, -50, 500, 700));
    const unsigned int curve = builder.addGlyph({400, {{{0, 0}, {50, 300, false}, {100, 0}}}, {}});
    const unsigned int space = builder.addGlyph({250, {}, {}});
    const OpenedFont font(builder.build());

    EXPECT_EQ(std::vector<unsigned int>({box, curve, space}), std::vector<unsigned int>({1, 2, 3}));
    EXPECT_THAT(loadPoints(font.get(), box),
                ElementsAre(Pair(100, -50), Pair(100, 700), Pair(500, 700), Pair(500, -50)));
    EXPECT_THAT(loadPoints(font.get(), curve), ElementsAre(Pair(0, 0), Pair(50, 300), Pair(100, 0)));
    EXPECT_EQ(font->glyph->outline.tags[1] & 1, 0);
    EXPECT_THAT(loadPoints(font.get(), space), ElementsAre());
    const std::vector<std::pair<unsigned int, long>> advances = {
        {0, 321}, {box, 600}, {curve, 400}, {space, 250}};
    for (const auto& [glyph, expected] : advances) {
        FT_Fixed advance = 0;
        EXPECT_EQ(FT_Get_Advance(font.get(), glyph, FT_LOAD_NO_SCALE, &advance), 0);
        EXPECT_EQ(advance, expected);
    }
}

TEST(FontBuilder, MapsUnicodeInEveryPlane) {
    FontBuilder builder;
    const unsigned int first = builder.addGlyphs(5, makeBoxGlyph(600, 0, 0, 100, 100));
    builder.map('A', first)
        .map('B', first + 1)
        .map('Z', first)
        .map(0xFFFF, first + 2)
        .map(0x1F600, first + 3);
    const OpenedFont font(builder.build());
    EXPECT_EQ(font->num_charmaps, 2);
    ASSERT_EQ(FT_Select_Charmap(font.get(), FT_ENCODING_UNICODE), 0);
    EXPECT_EQ(font->charmap->encoding_id, 10);
    EXPECT_THAT(listCharacters(font.get()),
                ElementsAre(Pair('A', 1), Pair('B', 2), Pair('Z', 1), Pair(0xFFFF, 3), Pair(0x1F600, 4)));
    ASSERT_EQ(FT_Set_Charmap(font.get(), font->charmaps[0]), 0);
    EXPECT_EQ(font->charmap->encoding_id, 1);
    EXPECT_EQ(FT_Get_Char_Index(font.get(), 'Z'), 1U);
    EXPECT_EQ(FT_Get_Char_Index(font.get(), 0x1F600), 0U);
}

TEST(FontBuilder, WritesSeveralKindsOfCharMapsAtOnce) {
    FontBuilder builder("Wingdings");
    builder.addGlyphs(3, makeBoxGlyph(600, 0, 0, 100, 100));
    builder.map(CharMapKind::MacRoman, 0x41, 1).map(CharMapKind::MacRoman, 0xE0, 2);
    builder.map(CharMapKind::Symbol, 0xF041, 2).map('x', 3);
    const OpenedFont font(builder.build());
    EXPECT_EQ(font->num_charmaps, 3);
    EXPECT_STREQ(font->family_name, "Wingdings");
    ASSERT_EQ(FT_Select_Charmap(font.get(), FT_ENCODING_MS_SYMBOL), 0);
    EXPECT_THAT(listCharacters(font.get()), ElementsAre(Pair(0xF041, 2)));
    ASSERT_EQ(FT_Select_Charmap(font.get(), FT_ENCODING_APPLE_ROMAN), 0);
    EXPECT_THAT(listCharacters(font.get()), ElementsAre(Pair(0x41, 1), Pair(0xE0, 2)));
    ASSERT_EQ(FT_Select_Charmap(font.get(), FT_ENCODING_UNICODE), 0);
    EXPECT_THAT(listCharacters(font.get()), ElementsAre(Pair('x', 3)));
}

TEST(FontBuilder, WritesCharMapsThatMapNothing) {
    for (const CharMapKind kind :
         {CharMapKind::MacRoman, CharMapKind::Symbol, CharMapKind::Unicode, CharMapKind::UnicodeFull}) {
        const OpenedFont font(FontBuilder().addCharMap(kind).build());
        ASSERT_EQ(font->num_charmaps, 1);
        ASSERT_EQ(FT_Set_Charmap(font.get(), font->charmaps[0]), 0);
        EXPECT_THAT(listCharacters(font.get()), ElementsAre());
    }
}

TEST(FontBuilder, LeavesNoCharMapCurrentIfFreeTypePrefersNone) {
    FontBuilder builder;
    builder.addGlyph({});
    builder.map(CharMapKind::MacRoman, 'A', 1);
    const OpenedFont font(builder.build());
    EXPECT_EQ(font->num_charmaps, 1);
    EXPECT_EQ(font->charmap, nullptr);
}

TEST(FontBuilder, WritesEveryVersionOfTheOs2Table) {
    for (unsigned int version = 0; version <= 4; ++version) {
        Os2Table os2;
        os2.version = version;
        os2.weightClass = 650;
        os2.selection = 0x21;
        os2.strikeoutPosition = 260;
        os2.strikeoutSize = -7;
        os2.capHeight = 690;
        const OpenedFont font(FontBuilder().setOs2(os2).build());
        const auto* const table = static_cast<const TT_OS2*>(FT_Get_Sfnt_Table(font.get(), FT_SFNT_OS2));
        ASSERT_NE(table, nullptr);
        EXPECT_EQ(table->version, version);
        EXPECT_EQ(table->usWeightClass, 650);
        EXPECT_EQ(table->fsSelection, 0x21);
        EXPECT_EQ(table->yStrikeoutPosition, 260);
        EXPECT_EQ(table->yStrikeoutSize, -7);
        EXPECT_EQ(table->sCapHeight, version >= 2 ? 690 : 0);
        EXPECT_EQ(font->style_flags, FT_STYLE_FLAG_BOLD | FT_STYLE_FLAG_ITALIC);
    }
}

TEST(FontBuilder, CanOmitTables) {
    const OpenedFont plain(FontBuilder().setOs2(std::nullopt).setStyle(true, false).build());
    EXPECT_EQ(FT_Get_Sfnt_Table(plain.get(), FT_SFNT_OS2), nullptr);
    EXPECT_EQ(plain->style_flags, FT_STYLE_FLAG_BOLD);
    const OpenedFont nameless(FontBuilder().omitTable("name").build());
    EXPECT_EQ(nameless->family_name, nullptr);
    EXPECT_THROW(OpenedFont(FontBuilder().omitTable("head").build()), FontLoaders::FreeTypeException);
}

TEST(FontBuilder, AddsRawTables) {
    const Bytes program = {0xB0, 0x01, 0x21}; // PUSHB[1] 1, POP
    const OpenedFont font(FontBuilder().setTable("prep", program).build());
    FT_ULong size = 0;
    ASSERT_EQ(FT_Load_Sfnt_Table(font.get(), FT_MAKE_TAG('p', 'r', 'e', 'p'), 0, nullptr, &size), 0);
    Bytes read(size);
    ASSERT_EQ(FT_Load_Sfnt_Table(font.get(), FT_MAKE_TAG('p', 'r', 'e', 'p'), 0, read.data(), &size), 0);
    EXPECT_EQ(read, program);
}

TEST(FontBuilder, WritesLocalizedNames) {
    const OpenedFont font(FontBuilder("Plain").addName({0x411, 1, "\xE6\x98\x8E\xF0\x9F\x98\x80"}).build());
    bool isFound = false;
    for (FT_UInt i = 0; i < FT_Get_Sfnt_Name_Count(font.get()); ++i) {
        FT_SfntName name;
        ASSERT_EQ(FT_Get_Sfnt_Name(font.get(), i, &name), 0);
        if (name.language_id == 0x411) {
            isFound = true;
            EXPECT_EQ(Bytes(name.string, name.string + name.string_len),
                      (Bytes{0x66, 0x0E, 0xD8, 0x3D, 0xDE, 0x00}));
        }
    }
    EXPECT_TRUE(isFound);
    EXPECT_STREQ(font->family_name, "Plain");
}

std::uint32_t sumWords(const Bytes& file) {
    std::uint32_t sum = 0;
    for (std::size_t i = 0; i < file.size(); i += 4) {
        sum += std::uint32_t(file[i]) << 24 | std::uint32_t(file[i + 1]) << 16 |
               std::uint32_t(file[i + 2]) << 8 | file[i + 3];
    }
    return sum;
}

TEST(FontBuilder, AddsUpToTheChecksumOfAFontFile) {
    FontBuilder builder("Odd Length");
    builder.map('A', builder.addGlyph(makeBoxGlyph(600, 1, 2, 3, 4))).setTable("prep", {0xB0, 0x01, 0x21});
    const Bytes file = builder.build();
    ASSERT_EQ(file.size() % 4, 0U);
    EXPECT_EQ(sumWords(file), 0xB1B0AFBAU);
}

TEST(FontBuilder, BuildsACollection) {
    FontBuilder second("Second");
    second.map('B', second.addGlyph(makeBoxGlyph(700, 0, 0, 1, 1)));
    const Bytes file = buildCollection({FontBuilder("First"), second});
    const FontLoaders::FTLibraryPtr library = FontLoaders::createFreeTypeLibrary();
    for (const auto& [index, family] : {std::make_pair(0L, "First"), std::make_pair(1L, "Second")}) {
        FT_Face face = nullptr;
        ASSERT_EQ(
            FT_New_Memory_Face(library.get(), file.data(), static_cast<FT_Long>(file.size()), index, &face),
            0);
        EXPECT_EQ(face->num_faces, 2);
        EXPECT_STREQ(face->family_name, family);
        EXPECT_EQ(face->num_glyphs, index + 1);
        EXPECT_EQ(FT_Get_Char_Index(face, 'B'), static_cast<FT_UInt>(index));
        FT_Done_Face(face);
    }
}

TEST(FontBuilder, RendersABoxToFullCoverage) {
    FontBuilder builder;
    const unsigned int box = builder.addGlyph(makeBoxGlyph(600, 0, 0, 500, 700));
    const OpenedFont font(builder.build());
    ASSERT_EQ(FT_Set_Pixel_Sizes(font.get(), 0, 10), 0);
    ASSERT_EQ(FT_Load_Glyph(font.get(), box, FT_LOAD_RENDER | FT_LOAD_NO_HINTING), 0);
    const FT_Bitmap& bitmap = font->glyph->bitmap;
    EXPECT_EQ(bitmap.width, 5U);
    EXPECT_EQ(bitmap.rows, 7U);
    for (unsigned int row = 0; row < bitmap.rows; ++row) {
        const unsigned char* const pixels = bitmap.buffer + static_cast<int>(row) * bitmap.pitch;
        EXPECT_EQ(Bytes(pixels, pixels + bitmap.width), Bytes(5, 255));
    }
}

} // namespace
} // namespace Vell::Testing
