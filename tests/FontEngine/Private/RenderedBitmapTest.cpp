#include <FontEngine/AssertionText.h>
#include <FontEngine/Engine.h>
#include <FontEngine/FixedRenderer.h>
#include <FontEngine/GlyphKeyFields.h>

#include <support/BdfFont.h>
#include <support/ErrorText.h>
#include <support/OpenedFont.h>
#include <support/spy/FreeTypeSpy.h>

#include <FontEngine/Private/FE_FreeTypeUtilsInternal.h>
#include <FontLoaders/Public/Exceptions.h>

#include FT_LCD_FILTER_H
#include FT_OUTLINE_H

#include <gmock/gmock.h>

#include <cstdlib>
#include <tuple>

namespace Vell::FontEngine::Internal {
namespace {

using FontLoaders::FreeTypeException;
using Testing::Bytes;
using testing::ElementsAre;
using Testing::FreeTypeSpy;
using Testing::getErrorText;
using Testing::OpenedFont;

using GlyphPtr = std::shared_ptr<const FT_BitmapGlyphRec_>;

/// Describes everything that is visible of a bitmap.
struct Look {
    int left;
    int top;
    unsigned int rows;
    unsigned int width;
    int pitch;
    int pixelMode;
    Bytes pixels;

    bool operator==(const Look& other) const {
        return std::tie(left, top, rows, width, pitch, pixelMode, pixels) ==
               std::tie(other.left, other.top, other.rows, other.width, other.pitch, other.pixelMode,
                        other.pixels);
    }
};

Look look(const FT_Bitmap& bitmap, int left, int top) {
    const auto size = bitmap.rows * static_cast<std::size_t>(std::abs(bitmap.pitch));
    return {left,
            top,
            bitmap.rows,
            bitmap.width,
            bitmap.pitch,
            bitmap.pixel_mode,
            size == 0 ? Bytes() : Bytes(bitmap.buffer, bitmap.buffer + size)};
}

Look look(const GlyphPtr& glyph) {
    return look(glyph->bitmap, glyph->left, glyph->top);
}

/// A font with curves and with edges between pixels.
Testing::FontBuilder makeRoundFont() {
    Testing::FontBuilder font("Test Sans");
    font.addGlyph({613, {{{37, -113}, {51, 707, false}, {333, 655}, {577, 411, false}, {469, -71}}}, {}});
    font.map('A', 1);
    return font;
}

/// Renders with FreeType alone, step by step, in a library of the test.
Look renderPlainly(const Bytes& file, int size26Dot6, int offset, FT_Render_Mode mode, int flags,
                   bool isBold = false, bool isSlanted = false) {
    FT_Library library = nullptr;
    FT_Face face = nullptr;
    FT_Glyph glyph = nullptr;
    EXPECT_EQ(FT_Init_FreeType(&library), 0);
    EXPECT_EQ(FT_New_Memory_Face(library, file.data(), static_cast<FT_Long>(file.size()), 0, &face), 0);
    FT_Library_SetLcdFilter(library, FT_LCD_FILTER_LIGHT);
    EXPECT_EQ(FT_Set_Char_Size(face, 0, size26Dot6, 72, 0), 0);
    FT_Matrix identity = {0x10000, 0, 0, 0x10000};
    FT_Vector delta = {offset, 0};
    FT_Set_Transform(face, &identity, &delta);
    EXPECT_EQ(FT_Load_Glyph(face, 1, flags), 0);
    if (isBold) {
        FT_Outline_Embolden(&face->glyph->outline,
                            FT_MulFix(face->units_per_EM, face->size->metrics.y_scale) / 24);
    }
    if (isSlanted) {
        const FT_Matrix slant = {0x10000, 0x366A, 0, 0x10000};
        FT_Outline_Transform(&face->glyph->outline, &slant);
    }
    EXPECT_EQ(FT_Get_Glyph(face->glyph, &glyph), 0);
    EXPECT_EQ(FT_Glyph_To_Bitmap(&glyph, mode, nullptr, 1), 0);
    const auto* const bitmap = reinterpret_cast<FT_BitmapGlyph>(glyph);
    Look result = look(bitmap->bitmap, bitmap->left, bitmap->top);
    FT_Done_Glyph(glyph);
    FT_Done_Face(face);
    FT_Done_FreeType(library);
    return result;
}

/// Calls the engine's function on a face of that size.
Look renderByEngine(const Bytes& file, int size26Dot6, const KeyFields& fields) {
    const OpenedFont font(file);
    FT_Library_SetLcdFilter(font.library.get(), FT_LCD_FILTER_LIGHT);
    EXPECT_EQ(FT_Set_Char_Size(font.get(), 0, size26Dot6, 72, 0), 0);
    return look(createBitmapGlyph(fields.makeBitmap(), font.face, false));
}

TEST(RenderedBitmap, HasTheBytesThatFreeTypeRenders) {
    const Bytes file = makeRoundFont().build();
    for (const FT_Render_Mode mode : {FT_RENDER_MODE_NORMAL, FT_RENDER_MODE_LIGHT, FT_RENDER_MODE_MONO,
                                      FT_RENDER_MODE_LCD, FT_RENDER_MODE_LCD_V}) {
        for (const int size : {64, 640, 1120, 64 * 93}) {
            const KeyFields fields = KeyFields().with(&KeyFields::mode, mode);
            const Look expected = renderPlainly(file, size, 0, mode, FT_LOAD_NO_BITMAP);
            EXPECT_GT(expected.pixels.size(), 0U);
            EXPECT_EQ(renderByEngine(file, size, fields), expected) << "mode " << mode << ", size " << size;
        }
    }
}

TEST(RenderedBitmap, IsShiftedByTheOffsetIn64thsOfAPixel) {
    const Bytes file = makeRoundFont().build();
    for (const int offset : {0, 4, 32, 60, 64, 255}) {
        EXPECT_EQ(renderByEngine(file, 640, KeyFields().with(&KeyFields::offset, offset)),
                  renderPlainly(file, 640, offset, FT_RENDER_MODE_NORMAL, FT_LOAD_NO_BITMAP));
    }
    const Bytes box = makeTestFont().build();
    const Look half = renderByEngine(box, 640, KeyFields().with(&KeyFields::offset, 32));
    EXPECT_EQ(renderByEngine(box, 640, KeyFields()).pixels, Bytes(7 * 4, 255));
    EXPECT_EQ(half.width, 5U) << "the box of 1..5 pixels goes to 1.5..5.5";
    EXPECT_EQ(half.pixels[0], 128);
    EXPECT_EQ(half.pixels[1], 255);
}

TEST(RenderedBitmap, IsEmboldenedThenSlanted) {
    const Bytes file = makeRoundFont().build();
    for (const GlyphTransform transform :
         {GlyphTransform::Embolden, GlyphTransform::Slant, GlyphTransform::EmboldenAndSlant}) {
        EXPECT_EQ(renderByEngine(file, 2000, KeyFields().with(&KeyFields::transform, transform)),
                  renderPlainly(file, 2000, 0, FT_RENDER_MODE_NORMAL, FT_LOAD_NO_BITMAP,
                                isEmboldened(transform), isSlanted(transform)));
    }
}

TEST(RenderedBitmap, CallsFreeTypeInThisOrder) {
    const OpenedFont font(makeTestFont().build());
    ASSERT_EQ(FT_Set_Char_Size(font.get(), 0, 640, 72, 0), 0);
    const FreeTypeSpy spy;
    KeyFields fields = KeyFields().with(&KeyFields::transform, GlyphTransform::EmboldenAndSlant);
    fields.offset = 12;
    fields.mode = FT_RENDER_MODE_LCD;
    createBitmapGlyph(fields.makeBitmap(), font.face, false).reset();
    // One 24th of 10 pixels in 26.6 is 640 / 24 = 26.
    EXPECT_THAT(spy.getLines(),
                ElementsAre("FT_Set_Transform 65536 0 0 65536 12 0", "FT_Load_Glyph 1 8",
                            "FT_Outline_Embolden 26", "FT_Outline_Transform 65536 13930 0 65536",
                            "FT_Reference_Library", "FT_Get_Glyph", "FT_Glyph_To_Bitmap 3 null 1",
                            "FT_Done_Glyph", "FT_Done_Library"));
}

TEST(RenderedBitmap, IsUnchangedInABitmapFont) {
    Testing::BdfFont builder;
    builder.glyphs.push_back({'A', 6, 5, 1, -1, {{0xF8}, {0x88}, {0x08}}});
    const OpenedFont font(builder.build());
    ASSERT_EQ(FT_Select_Size(font.get(), 0), 0);
    const KeyFields fields = KeyFields().with(&KeyFields::glyph, FT_Get_Char_Index(font.get(), 'A'));
    const FreeTypeSpy spy;
    const GlyphPtr glyph = createBitmapGlyph(fields.makeBitmap(), font.face, false);
    EXPECT_EQ(spy.countCalls("FT_Glyph_To_Bitmap"), 0U);
    EXPECT_THAT(spy.getLines({"FT_Load_Glyph"}),
                ElementsAre("FT_Load_Glyph " + std::to_string(fields.glyph) + " 0"));
    EXPECT_EQ(glyph->bitmap.pixel_mode, FT_PIXEL_MODE_MONO);
    EXPECT_EQ(glyph->left, 1);
    EXPECT_EQ(glyph->top, 2);
    ASSERT_EQ(glyph->bitmap.rows, 3U);
    EXPECT_EQ(glyph->bitmap.buffer[0], 0xF8);
    EXPECT_EQ(glyph->bitmap.buffer[2 * glyph->bitmap.pitch], 0x08);
}

TEST(RenderedBitmap, IsNotTransformedInABitmapFont) {
    Testing::BdfFont builder;
    builder.glyphs.push_back({'A', 6, 5, 0, 0, {{0xA8}}});
    const OpenedFont font(builder.build());
    ASSERT_EQ(FT_Select_Size(font.get(), 0), 0);
    KeyFields fields = KeyFields().with(&KeyFields::glyph, FT_Get_Char_Index(font.get(), 'A'));
    const Look plain = look(createBitmapGlyph(fields.makeBitmap(), font.face, false));
    fields.transform = GlyphTransform::EmboldenAndSlant;
    EXPECT_EQ(look(createBitmapGlyph(fields.makeBitmap(), font.face, false)), plain);
}

TEST(RenderedBitmap, IsEmptyForASpace) {
    const Bytes file = makeTestFont().build();
    const Look space = renderByEngine(file, 640, KeyFields().with(&KeyFields::glyph, TestGlyph::space));
    EXPECT_EQ(space.rows, 0U);
    EXPECT_EQ(space.width, 0U);
}

TEST(RenderedBitmap, HasItsRowsReversedOnRequest) {
    for (const unsigned int rows : {1U, 2U, 3U, 4U, 7U}) {
        for (const int pitch : {2, -2}) {
            const OpenedFont font(makeTestFont().build());
            ASSERT_EQ(FT_Set_Char_Size(font.get(), 0, 640, 72, 0), 0);
            FixedBitmap bitmap = {rows, 2, pitch, FT_PIXEL_MODE_GRAY, 5, 6, {}};
            for (unsigned int row = 0; row < rows; ++row) {
                bitmap.pixels.insert(bitmap.pixels.end(), 2, static_cast<unsigned char>(row + 1));
            }
            setFixedRendering(font.get(), bitmap);
            const Look plain = look(createBitmapGlyph(KeyFields().makeBitmap(), font.face, false));
            const Look flipped = look(createBitmapGlyph(KeyFields().makeBitmap(), font.face, true));
            EXPECT_EQ(flipped.pixels, Bytes(plain.pixels.rbegin(), plain.pixels.rend())) << rows;
            EXPECT_EQ(flipped.pixels.at(rows / 2 * 2) == plain.pixels.at(rows / 2 * 2), rows % 2 == 1);
            EXPECT_EQ(flipped.pitch, pitch);
            EXPECT_EQ(flipped.left, 5);
            EXPECT_EQ(flipped.top, 6);
        }
    }
}

TEST(RenderedBitmap, StaysEmptyWhenFlipped) {
    const OpenedFont font(makeTestFont().build());
    ASSERT_EQ(FT_Set_Char_Size(font.get(), 0, 640, 72, 0), 0);
    const KeyFields space = KeyFields().with(&KeyFields::glyph, TestGlyph::space);
    EXPECT_EQ(createBitmapGlyph(space.makeBitmap(), font.face, true)->bitmap.rows, 0U);
}

TEST(RenderedBitmap, ReportsFreeTypesErrorsWithCodeAndGlyph) {
    const OpenedFont font(makeTestFont().build());
    ASSERT_EQ(FT_Set_Char_Size(font.get(), 0, 640, 72, 0), 0);
    FreeTypeSpy spy;
    const auto render = [&] { createBitmapGlyph(KeyFields().makeBitmap(), font.face, false); };
    spy.failCall("FT_Load_Glyph", 1, FT_Err_Invalid_Outline);
    EXPECT_EQ(getErrorText<FreeTypeException>(render), "FT_Load_Glyph() failed, error: 20, glyph index: 1 ");
    spy.failCall("FT_Get_Glyph", 1, FT_Err_Out_Of_Memory);
    EXPECT_EQ(getErrorText<FreeTypeException>(render), "FT_Get_Glyph() failed, error: 64, glyph index: 1 ");
    spy.failCall("FT_Glyph_To_Bitmap", 1, FT_Err_Raster_Overflow);
    EXPECT_EQ(getErrorText<FreeTypeException>(render),
              "Failed to get bitmap for glyph, error: 98, glyph index: 1 ");
    EXPECT_EQ(spy.countCalls("FT_Done_Glyph"), 1U) << "the outline that was not rendered";
    EXPECT_EQ(spy.countCalls("FT_Reference_Library"), spy.countCalls("FT_Done_Library"));
    spy.clear();
    EXPECT_EQ(getErrorText<FreeTypeException>(render), "no exception");
    EXPECT_EQ(spy.getLines().front(), "FT_Set_Transform 65536 0 0 65536 0 0");
}

TEST(RenderedBitmap, ReportsUnsignedErrorCodesAndWholeIndices) {
    const OpenedFont font(makeTestFont().build());
    FreeTypeSpy spy;
    spy.failCall("FT_Load_Glyph", 1, -1);
    const auto renderGlyph = [&](unsigned long index) {
        createBitmapGlyph(KeyFields().with(&KeyFields::glyph, index).makeBitmap(), font.face, false);
    };
    EXPECT_EQ(getErrorText<FreeTypeException>([&] { renderGlyph(1); }),
              "FT_Load_Glyph() failed, error: 4294967295, glyph index: 1 ");
    EXPECT_EQ(getErrorText<FreeTypeException>([&] { renderGlyph(0xFFFFFFFFFFFFFFFFUL); }),
              "FT_Load_Glyph() failed, error: 6, glyph index: 18446744073709551615 ");
}

TEST(RenderedBitmapDeathTest, AssertsOnAnUnknownFormat) {
    const OpenedFont font(makeTestFont().build());
    ASSERT_EQ(FT_Set_Char_Size(font.get(), 0, 640, 72, 0), 0);
    FreeTypeSpy spy;
    spy.setGlyphFormat(FT_GLYPH_FORMAT_COMPOSITE);
    EXPECT_DEATH(createBitmapGlyph(KeyFields().makeBitmap(), font.face, false),
                 Testing::printsAssertion("FontEngine/Private/FE_FreeTypeUtilsInternal:658",
                                          "glyph->format == FT_GLYPH_FORMAT_OUTLINE || glyph->format == "
                                          "FT_GLYPH_FORMAT_BITMAP (Unsupported glyph format!)"));
}

} // namespace
} // namespace Vell::FontEngine::Internal
