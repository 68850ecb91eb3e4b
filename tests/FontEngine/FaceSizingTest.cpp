// When the engine sets the size of a face, and when it knows that the face has it already.

#include <FontEngine/Engine.h>
#include <FontEngine/GlyphKeyFields.h>

#include <support/BdfFont.h>
#include <support/RecordingPainter.h>
#include <support/spy/FreeTypeSpy.h>

#include <FontLoaders/Public/Exceptions.h>

#include <gmock/gmock.h>

#include FT_SIZES_H

#include <string>
#include <utility>
#include <vector>

namespace Vell::FontEngine {
namespace {

using testing::ElementsAre;
using Testing::FreeTypeSpy;
using testing::IsEmpty;

/// Renders a bitmap that is not in the cache, with another offset each time.
class Renderer {
public:
    explicit Renderer(FacePtr face, unsigned char lastOffset = 0)
        : _face(std::move(face))
        , _offset(lastOffset) {}

    void render(float size = 10.0F) {
        _face->getBitmapGlyph(
            KeyFields().with(&KeyFields::size, size).with(&KeyFields::offset, ++_offset).makeBitmap(), false);
    }

    /// Renders a bitmap and returns the sizes that FreeType was asked for meanwhile.
    std::vector<std::string> spyOn(float size = 10.0F) {
        const FreeTypeSpy spy;
        render(size);
        return spy.getLines({"FT_Set_Char_Size"});
    }

    /// Does the same with an outline.
    std::vector<std::string> spyOnOutline(float size, unsigned long glyph) {
        Testing::RecordingPainter painter;
        const FreeTypeSpy spy;
        _face->getOutlineGlyphPath(
            KeyFields().with(&KeyFields::size, size).with(&KeyFields::glyph, glyph).makeOutline(), painter);
        return spy.getLines({"FT_Set_Char_Size"});
    }

    FT_Face getHandle() const { return _face->getHandle().get(); }

private:
    FacePtr _face;
    unsigned char _offset;
};

TEST(FaceSizing, SetsASizeOnceWhileItStays) {
    const Engine engine;
    Renderer renderer(engine.getFace());
    EXPECT_THAT(renderer.spyOn(), ElementsAre("FT_Set_Char_Size 0 640 72 0"));
    EXPECT_THAT(renderer.spyOn(), IsEmpty());
    EXPECT_THAT(renderer.spyOn(10.001F), IsEmpty()) << "the same in 26.6";
    EXPECT_THAT(renderer.spyOn(11.0F), ElementsAre("FT_Set_Char_Size 0 704 72 0"));
    EXPECT_THAT(renderer.spyOn(), ElementsAre("FT_Set_Char_Size 0 640 72 0"));
}

TEST(FaceSizing, ComparesTheRequestedSizesNotTheirPixels) {
    const Engine engine;
    Renderer renderer(engine.getFace());
    EXPECT_THAT(renderer.spyOn(), ElementsAre("FT_Set_Char_Size 0 640 72 0"));
    EXPECT_THAT(renderer.spyOnOutline(10.0F, TestGlyph::a), ElementsAre("FT_Set_Char_Size 0 640 0 0"));
    EXPECT_THAT(renderer.spyOnOutline(10.0F, TestGlyph::x), IsEmpty());
    EXPECT_THAT(renderer.spyOn(), ElementsAre("FT_Set_Char_Size 0 640 72 0"));
}

TEST(FaceSizing, RemembersTheSizeOfEachFace) {
    const Engine engine;
    Renderer first(engine.getFace());
    first.render();
    EXPECT_THAT(Renderer(engine.getFace("Test Sans", true), 32).spyOn(),
                ElementsAre("FT_Set_Char_Size 0 640 72 0"));
    EXPECT_THAT(first.spyOn(), IsEmpty());
}

TEST(FaceSizing, DetectsThatTheClientSizedTheFace) {
    const Engine engine;
    Renderer renderer(engine.getFace());
    renderer.render();
    FT_Set_Char_Size(renderer.getHandle(), 0, 20 * 64, 72, 0);
    EXPECT_THAT(renderer.spyOn(), ElementsAre("FT_Set_Char_Size 0 640 72 0"));
    FT_Set_Char_Size(renderer.getHandle(), 20 * 64, 10 * 64, 72, 0);
    EXPECT_THAT(renderer.spyOn(), ElementsAre("FT_Set_Char_Size 0 640 72 0")) << "another width";
}

TEST(FaceSizing, DetectsThatTheClientActivatedAnotherSizeObject) {
    const Engine engine;
    Renderer renderer(engine.getFace());
    renderer.render();
    FT_Size other = nullptr;
    ASSERT_EQ(FT_New_Size(renderer.getHandle(), &other), 0);
    ASSERT_EQ(FT_Activate_Size(other), 0);
    ASSERT_EQ(FT_Set_Char_Size(renderer.getHandle(), 0, 640, 72, 0), 0);
    EXPECT_THAT(renderer.spyOn(), ElementsAre("FT_Set_Char_Size 0 640 72 0"));
}

TEST(FaceSizing, SetsTheSizeAgainAfterARefusal) {
    const Engine engine;
    Renderer renderer(engine.getFace());
    renderer.render();
    {
        FreeTypeSpy spy;
        spy.failCall("FT_Set_Char_Size");
        renderer.render(11.0F);
    }
    EXPECT_THAT(renderer.spyOn(), ElementsAre("FT_Set_Char_Size 0 640 72 0"));
}

TEST(FaceSizing, SetsTheSizeAgainAfterAFailedGlyph) {
    for (const char* const call : {"FT_Load_Glyph", "FT_Get_Glyph", "FT_Glyph_To_Bitmap"}) {
        const Engine engine;
        Renderer renderer(engine.getFace());
        renderer.render();
        {
            FreeTypeSpy spy;
            spy.failCall(call);
            EXPECT_THROW(renderer.render(), FontLoaders::FreeTypeException) << call;
        }
        EXPECT_THAT(renderer.spyOn(), ElementsAre("FT_Set_Char_Size 0 640 72 0")) << call;
        EXPECT_THAT(renderer.spyOn(), IsEmpty()) << call;
    }
}

TEST(FaceSizing, AlwaysSizesVariableFaces) {
    const Engine engine;
    Renderer renderer(engine.getFace());
    renderer.getHandle()->face_flags |= FT_FACE_FLAG_MULTIPLE_MASTERS;
    renderer.render();
    EXPECT_THAT(renderer.spyOn(), ElementsAre("FT_Set_Char_Size 0 640 72 0"))
        << "a client may have changed its axes";
}

TEST(FaceSizing, AlwaysSizesBitmapFaces) {
    Testing::BdfFont font;
    font.glyphs.push_back({'A', 6, 5, 0, 0, {{0xF8}}});
    font.pixelSize = 10;
    const Engine engine(font.build());
    Renderer renderer(engine.getFace());
    renderer.render();
    EXPECT_THAT(renderer.spyOn(), ElementsAre("FT_Set_Char_Size 0 640 72 0"));
}

} // namespace
} // namespace Vell::FontEngine
