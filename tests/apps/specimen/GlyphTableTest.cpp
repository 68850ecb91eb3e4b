#include "specimen/GlyphTable.h"

#include <apps/ColorFont.h>
#include <apps/Pixels.h>
#include <apps/ToolFonts.h>

#include <gmock/gmock.h>

#include <utility>

namespace Vell::Tool {

namespace {

using namespace Testing;
using Vell::Testing::FontBuilder;
using Vell::Testing::makeBoxGlyph;

constexpr std::size_t noLimit = 100000;

/// A font with a solid letter of 0.6 em for each code.
class GlyphTableOf {
public:
    explicit GlyphTableOf(const FontBuilder& font, unsigned short palette = 0, std::size_t limit = noLimit) {
        const TemporaryFolder folder;
        writeFont(folder.getPath("font.ttf"), font);
        FontSource source(folder.getPath("font.ttf"));
        source.setPalette(palette);
        table = makeGlyphTable(
            source, limit, [this](std::size_t done, std::size_t all) { progress.emplace_back(done, all); });
    }

    explicit GlyphTableOf(const std::vector<unsigned int>& codes, std::size_t limit = noLimit)
        : GlyphTableOf(makeFont(codes), 0, limit) {}

    static FontBuilder makeFont(const std::vector<unsigned int>& codes) {
        FontBuilder font("Test Sans");
        font.addCharMap(Vell::Testing::CharMapKind::Unicode);
        for (const unsigned int code : codes) {
            font.map(code, code == ' ' ? font.addGlyph({250, {}, {}})
                                       : font.addGlyph(makeBoxGlyph(600, 100, 0, 500, 700)));
        }
        return font;
    }

    /// The middle of a cell.
    std::uint32_t readCell(std::size_t sheet, int column, int row) const {
        const auto surface = decodePng(readDataUri(table.sheets[sheet]));
        const int side = cairo_image_surface_get_width(surface.get()) / GlyphTable::columns;
        return readPixel(surface.get(), side * column + side / 2, side * row + side / 2) & 0xFFFFFFU;
    }

    GlyphTable table;
    std::vector<std::pair<std::size_t, std::size_t>> progress;
};

std::vector<unsigned int> makeRange(unsigned int first, unsigned int count) {
    std::vector<unsigned int> codes;
    for (unsigned int i = 0; i < count; ++i) {
        codes.push_back(first + i);
    }
    return codes;
}

TEST(GlyphTable, ListsRangesBlocksAndEntriesInTheOrderOfCodes) {
    const GlyphTable table = GlyphTableOf({'B', 'A', ' ', 0x4E2D, 0x2FE0}).table;
    EXPECT_EQ(printJson({table.ranges, table.blocks, table.entries, {}}),
              "{\"cell\":40,\"columns\":32,\"cellsInSheet\":512,\"isInColor\":false,\n"
              "\"ranges\":[[32,32],[65,66],[12256,12256],[20013,20013]],\n"
              "\"blocks\":[[0,127,\"Basic Latin\"],[12256,12271,\"No block\"],"
              "[19968,40959,\"CJK Unified Ideographs\"]],\n"
              "\"entries\":[3,250,2,600,1,600,5,600,4,600],\n"
              "\"sheets\":[]}");
    EXPECT_EQ(countCharacters(table.ranges), 5U);
}

TEST(GlyphTable, DrawsEachGlyphInItsCell) {
    const GlyphTableOf table(std::vector<unsigned int>{' ', 'A', 'B'});
    ASSERT_EQ(table.table.sheets.size(), 1U);
    EXPECT_EQ(table.readCell(0, 0, 0), 0xFFFFFFU); // the space
    EXPECT_EQ(table.readCell(0, 1, 0), 0x000000U);
    EXPECT_EQ(table.readCell(0, 2, 0), 0x000000U);
    EXPECT_EQ(table.readCell(0, 3, 0), 0xFFFFFFU);
}

TEST(GlyphTable, DrawsGlyphsInTheirColours) {
    const GlyphTableOf table(Vell::Testing::makeLayeredFont("Colors"));
    EXPECT_TRUE(table.table.isInColor);
    EXPECT_EQ(table.readCell(0, 0, 0), 0xFF0000U);
    EXPECT_EQ(table.readCell(0, 1, 0), 0x000000U);
    EXPECT_EQ(table.readCell(0, 2, 0), 0xFFFFFFU);
    EXPECT_EQ(GlyphTableOf(Vell::Testing::makeLayeredFont("Colors"), 1).readCell(0, 0, 0), 0x00FF00U);
}

TEST(GlyphTable, ShowsPicturesOfFontsWithoutOutlines) {
    const GlyphTableOf table(Vell::Testing::makePictureFont("Pictures"));
    EXPECT_EQ(table.readCell(0, 0, 0), 0xFF0000U);
    EXPECT_EQ(table.table.entries.at(0).advance, 1000);
}

TEST(GlyphTable, GoesOnInTheNextRowAndInTheNextSheet) {
    const GlyphTableOf table(makeRange(0x4E00, GlyphTable::cellsInSheet + 33));
    ASSERT_EQ(table.table.sheets.size(), 2U);
    EXPECT_EQ(table.readCell(0, 31, 15), 0x000000U);
    EXPECT_EQ(table.readCell(1, 0, 1), 0x000000U);
    EXPECT_EQ(table.readCell(1, 1, 1), 0xFFFFFFU);
    const std::vector<std::pair<std::size_t, std::size_t>> expected{{0, 545}, {512, 545}, {545, 545}};
    EXPECT_EQ(table.progress, expected);
}

TEST(GlyphTable, KeepsTheRangesOfCharactersBeyondTheLimit) {
    const GlyphTable table = GlyphTableOf(makeRange(0x4E00, 20), 7).table;
    EXPECT_EQ(table.entries.size(), 7U);
    EXPECT_EQ(table.sheets.size(), 1U);
    EXPECT_EQ(countCharacters(table.ranges), 20U);
}

TEST(GlyphTable, IsEmptyForAFontWithoutCharacters) {
    const GlyphTable table = GlyphTableOf(std::vector<unsigned int>()).table;
    EXPECT_TRUE(table.ranges.empty());
    EXPECT_TRUE(table.blocks.empty());
    EXPECT_TRUE(table.sheets.empty());
}

} // namespace

} // namespace Vell::Tool
