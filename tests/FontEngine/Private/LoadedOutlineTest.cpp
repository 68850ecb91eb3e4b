#include <FontEngine/AssertionText.h>
#include <FontEngine/Engine.h>
#include <FontEngine/GlyphKeyFields.h>

#include <support/spy/FreeTypeSpy.h>

#include <FontEngine/Private/FE_FreeTypeUtilsInternal.h>
#include <FontLoaders/Public/Exceptions.h>

#include <gmock/gmock.h>

namespace Vell::FontEngine::Internal {
namespace {

using testing::ElementsAre;
using Testing::FreeTypeSpy;
using testing::Pair;

std::vector<std::pair<long, long>> listPoints(const FT_Outline& outline) {
    std::vector<std::pair<long, long>> points;
    for (int i = 0; i < outline.n_points; ++i) {
        points.emplace_back(outline.points[i].x, outline.points[i].y);
    }
    return points;
}

std::vector<std::pair<long, long>> listPoints(const std::shared_ptr<FT_GlyphRec_>& glyph) {
    EXPECT_EQ(glyph->format, FT_GLYPH_FORMAT_OUTLINE);
    return listPoints(reinterpret_cast<FT_OutlineGlyph>(glyph.get())->outline);
}

TEST(LoadedOutline, IsInFontUnitsWhateverTheSize) {
    const Engine engine;
    const FacePtr face = engine.getFace();
    for (const long size : {1L, 640L, 64000L}) {
        ASSERT_EQ(FT_Set_Char_Size(face->getHandle().get(), 0, size, 72, 0), 0);
        EXPECT_THAT(listPoints(createOutlineGlyph(KeyFields().makeOutline(), face)),
                    ElementsAre(Pair(100, 0), Pair(100, 700), Pair(500, 700), Pair(500, 0)));
    }
}

TEST(LoadedOutline, IsSlantedByThePublishedMatrix) {
    const Engine engine;
    const KeyFields fields = KeyFields().with(&KeyFields::transform, GlyphTransform::Slant);
    // 700 * 0x366A / 0x10000 = 148.79
    EXPECT_THAT(listPoints(createOutlineGlyph(fields.makeOutline(), engine.getFace())),
                ElementsAre(Pair(100, 0), Pair(249, 700), Pair(649, 700), Pair(500, 0)));
}

TEST(LoadedOutline, IsEmboldenedByATruncated24thOfTheEm) {
    for (const auto& [unitsPerEm, strength] :
         {std::pair(2048U, "85"), std::pair(1000U, "41"), std::pair(24U, "1"), std::pair(23U, "0")}) {
        Engine engine(makeTestFont().setUnitsPerEm(unitsPerEm).build());
        const FacePtr face = engine.getFace();
        const FreeTypeSpy spy;
        createOutlineGlyph(KeyFields().with(&KeyFields::transform, GlyphTransform::Embolden).makeOutline(),
                           face);
        EXPECT_THAT(spy.getLines({"FT_Outline_Embolden"}),
                    ElementsAre(std::string("FT_Outline_Embolden ") + strength));
    }
}

TEST(LoadedOutline, CallsFreeTypeInThisOrder) {
    const Engine engine;
    const FacePtr face = engine.getFace();
    const FreeTypeSpy spy;
    const KeyFields fields = KeyFields().with(&KeyFields::transform, GlyphTransform::EmboldenAndSlant);
    createOutlineGlyph(fields.makeOutline(), face);
    createOutlineGlyph(KeyFields().makeOutline(), face);
    EXPECT_THAT(spy.getLines(),
                ElementsAre("FT_Set_Transform null null", "FT_Load_Glyph 1 33", "FT_Outline_Embolden 41",
                            "FT_Outline_Transform 65536 13930 0 65536", "FT_Reference_Library",
                            "FT_Get_Glyph", "FT_Done_Glyph", "FT_Done_Library", "FT_Set_Transform null null",
                            "FT_Load_Glyph 1 33", "FT_Reference_Library", "FT_Get_Glyph", "FT_Done_Glyph",
                            "FT_Done_Library"));
}

TEST(LoadedOutline, ReportsFreeTypesErrorsWithCodeAndGlyph) {
    const Engine engine;
    const FacePtr face = engine.getFace();
    const auto getErrorText = [&] {
        try {
            createOutlineGlyph(KeyFields().makeOutline(), face);
        } catch (const FontLoaders::FreeTypeException& error) {
            return std::string(error.what());
        }
        return std::string("no exception");
    };
    FreeTypeSpy spy;
    spy.failCall("FT_Load_Glyph", 1, FT_Err_Invalid_Outline);
    EXPECT_EQ(getErrorText(), "FT_Load_Glyph() failed, error: 20, glyph index: 1 ");
    spy.failCall("FT_Get_Glyph", 1, FT_Err_Out_Of_Memory);
    EXPECT_EQ(getErrorText(), "FT_Get_Glyph() failed, error: 64, glyph index: 1 ");
    EXPECT_EQ(spy.countCalls("FT_Reference_Library"), spy.countCalls("FT_Done_Library"));
    EXPECT_EQ(getErrorText(), "no exception");
}

TEST(LoadedOutlineDeathTest, AssertsItsFace) {
    const Engine engine;
    const FacePtr null = Testing::makeMovedFrom(engine.getFace());
    EXPECT_DEATH(createOutlineGlyph(KeyFields().makeOutline(), null),
                 Testing::printsAssertion("FontEngine/Private/FE_FreeTypeUtilsInternal:699", "fontFace"));
}

} // namespace
} // namespace Vell::FontEngine::Internal
