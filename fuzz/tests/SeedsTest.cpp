#include <fuzz/seeds/Seeds.h>

#include <FontLoaders/FontLoaders.h>
#include <fuzz/support/FontScript.h>
#include <support/OpenedFont.h>
#include <support/TemporaryFolder.h>

#include FT_FONT_FORMATS_H

#include <gmock/gmock.h>

#include <algorithm>
#include <fstream>
#include <memory>
#include <stdexcept>
#include <tuple>

namespace Vell::Fuzz {

namespace {

Bytes getFile(const Seed& seed) {
    return Bytes(seed.bytes.begin() + FontScript::size, seed.bytes.end());
}

Seed find(const std::string& name) {
    for (const auto makeSeeds : {makeWrappedSeeds, makeFormatSeeds, makeColorSeeds, makeVariableSeeds}) {
        for (const Seed& seed : makeSeeds()) {
            if (seed.name == name) {
                return seed;
            }
        }
    }
    throw std::out_of_range(name);
}

/// Name, FreeType's name of the format, number of glyphs.
using Format = std::tuple<const char*, const char*, long>;

class SeedsOfFormats : public testing::TestWithParam<Format> {};

} // namespace

TEST_P(SeedsOfFormats, AreFontsWithInk) {
    const auto& [name, format, glyphCount] = GetParam();
    const Testing::OpenedFont font(getFile(find(name)));
    EXPECT_STREQ(FT_Get_Font_Format(font.get()), format);
    EXPECT_EQ(font->num_glyphs, glyphCount);
    ASSERT_EQ(FT_Set_Pixel_Sizes(font.get(), 0, 8), 0);
    const FT_UInt letter = font->num_charmaps > 0 ? FT_Get_Char_Index(font.get(), 'A') : 1;
    ASSERT_EQ(FT_Load_Glyph(font.get(), letter, FT_LOAD_COLOR | FT_LOAD_RENDER), 0);
    EXPECT_GT(font->glyph->bitmap.width, 0U);
    EXPECT_GT(font->glyph->bitmap.rows, 0U);
}

INSTANTIATE_TEST_SUITE_P(All, SeedsOfFormats,
                         testing::Values(Format("woff-whole", "TrueType", 4), Format("woff2", "TrueType", 4),
                                         Format("woff2-transformed", "TrueType", 4),
                                         Format("type42", "Type 42", 4), Format("pcf", "PCF", 4),
                                         Format("pfr", "PFR", 3), Format("cid", "CID Type 1", 3),
                                         Format("sbix", "TrueType", 3), Format("cbdt", "TrueType", 3),
                                         Format("gvar", "TrueType", 3), Format("cff2", "CFF", 3)),
                         [](const auto& seed) {
                             std::string name = std::get<0>(seed.param);
                             name.erase(std::remove(name.begin(), name.end(), '-'), name.end());
                             return name;
                         });

TEST(SeedsOfColor, HavePictures) {
    for (const char* const name : {"sbix", "cbdt"}) {
        const Testing::OpenedFont font(getFile(find(name)));
        EXPECT_TRUE(FT_HAS_COLOR(font.get())) << name;
    }
}

TEST(SeedsOfVariations, HaveAnAxis) {
    for (const char* const name : {"gvar", "cff2"}) {
        const Testing::OpenedFont font(getFile(find(name)));
        EXPECT_TRUE(FT_HAS_MULTIPLE_MASTERS(font.get())) << name;
    }
}

TEST(SeedsOfFolders, FollowTheirSteering) {
    const Testing::TemporaryFolder folder;
    const Bytes file = {'f', 'o', 'n', 't'};
    std::ofstream(folder.getPath("some.ttf")) << "font";
    const FurtherSeeds seeds = readFurtherSeeds(folder.getPath());
    ASSERT_EQ(seeds.font.size(), 2U);
    EXPECT_EQ(getFile(seeds.font[0]), file);
    EXPECT_EQ(getFile(seeds.font[1]), file);
    EXPECT_NE(seeds.font[0].bytes, seeds.font[1].bytes);
    ASSERT_EQ(seeds.sfnt.size(), 1U);
    EXPECT_THAT(seeds.sfnt[0].bytes, testing::ElementsAre(0, 'f', 'o', 'n', 't'));
}

TEST(SeedsOfVary, AreVariableFontsWithInstancesButForCff2) {
    for (const Seed& seed : makeVarySeeds()) {
        constexpr std::ptrdiff_t steeringBytes = 6;
        const auto font = std::make_shared<const Bytes>(seed.bytes.begin() + steeringBytes, seed.bytes.end());
        EXPECT_FALSE(FontLoaders::readVariations(font).axes.empty()) << seed.name;
        if (seed.name == "cff2") {
            EXPECT_THROW(FontLoaders::makeFontInstance(font, {}), FontLoaders::FontLoaderException);
        } else {
            EXPECT_NO_THROW(FontLoaders::makeFontInstance(font, {})) << seed.name;
        }
    }
}

} // namespace Vell::Fuzz
