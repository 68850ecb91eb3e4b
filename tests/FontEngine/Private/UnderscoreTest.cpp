#include <FontEngine/Engine.h>
#include <FontEngine/FixedRenderer.h>
#include <FontEngine/GlyphKeyFields.h>

#include <support/OpenedFont.h>
#include <support/spy/FreeTypeSpy.h>

#include <FontEngine/Private/FE_FreeTypeUtilsInternal.h>

#include <gmock/gmock.h>

namespace Vell::FontEngine::Internal {
namespace {

using Testing::Bytes;
using Testing::OpenedFont;

using GlyphPtr = std::shared_ptr<const FT_BitmapGlyphRec_>;

/// An LCD bitmap with different rows, whose middle bytes are 101, 102, ... from the top.
FixedBitmap makeBar(unsigned int rows, unsigned int width, int pitch, int left) {
    FixedBitmap bar = {rows, width, pitch, FT_PIXEL_MODE_LCD, left, 9, {}};
    for (unsigned int row = 0; row < rows; ++row) {
        Bytes bytes(static_cast<std::size_t>(pitch), static_cast<unsigned char>(row + 1));
        bytes[width / 2] = static_cast<unsigned char>(101 + row);
        bar.pixels.insert(bar.pixels.end(), bytes.begin(), bytes.end());
    }
    return bar;
}

GlyphPtr join(const FixedBitmap& bar, bool isLast, unsigned int unicode = '_', bool flipVertically = false) {
    const OpenedFont font(makeTestFont().build());
    EXPECT_EQ(FT_Set_Char_Size(font.get(), 0, 640, 72, 0), 0);
    setFixedRendering(font.get(), bar);
    const KeyFields fields = KeyFields()
                                 .with(&KeyFields::unicode, unicode)
                                 .with(&KeyFields::isLast, isLast)
                                 .with(&KeyFields::mode, FT_RENDER_MODE_LCD);
    return createBitmapGlyph(fields.makeBitmap(), font.face, flipVertically);
}

Bytes getRow(const GlyphPtr& glyph, unsigned int row) {
    const unsigned char* const begin = glyph->bitmap.buffer + static_cast<int>(row) * glyph->bitmap.pitch;
    return Bytes(begin, begin + glyph->bitmap.pitch);
}

/// A row of `filled` bytes of coverage, then zeros up to `pitch`.
Bytes makeRow(unsigned char coverage, std::size_t filled, std::size_t pitch) {
    Bytes row(filled, coverage);
    row.resize(pitch);
    return row;
}

void expectUnchanged(const GlyphPtr& glyph, const FixedBitmap& bar) {
    EXPECT_EQ(glyph->bitmap.width, bar.width);
    EXPECT_EQ(glyph->bitmap.pitch, bar.pitch);
    EXPECT_EQ(glyph->left, bar.left);
    EXPECT_EQ(Bytes(glyph->bitmap.buffer, glyph->bitmap.buffer + bar.pixels.size()), bar.pixels);
}

TEST(Underscore, GrowsByAQuarterToTheRight) {
    const GlyphPtr glyph = join(makeBar(2, 24, 24, 1), false);
    EXPECT_EQ(glyph->bitmap.width, 30U);
    EXPECT_EQ(glyph->bitmap.pitch, 32) << "30, rounded up to words";
    EXPECT_EQ(glyph->left, 1);
    EXPECT_EQ(glyph->top, 9);
    EXPECT_EQ(glyph->bitmap.rows, 2U);
    EXPECT_EQ(getRow(glyph, 0), makeRow(101, 27, 32)) << "the last pixel stays empty";
    EXPECT_EQ(getRow(glyph, 1), makeRow(102, 27, 32));
}

TEST(Underscore, TruncatesTheQuarter) {
    for (const auto& [width, joined] :
         {std::pair(7U, 8U), std::pair(9U, 11U), std::pair(11U, 13U), std::pair(27U, 33U)}) {
        EXPECT_EQ(join(makeBar(1, width, 28, 1), false)->bitmap.width, joined);
    }
}

TEST(Underscore, BeginsNoLaterThanItsOrigin) {
    // The 3 missing pixels are 9 sub-pixels: 12 + 9 = 21, and a quarter of 21 is 5.
    const GlyphPtr glyph = join(makeBar(1, 12, 16, -3), false);
    EXPECT_EQ(glyph->left, 0);
    EXPECT_EQ(glyph->bitmap.width, 26U);
    EXPECT_EQ(glyph->bitmap.pitch, 32) << "16 + 9 + 5 = 30";
    EXPECT_EQ(getRow(glyph, 0), makeRow(101, 24, 32));
}

TEST(Underscore, StaysAtItsOriginIfItBeginsThere) {
    const GlyphPtr glyph = join(makeBar(1, 12, 12, 0), false);
    EXPECT_EQ(glyph->left, 0);
    EXPECT_EQ(glyph->bitmap.width, 15U);
    EXPECT_EQ(glyph->bitmap.pitch, 16);
    EXPECT_EQ(getRow(glyph, 0), makeRow(101, 12, 16));
}

TEST(Underscore, KeepsItsPlaceAsTheLastOneButIsEvenedOut) {
    const GlyphPtr glyph = join(makeBar(3, 12, 13, -3), true);
    EXPECT_EQ(glyph->left, -3);
    EXPECT_EQ(glyph->bitmap.width, 12U);
    EXPECT_EQ(glyph->bitmap.pitch, 16) << "13, rounded up to words";
    for (unsigned int row = 0; row < 3; ++row) {
        EXPECT_EQ(getRow(glyph, row), makeRow(static_cast<unsigned char>(101 + row), 9, 16));
    }
}

TEST(Underscore, IsFilledInWholePixelsUpToTheWidthMinus3) {
    // Fills at positions 0, 3, ... below width - 3: at 0 and 3 for widths 7, 8 and 9, and also at 6 for 10.
    EXPECT_EQ(getRow(join(makeBar(1, 7, 8, 1), true), 0), makeRow(101, 6, 8));
    EXPECT_EQ(getRow(join(makeBar(1, 8, 8, 1), true), 0), makeRow(101, 6, 8));
    EXPECT_EQ(getRow(join(makeBar(1, 9, 12, 1), true), 0), makeRow(101, 6, 12));
    EXPECT_EQ(getRow(join(makeBar(1, 10, 12, 1), true), 0), makeRow(101, 9, 12));
}

TEST(Underscore, UsesTheMiddleByteAfterTheFlip) {
    const GlyphPtr glyph = join(makeBar(3, 12, 12, 1), true, '_', true);
    EXPECT_EQ(glyph->bitmap.buffer[0], 103);
    EXPECT_EQ(glyph->bitmap.buffer[2 * glyph->bitmap.pitch], 101);
}

TEST(Underscore, IsUnchangedUpToTwoPixels) {
    for (const bool isLast : {false, true}) {
        expectUnchanged(join(makeBar(2, 6, 8, -1), isLast), makeBar(2, 6, 8, -1));
        EXPECT_NE(join(makeBar(2, 7, 7, -1), isLast)->bitmap.pitch, 7);
    }
}

TEST(Underscore, IsUnchangedInOtherPixelModes) {
    for (const unsigned char mode : {FT_PIXEL_MODE_GRAY, FT_PIXEL_MODE_LCD_V, FT_PIXEL_MODE_MONO}) {
        FixedBitmap bar = makeBar(2, 12, 12, -1);
        bar.pixelMode = mode;
        expectUnchanged(join(bar, false), bar);
    }
}

TEST(Underscore, IsUnchangedIfItsRowsRunUpwards) {
    FixedBitmap bar = makeBar(2, 12, 12, -1);
    bar.pitch = -12;
    const GlyphPtr glyph = join(bar, false);
    const GlyphPtr hyphen = join(bar, false, '-');
    EXPECT_EQ(glyph->bitmap.pitch, -12);
    EXPECT_EQ(glyph->left, -1);
    EXPECT_EQ(Bytes(glyph->bitmap.buffer, glyph->bitmap.buffer + bar.pixels.size()),
              Bytes(hyphen->bitmap.buffer, hyphen->bitmap.buffer + bar.pixels.size()));
}

TEST(Underscore, IsACharacterNotAGlyph) {
    for (const unsigned int unicode : {unsigned('-'), unsigned('^'), unsigned('`'), 0x203FU, 0xFF3FU}) {
        expectUnchanged(join(makeBar(2, 12, 12, -1), false, unicode), makeBar(2, 12, 12, -1));
    }
}

TEST(Underscore, MayHaveNoRows) {
    const GlyphPtr glyph = join(makeBar(0, 12, 12, -1), false);
    EXPECT_EQ(glyph->bitmap.rows, 0U);
    EXPECT_EQ(glyph->bitmap.width, 18U);
    EXPECT_EQ(glyph->left, 0);
}

TEST(Underscore, IsAllocatedInFreeTypesMemory) {
    // The address sanitizer detects a release by another allocator, and a leak.
    const OpenedFont font(makeTestFont().build());
    ASSERT_EQ(FT_Set_Char_Size(font.get(), 0, 64 * 40, 72, 0), 0);
    const KeyFields fields = KeyFields()
                                 .with(&KeyFields::unicode, '_')
                                 .with(&KeyFields::glyph, TestGlyph::underscore)
                                 .with(&KeyFields::isLast, false)
                                 .with(&KeyFields::mode, FT_RENDER_MODE_LCD);
    const GlyphPtr joined = createBitmapGlyph(fields.makeBitmap(), font.face, false);
    const GlyphPtr last =
        createBitmapGlyph(fields.with(&KeyFields::isLast, true).makeBitmap(), font.face, false);
    EXPECT_EQ(joined->left, 0);
    EXPECT_EQ(joined->bitmap.pixel_mode, FT_PIXEL_MODE_LCD);
    const unsigned int begun = last->bitmap.width - 3 * static_cast<unsigned int>(last->left);
    EXPECT_EQ(joined->bitmap.width, begun + begun / 4);
    EXPECT_GT(joined->bitmap.buffer[0], 0);
}

} // namespace
} // namespace Vell::FontEngine::Internal
