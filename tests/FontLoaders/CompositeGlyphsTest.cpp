#include <support/FontBuilder.h>
#include <support/OpenedFont.h>
#include <support/StackThread.h>

#include <FontLoaders/Public/CompositeGlyphs.h>
#include <FontLoaders/Public/Exceptions.h>

#include <gtest/gtest.h>

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

/// Glyph 1 is a box. Each further glyph contains the previous one, so the last one has `length` glyphs.
FontBuilder makeChain(unsigned int length) {
    FontBuilder font;
    font.addGlyph(Testing::makeBoxGlyph(500, 0, 0, 500, 500));
    for (unsigned int glyph = 2; glyph <= length; ++glyph) {
        font.addGlyph(makeComposite({{glyph - 1}}));
    }
    return font;
}

/// Glyph 1 is a box. Glyph 2 has the given number of parts: itself, and boxes side by side.
FontBuilder makeFlat(unsigned int partCount) {
    FontBuilder font = makeChain(1);
    font.addGlyph(makeComposite(std::vector<FontComponent>(partCount - 1, FontComponent{1})));
    return font;
}

/// Glyph 1 is empty. Each further glyph contains the previous one twice.
FontBuilder makeDoublings(unsigned int count) {
    FontBuilder font;
    font.addGlyph(FontGlyph());
    for (unsigned int glyph = 2; glyph <= count; ++glyph) {
        font.addGlyph(makeComposite({{glyph - 1}, {glyph - 1}}));
    }
    return font;
}

/// Rewrites the offsets of the glyphs in the short format, two bytes each.
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

/// Makes a font whose glyph 2 has a first component with these flags and so many bytes behind its index, and
/// itself as the second component.
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

} // namespace

TEST(CompositeGlyphs, AreBoundedUpToTheDocumentedNumberOfParts) {
    EXPECT_TRUE(isBoundedGlyph(OpenedFont(makeFlat(257).build()).get(), 2));
    EXPECT_TRUE(isBoundedGlyph(OpenedFont(makeFlat(maxGlyphParts).build()).get(), 2));
    EXPECT_FALSE(isBoundedGlyph(OpenedFont(makeFlat(maxGlyphParts + 1).build()).get(), 2));
}

TEST(CompositeGlyphs, CountNestedPartsLikeAdjacentParts) {
    const OpenedFont font(makeDoublings(60).build());
    static_assert(maxGlyphParts == 0xFFFF);
    EXPECT_TRUE(isBoundedGlyph(font.get(), 16)) << "2^16 - 1 parts";
    EXPECT_FALSE(isBoundedGlyph(font.get(), 17)) << "2^17 - 1 parts";
    EXPECT_FALSE(isBoundedGlyph(font.get(), 60));
}

TEST(CompositeGlyphs, MayNestAsDeepAsTheStackOfTheThreadAllows) {
    constexpr unsigned int length = 60'000;
    const OpenedFont font(makeChain(length).build());
    const auto isBounded = [&](unsigned int glyph) { return isBoundedGlyph(font.get(), glyph); };
    Testing::runOnStack(64 << 10, [&] {
        EXPECT_TRUE(isBounded(1));
        EXPECT_TRUE(isBounded(32)) << "fits on any stack";
        EXPECT_FALSE(isBounded(33));
    });
    Testing::runOnStack(256 << 10, [&] {
        EXPECT_TRUE(isBounded(200));
        EXPECT_FALSE(isBounded(300));
    });
    Testing::runOnStack(64 << 20, [&] { EXPECT_TRUE(isBounded(length)); });
}

TEST(CompositeGlyphs, LeaveFreeTypeRoomOnTheStackIfTheyAreBounded) {
    const OpenedFont font(makeChain(60'000).build());
    ASSERT_EQ(FT_Set_Char_Size(font.get(), 0, 12 * 64, 72, 0), 0);
    for (const std::size_t kilobytes : {128U, 256U, 1024U, 8192U}) {
        Testing::runOnStack(kilobytes << 10, [&] {
            unsigned int bounded = 1;
            for (unsigned int step = 32'768; step > 0; step /= 2) {
                bounded += isBoundedGlyph(font.get(), bounded + step) ? step : 0;
            }
            EXPECT_GT(bounded, kilobytes / 2);
            EXPECT_EQ(FT_Load_Glyph(font.get(), bounded, FT_LOAD_FORCE_AUTOHINT), 0) << bounded;
        });
    }
}

TEST(CompositeGlyphs, AreUnboundedInACycle) {
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
    builder.addGlyph(makeComposite({{1}})); // has the offset of the empty glyph
    const OpenedFont font(builder.build());
    EXPECT_TRUE(isBoundedGlyph(font.get(), 2));
}

TEST(CompositeGlyphs, AreBoundedInInstalledFonts) {
    for (const auto& entry : std::filesystem::directory_iterator("/usr/share/fonts/truetype/dejavu")) {
        Bytes bytes(entry.file_size());
        std::ifstream(entry.path(), std::ios::binary)
            .read(reinterpret_cast<char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
        const OpenedFont font(bytes);
        for (FT_Long glyph = 0; glyph < font->num_glyphs; ++glyph) {
            EXPECT_TRUE(isBoundedGlyph(font.get(), static_cast<unsigned int>(glyph))) << entry.path();
        }
        EXPECT_TRUE(hasBoundedGlyphs(font.get())) << entry.path();
    }
}

TEST(CompositeGlyphs, AreFoundWithShortOffsets) {
    FontBuilder builder = makeDoublings(17);
    shortenOffsets(builder);
    const OpenedFont font(builder.build());
    EXPECT_TRUE(isBoundedGlyph(font.get(), 16));
    EXPECT_FALSE(isBoundedGlyph(font.get(), 17));
}

TEST(CompositeGlyphs, AreFoundInACollection) {
    const OpenedFont font(Testing::buildCollection({makeDoublings(17), FontBuilder()}));
    EXPECT_TRUE(isBoundedGlyph(font.get(), 16));
    EXPECT_FALSE(isBoundedGlyph(font.get(), 17));
}

TEST(CompositeGlyphs, AreFoundAfterComponentsOfEverySize) {
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

TEST(CompositeGlyphs, DoNotExistBeyondTheLastGlyph) {
    const OpenedFont font(makeChain(2).build());
    EXPECT_TRUE(isBoundedGlyph(font.get(), 65535));
}

TEST(CompositeGlyphs, AreNotCheckedInFacesThatTheClientOpened) {
    const Bytes file = makeFlat(maxGlyphParts + 1).build();
    const FTLibraryPtr library = createFreeTypeLibrary();
    FT_Face face = nullptr;
    ASSERT_EQ(FT_New_Memory_Face(library.get(), file.data(), static_cast<FT_Long>(file.size()), 0, &face), 0);
    EXPECT_TRUE(isBoundedGlyph(face, 2));
    EXPECT_TRUE(hasBoundedGlyphs(face));
    FT_Done_Face(face);
}

} // namespace Vell::FontLoaders
