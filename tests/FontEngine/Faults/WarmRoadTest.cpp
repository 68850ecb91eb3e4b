// The allocations of a text whose glyphs are cached.

#include <FontEngine/Engine.h>

#include <support/FailingAllocations.h>
#include <support/RecordingPainter.h>

#include <FontEngine/Renderer/FE_GlyphOutlines.h>
#include <FontEngine/Renderer/FE_PlacedGlyphRun.h>
#include <FontEngine/Renderer/FE_RasterTextPainter.h>
#include <FontEngine/Renderer/FE_VectorTextPainter.h>
#include <Utils/Public/Ptr/PtrUtils.h>

#include <gtest/gtest.h>

#include <new>
#include <string>
#include <utility>
#include <vector>

namespace Vell::FontEngine {
namespace {

using Testing::FailingAllocations;

constexpr const char* longFamily = "A Family Whose Name Fits Into No Short String";
constexpr const char* snowmanText = "\xE2\x98\x83";

class IdleGlyphPainter : public BitmapGlyphPainter {
public:
    void drawGlyph(const BitmapGlyphImage&, const cinder::Vec2<float>&) override { ++count; }
    int count = 0;
};

/// Serves the test font under every name without allocating.
class QuietLoader : public FontLoaders::FontLoader {
public:
    std::shared_ptr<const Testing::Bytes> loadFont(const Testing::FaceInfoPtr&) const override {
        return _bytes;
    }
    std::shared_ptr<const Testing::Bytes> loadDefaultFont(bool, bool) const override { return _bytes; }
    std::string getFamilyNameForRange(unsigned int) const override { return "Fallback"; }

private:
    std::shared_ptr<const Testing::Bytes> _bytes =
        std::make_shared<const Testing::Bytes>(makeTestFont().build());
};

/// A font with a long name, its descriptions, and painters.
struct WarmRoad {
    BitmapGlyphRun layOut(const std::string& text) {
        return raster.createGlyphRun(text, extFontInfo, font, 1.0F, {1.0F, 1.0F});
    }

    FactoryPtr factory = FontFactory::create(makeNNPtr<const QuietLoader>(), "Default Family");
    Testing::ExtFontInfoPtr extFontInfo = Testing::makeExtFontInfo(Testing::makeFontInfo(longFamily));
    Font font = factory->getFont(extFontInfo->getFontInfo());
    Testing::RecordingPainter painter;
    IdleGlyphPainter glyphPainter;
    RasterTextPainter raster{painter, glyphPainter, false};
    VectorTextPainter vector{painter};
};

TEST(WarmRoad, AllocatesOncePerRunWhateverItsLength) {
    WarmRoad road;
    const std::string text(500, 'A');
    road.layOut(text);
    {
        const FailingAllocations first(1);
        EXPECT_THROW(road.layOut(text), std::bad_alloc) << "the vector of its glyphs";
    }
    const FailingAllocations second(2);
    EXPECT_EQ(road.layOut(text).getGlyphs().size(), 500U);
    EXPECT_FALSE(second.hasFailed());
}

TEST(WarmRoad, AllocatesOncePerVectorRun) {
    WarmRoad road;
    const std::string text = "AxAxAx";
    road.vector.createGlyphRun(text, road.extFontInfo, road.font);
    const FailingAllocations second(2);
    EXPECT_EQ(road.vector.createGlyphRun(text, road.extFontInfo, road.font).getGlyphs().size(), 6U);
    EXPECT_FALSE(second.hasFailed());
}

TEST(WarmRoad, AllocatesOncePerRunOfPlacedGlyphs) {
    WarmRoad road;
    const auto faceInfo = road.font.getFontInfo()->getFontFaceInfo();
    const std::vector<PlacedGlyph> glyphs(100, {TestGlyph::a, true, 'A', {3, 4}});
    const auto place = [&] {
        PlacedGlyphRun placed(1.0F, {1, 1}, false, 200);
        placed.append(faceInfo, road.font.getFace(), 10.0F, glyphs.data(), glyphs.size());
        placed.append(faceInfo, road.font.getFace(), 10.0F, glyphs.data(), glyphs.size());
        return std::move(placed).finish().getGlyphs().size();
    };
    place();
    const FailingAllocations second(2);
    EXPECT_EQ(place(), 200U);
    EXPECT_FALSE(second.hasFailed());
}

TEST(WarmRoad, AllocatesOncePerFetchOfOutlines) {
    WarmRoad road;
    const auto faceInfo = road.font.getFontInfo()->getFontFaceInfo();
    const std::vector<unsigned short> glyphs(100, TestGlyph::a);
    const auto fetch = [&] {
        return fetchOutlines(faceInfo, road.font.getFace(), 10.0F, glyphs.data(), glyphs.size(), road.painter)
            .size();
    };
    fetch();
    const FailingAllocations second(2);
    EXPECT_EQ(fetch(), 100U);
    EXPECT_FALSE(second.hasFailed());
}

TEST(WarmRoad, DrawsWithoutAllocating) {
    WarmRoad road;
    const BitmapGlyphRun run = road.layOut("Ax A");
    const FailingAllocations first(1);
    road.raster.drawGlyphRun(run, road.font, {0, 0, 0, 255}, 1.0F);
    EXPECT_FALSE(first.hasFailed());
    EXPECT_EQ(road.glyphPainter.count, 4);
}

TEST(WarmRoad, MakesOneDescriptionForARepeatedFallback) {
    WarmRoad road;
    const std::string text = std::string(snowmanText) + snowmanText + snowmanText;
    road.layOut(text);
    {
        const FailingAllocations second(2);
        EXPECT_THROW(road.layOut(text), std::bad_alloc) << "the description";
    }
    road.layOut(text); // the cache compares with the description that came first
    const FailingAllocations third(3);
    EXPECT_EQ(road.layOut(text).getGlyphs().size(), 3U);
    EXPECT_FALSE(third.hasFailed());
}

} // namespace
} // namespace Vell::FontEngine
