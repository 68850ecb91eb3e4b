#include <FontEngine/Engine.h>

#include <support/OpenedFont.h>
#include <support/spy/FreeTypeSpy.h>

#include <FontEngine/Private/FE_FreeTypeUtilsInternal.h>

#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace Vell::FontEngine::Internal {
namespace {

using testing::ElementsAre;
using Testing::FreeTypeSpy;
using Testing::OpenedFont;

/// Applies the transform to an outline that is loaded at a size, and returns the calls of FreeType.
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

TEST(ApplyGlyphTransform, DoesNotEmboldenInAnUnknownScale) {
    EXPECT_THAT(transformBox(GlyphTransform::Embolden, static_cast<OutlineScale>(2), 1000, 640),
                ElementsAre("FT_Outline_Embolden 0"));
}

} // namespace
} // namespace Vell::FontEngine::Internal
