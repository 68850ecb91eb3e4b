#include "fonts/FaceFacts.h"

#include "fonts/FontSource.h"

#include <apps/ToolFonts.h>
#include <support/BdfFont.h>

#include <gtest/gtest.h>

namespace Vell::Tool {

namespace {

using Vell::Testing::FontBuilder;
using Vell::Testing::Os2Table;

bool isTold(const Vell::Testing::Bytes& file) {
    const Testing::TemporaryFolder folder;
    Testing::writeBytes(folder.getPath("font"), std::string(file.begin(), file.end()));
    const FontSource source(folder.getPath("font"));
    return hasCapHeight(*source.makeFont(false, false, 1.0F).font->getFace());
}

bool isTold(const std::optional<Os2Table>& os2) {
    FontBuilder font;
    font.map('A', font.addGlyph(Vell::Testing::makeBoxGlyph(600, 100, 0, 500, 700)));
    return isTold(font.setOs2(os2).build());
}

TEST(FaceFacts, CapHeightIsInTheFileSinceVersionTwo) {
    for (unsigned int version = 0; version <= 4; ++version) {
        Os2Table os2;
        os2.version = version;
        EXPECT_EQ(isTold(os2), version >= 2) << version;
    }
}

TEST(FaceFacts, CapHeightIsNotThereWithoutATable) {
    EXPECT_FALSE(isTold(std::nullopt));
    Vell::Testing::BdfFont bitmaps;
    bitmaps.glyphs.push_back({'A', 6, 5, 0, 0, {{0xF8}, {0x88}}});
    EXPECT_FALSE(isTold(bitmaps.build()));
}

TEST(FaceFacts, CapHeightIsNotThereWhereItIsZero) {
    Os2Table os2;
    os2.capHeight = 0;
    EXPECT_FALSE(isTold(os2));
}

} // namespace

} // namespace Vell::Tool
