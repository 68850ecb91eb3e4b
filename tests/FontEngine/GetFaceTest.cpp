#include <FontEngine/Engine.h>

#include <support/InjectedError.h>
#include <support/spy/FreeTypeSpy.h>

#include <FontLoaders/Public/Exceptions.h>

#include <gmock/gmock.h>

#include <string>
#include <thread>

namespace Vell::FontEngine {
namespace {

using testing::ElementsAre;
using Testing::FreeTypeSpy;
using Testing::InjectedError;
using testing::IsEmpty;
using Testing::makeFaceInfo;

template <class Exception>
std::string getErrorText(const Engine& engine, const std::string& family) {
    try {
        engine.getFace(family);
    } catch (const Exception& error) {
        return error.what();
    }
    return "no exception";
}

TEST(GetFace, ReturnsOneFaceForEqualDescriptions) {
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

TEST(GetFace, FallsBackToTheDefaultFontOfTheStyle) {
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

TEST(GetFace, CachesTheDefaultFaceOnlyUnderTheRequestedDescription) {
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

TEST(GetFace, PropagatesFreeTypesErrorsAndTriesAgain) {
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

TEST(GetFace, ReportsErrorsWithoutATextInFreeType) {
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

TEST(GetFace, PropagatesTheLoadersExceptionsAndReleasesItsLock) {
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

} // namespace
} // namespace Vell::FontEngine
