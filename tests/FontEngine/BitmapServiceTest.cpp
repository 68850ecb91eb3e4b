#include <FontEngine/AssertionText.h>
#include <FontEngine/Engine.h>
#include <FontEngine/FixedRenderer.h>
#include <FontEngine/GlyphKeyFields.h>

#include <support/spy/FreeTypeSpy.h>

#include <FontLoaders/Public/Exceptions.h>

#include <gmock/gmock.h>

#include <limits>
#include <thread>

namespace Vell::FontEngine {
namespace {

using testing::ElementsAre;
using Testing::FreeTypeSpy;
using testing::IsEmpty;

constexpr float infinity = std::numeric_limits<float>::infinity();
constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();

std::shared_ptr<const FT_BitmapGlyphRec_> render(const Engine& engine, const KeyFields& fields) {
    return engine.factory->getBitmapGlyph(fields.makeBitmap(), engine.getFace(), false);
}

/// Returns whether a glyph is in the cache: requesting it loads nothing.
bool isCached(const Engine& engine, const KeyFields& fields) {
    const FreeTypeSpy spy;
    render(engine, fields);
    return spy.countCalls("FT_Load_Glyph") == 0;
}

TEST(BitmapService, RendersAGlyphOnce) {
    const Engine engine;
    const FacePtr face = engine.getFace();
    const FreeTypeSpy spy;
    const auto& first = engine.factory->getBitmapGlyph(KeyFields().makeBitmap(), face, false);
    const auto& second = engine.factory->getBitmapGlyph(KeyFields().makeBitmap(), face, false);
    EXPECT_EQ(&first, &second) << "the pointer in the cache";
    EXPECT_EQ(face->getBitmapGlyph(KeyFields().makeBitmap(), false), first);
    EXPECT_EQ(spy.countCalls("FT_Load_Glyph"), 1U);
    EXPECT_EQ(spy.countCalls("FT_Set_Char_Size"), 1U);
}

TEST(BitmapService, SharesABitmapBetweenCharactersAndFlips) {
    const Engine engine;
    const FacePtr face = engine.getFace();
    const auto first = face->getBitmapGlyph(KeyFields().makeBitmap(), false);
    EXPECT_EQ(face->getBitmapGlyph(KeyFields().with(&KeyFields::unicode, '_').makeBitmap(), false), first);
    EXPECT_EQ(face->getBitmapGlyph(KeyFields().makeBitmap(), true), first);
    EXPECT_NE(face->getBitmapGlyph(KeyFields().with(&KeyFields::offset, 4).makeBitmap(), false), first);
}

TEST(BitmapService, PassesOnTheFlip) {
    const Engine engine(makeTestFont().build());
    const FacePtr face = engine.getFace();
    setFixedRendering(face->getHandle().get(), {2, 1, 1, FT_PIXEL_MODE_GRAY, 0, 0, {7, 8}});
    EXPECT_EQ(face->getBitmapGlyph(KeyFields().makeBitmap(), true)->bitmap.buffer[0], 8);
    engine.factory->flush();
    EXPECT_EQ(face->getBitmapGlyph(KeyFields().makeBitmap(), false)->bitmap.buffer[0], 7);
}

TEST(BitmapService, SizesTheFaceBeforeItRenders) {
    const Engine engine;
    const FacePtr face = engine.getFace();
    const FreeTypeSpy spy;
    face->getBitmapGlyph(KeyFields().makeBitmap(), false);
    EXPECT_THAT(spy.getLines(),
                ElementsAre("FT_Set_Char_Size 0 640 72 0", "FT_Set_Transform 65536 0 0 65536 0 0",
                            "FT_Load_Glyph 1 8", "FT_Reference_Library", "FT_Get_Glyph",
                            "FT_Glyph_To_Bitmap 0 null 1"));
}

std::string getSizeCall(float size, cinder::Vec2<float> scale, float ratio) {
    const Engine engine;
    const FacePtr face = engine.getFace();
    const FreeTypeSpy spy;
    face->getBitmapGlyph(KeyFields()
                             .with(&KeyFields::size, size)
                             .with(&KeyFields::scale, scale)
                             .with(&KeyFields::ratio, ratio)
                             .makeBitmap(),
                         false);
    const auto lines = spy.getLines({"FT_Set_Char_Size"});
    return lines.empty() ? "none" : lines.at(0);
}

TEST(BitmapService, TruncatesSizesTo26Dot6AndWholeDotsPerInch) {
    EXPECT_EQ(getSizeCall(10.3F, {1.7F, 9.0F}, 1.0F), "FT_Set_Char_Size 0 1120 72 0")
        << "17.51 * 64 = 1120.64";
    EXPECT_EQ(getSizeCall(10.0F, {1.0F, 1.0F}, 1.5F), "FT_Set_Char_Size 0 640 108 0");
    EXPECT_EQ(getSizeCall(10.0F, {1.0F, 1.0F}, 1.33F), "FT_Set_Char_Size 0 640 95 0") << "95.76";
    EXPECT_EQ(getSizeCall(0.0F, {1.0F, 1.0F}, 0.0F), "FT_Set_Char_Size 0 0 0 0");
    EXPECT_EQ(getSizeCall(-10.01F, {1.0F, 1.0F}, -0.01F), "FT_Set_Char_Size 0 -640 0 0") << "towards zero";
    EXPECT_EQ(getSizeCall(10.0F, {-2.0F, 1.0F}, 2.0F), "FT_Set_Char_Size 0 -1280 144 0");
}

TEST(BitmapService, MultipliesSizeAndScaleInSinglePrecision) {
    EXPECT_EQ(getSizeCall(8.2F, {2.5F, 1.0F}, 1.0F), "FT_Set_Char_Size 0 1312 72 0")
        << "in double precision it would be 1311";
    EXPECT_EQ(getSizeCall(9.2F, {5.0F, 1.0F}, 1.0F), "FT_Set_Char_Size 0 2944 72 0")
        << "in double precision it would be 2943";
}

TEST(BitmapService, RemembersASizeThatFreeTypeRefuses) {
    const Engine engine;
    const FacePtr face = engine.getFace();
    FreeTypeSpy spy;
    spy.failCall("FT_Set_Char_Size", 1, FT_Err_Invalid_Pixel_Size);
    EXPECT_EQ(face->getBitmapGlyph(KeyFields().makeBitmap(), false), nullptr);
    EXPECT_THAT(spy.getLines(), ElementsAre("FT_Set_Char_Size 0 640 72 0"));
    spy.clear();
    EXPECT_EQ(face->getBitmapGlyph(KeyFields().makeBitmap(), false), nullptr);
    EXPECT_THAT(spy.getLines(), IsEmpty());
}

TEST(BitmapService, TreatsSizesThatOverflowAsRefused) {
    const Engine engine;
    const FacePtr face = engine.getFace();
    const KeyFields fields;
    const std::vector<KeyFields> refused = {
        fields.with(&KeyFields::size, notANumber),
        fields.with(&KeyFields::size, infinity),
        fields.with(&KeyFields::size, -infinity),
        fields.with(&KeyFields::size, 1e30F),
        fields.with(&KeyFields::size, 1.5e17F),
        fields.with(&KeyFields::scale, cinder::Vec2<float>(notANumber, 1)),
        fields.with(&KeyFields::scale, cinder::Vec2<float>(infinity, 1)),
        fields.with(&KeyFields::ratio, notANumber),
        fields.with(&KeyFields::ratio, infinity),
        fields.with(&KeyFields::ratio, -1.0F),
        fields.with(&KeyFields::ratio, 6e7F)};
    const FreeTypeSpy spy;
    for (const KeyFields& variant : refused) {
        EXPECT_EQ(face->getBitmapGlyph(variant.makeBitmap(), false), nullptr);
    }
    EXPECT_THAT(spy.getLines(), IsEmpty()) << "FreeType is not called";
    const cinder::Vec2<float> ignored(1, notANumber);
    EXPECT_NE(face->getBitmapGlyph(fields.with(&KeyFields::scale, ignored).makeBitmap(), false), nullptr);
}

TEST(BitmapService, WeighsAbsolutePitchTimesRowsAnd48) {
    for (const int pitch : {12, -12}) {
        Engine engine;
        setFixedRendering(engine.getFace()->getHandle().get(),
                          {10, 11, pitch, FT_PIXEL_MODE_GRAY, 0, 0, Testing::Bytes(120)});
        const KeyFields first;
        const KeyFields second = first.with(&KeyFields::offset, 4);
        for (const unsigned long limit : {2UL * 168, 2UL * 168 - 1}) {
            engine.factory->reset(0, limit);
            setFixedRendering(engine.getFace()->getHandle().get(),
                              {10, 11, pitch, FT_PIXEL_MODE_GRAY, 0, 0, Testing::Bytes(120)});
            render(engine, first);
            render(engine, second);
            EXPECT_EQ(isCached(engine, first), limit == 2UL * 168) << "pitch " << pitch;
        }
    }
}

TEST(BitmapService, ComputesWeightsIn32Bits) {
    Engine engine;
    engine.factory->reset(0, 2 * 48);
    setFixedRendering(engine.getFace()->getHandle().get(),
                      {0x10000, 1, 0x10000, FT_PIXEL_MODE_GRAY, 0, 0, {}});
    render(engine, KeyFields());
    render(engine, KeyFields().with(&KeyFields::offset, 4));
    EXPECT_TRUE(isCached(engine, KeyFields())) << "2^32 is 0, and the record's 48 are added after";
}

TEST(BitmapService, GivesFailuresNoWeight) {
    Engine engine;
    engine.factory->reset(0, 1);
    render(engine, KeyFields());
    EXPECT_EQ(render(engine, KeyFields().with(&KeyFields::ratio, infinity)), nullptr);
    EXPECT_FALSE(isCached(engine, KeyFields()))
        << "two entries are over the limit now, and the newer one stays";
    engine.factory->reset(0, 0xFFFF);
    render(engine, KeyFields());
    for (int i = 1; i <= 2000; ++i) {
        render(engine, KeyFields().with(&KeyFields::ratio, infinity).with(&KeyFields::glyph, i));
    }
    EXPECT_TRUE(isCached(engine, KeyFields())) << "2000 failures of 48 bytes would be 96000";
}

TEST(BitmapService, KeepsASingleGlyphAboveTheLimit) {
    Engine engine;
    engine.factory->reset(0, 10);
    render(engine, KeyFields());
    EXPECT_TRUE(isCached(engine, KeyFields()));
    render(engine, KeyFields().with(&KeyFields::offset, 4));
    EXPECT_TRUE(isCached(engine, KeyFields().with(&KeyFields::offset, 4)));
    EXPECT_FALSE(isCached(engine, KeyFields()));
}

TEST(BitmapService, PropagatesErrorsAndCachesNothing) {
    const Engine engine;
    const FacePtr face = engine.getFace();
    FreeTypeSpy spy;
    for (const char* const call : {"FT_Load_Glyph", "FT_Get_Glyph", "FT_Glyph_To_Bitmap"}) {
        spy.failCall(call);
        EXPECT_THROW(face->getBitmapGlyph(KeyFields().makeBitmap(), false), FontLoaders::FreeTypeException);
    }
    std::shared_ptr<const FT_BitmapGlyphRec_> glyph;
    std::thread([&] { glyph = face->getBitmapGlyph(KeyFields().makeBitmap(), false); }).join();
    EXPECT_NE(glyph, nullptr) << "on another thread: the lock was released";
}

TEST(BitmapServiceDeathTest, AssertsItsFace) {
    const Engine engine;
    const FacePtr null = Testing::makeMovedFrom(engine.getFace());
    EXPECT_DEATH(engine.factory->getBitmapGlyph(KeyFields().makeBitmap(), null, false),
                 Testing::printsAssertion("FontEngine/FE_FontFactory:342", "fontFace"));
}

} // namespace
} // namespace Vell::FontEngine
