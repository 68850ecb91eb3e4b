#include <FontEngine/AssertionText.h>
#include <FontEngine/Engine.h>
#include <FontEngine/GlyphKeyFields.h>

#include <support/BdfFont.h>
#include <support/RecordingPainter.h>
#include <support/spy/FreeTypeSpy.h>

#include <FontEngine/Renderer/FE_BitmapGlyphRun.h>
#include <FontLoaders/Public/Exceptions.h>

#include <gmock/gmock.h>

#include <cmath>
#include <type_traits>

namespace Vell::FontEngine {
namespace {

using testing::ElementsAre;
using Testing::FreeTypeSpy;

TEST(FontFace, ReturnsLineMetricsInEms) {
    const Engine engine(makeTestFont().setLine(800, -200, 90).build());
    const Gfx::BasicMetrics& metrics = engine.getFace()->getBasicMetrics();
    EXPECT_EQ(metrics.getHeight(), 1090.0F / 1000.0F);
    EXPECT_EQ(metrics.getAscender(), 0.8F);
    EXPECT_EQ(metrics.getDescender(), 0.2F) << "positive below the base line";
    EXPECT_EQ(metrics.getCapHeight(), 0.7F);
    EXPECT_EQ(metrics.getStrikeOutPosition(), 0.25F);
    EXPECT_EQ(metrics.getCharMap()['A'].glyphIndex, TestGlyph::a);
    EXPECT_EQ(metrics.getCharMap().size(), 4U);
}

TEST(FontFace, ReturnsAPositiveDescender) {
    const Engine engine(makeTestFont().setLine(800, 150).build());
    EXPECT_EQ(engine.getFace()->getBasicMetrics().getDescender(), 0.15F);
}

TEST(FontFace, SharesItsBytes) {
    const auto bytes = std::make_shared<const Testing::Bytes>(makeTestFont().build());
    Engine engine;
    engine.loader->setFont("Shared", false, false, bytes);
    const FacePtr regular = engine.getFace("Shared");
    const FacePtr slanted = engine.getFace("Shared", false, true);
    EXPECT_NE(regular, slanted);
    EXPECT_EQ(regular->getFaceData().bytes.get(), bytes.get());
    EXPECT_EQ(slanted->getFaceData().bytes.get(), bytes.get());
    EXPECT_EQ(slanted->getFaceData().transform, GlyphTransform::Slant);
    EXPECT_EQ(slanted->getTransform(), GlyphTransform::Slant);
    EXPECT_EQ(regular->getHandle()->stream->base, bytes->data()) << "FreeType reads them in place";
}

TEST(FontFace, OpensALibraryOfItsOwnAndSetsItsFilterLast) {
    const Engine engine;
    const FreeTypeSpy spy;
    const FacePtr face = engine.getFace("Test Sans", true);
    EXPECT_THAT(spy.getLines(),
                ElementsAre("FT_New_Library", "FT_Open_Face 0", "FT_Select_Charmap unic",
                            "FT_Get_Advance 0 1", "FT_Set_Char_Size 0 0 0 0", "FT_Get_First_Char",
                            "FT_Get_Advance 4 1", "FT_Get_Next_Char 32", "FT_Get_Advance 1 1",
                            "FT_Get_Next_Char 65", "FT_Get_Advance 2 1", "FT_Get_Next_Char 95",
                            "FT_Get_Advance 3 1", "FT_Get_Next_Char 120", "FT_Get_Sfnt_Table 2",
                            "FT_Library_SetLcdFilter 2"));
    EXPECT_NE(face->getHandle()->glyph->library, engine.getFace()->getHandle()->glyph->library);
}

TEST(FontFace, WorksWithoutASubpixelFilter) {
    const Engine engine;
    FreeTypeSpy spy;
    spy.failCall("FT_Library_SetLcdFilter", 1, FT_Err_Unimplemented_Feature);
    EXPECT_STREQ(engine.getFace()->getHandle()->family_name, "Test Sans");
}

TEST(FontFace, ReleasesEverythingIfAStepThrows) {
    const Engine engine;
    FreeTypeSpy spy;
    spy.failCall("FT_Get_Advance");
    EXPECT_THROW(engine.getFace(), FontLoaders::FreeTypeException);
    EXPECT_THAT(spy.getLines({"FT_New_Library", "FT_Done_Face", "FT_Done_Library"}),
                ElementsAre("FT_New_Library", "FT_Done_Face", "FT_Done_Library"));
    spy.clear();
    spy.setCharacters({{0x100000000UL, 1}});
    EXPECT_THROW(engine.getFace(), BadNumCastError);
    EXPECT_THAT(spy.getLines({"FT_New_Library", "FT_Done_Face", "FT_Done_Library"}),
                ElementsAre("FT_New_Library", "FT_Done_Face", "FT_Done_Library"));
}

TEST(FontFace, ClosesTheFaceThenItsLibraryThenTheBytes) {
    std::size_t releasedBefore = 0;
    const FreeTypeSpy spy;
    {
        std::shared_ptr<const Testing::Bytes> bytes(
            new Testing::Bytes(makeTestFont().build()), [&](const Testing::Bytes* released) {
                releasedBefore = spy.countCalls("FT_Done_Face") + spy.countCalls("FT_Done_Library");
                delete released;
            });
        Engine engine;
        engine.loader->setFont("Watched", false, false, bytes);
        const FacePtr face = engine.getFace("Watched");
        engine.loader->setFont("Watched", false, false, nullptr);
        engine.factory->flush();
        bytes.reset();
    }
    EXPECT_THAT(spy.getLines({"FT_Done_Face", "FT_Done_Library"}),
                ElementsAre("FT_Done_Face", "FT_Done_Library"));
    EXPECT_EQ(releasedBefore, 2U);
}

TEST(FontFace, OpensFontsWithoutAName) {
    const Engine engine(makeTestFont().omitTable("name").build());
    EXPECT_EQ(engine.getFace()->getHandle()->family_name, nullptr);
    EXPECT_EQ(engine.getFace()->getBasicMetrics().getAscender(), 0.8F);
}

TEST(FontFace, OpensBitmapFontsWithoutFiniteMetrics) {
    Testing::BdfFont builder;
    builder.glyphs.push_back({'A', 6, 5, 0, 0, {{0xF8}}});
    const Engine engine(builder.build());
    const Gfx::BasicMetrics& metrics = engine.getFace()->getBasicMetrics();
    EXPECT_FALSE(std::isfinite(metrics.getHeight()));
    EXPECT_FALSE(std::isfinite(metrics.getAscender()));
    EXPECT_FALSE(std::isfinite(metrics.getCharMap()['A'].advance));
    EXPECT_NE(metrics.getCharMap()['A'].glyphIndex, 0);
}

TEST(FontFace, OutlivesItsFactoryWithEmptyServices) {
    std::weak_ptr<FontFactory> factory;
    const FacePtr face = [&factory] {
        const Engine engine;
        factory = std::shared_ptr<FontFactory>(engine.factory);
        return engine.getFace();
    }();
    EXPECT_TRUE(factory.expired()) << "the face holds it weakly";
    EXPECT_EQ(face->getBasicMetrics().getAscender(), 0.8F);
    const FreeTypeSpy spy;
    Testing::RecordingPainter painter;
    EXPECT_EQ(face->getBitmapGlyph(KeyFields().makeBitmap(), false), nullptr);
    EXPECT_EQ(face->getOutlineGlyphPath(KeyFields().makeOutline(), painter), nullptr);
    const BitmapGlyph glyph(nullptr, {0, 0}, KeyFields().makeBitmap());
    EXPECT_EQ(face->getGlyphBitmapWithSubpixels(glyph, {1, 2, 3, 4}), nullptr);
    EXPECT_TRUE(spy.getLines().empty());
    EXPECT_TRUE(painter.getOperations().empty());
}

static_assert(!std::is_copy_constructible_v<FontFace>);
static_assert(std::is_base_of_v<std::enable_shared_from_this<FontFace>, FontFace>);

TEST(FontFaceDeathTest, AssertsThatItsFactoryExists) {
    const FacePtr face = Engine().getFace();
    EXPECT_DEATH(face->getFontFactory(),
                 Testing::printsAssertion("Utils/Public/Ptr/PtrUtils:254", "plainPtr"));
}

} // namespace
} // namespace Vell::FontEngine
