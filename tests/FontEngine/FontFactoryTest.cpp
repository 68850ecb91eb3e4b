#include <FontEngine/AssertionText.h>
#include <FontEngine/Engine.h>
#include <FontEngine/GlyphKeyFields.h>

#include <support/RecordingPainter.h>
#include <support/spy/FreeTypeSpy.h>

#include <FontEngine/Renderer/FE_BitmapGlyphRun.h>

#include <gmock/gmock.h>

#include <type_traits>

namespace Vell::FontEngine {
namespace {

using testing::ElementsAre;
using Testing::FreeTypeSpy;
using testing::IsEmpty;
using Testing::makeFaceInfo;
using Testing::RecordingPainter;

/// An engine with many families.
struct ManyFonts : Engine {
    ManyFonts() {
        const auto bytes = std::make_shared<const Testing::Bytes>(makeTestFont().build());
        for (int i = 0; i < count; ++i) {
            loader->setFont(std::to_string(i), false, false, bytes);
        }
    }

    static constexpr int count = 60;
};

bool isFaceCached(const Engine& engine, const std::string& name) {
    const FreeTypeSpy spy;
    engine.getFace(name);
    return spy.countCalls("FT_Open_Face") == 0;
}

bool areBytesCached(const Engine& engine, const std::string& name, bool bold = false, bool italic = false) {
    engine.loader->clearCalls();
    engine.factory->getFaceDataBytes(makeFaceInfo(name, bold, italic));
    return engine.loader->countCalls() == 0;
}

std::shared_ptr<const FT_BitmapGlyphRec_> render(const Engine& engine, unsigned char offset) {
    return engine.getFace()->getBitmapGlyph(KeyFields().with(&KeyFields::offset, offset).makeBitmap(), false);
}

/// Colours a bitmap that another engine rendered. Each red gives an image of its own.
std::shared_ptr<const BitmapGlyphImageWithDeleter> paint(const Engine& engine, unsigned char red) {
    const KeyFields fields = KeyFields().with(&KeyFields::mode, FT_RENDER_MODE_LCD);
    const auto bitmap = Engine().getFace()->getBitmapGlyph(fields.makeBitmap(), false);
    return engine.factory->getGlyphBitmapWithSubpixels(BitmapGlyph(bitmap, {0, 0}, fields.makeBitmap()),
                                                       {red, 0, 0, 255});
}

TEST(FontFactory, LoadsNothingWhenItIsMade) {
    const auto loader = std::make_shared<Testing::CountingLoader>();
    const FreeTypeSpy spy;
    const FactoryPtr factory = FontFactory::create(loader, "Default Family");
    EXPECT_THAT(loader->getCalls(), IsEmpty());
    EXPECT_THAT(spy.getLines(), IsEmpty());
    EXPECT_EQ(&factory->getFontLoader(), loader.get());
    EXPECT_EQ(loader.use_count(), 2) << "shares the loader";
}

TEST(FontFactory, PassesTheDefaultNameToThePlatformLoader) {
    const FactoryPtr factory = FontFactory::create("Default Family");
    EXPECT_EQ(factory->substituteDefaultFaceName(makeFaceInfo("a"))->getName(), "Default Family");
    EXPECT_EQ(factory->getFontLoader().getFamilyNameForRange(0), "");
}

TEST(FontFactory, KeepsEverythingUntilItIsReset) {
    const ManyFonts engine;
    std::vector<FacePtr> faces;
    std::vector<std::shared_ptr<const FT_BitmapGlyphRec_>> glyphs;
    for (int i = 0; i < ManyFonts::count; ++i) {
        faces.push_back(engine.getFace(std::to_string(i)));
    }
    for (unsigned int i = 0; i < 256; ++i) {
        glyphs.push_back(render(engine, static_cast<unsigned char>(i)));
    }
    engine.loader->clearCalls();
    const FreeTypeSpy spy;
    for (int i = 0; i < ManyFonts::count; ++i) {
        EXPECT_EQ(engine.getFace(std::to_string(i)), faces.at(static_cast<std::size_t>(i)));
    }
    for (unsigned int i = 0; i < 256; ++i) {
        EXPECT_EQ(render(engine, static_cast<unsigned char>(i)), glyphs.at(i));
    }
    EXPECT_THAT(spy.getLines(), IsEmpty());
    EXPECT_THAT(engine.loader->getCalls(), IsEmpty());
}

TEST(FontFactoryReset, KeepsTheMostRecentlyUsedFaces) {
    ManyFonts engine;
    engine.factory->reset(2, 0);
    engine.getFace("1");
    engine.getFace("2");
    engine.getFace("1");
    engine.getFace("3");
    EXPECT_TRUE(isFaceCached(engine, "1"));
    EXPECT_TRUE(isFaceCached(engine, "3"));
    EXPECT_FALSE(isFaceCached(engine, "2"));
    EXPECT_FALSE(isFaceCached(engine, "1")) << "evicted by the previous one";
}

TEST(FontFactoryReset, LimitsFontFilesIncludingProbesAndNegativeAnswers) {
    ManyFonts engine;
    engine.factory->reset(2, 0);
    engine.factory->getFaceDataBytes(makeFaceInfo("1"));
    EXPECT_EQ(engine.factory->getFaceData(makeFaceInfo("unknown", true)), nullptr);
    EXPECT_TRUE(areBytesCached(engine, "unknown", false, true));
    EXPECT_FALSE(areBytesCached(engine, "unknown", true, false));
    EXPECT_FALSE(areBytesCached(engine, "1"));
}

TEST(FontFactoryReset, LeavesTheNumberOfGlyphsUnlimited) {
    Engine engine;
    engine.factory->reset(1, 0);
    const auto first = render(engine, 0);
    for (unsigned int i = 1; i < 256; ++i) {
        render(engine, static_cast<unsigned char>(i));
    }
    EXPECT_EQ(render(engine, 0), first);
}

TEST(FontFactoryReset, LimitsTheBytesOfBitmaps) {
    Engine engine;
    // The box of 'A' at size 10 is 4 x 7 pixels: 28 + 48 = 76 bytes; shifted by a fraction it is 5 x 7: 83.
    engine.factory->reset(0, 76 + 83);
    const auto whole = render(engine, 0);
    ASSERT_EQ(whole->bitmap.pitch * static_cast<int>(whole->bitmap.rows), 28);
    const auto shifted = render(engine, 4);
    ASSERT_EQ(shifted->bitmap.pitch * static_cast<int>(shifted->bitmap.rows), 35);
    EXPECT_EQ(render(engine, 0), whole) << "exactly at the limit";
    const auto third = render(engine, 8);
    EXPECT_EQ(render(engine, 8), third);
    EXPECT_EQ(render(engine, 0), whole) << "used after the other";
    EXPECT_NE(render(engine, 4), shifted);
}

TEST(FontFactoryReset, GivesBitmapsAndColoredImagesEachTheWholeLimit) {
    const Engine engine;
    const auto image = paint(engine, 0);
    const unsigned long limit = 2UL * image->rows * 4 * static_cast<unsigned int>(image->pitch);
    engine.factory->reset(0, limit);
    paint(engine, 0);
    paint(engine, 1);
    const auto bitmapCount = static_cast<unsigned int>(limit / 83); // of 'A' shifted by a fraction, as above
    ASSERT_LT(bitmapCount, 63U);
    for (unsigned int i = 1; i <= bitmapCount; ++i) {
        render(engine, static_cast<unsigned char>(i));
    }
    const FactoryCacheFigures full = engine.factory->getCacheFigures();
    EXPECT_EQ(full.bitmaps.entries, bitmapCount);
    EXPECT_EQ(full.coloredImages.entries, 2U);
    EXPECT_GT(full.bitmaps.bytes + full.coloredImages.bytes, limit);
    render(engine, 63);
    EXPECT_EQ(engine.factory->getCacheFigures().bitmaps.evictions, 1U);
    EXPECT_EQ(engine.factory->getCacheFigures().coloredImages.evictions, 0U);
    paint(engine, 2);
    EXPECT_EQ(engine.factory->getCacheFigures().bitmaps.evictions, 1U);
    EXPECT_EQ(engine.factory->getCacheFigures().coloredImages.evictions, 1U);
}

/// Adds many entries to the caches and expects that so many stay.
void expectRoom(const ManyFonts& engine, std::uint64_t faces, std::uint64_t bitmaps, std::uint64_t images) {
    for (int i = 0; i < ManyFonts::count; ++i) {
        engine.getFace(std::to_string(i));
        render(engine, static_cast<unsigned char>(4 * i));
        paint(engine, static_cast<unsigned char>(i));
    }
    const FactoryCacheFigures figures = engine.factory->getCacheFigures();
    EXPECT_EQ(figures.fontFiles.entries, faces);
    EXPECT_EQ(figures.faces.entries, faces);
    EXPECT_EQ(figures.bitmaps.entries, bitmaps);
    EXPECT_EQ(figures.coloredImages.entries, images);
}

TEST(FontFactoryReset, ReplacesEarlierLimits) {
    const ManyFonts engine;
    constexpr std::uint64_t count = ManyFonts::count;
    engine.factory->reset(2, 1);
    expectRoom(engine, 2, 1, 1);
    engine.factory->reset(5, 0);
    expectRoom(engine, 5, count, count);
    engine.factory->reset(0, 1);
    expectRoom(engine, count + 1, 1, 1); // plus the font of the bitmaps
    engine.factory->reset(0, 0);
    expectRoom(engine, count + 1, count, count);
}

TEST(FontFactoryReset, AlwaysDropsColoredImagesAndNegativeAnswers) {
    const Engine engine;
    engine.factory->reset(5, 100000);
    for (const char* const name : {"first", "second"}) {
        const auto image = paint(engine, 1);
        ASSERT_EQ(paint(engine, 1), image);
        ASSERT_EQ(engine.factory->getFaceDataBytes(makeFaceInfo(name)), nullptr);
        engine.loader->setFont(name, false, false, makeTestFont().build());
        ASSERT_EQ(engine.factory->getFaceDataBytes(makeFaceInfo(name)), nullptr);
        engine.factory->reset(5, 100000);
        EXPECT_NE(paint(engine, 1), image);
        EXPECT_NE(engine.factory->getFaceDataBytes(makeFaceInfo(name)), nullptr);
    }
}

TEST(FontFactoryReset, EmptiesFourCachesAndLeavesTheOutlines) {
    Engine engine;
    RecordingPainter painter;
    const FacePtr face = engine.getFace();
    const auto bitmap = render(engine, 0);
    const auto path = face->getOutlineGlyphPath(KeyFields().makeOutline(), painter);
    engine.loader->clearCalls();
    engine.factory->reset(1, 1);
    const FacePtr again = engine.getFace();
    EXPECT_NE(again, face);
    EXPECT_THAT(engine.loader->getCalls(), ElementsAre("loadFont \"Test Sans\" regular"));
    EXPECT_NE(render(engine, 0), bitmap);
    EXPECT_EQ(again->getOutlineGlyphPath(KeyFields().makeOutline(), painter), path);
    for (unsigned long glyph = 2; glyph < 5; ++glyph) {
        again->getOutlineGlyphPath(KeyFields().with(&KeyFields::glyph, glyph).makeOutline(), painter);
    }
    EXPECT_EQ(again->getOutlineGlyphPath(KeyFields().makeOutline(), painter), path) << "unlimited as before";
}

TEST(FontFactoryReset, ReleasesEntriesThatNobodyElseOwns) {
    Engine engine;
    const std::weak_ptr<const FontFace> face = std::shared_ptr<const FontFace>(engine.getFace());
    const std::weak_ptr<const FT_BitmapGlyphRec_> glyph = render(engine, 0);
    engine.factory->reset(0, 0);
    EXPECT_TRUE(face.expired());
    EXPECT_TRUE(glyph.expired());
}

TEST(FontFactoryFlush, EmptiesEveryCache) {
    Engine engine;
    RecordingPainter painter;
    const FacePtr face = engine.getFace();
    const auto bitmap = render(engine, 0);
    const auto path = face->getOutlineGlyphPath(KeyFields().makeOutline(), painter);
    engine.loader->clearCalls();
    engine.factory->flush();
    EXPECT_NE(engine.getFace(), face);
    EXPECT_THAT(engine.loader->getCalls(), ElementsAre("loadFont \"Test Sans\" regular"));
    EXPECT_NE(render(engine, 0), bitmap);
    EXPECT_NE(face->getOutlineGlyphPath(KeyFields().makeOutline(), painter), path);
    EXPECT_EQ(bitmap->bitmap.buffer[0], 255) << "glyphs in use stay valid";
    EXPECT_EQ(face->getBasicMetrics().getAscender(), 0.8F);
}

TEST(FontFactoryFlush, KeepsTheLimits) {
    ManyFonts engine;
    engine.factory->reset(1, 10);
    engine.factory->flush();
    engine.getFace("1");
    engine.getFace("2");
    EXPECT_FALSE(isFaceCached(engine, "1"));
    const auto glyph = render(engine, 0);
    render(engine, 4);
    EXPECT_NE(render(engine, 0), glyph);
}

/// A painter whose paths record which FreeType objects were released before them.
class WatchedPathPainter : public RecordingPainter {
public:
    WatchedPathPainter(const FreeTypeSpy& spy, std::vector<std::string>& log)
        : _spy(spy)
        , _log(log) {}

