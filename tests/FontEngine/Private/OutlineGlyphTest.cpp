#include <FontEngine/AssertionText.h>
#include <FontEngine/Engine.h>
#include <FontEngine/GlyphKeyFields.h>

#include <support/BdfFont.h>
#include <support/OpenedFont.h>
#include <support/spy/FreeTypeSpy.h>

#include <FontEngine/Private/FE_FreeTypeUtilsInternal.h>
#include <FontLoaders/Public/Exceptions.h>

#include <gmock/gmock.h>

namespace Vell::FontEngine::Internal {
namespace {

using testing::ElementsAre;
using Testing::FreeTypeSpy;
using Testing::OpenedFont;
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

TEST(OutlineGlyph, IsInFontUnitsWhateverTheSize) {
    const Engine engine;
    const FacePtr face = engine.getFace();
    for (const long size : {1L, 640L, 64000L}) {
        ASSERT_EQ(FT_Set_Char_Size(face->getHandle().get(), 0, size, 72, 0), 0);
        EXPECT_THAT(listPoints(createOutlineGlyph(KeyFields().makeOutline(), face)),
                    ElementsAre(Pair(100, 0), Pair(100, 700), Pair(500, 700), Pair(500, 0)));
    }
}

TEST(OutlineGlyph, IsSlantedByThePublishedMatrix) {
    const Engine engine;
    const KeyFields fields = KeyFields().with(&KeyFields::transform, GlyphTransform::Slant);
    // 700 * 0x366A / 0x10000 = 148.79
    EXPECT_THAT(listPoints(createOutlineGlyph(fields.makeOutline(), engine.getFace())),
                ElementsAre(Pair(100, 0), Pair(249, 700), Pair(649, 700), Pair(500, 0)));
}

TEST(OutlineGlyph, IsEmboldenedByAWhole24thOfTheEm) {
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

TEST(OutlineGlyph, CallsFreeTypeInThisOrder) {
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

TEST(OutlineGlyph, TellsFreeTypesErrorsWithCodeAndGlyph) {
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

TEST(OutlineGlyphDeathTest, AssertsItsFace) {
    const Engine engine;
    const FacePtr null = Testing::makeMovedFrom(engine.getFace());
    EXPECT_DEATH(createOutlineGlyph(KeyFields().makeOutline(), null),
                 Testing::printsAssertion("FontEngine/Private/FE_FreeTypeUtilsInternal:699", "fontFace"));
}

/// The calls on a loaded outline at a size.
std::vector<std::string> transformBox(GlyphTransform transform, OutlineScale scale, unsigned int unitsPerEm,
                                      long size26Dot6) {
    const OpenedFont font(makeTestFont().setUnitsPerEm(unitsPerEm).build());
    EXPECT_EQ(FT_Set_Char_Size(font.get(), 0, size26Dot6, 72, 0), 0);
    EXPECT_EQ(FT_Load_Glyph(font.get(), 1, FT_LOAD_NO_HINTING), 0);
    const FreeTypeSpy spy;
    applyGlyphTransform(font.face, &font->glyph->outline, transform, scale);
    return spy.getLines();
}

TEST(ApplyGlyphTransform, DoesNothingForNone) {
    EXPECT_THAT(transformBox(GlyphTransform::None, OutlineScale::Scaled, 1000, 640), ElementsAre());
}

TEST(ApplyGlyphTransform, EmboldensBy24thsOfTheEmInPixels) {
    const auto embolden = [](unsigned int unitsPerEm, long size) {
        return transformBox(GlyphTransform::Embolden, OutlineScale::Scaled, unitsPerEm, size).at(0);
    };
    EXPECT_EQ(embolden(1000, 640), "FT_Outline_Embolden 26");
    EXPECT_EQ(embolden(2048, 640), "FT_Outline_Embolden 26");
    EXPECT_EQ(embolden(1000, 64), "FT_Outline_Embolden 2");
    EXPECT_EQ(embolden(1000, 6400), "FT_Outline_Embolden 266");
}

TEST(ApplyGlyphTransform, EmboldensTowardsZeroForAMirroredScale) {
    const OpenedFont font(makeTestFont().build());
    ASSERT_EQ(FT_Set_Char_Size(font.get(), 0, 640, 72, 0), 0);
    font->size->metrics.y_scale = -font->size->metrics.y_scale;
    ASSERT_EQ(FT_MulFix(1000, font->size->metrics.y_scale), -640);
    const FreeTypeSpy spy;
    applyGlyphTransform(font.face, &font->glyph->outline, GlyphTransform::Embolden, OutlineScale::Scaled);
    EXPECT_THAT(spy.getLines(), ElementsAre("FT_Outline_Embolden -26"));
}

TEST(ApplyGlyphTransform, EmboldensThenSlants) {
    EXPECT_THAT(transformBox(GlyphTransform::EmboldenAndSlant, OutlineScale::FontUnits, 2048, 640),
                ElementsAre("FT_Outline_Embolden 85", "FT_Outline_Transform 65536 13930 0 65536"));
    EXPECT_THAT(transformBox(GlyphTransform::Slant, OutlineScale::FontUnits, 2048, 640),
                ElementsAre("FT_Outline_Transform 65536 13930 0 65536"));
}

TEST(ApplyGlyphTransform, EmboldensByNothingInAnUnknownScale) {
    EXPECT_THAT(transformBox(GlyphTransform::Embolden, static_cast<OutlineScale>(2), 1000, 640),
                ElementsAre("FT_Outline_Embolden 0"));
}

} // namespace
} // namespace Vell::FontEngine::Internal
