#include <support/FontBuilder.h>
#include <support/OpenedFont.h>

#include <FontLoaders/Public/CompositeGlyphs.h>
#include <FontLoaders/Public/Exceptions.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>

namespace Vell::FontLoaders {
namespace {

using Testing::Bytes;
using Testing::ByteWriter;
using Testing::FontBuilder;
using Testing::FontComponent;
using Testing::FontGlyph;
using Testing::OpenedFont;

FontGlyph makeComposite(std::vector<FontComponent> components) {
    return {500, {}, {}, std::move(components)};
}

/// Glyph 1 is a box, each further one contains the one before it, up to `length` glyphs in the last one.
FontBuilder makeChain(unsigned int length) {
    FontBuilder font;
    font.addGlyph(Testing::makeBoxGlyph(500, 0, 0, 500, 500));
    for (unsigned int glyph = 2; glyph <= length; ++glyph) {
        font.addGlyph(makeComposite({{glyph - 1}}));
    }
    return font;
}

/// Rewrites the glyphs' offsets in two bytes each.
void shortenOffsets(FontBuilder& font) {
    const auto tables = font.buildTables();
    const Bytes& loca = tables.at("loca");
    ByteWriter writer;
    for (std::size_t i = 0; i + 4 <= loca.size(); i += 4) {
        writer.addU16((loca[i + 1] * 65536U + loca[i + 2] * 256U + loca[i + 3]) / 2);
    }
    font.setTable("loca", writer.getBytes());
    Bytes head = tables.at("head");
    head[51] = 0; // indexToLocFormat
    font.setTable("head", head);
}

/// A font whose glyph 2 has a first component with these flags and these many bytes behind its index, and
/// then itself.
Bytes makeRecords(unsigned int flags, std::size_t size) {
    FontBuilder font = makeChain(2);
    ByteWriter glyf;
    glyf.addI16(-1);
    glyf.addZeros(8);
    glyf.addU16(flags | 0x0020U);
    glyf.addU16(1);
    glyf.addZeros(size);
    glyf.addU16(0x0001);
    glyf.addU16(2);
    glyf.addZeros(4);
    const std::size_t end = glyf.size();
    ByteWriter loca;
    for (const std::size_t offset : {end, end, std::size_t(0), end}) {
        loca.addU32(static_cast<std::uint32_t>(offset));
    }
    return font.setTable("glyf", glyf.getBytes()).setTable("loca", loca.getBytes()).build();
}

/// Where a table begins in a file.
std::uint32_t findTable(const Bytes& file, const std::string& tag) {
    const auto entry = std::search(file.begin(), file.end(), tag.begin(), tag.end());
    return entry[8] * 0x1000000U + entry[9] * 0x10000U + entry[10] * 0x100U + entry[11];
}

/// A font whose glyph 1 lies in its last bytes, behind all tables that a font needs, and contains itself.
Bytes makeFontEndingInAGlyph() {
    ByteWriter glyph;
    glyph.addI16(-1);
    glyph.addZeros(8);
    glyph.addU16(0);
    glyph.addU16(1);
    glyph.addZeros(2);
    FontBuilder font = makeChain(1);
    font.setTable("zzzz", glyph.getBytes());
    const Bytes draft = font.build();
    ByteWriter loca;
    loca.addU32(0);
    loca.addU32(findTable(draft, "zzzz") - findTable(draft, "glyf"));
    loca.addU32(0);
    return font.setTable("loca", loca.getBytes()).build();
}

} // namespace

TEST(CompositeGlyphs, AreBoundedUpToTheDocumentedNumberOfParts) {
    const OpenedFont font(makeChain(maxGlyphParts + 1).build());
    EXPECT_TRUE(isBoundedGlyph(font.get(), 0));
    EXPECT_TRUE(isBoundedGlyph(font.get(), 1));
    EXPECT_TRUE(isBoundedGlyph(font.get(), maxGlyphParts));
    EXPECT_FALSE(isBoundedGlyph(font.get(), maxGlyphParts + 1));
    EXPECT_FALSE(hasBoundedGlyphs(font.get()));
}

TEST(CompositeGlyphs, AreAllBoundedInAnOrdinaryFont) {
    const OpenedFont font(makeChain(maxGlyphParts).build());
    EXPECT_TRUE(hasBoundedGlyphs(font.get()));
    EXPECT_TRUE(hasBoundedGlyphs(font.get())) << "the second answer is the same";
}

TEST(CompositeGlyphs, AreNotBoundedWhenTheyBranchWithoutEnd) {
    FontBuilder builder;
    builder.addGlyph(FontGlyph());
    for (unsigned int glyph = 2; glyph < 50; ++glyph) {
        builder.addGlyph(makeComposite({{glyph - 1}, {glyph - 1}}));
    }
    const OpenedFont font(builder.build());
    EXPECT_TRUE(isBoundedGlyph(font.get(), 8)) << "255 parts";
    EXPECT_FALSE(isBoundedGlyph(font.get(), 9)) << "511 parts";
    EXPECT_FALSE(isBoundedGlyph(font.get(), 49));
}

TEST(CompositeGlyphs, AreNotBoundedInACircle) {
    FontBuilder builder = makeChain(1);
    builder.addGlyph(makeComposite({{1}, {3}}));
    builder.addGlyph(makeComposite({{2}}));
    const OpenedFont font(builder.build());
    EXPECT_TRUE(isBoundedGlyph(font.get(), 1));
    EXPECT_FALSE(isBoundedGlyph(font.get(), 2));
    EXPECT_FALSE(isBoundedGlyph(font.get(), 3));
}

TEST(CompositeGlyphs, MayContainEmptyGlyphs) {
    FontBuilder builder;
    builder.addGlyph(FontGlyph());
    builder.addGlyph(makeComposite({{1}})); // starts where the empty one does
    const OpenedFont font(builder.build());
    EXPECT_TRUE(isBoundedGlyph(font.get(), 2));
    EXPECT_TRUE(hasBoundedGlyphs(font.get()));
}

TEST(CompositeGlyphs, OfFontsInUseAreBounded) {
    for (const auto& entry : std::filesystem::directory_iterator("/usr/share/fonts/truetype/dejavu")) {
        Bytes bytes(entry.file_size());
        std::ifstream(entry.path(), std::ios::binary)
            .read(reinterpret_cast<char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
        const OpenedFont font(bytes);
        EXPECT_TRUE(hasBoundedGlyphs(font.get())) << entry.path();
    }
}

TEST(CompositeGlyphs, AreSeenWithShortOffsets) {
    FontBuilder builder = makeChain(maxGlyphParts + 1);
    shortenOffsets(builder);
    const OpenedFont font(builder.build());
    EXPECT_TRUE(isBoundedGlyph(font.get(), maxGlyphParts));
    EXPECT_FALSE(isBoundedGlyph(font.get(), maxGlyphParts + 1));
}

TEST(CompositeGlyphs, AreSeenInACollection) {
    const OpenedFont font(Testing::buildCollection({makeChain(maxGlyphParts + 1), FontBuilder()}));
    EXPECT_TRUE(isBoundedGlyph(font.get(), maxGlyphParts));
    EXPECT_FALSE(isBoundedGlyph(font.get(), maxGlyphParts + 1));
}

TEST(CompositeGlyphs, AreSeenBehindComponentsOfEverySize) {
    constexpr unsigned int wordOffsets = 0x0001;
    constexpr unsigned int scale = 0x0008;
    constexpr unsigned int twoScales = 0x0040;
    constexpr unsigned int matrix = 0x0080;
    const std::pair<unsigned int, std::size_t> records[] = {{0, 2},         {wordOffsets, 4},
                                                            {scale, 2 + 2}, {wordOffsets | scale, 4 + 2},
                                                            {twoScales, 6}, {wordOffsets | twoScales, 8},
                                                            {matrix, 10},   {wordOffsets | matrix, 12}};
    for (const auto& [flags, size] : records) {
        const OpenedFont font(makeRecords(flags, size));
        EXPECT_TRUE(isBoundedGlyph(font.get(), 1)) << flags;
        EXPECT_FALSE(isBoundedGlyph(font.get(), 2)) << flags;
    }
}

TEST(CompositeGlyphs, EndWhereTheFileEnds) {
    Bytes file = makeFontEndingInAGlyph();
    EXPECT_FALSE(isBoundedGlyph(OpenedFont(file).get(), 1)) << "its last record names itself";
    file.pop_back();
    EXPECT_TRUE(isBoundedGlyph(OpenedFont(file).get(), 1)) << "the record is not whole";
    file.resize(file.size() - 6);
    EXPECT_TRUE(isBoundedGlyph(OpenedFont(file).get(), 1)) << "nor is the header before it";
}

TEST(CompositeGlyphs, AreNoneBeyondTheGlyphsOfTheFont) {
    const OpenedFont font(makeChain(2).build());
    EXPECT_TRUE(isBoundedGlyph(font.get(), 65535));
}

TEST(CompositeGlyphs, AreBoundedInFacesOfOtherOrigin) {
    const Bytes file = makeChain(maxGlyphParts + 1).build();
    const FTLibraryPtr library = createFreeTypeLibrary();
    FT_Face face = nullptr;
    ASSERT_EQ(FT_New_Memory_Face(library.get(), file.data(), static_cast<FT_Long>(file.size()), 0, &face), 0);
    EXPECT_TRUE(isBoundedGlyph(face, maxGlyphParts + 1));
    EXPECT_TRUE(hasBoundedGlyphs(face));
    FT_Done_Face(face);
}

} // namespace Vell::FontLoaders