    std::shared_ptr<const Gfx::Path> takePath() override {
        return std::shared_ptr<const Gfx::Path>(new Gfx::Path, [this](const Gfx::Path* path) {
            for (const std::string& line : _spy.getLines({"FT_Done_Glyph", "FT_Done_Face"})) {
                _log.push_back(line);
            }
            _log.emplace_back("path");
            delete path;
        });
    }

private:
    const FreeTypeSpy& _spy;
    std::vector<std::string>& _log;
};

TEST(FontFactoryFlush, ReleasesGlyphsThenPathsThenFaces) {
    FreeTypeSpy spy;
    std::vector<std::string> log;
    WatchedPathPainter painter(spy, log);
    Engine engine;
    engine.getFace()->getOutlineGlyphPath(KeyFields().makeOutline(), painter);
    render(engine, 0);
    spy.clear();
    engine.factory->flush();
    EXPECT_THAT(log, ElementsAre("FT_Done_Glyph", "path"));
    EXPECT_THAT(spy.getLines({"FT_Done_Glyph", "FT_Done_Face"}),
                ElementsAre("FT_Done_Glyph", "FT_Done_Face"));
}

TEST(FontFactory, DestroysItsCachesButNotFacesInUse) {
    std::weak_ptr<const FT_BitmapGlyphRec_> glyph;
    std::shared_ptr<const FontFace> face;
    {
        const Engine engine;
        face = engine.getFace();
        glyph = render(engine, 0);
        EXPECT_FALSE(glyph.expired());
    }
    EXPECT_TRUE(glyph.expired());
    EXPECT_EQ(face.use_count(), 1);
    EXPECT_EQ(face->getBasicMetrics().getCharMap()['A'].glyphIndex, TestGlyph::a);
}

static_assert(std::is_base_of_v<Gfx::FontMetricsFactory, FontFactory> &&
              std::is_base_of_v<std::enable_shared_from_this<FontFactory>, FontFactory>);
static_assert(!std::is_copy_constructible_v<FontFactory> && std::has_virtual_destructor_v<FontFactory>);

TEST(FontFactoryDeathTest, AssertsItsLoader) {
    const std::shared_ptr<const FontLoaders::FontLoader> null;
    EXPECT_DEATH(FontFactory::create(null, ""),
                 Testing::printsAssertion("Utils/Public/Ptr/CheckedPtr:206", "_ptr"));
}

} // namespace
} // namespace Vell::FontEngine
