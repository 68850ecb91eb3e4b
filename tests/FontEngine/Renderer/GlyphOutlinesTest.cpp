#include <FontEngine/Engine.h>

#include <support/ClientDescriptions.h>
#include <support/RecordingPainter.h>
#include <support/spy/FreeTypeSpy.h>

#include <FontEngine/Renderer/FE_GlyphOutlines.h>
#include <FontEngine/Renderer/FE_VectorTextPainter.h>

#include <gmock/gmock.h>

#include <memory>
#include <string>
#include <vector>

namespace Vell::FontEngine {
namespace {

using testing::Each;
using testing::IsNull;
using Testing::RecordingPainter;
using Paths = std::vector<std::shared_ptr<const Gfx::Path>>;

const std::vector<unsigned short> someGlyphs = {TestGlyph::a, TestGlyph::x, TestGlyph::a};

Paths fetch(const FacePtr& face, const std::vector<unsigned short>& glyphs = someGlyphs, float size = 10.0F,
            const Testing::FaceInfoPtr& faceInfo = Testing::makeFaceInfo()) {
    RecordingPainter painter;
    return fetchOutlines(faceInfo, face, size, glyphs.data(), glyphs.size(), painter);
}

Paths listPaths(const OutlineGlyphRun& run) {
    Paths paths;
    for (const OutlineGlyph& glyph : run.getGlyphs()) {
        paths.push_back(glyph.getPath());
    }
    return paths;
}

TEST(GlyphOutlines, AreThoseOfTheVectorPainter) {
    std::string text;
    for (int i = 0; i < 50; ++i) {
        text += "Ax_ A"; // more than a batch
    }
    for (const auto& faceInfo : {Testing::makeFaceInfo(), Testing::makeFaceInfo("Test Sans", true, true),
                                 Testing::makeClientFaceInfo("Test Sans")}) {
        for (const float size : {10.0F, 13.7F}) {
            const Engine engine;
            const auto fontInfo = Testing::makeFontInfo(faceInfo, size);
            const Font font = engine.factory->getFont(fontInfo);
            std::vector<unsigned short> glyphs;
            for (const char letter : text) {
                const auto code = static_cast<unsigned char>(letter);
                glyphs.push_back(font.getFace()->getBasicMetrics().getCharMap()[code].glyphIndex);
            }
            const Paths fetched = fetch(font.getFace(), glyphs, size, faceInfo);
            const CacheFigures cold = engine.factory->getCacheFigures().outlines;
            EXPECT_EQ(cold.misses, 4U);
            EXPECT_EQ(cold.hits, text.size() - 4);
            RecordingPainter painter;
            EXPECT_EQ(fetched, listPaths(VectorTextPainter(painter).createGlyphRun(
                                   text, Testing::makeExtFontInfo(fontInfo), font)));
            EXPECT_EQ(engine.factory->getCacheFigures().outlines.misses, 4U) << "the keys are equal";
        }
    }
}

TEST(GlyphOutlines, OfNoGlyphsAreEmpty) {
    const Engine engine;
    RecordingPainter painter;
    EXPECT_TRUE(fetchOutlines(Testing::makeFaceInfo(), engine.getFace(), 10.0F, nullptr, 0, painter).empty());
}

TEST(GlyphOutlines, AreNullWhereAGlyphHasNone) {
    const Engine engine;
    const FacePtr face = engine.getFace();
    Testing::FreeTypeSpy spy;
    spy.failCall("FT_Set_Char_Size");
    const Paths paths = fetch(face);
    ASSERT_EQ(paths.size(), 3U);
    EXPECT_EQ(paths[0], nullptr);
    EXPECT_NE(paths[1], nullptr);
    EXPECT_EQ(paths[2], nullptr) << "the cache remembers it";
}

TEST(GlyphOutlines, AreNullAfterTheFactoryIsDestroyed) {
    auto engine = std::make_unique<Engine>();
    const FacePtr face = engine->getFace();
    const Paths before = fetch(face);
    engine.reset();
    EXPECT_THAT(fetch(face), Each(IsNull()));
    EXPECT_EQ(dynamic_cast<const Testing::RecordedPath&>(*before.at(0)).getSegments().at(0), "moveTo 100 0");
}

TEST(GlyphOutlines, SurviveAPainterThatEmptiesTheCaches) {
    class FlushingPainter : public RecordingPainter {
    public:
        explicit FlushingPainter(FontFactory& factory)
            : _factory(factory) {}
        std::shared_ptr<const Gfx::Path> takePath() override {
            _factory.flush();
            return RecordingPainter::takePath();
        }

    private:
        FontFactory& _factory;
    };
    Engine engine;
    const FacePtr face = engine.getFace();
    FlushingPainter painter(*engine.factory);
    const Paths paths = fetchOutlines(Testing::makeFaceInfo(), face, 10.0F, someGlyphs.data(), 3, painter);
    ASSERT_THAT(paths, Each(testing::NotNull()));
    EXPECT_EQ(dynamic_cast<const Testing::RecordedPath&>(*paths[0]).getSegments(),
              dynamic_cast<const Testing::RecordedPath&>(*paths[2]).getSegments());
}

} // namespace
} // namespace Vell::FontEngine
