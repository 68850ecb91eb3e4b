#include <support/FontBuilder.h>
#include <support/OpenedFont.h>
#include <support/spy/FreeTypeSpy.h>

#include <FontLoaders/Public/Exceptions.h>

#include <gmock/gmock.h>

#include FT_ADVANCES_H
#include FT_GLYPH_H
#include FT_MODULE_H
#include FT_OUTLINE_H
#include FT_TRUETYPE_TABLES_H

#include <stdexcept>
#include <thread>

namespace Vell::Testing {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

Bytes buildFont() {
    FontBuilder builder;
    builder.map('A', builder.addGlyph(makeBoxGlyph(600, 0, 0, 500, 700)));
    return builder.build();
}

TEST(FreeTypeSpy, SeesTheCallsOfTheSharedLibraries) {
    const Bytes file = buildFont();
    const FreeTypeSpy spy;
    { const OpenedFont font(file); }
    EXPECT_THAT(spy.getLines(),
                ElementsAre("FT_New_Library", "FT_Open_Face 0", "FT_Done_Face", "FT_Done_Library"));
}

TEST(FreeTypeSpy, InjectsFailuresIntoTheEngine) {
    FreeTypeSpy spy;
    spy.failCall("FT_Open_Face", 2, FT_Err_Invalid_Table);
    const OpenedFont first(buildFont());
    try {
        const OpenedFont second(buildFont());
        FAIL() << "the second call did not fail";
    } catch (const FontLoaders::FreeTypeException& error) {
        EXPECT_THAT(error.what(), HasSubstr("FT_Open_Face"));
    }
    const OpenedFont third(buildFont());
    ASSERT_EQ(spy.countCalls("FT_Open_Face"), 3U);
    EXPECT_FALSE(spy.getCalls()[1].isInjectedFailure);
    EXPECT_TRUE(spy.getCalls()[3].isInjectedFailure);
}

TEST(FreeTypeSpy, RecordsTheArguments) {
    const OpenedFont font(buildFont());
    FT_Matrix matrix = {0x10000, 1, -2, 0x8000};
    FT_Vector delta = {-7, 9};
    FT_Fixed advance = 0;
    FT_UInt index = 0;
    FT_Glyph glyph = nullptr;
    FT_BBox box;
    const FreeTypeSpy spy;
    FT_Select_Charmap(font.get(), FT_ENCODING_UNICODE);
    FT_Set_Charmap(font.get(), font->charmaps[0]);
    FT_Get_Next_Char(font.get(), FT_Get_First_Char(font.get(), &index), &index);
    FT_Get_Advance(font.get(), 1, FT_LOAD_NO_SCALE, &advance);
    FT_Get_Sfnt_Table(font.get(), FT_SFNT_OS2);
    FT_Set_Char_Size(font.get(), 0, 640, 72, 96);
    FT_Set_Transform(font.get(), &matrix, &delta);
    FT_Set_Transform(font.get(), nullptr, nullptr);
    FT_Load_Glyph(font.get(), 1, FT_LOAD_NO_HINTING);
    FT_Outline_Embolden(&font->glyph->outline, 24);
    FT_Outline_Transform(&font->glyph->outline, &matrix);
    FT_Get_Glyph(font->glyph, &glyph);
    FT_Glyph_Get_CBox(glyph, FT_GLYPH_BBOX_PIXELS, &box);
    FT_Glyph_To_Bitmap(&glyph, FT_RENDER_MODE_LCD, &delta, 1);
    FT_Done_Glyph(glyph);

    EXPECT_EQ(advance, 600);
    EXPECT_THAT(spy.getLines(),
                ElementsAre("FT_Select_Charmap unic", "FT_Set_Charmap 3 1", "FT_Get_First_Char",
                            "FT_Get_Next_Char 65", "FT_Get_Advance 1 1", "FT_Get_Sfnt_Table 2",
                            "FT_Set_Char_Size 0 640 72 96", "FT_Set_Transform 65536 1 -2 32768 -7 9",
                            "FT_Set_Transform null null", "FT_Load_Glyph 1 2", "FT_Outline_Embolden 24",
                            "FT_Outline_Transform 65536 1 -2 32768", "FT_Get_Glyph", "FT_Glyph_Get_CBox 3",
                            "FT_Glyph_To_Bitmap 3 -7 9 1", "FT_Done_Glyph"));
    EXPECT_EQ(spy.getCalls().front().object, font.get());
    EXPECT_THAT(spy.getLines({"FT_Load_Glyph", "FT_Done_Glyph"}),
                ElementsAre("FT_Load_Glyph 1 2", "FT_Done_Glyph"));
}

TEST(FreeTypeSpy, RecordsOnlyTheOutermostCall) {
    const OpenedFont font(buildFont());
    const FreeTypeSpy spy;
    FT_Load_Glyph(font.get(), 1, FT_LOAD_NO_SCALE);
    FT_Outline_Funcs functions = {};
    functions.move_to = functions.line_to = [](const FT_Vector*, void* face) {
        return FT_Load_Glyph(static_cast<FT_Face>(face), 0, FT_LOAD_NO_SCALE);
    };
    FT_Glyph glyph = nullptr;
    FT_Get_Glyph(font->glyph, &glyph);
    FT_Outline_Decompose(&reinterpret_cast<FT_OutlineGlyph>(glyph)->outline, &functions, font.get());
    FT_Done_Glyph(glyph);
    EXPECT_THAT(spy.getLines(), ElementsAre("FT_Load_Glyph 1 1", "FT_Get_Glyph", "FT_Outline_Decompose 0 0",
                                            "FT_Done_Glyph"));
}

TEST(FreeTypeSpy, IgnoresCallsThatFreeTypeMakes) {
    FT_Library library = nullptr;
    const FreeTypeSpy spy;
    ASSERT_EQ(FT_Init_FreeType(&library), 0); // calls FT_New_Library
    FT_Done_FreeType(library);                // calls FT_Done_Library
    EXPECT_THAT(spy.getLines(), IsEmpty());
}

TEST(FreeTypeSpy, HidesOnlyTheCallsOfAPausedThread) {
    const FreeTypeSpy spy;
    {
        const FreeTypeSpy::Pause pause;
        FontLoaders::createFreeTypeLibrary();
        EXPECT_THAT(spy.getLines(), IsEmpty());
        std::thread([] { FontLoaders::createFreeTypeLibrary(); }).join();
    }
    EXPECT_THAT(spy.getLines(), ElementsAre("FT_New_Library", "FT_Done_Library"));
    FontLoaders::createFreeTypeLibrary();
    EXPECT_EQ(spy.countCalls("FT_New_Library"), 2U);
}

TEST(FreeTypeSpy, InjectsErrorsAndNulls) {
    const OpenedFont font(buildFont());
    FreeTypeSpy spy;
    spy.failCall("FT_Load_Glyph", 1, FT_Err_Out_Of_Memory);
    spy.failCall("FT_Load_Glyph", 3, FT_Err_Invalid_Outline);
    spy.failCall("FT_Get_Sfnt_Table");
    EXPECT_EQ(FT_Load_Glyph(font.get(), 1, FT_LOAD_NO_SCALE), FT_Err_Out_Of_Memory);
    EXPECT_EQ(FT_Load_Glyph(font.get(), 1, FT_LOAD_NO_SCALE), FT_Err_Ok);
    EXPECT_EQ(FT_Load_Glyph(font.get(), 1, FT_LOAD_NO_SCALE), FT_Err_Invalid_Outline);
    EXPECT_EQ(FT_Load_Glyph(font.get(), 1, FT_LOAD_NO_SCALE), FT_Err_Ok);
    EXPECT_EQ(FT_Get_Sfnt_Table(font.get(), FT_SFNT_OS2), nullptr);
    EXPECT_NE(FT_Get_Sfnt_Table(font.get(), FT_SFNT_OS2), nullptr);
    EXPECT_THROW(spy.failCall("FT_Done_Glyph"), std::invalid_argument);
}

TEST(FreeTypeSpy, ReplacesTheCharactersOfAFont) {
    const OpenedFont font(buildFont());
    FreeTypeSpy spy;
    spy.setCharacters({{0x100000000UL, 1}, {7, 2}});
    FT_UInt glyph = 9;
    EXPECT_EQ(FT_Get_First_Char(font.get(), &glyph), 0x100000000UL);
    EXPECT_EQ(glyph, 1U);
    EXPECT_EQ(FT_Get_Next_Char(font.get(), 0x100000000UL, &glyph), 7U);
    EXPECT_EQ(glyph, 2U);
    EXPECT_EQ(FT_Get_Next_Char(font.get(), 7, &glyph), 0U);
    EXPECT_EQ(glyph, 0U);
    EXPECT_EQ(FT_Get_First_Char(font.get(), &glyph), 0x100000000UL) << "restarts";
}

TEST(FreeTypeSpy, ChangesTheFormatOfGlyphs) {
    const OpenedFont font(buildFont());
    ASSERT_EQ(FT_Load_Glyph(font.get(), 1, FT_LOAD_NO_SCALE), 0);
    FreeTypeSpy spy;
    spy.setGlyphFormat(FT_GLYPH_FORMAT_COMPOSITE);
    FT_Glyph glyph = nullptr;
    ASSERT_EQ(FT_Get_Glyph(font->glyph, &glyph), 0);
    EXPECT_EQ(glyph->format, FT_GLYPH_FORMAT_COMPOSITE);
    FT_Done_Glyph(glyph);
}

TEST(FreeTypeSpy, CountsCallsThatAnExceptionUnwinds) {
    const OpenedFont font(buildFont());
    ASSERT_EQ(FT_Load_Glyph(font.get(), 1, FT_LOAD_NO_SCALE), FT_Err_Ok);
    const auto draw = [](const FT_Vector*, void* isThrowing) {
        return *static_cast<bool*>(isThrowing) ? throw std::runtime_error("") : 0;
    };
    const FT_Outline_Funcs functions{draw, draw, nullptr, nullptr, 0, 0};
    const FreeTypeSpy spy;
    bool isThrowing = false;
    FT_Outline_Decompose(&font->glyph->outline, &functions, &isThrowing);
    EXPECT_EQ(spy.countUnwoundCalls(), 0U);
    isThrowing = true;
    EXPECT_THROW(FT_Outline_Decompose(&font->glyph->outline, &functions, &isThrowing), std::runtime_error);
    EXPECT_EQ(spy.countUnwoundCalls(), 1U);
}

TEST(FreeTypeSpy, ForgetsEverythingWhenItIsDestroyed) {
    {
        FreeTypeSpy spy;
        spy.failCall("FT_New_Library", 1);
        EXPECT_THROW(FreeTypeSpy(), std::logic_error);
    }
    const FreeTypeSpy spy;
    FontLoaders::createFreeTypeLibrary();
    EXPECT_EQ(spy.countCalls("FT_New_Library"), 1U);
}

} // namespace
} // namespace Vell::Testing
