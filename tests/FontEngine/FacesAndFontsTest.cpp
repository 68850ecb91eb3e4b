#include <FontEngine/AssertionText.h>
#include <FontEngine/Engine.h>

#include <support/InjectedError.h>
#include <support/spy/FreeTypeSpy.h>

#include <FontLoaders/Public/Exceptions.h>

#include <gmock/gmock.h>

#include <thread>
#include <type_traits>
#include <vector>

namespace Vell::FontEngine {
namespace {

using testing::ElementsAre;
using Testing::FreeTypeSpy;
using Testing::InjectedError;
using testing::IsEmpty;
using Testing::makeExtFontInfo;
using Testing::makeFaceInfo;
using Testing::makeFontInfo;

template <class Exception>
std::string getErrorText(const Engine& engine, const std::string& family) {
    try {
        engine.getFace(family);
    } catch (const Exception& error) {
        return error.what();
    }
    return "no exception";
}

TEST(GetFace, AnswersEqualDescriptionsWithOneFace) {
    const Engine engine;
    const FreeTypeSpy spy;
    const auto& first = engine.factory->getFace(makeFaceInfo());
    const auto& second = engine.factory->getFace(makeFaceInfo());
    EXPECT_EQ(&first, &second) << "the pointer in the cache";
    EXPECT_EQ(spy.countCalls("FT_Open_Face"), 1U);
    EXPECT_THAT(engine.loader->getCalls(), ElementsAre("loadFont \"Test Sans\" regular"));
}

TEST(GetFace, MakesAFaceForEveryStyleOfOneFile) {
    const Engine engine;
    EXPECT_EQ(engine.getFace("Test Sans")->getTransform(), GlyphTransform::None);
    EXPECT_EQ(engine.getFace("Test Sans", true)->getTransform(), GlyphTransform::Embolden);
    EXPECT_EQ(engine.getFace("Test Sans", false, true)->getTransform(), GlyphTransform::Slant);
    EXPECT_EQ(engine.getFace("Test Sans", true, true)->getTransform(), GlyphTransform::EmboldenAndSlant);
    EXPECT_EQ(engine.getFace("Test Sans")->getFaceData().bytes,
              engine.getFace("Test Sans", true, true)->getFaceData().bytes);
}

TEST(GetFace, ServesUnknownFamiliesWithTheDefaultFontOfTheStyle) {
    Engine engine;
    engine.loader->setDefaultFont(true, false, makeTestFont("Default Bold").build());
    const FacePtr face = engine.getFace("Unknown", true);
    EXPECT_STREQ(face->getHandle()->family_name, "Default Bold");
    EXPECT_EQ(face->getTransform(), GlyphTransform::None);
    EXPECT_THAT(engine.loader->getCalls(),
                ElementsAre("loadFont \"Unknown\" bold", "loadFont \"Unknown\" regular",
                            "loadFont \"Unknown\" italic", "loadDefaultFont bold"));
    engine.loader->clearCalls();
    EXPECT_EQ(engine.getFace("Unknown", true), face);
    EXPECT_THAT(engine.loader->getCalls(), IsEmpty());
}

TEST(GetFace, SynthesisesTheStyleOfTheDefaultFont) {
    Engine engine;
    engine.loader->setDefaultFont(false, false, makeTestFont("Default").build());
    EXPECT_EQ(engine.getFace("Unknown", true, true)->getTransform(), GlyphTransform::EmboldenAndSlant);
}

TEST(GetFace, KeepsTheDefaultFaceUnderTheRequestedDescriptionOnly) {
    Engine engine;
    engine.loader->setDefaultFont(false, false, makeTestFont("Default").build());
    const FacePtr unknown = engine.getFace("Unknown");
    const FacePtr nameless = engine.getFace("");
    EXPECT_NE(unknown, nameless);
    EXPECT_EQ(unknown->getFaceData().bytes, nameless->getFaceData().bytes);
    EXPECT_EQ(engine.loader->countCalls("loadDefaultFont"), 1U);
}

TEST(GetFace, ThrowsWhenEvenTheDefaultFontIsMissing) {
    Engine engine;
    const char* const text = "getFace() failed: cannot load font";
    EXPECT_EQ(getErrorText<FontLoaders::FontLoaderException>(engine, "Unknown"), text);
    EXPECT_EQ(getErrorText<BaseRuntimeError>(engine, "Unknown"), text) << "tries again";
    EXPECT_EQ(engine.loader->countCalls("loadDefaultFont"), 3U) << "regular, bold, italic: once each";
    engine.loader->setDefaultFont(false, false, makeTestFont("Default").build());
    engine.factory->flush();
    EXPECT_STREQ(engine.getFace("Unknown")->getHandle()->family_name, "Default");
}

TEST(GetFace, LetsFreeTypesErrorsThroughAndTriesAgain) {
    Engine engine;
    engine.loader->setFont("Garbage", false, false, Testing::Bytes(100, 'x'));
    FreeTypeSpy spy;
    EXPECT_THROW(engine.getFace("Garbage"), FontLoaders::FreeTypeException);
    EXPECT_THROW(engine.getFace("Garbage"), FontLoaders::FreeTypeException);
    EXPECT_EQ(spy.countCalls("FT_Open_Face"), 2U);
    EXPECT_EQ(engine.loader->countCalls(), 1U) << "the bytes were fine";
    spy.failCall("FT_New_Library");
    EXPECT_THROW(engine.getFace(), FontLoaders::FreeTypeException);
    EXPECT_STREQ(engine.getFace()->getHandle()->family_name, "Test Sans");
}

TEST(GetFace, TellsErrorsThatFreeTypeHasNoTextFor) {
    const Engine engine;
    FreeTypeSpy spy;
    spy.failCall("FT_Open_Face", 1, 9999);
    try {
        engine.getFace();
        FAIL() << "FreeType's error is lost";
    } catch (const FontLoaders::FreeTypeException& error) {
        EXPECT_THAT(error.what(), testing::HasSubstr("unknown error (error 9999)"));
    }
}

TEST(GetFace, LetsTheLoadersExceptionsThroughAndReleasesItsLock) {
    Engine engine;
    engine.loader->throwFrom("loadDefaultFont");
    EXPECT_THROW(engine.getFace("Unknown"), InjectedError);
    std::string family;
    std::thread([&] { family = engine.getFace()->getHandle()->family_name; }).join();
    EXPECT_EQ(family, "Test Sans");
    engine.loader->throwFrom("");
    engine.loader->setDefaultFont(false, false, makeTestFont("Default").build());
    EXPECT_STREQ(engine.getFace("Unknown")->getHandle()->family_name, "Default");
}

TEST(GetFont, MakesANewFontOverTheSharedFace) {
    const Engine engine;
    const auto description = makeFontInfo();
    const Font first = engine.factory->getFont(description);
    const Font second = engine.factory->getFont(description);
    EXPECT_NE(&first.getFace(), &second.getFace());
    EXPECT_EQ(first.getFace(), second.getFace());
    EXPECT_EQ(first.getFontInfo(), description);
    EXPECT_EQ(&first.getFontFactory(), engine.factory.get());
    EXPECT_EQ(engine.loader->countCalls(), 1U);
}

TEST(GetFont, AddsNoFailuresOfItsOwn) {
    const Engine engine;
    EXPECT_THROW(engine.factory->getFont(makeFontInfo("Unknown")), FontLoaders::FontLoaderException);
    EXPECT_THROW(engine.factory->getFontMetrics(makeFontInfo("Unknown")), FontLoaders::FontLoaderException);
}

TEST(GetFontMetrics, GivesANewFontAsMetrics) {
    const Engine engine;
    const Gfx::FontMetricsFactory& factory = *engine.factory;
    const CheckedPtrImpl<const Gfx::FontMetrics, false> metrics = factory.getFontMetrics(makeFontInfo());
    EXPECT_NE(metrics, factory.getFontMetrics(makeFontInfo()));
    const auto* const font = dynamic_cast<const Font*>(metrics.get());
    ASSERT_NE(font, nullptr);
    EXPECT_EQ(font->getFace(), engine.getFace());
    EXPECT_EQ(metrics->getHeight(), 10.0F);
}

TEST(Font, MultipliesTheMetricsOfItsFaceByItsSize) {
    const Engine engine(makeTestFont().setLine(800, -200, 90).build());
    const Font font = engine.getFont(20.0F);
    EXPECT_FLOAT_EQ(font.getHeight(), 21.8F);
    EXPECT_FLOAT_EQ(font.getAscent(), 16.0F);
    EXPECT_FLOAT_EQ(font.getDescent(), 4.0F);
    EXPECT_NEAR(font.getLeading(), 1.8F, 1e-5);
    EXPECT_FLOAT_EQ(font.getCapHeight(), 14.0F);
    EXPECT_FLOAT_EQ(font.getStrikeOutPosition(), 5.0F) << "300 - 50 units";
    EXPECT_EQ(font.getFontSize(), 20.0F);
    EXPECT_FLOAT_EQ(font.getTextWidth("Ax", makeExtFontInfo(1.5F)), 20 * (0.6F + 0.4F) + 2 * 1.5F);
}

TEST(Font, KeepsItsFaceAndMetricsWhenTheFactoryDropsThem) {
    Engine engine;
    const std::weak_ptr<const FontFace> face = std::shared_ptr<const FontFace>(engine.getFace());
    {
        const Font font = engine.getFont();
        engine.factory->flush();
        EXPECT_FALSE(face.expired());
        EXPECT_EQ(font.getAscent(), 8.0F);
        EXPECT_FLOAT_EQ(font.getTextWidth("A", makeExtFontInfo()), 6.0F);
        EXPECT_NE(engine.getFace(), font.getFace());
    }
    EXPECT_TRUE(face.expired());
}

TEST(Font, OwnsTheMetricsTogetherWithTheFace) {
    const Engine engine;
    const std::shared_ptr<const FontFace> face = engine.getFace();
    const long without = face.use_count();
    const Font font = engine.getFont();
    EXPECT_EQ(face.use_count(), without + 2) << "the face, and the metrics through it";
    const Font copy = font; // NOLINT(performance-unnecessary-copy-initialization)
    EXPECT_EQ(copy.getFace().get(), face.get());
    EXPECT_EQ(copy.getAscent(), 8.0F);
}

/// Text whose font changes with its zoom.
struct Label {
    Font font;
};

TEST(Font, MayBeAMemberThatIsReassigned) {
    const Engine engine;
    Label label{engine.getFont(10.0F)};
    const Font twice = engine.getFont(20.0F);
    label.font = twice;
    EXPECT_EQ(label.font.getFontSize(), 20.0F);
    EXPECT_EQ(label.font.getFontInfo(), twice.getFontInfo());
    EXPECT_EQ(label.font.getAscent(), 16.0F);
    label.font = engine.getFont(30.0F);
    EXPECT_EQ(label.font.getAscent(), 24.0F);
    EXPECT_EQ(twice.getAscent(), 16.0F);
}

TEST(Font, MayLiveInAVectorThatErases) {
    const Engine engine;
    std::vector<Font> fonts;
    for (const float size : {10.0F, 20.0F, 30.0F}) {
        fonts.push_back(engine.getFont(size));
    }
    fonts.erase(fonts.begin());
    EXPECT_EQ(fonts.at(0).getAscent(), 16.0F);
    EXPECT_EQ(fonts.at(1).getAscent(), 24.0F);
    EXPECT_EQ(fonts.at(1).getFace(), engine.getFace());
}

TEST(Font, ReleasesTheFaceThatItIsAssignedOver) {
    Engine engine;
    engine.loader->setFont("Other", false, false, makeTestFont("Other").build());
    Font font = engine.getFont();
    const std::weak_ptr<const FontFace> face = std::shared_ptr<const FontFace>(font.getFace());
    font = engine.factory->getFont(makeFontInfo("Other"));
    engine.factory->flush();
    EXPECT_TRUE(face.expired());
    EXPECT_STREQ(font.getFace()->getHandle()->family_name, "Other");
}

static_assert(std::is_base_of_v<Gfx::UniversalFontMetrics, Font>);
static_assert(std::is_nothrow_move_assignable_v<Font> && std::is_copy_assignable_v<Font>);
static_assert(std::is_nothrow_move_constructible_v<Font>);
static_assert(!std::is_constructible_v<Gfx::FactoryAccessTag> &&
                  !std::is_constructible_v<FontFactory::FactoryAccessTag>,
              "only the factory makes faces and fonts");

TEST(FontDeathTest, AssertsOnNullPointersAndALostFactory) {
    Engine engine;
    const auto null = Testing::makeMovedFrom(makeFontInfo());
    EXPECT_DEATH(engine.factory->getFont(null), Testing::printsNullDereference());
    EXPECT_DEATH(engine.factory->getFontMetrics(null), Testing::printsNullDereference());
    EXPECT_DEATH(engine.factory->getFace(Testing::makeMovedFrom(makeFaceInfo())),
                 Testing::printsNullDereference());
    Font moved = engine.getFont();
    const Font font = std::move(moved);
    EXPECT_DEATH(moved.getFontFactory(), Testing::printsNullDereference());
    engine.factory = Engine().factory;
    EXPECT_DEATH(font.getFontFactory(),
                 Testing::printsAssertion("Utils/Public/Ptr/PtrUtils:254", "plainPtr"));
}

} // namespace
} // namespace Vell::FontEngine
