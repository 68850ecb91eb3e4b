#include "drawing/TextBlock.h"

#include "Errors.h"

#include <apps/ToolFonts.h>
#include <support/BdfFont.h>

#include <gtest/gtest.h>

namespace Vell::Tool {

namespace {

using Testing::makeTestFactory;
using Testing::makeTestFont;

TEST(TextBlock, PutsBaseLinesALineHeightApart) {
    const FactoryPtr factory = makeTestFactory();
    const TextBlock block = layOutBlock(makeTestFont(factory), {"A", "AAA", ""});
    ASSERT_EQ(block.lines.size(), 3U);
    EXPECT_FLOAT_EQ(block.lines[0].baseLine, 8.0F);
    EXPECT_FLOAT_EQ(block.lines[1].baseLine, 18.0F);
    EXPECT_FLOAT_EQ(block.lines[2].baseLine, 28.0F);
    EXPECT_FLOAT_EQ(block.height, 30.0F);
    EXPECT_FLOAT_EQ(block.right, 18.0F);
    EXPECT_FLOAT_EQ(block.left, 0.0F);
}

TEST(TextBlock, MakesRoomForTallerFallbackFonts) {
    const FactoryPtr factory = makeTestFactory();
    const TextBlock block = layOutBlock(makeTestFont(factory), {"Aα", "A"});
    EXPECT_FLOAT_EQ(block.lines[0].baseLine, 11.0F);
    EXPECT_FLOAT_EQ(block.lines[1].baseLine, 14.0F + 8.0F);
    EXPECT_FLOAT_EQ(block.right, 15.0F);
}

TEST(TextBlock, MovesToTheNextOfTabStopsEightSpacesApart) {
    const FactoryPtr factory = makeTestFactory();
    const TextBlock block = layOutBlock(makeTestFont(factory), {"\tA\t\tAAAA\tA"});
    const auto& segments = block.lines[0].segments;
    ASSERT_EQ(segments.size(), 3U);
    EXPECT_FLOAT_EQ(segments[0].x, 20.0F);
    EXPECT_FLOAT_EQ(segments[1].x, 60.0F);
    EXPECT_EQ(segments[1].text, "AAAA");
    EXPECT_FLOAT_EQ(segments[2].x, 100.0F);
    EXPECT_FLOAT_EQ(block.right, 106.0F);
}

TEST(TextBlock, LeavesTabsOutWhereTheirStopsHaveNoDistance) {
    const FactoryPtr factory = makeTestFactory();
    const TextBlock block = layOutBlock(makeTestFont(factory, 10.0F, -2.5F), {"A\tA"});
    EXPECT_FLOAT_EQ(block.lines[0].segments[1].x, 3.5F);
}

TEST(TextBlock, ReachesToTheLeftUnderNegativeLetterSpacing) {
    const FactoryPtr factory = makeTestFactory();
    const TextBlock block = layOutBlock(makeTestFont(factory, 10.0F, -10.0F), {"AA"});
    EXPECT_FLOAT_EQ(block.left, -8.0F);
    EXPECT_FLOAT_EQ(block.right, 0.0F);
}

TEST(TextBlock, RefusesAFontWithoutAnEm) {
    using namespace Vell::Testing;
    const auto loader = makeNNPtr<CountingLoader>();
    BdfFont bitmaps;
    bitmaps.glyphs = {{'A', 5, 1, 0, 0, {Bytes{0x80}}}};
    loader->setFont("Bitmaps", false, false, bitmaps.build());
    const FactoryPtr factory = FontEngine::FontFactory::create(loader, "Bitmaps");
    const TextFont font = makeTextFont(factory, {"Bitmaps", false, false, 10.0F, 0.0F});
    EXPECT_THROW(layOutBlock(font, {"A"}), ToolError);
}

} // namespace

} // namespace Vell::Tool
