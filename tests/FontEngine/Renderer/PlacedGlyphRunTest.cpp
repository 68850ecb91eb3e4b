#include <FontEngine/Engine.h>
#include <FontEngine/Renderer/LookUpModel.h>

#include <support/ClientDescriptions.h>
#include <support/InjectedError.h>
#include <support/RecordingGlyphPainter.h>
#include <support/RecordingPainter.h>

#include <FontEngine/FE_FontDescriptions.h>
#include <FontEngine/Renderer/FE_PlacedGlyphRun.h>
#include <FontEngine/Renderer/FE_RasterTextPainter.h>
#include <FontLoaders/Public/Exceptions.h>
#include <Utils/Public/Ptr/PtrUtils.h>

#include <gmock/gmock.h>

#include <functional>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace Vell::FontEngine {
namespace {

using testing::ElementsAre;
using Testing::FaceInfoPtr;
using Testing::makeFaceInfo;

using Glyphs = std::vector<PlacedGlyph>;
using Point = cinder::Vec2<float>;

constexpr Point unscaled = {1.0F, 1.0F};
constexpr PlacedGlyph firstGlyph = {TestGlyph::a, true, 'A', {0, 0}};
const Glyphs someGlyphs = {
    firstGlyph, {TestGlyph::x, true, 'x', {6, 0}}, {TestGlyph::underscore, true, '_', {10, 0}}};

void append(PlacedGlyphRun& placed, const FacePtr& face, const Glyphs& glyphs = someGlyphs,
            const FaceInfoPtr& faceInfo = makeFaceInfo(), float size = 10.0F) {
    placed.append(faceInfo, face, size, glyphs.data(), glyphs.size());
}

BitmapGlyphRun place(const FacePtr& face, const Glyphs& glyphs = someGlyphs,
                     const FaceInfoPtr& faceInfo = makeFaceInfo()) {
    PlacedGlyphRun placed(1.0F, unscaled, false, glyphs.size());
    append(placed, face, glyphs, faceInfo);
    return std::move(placed).finish();
}

/// Describes places and pixels.
std::string describe(const BitmapGlyphRun& run) {
    std::string text;
    for (const BitmapGlyph& glyph : run.getGlyphs()) {
        const FT_BitmapGlyphRec_& data = *glyph.getData();
        const auto bytes = static_cast<std::size_t>(data.bitmap.pitch) * data.bitmap.rows;
        text += std::to_string(glyph.getPos().x) + ' ' + std::to_string(data.top) + ' ' +
                std::string(reinterpret_cast<const char*>(data.bitmap.buffer), bytes) + '\n';
    }
    return text;
}

std::string describeSomeGlyphs() {
    const Engine engine;
    return describe(place(engine.getFace()));
}

// --- Places.

TEST(PlacedGlyphRun, IsEmptyWithoutGlyphs) {
    const Engine engine;
    PlacedGlyphRun placed(1.0F, unscaled, false, 0);
    placed.append(makeFaceInfo(), engine.getFace(), 10.0F, nullptr, 0);
    const BitmapGlyphRun run = std::move(placed).finish();
    EXPECT_TRUE(run.getGlyphs().empty());
    EXPECT_EQ(run.getBBox().xMin, 0);
    EXPECT_EQ(run.getBBox().yMax, 0);
}

TEST(PlacedGlyphRun, HasItsGlyphsAtAnyHeightWithOneBitmap) {
    const Engine engine;
    const BitmapGlyphRun run =
        place(engine.getFace(),
              {firstGlyph, {TestGlyph::a, true, 'A', {6, -3.25F}}, {TestGlyph::a, true, 'A', {2, 900}}});
    ASSERT_EQ(run.getGlyphs().size(), 3U);
    EXPECT_EQ(run.getGlyphs()[1].getPos(), Point(6, -3.25F));
    EXPECT_EQ(run.getGlyphs()[2].getPos(), Point(2, 900));
    EXPECT_EQ(run.getGlyphs()[0].getData(), run.getGlyphs()[1].getData());
    EXPECT_EQ(run.getBBox().yMax, 7) << "each box is relative to its own glyph";
    EXPECT_EQ(run.getBBox().yMin, 0);
}

TEST(PlacedGlyphRun, IsDrawnAtItsHeights) {
    const Engine engine;
    Testing::RecordingPainter painter;
    Testing::RecordingGlyphPainter glyphPainter;
    const Glyphs glyphs = {firstGlyph,
                           {TestGlyph::a, true, 'A', {6, -3}},
                           {TestGlyph::underscore, true, '_', {0, 4}},
                           {TestGlyph::a, true, 'A', {6, 2.5F}},
                           {TestGlyph::a, true, 'A', {6, -2.25F}}};
    RasterTextPainter(painter, glyphPainter, false)
        .drawGlyphRun(place(engine.getFace(), glyphs), engine.getFont(), {0, 0, 0, 255}, 1.0F);
    std::vector<float> tops;
    for (const Testing::DrawnGlyph& glyph : glyphPainter.getDrawnGlyphs()) {
        tops.push_back(glyph.position.y);
    }
    EXPECT_THAT(tops, ElementsAre(-7.0F, -10.0F, 4.0F, -5.0F, -9.25F)) << "an A is 7 pixels high";
}

TEST(PlacedGlyphRun, RendersTheFractionOfXUpToARatioOf1Point5) {
    const Engine engine;
    const std::pair<float, int> cases[] = {{1.0F, 16}, {1.4999F, 16}, {1.5F, 0}};
    for (const auto& [ratio, offset] : cases) {
        PlacedGlyphRun placed(ratio, unscaled, false, 1);
        append(placed, engine.getFace(), {{TestGlyph::a, true, 'A', {-6.75F, 0.5F}}});
        const BitmapGlyphRun run = std::move(placed).finish();
        EXPECT_EQ(run.getGlyphs().at(0).getInfo().getOffsetInsidePixel(), offset) << ratio;
    }
}

TEST(PlacedGlyphRun, SkipsGlyphsWithoutABitmap) {
    const Engine engine;
    PlacedGlyphRun placed(1.0F, unscaled, false, 4);
    append(placed, engine.getFace(), {firstGlyph});
    append(placed, engine.getFace(), someGlyphs, makeFaceInfo(), std::numeric_limits<float>::infinity());
    append(placed, engine.getFace(), {{TestGlyph::x, true, 'x', {6, 0}}});
    const BitmapGlyphRun run = std::move(placed).finish();
    ASSERT_EQ(run.getGlyphs().size(), 2U);
    EXPECT_EQ(run.getGlyphs()[1].getInfo().getGlyphIndex(), TestGlyph::x);
}

// --- Lifetimes.

TEST(PlacedGlyphRun, MayHaveMoreGlyphsThanExpected) {
    std::vector<std::weak_ptr<const FT_BitmapGlyphRec_>> bitmaps;
    {
        const Engine engine;
        PlacedGlyphRun placed(1.0F, unscaled, false, 0);
        std::string expected;
        for (int i = 0; i < 100; ++i) {
            append(placed, engine.getFace());
            expected += describeSomeGlyphs();
            if (i % 10 == 0) {
                engine.factory->flush();
            }
        }
        const BitmapGlyphRun run = std::move(placed).finish();
        EXPECT_EQ(describe(run), expected);
        for (const BitmapGlyph& glyph : run.getGlyphs()) {
            bitmaps.push_back(glyph.getData());
        }
        engine.factory->flush();
        EXPECT_EQ(describe(run), expected);
    }
    for (const auto& bitmap : bitmaps) {
        EXPECT_TRUE(bitmap.expired()) << "a reference is left";
    }
}

TEST(PlacedGlyphRun, KeepsItsGlyphsWhileTheCacheEvictsThem) {
    const Engine engine;
    engine.factory->reset(1, 1);
    PlacedGlyphRun placed(1.0F, unscaled, false, 12);
    for (int i = 0; i < 4; ++i) {
        append(placed, engine.getFace());
    }
    EXPECT_GE(engine.factory->getCacheFigures().bitmaps.evictions, 11U);
    const BitmapGlyphRun run = std::move(placed).finish();
    engine.factory->flush();
    const std::string once = describeSomeGlyphs();
    EXPECT_EQ(describe(run), once + once + once + once);
}

TEST(PlacedGlyphRun, OutlivesFaceAndFactory) {
    std::optional<PlacedGlyphRun> placed(std::in_place, 1.0F, unscaled, false, 6);
    auto engine = std::make_unique<Engine>();
    std::optional<FacePtr> face = engine->getFace();
    append(*placed, *face);
    engine.reset();
    append(*placed, *face); // adds nothing
    face.reset();
    const BitmapGlyphRun run = std::move(*placed).finish();
    placed.reset();
    EXPECT_EQ(describe(run), describeSomeGlyphs());
}

TEST(PlacedGlyphRun, MayHaveFacesOfSeveralFactories) {
    auto first = std::make_unique<Engine>();
    auto second = std::make_unique<Engine>();
    PlacedGlyphRun placed(1.0F, unscaled, false, 9);
    append(placed, first->getFace());
    append(placed, second->getFace());
    append(placed, first->getFace());
    second.reset();
    first->factory->flush();
    const BitmapGlyphRun run = std::move(placed).finish();
    first.reset();
    const std::string once = describeSomeGlyphs();
    EXPECT_EQ(describe(run), once + once + once);
}

TEST(PlacedGlyphRun, MayBeDroppedUnfinished) {
    const Engine engine;
    std::weak_ptr<const FT_BitmapGlyphRec_> bitmap;
    {
        PlacedGlyphRun placed(1.0F, unscaled, false, 3);
        append(placed, engine.getFace());
        bitmap = place(engine.getFace()).getGlyphs().at(0).getData();
        engine.factory->flush();
        EXPECT_FALSE(bitmap.expired()) << "the builder has it";
    }
    EXPECT_TRUE(bitmap.expired());
}

TEST(PlacedGlyphRun, GoesOnAfterAGlyphThatFails) {
    const ModelFonts fonts;
    const FaceInfoPtr faceInfo = makeFaceInfo("Test Sans");
    const FacePtr face = fonts.getFactory()->shareFace(faceInfo);
    const auto makeGlyph = [&](unsigned int character) {
        return PlacedGlyph{face->getBasicMetrics().getCharMap()[character].glyphIndex, true, character, {}};
    };
    PlacedGlyphRun placed(1.0F, unscaled, false, 5);
    EXPECT_THROW(append(placed, face, {makeGlyph('A'), makeGlyph('!'), makeGlyph('B')}),
                 FontLoaders::FreeTypeException);
    append(placed, face, {makeGlyph('C')});
    std::vector<unsigned int> characters;
    const BitmapGlyphRun run = std::move(placed).finish();
    for (const BitmapGlyph& glyph : run.getGlyphs()) {
        characters.push_back(glyph.getInfo().getUnicode());
    }
    EXPECT_THAT(characters, ElementsAre('A', 'C'));
}

// --- Descriptions of a client's class.

/// Runs a function in each call.
class CallingFaceInfo : public Testing::ClientFaceInfo {
public:
    explicit CallingFaceInfo(std::function<void()> call)
        : ClientFaceInfo("Test Sans", false, false)
        , _call(std::move(call)) {}
    std::string getName() const override {
        _call();
        return ClientFaceInfo::getName();
    }

private:
    std::function<void()> _call;
};

TEST(PlacedGlyphRun, KeepsTheClientsOwnDescription) {
    const Engine engine;
    const FacePtr face = engine.getFace();
    place(face);
    const FaceInfoPtr faceInfo = Testing::makeClientFaceInfo("Test Sans");
    const BitmapGlyphRun run = place(face, someGlyphs, faceInfo);
    ASSERT_EQ(run.getGlyphs().size(), 3U);
    for (const BitmapGlyph& glyph : run.getGlyphs()) {
        EXPECT_EQ(glyph.getInfo().getFaceInfo(), faceInfo);
    }
}

TEST(PlacedGlyphRun, PropagatesExceptionsOfADescription) {
    Interruption interruption;
    const std::string expected = describeSomeGlyphs();
    const auto placeNewly = [&](const FacePtr& face) {
        place(face); // the cache compares the next description with this one
        return describe(
            place(face, someGlyphs, makeNNPtr<const CallingFaceInfo>([&] { interruption.pass(); })));
    };
    EXPECT_EQ(placeNewly(Engine().getFace()), expected);
    const unsigned int calls = interruption.getCount();
    EXPECT_GE(calls, 4U) << "one for the hash and one for each glyph";
    for (unsigned int call = 1; call <= calls; ++call) {
        const Engine engine;
        const FacePtr face = engine.getFace();
        interruption.arm(call, [] { throw Testing::InjectedError(); });
        EXPECT_THROW(placeNewly(face), Testing::InjectedError) << call;
        std::string after;
        std::thread([&] { after = placeNewly(face); }).join(); // no lock is held
        EXPECT_EQ(after, expected) << call;
    }
}

TEST(PlacedGlyphRun, LetsADescriptionPlaceOtherGlyphsWhenItIsEvicted) {
    std::vector<std::string> inside;
    const Engine engine;
    const FacePtr face = engine.getFace();
    const auto placeLarge = [&] {
        PlacedGlyphRun placed(1.0F, unscaled, false, 3);
        append(placed, face, someGlyphs, makeFaceInfo(), 20.0F);
        return describe(std::move(placed).finish());
    };
    const auto fill = [&](const std::function<void()>& end) {
        place(face, {{TestGlyph::missing, true, 'Z', {}}}, makeNNPtr<const Testing::EndingFaceInfo>(end));
        return placeLarge();
    };
    const std::string expected = fill([] {});
    engine.factory->reset(0, engine.factory->getCacheFigures().bitmaps.bytes);
    fill([&] { inside.push_back(placeLarge()); });
    EXPECT_EQ(describe(place(face)), describeSomeGlyphs());
    EXPECT_THAT(inside, ElementsAre(expected));
}

TEST(PlacedGlyphRun, IsCompleteAlthoughADescriptionEndsTheFactory) {
    auto engine = std::make_unique<Engine>();
    const FacePtr face = engine->getFace();
    const FaceInfoPtr faceInfo = makeNNPtr<const CallingFaceInfo>([&] { engine.reset(); });
    PlacedGlyphRun placed(1.0F, unscaled, false, 6);
    append(placed, face, someGlyphs, faceInfo);
    append(placed, face, someGlyphs, faceInfo); // adds nothing
    EXPECT_EQ(face->shareFontFactory(), nullptr);
    EXPECT_EQ(describe(std::move(placed).finish()), describeSomeGlyphs());
}

} // namespace
} // namespace Vell::FontEngine
