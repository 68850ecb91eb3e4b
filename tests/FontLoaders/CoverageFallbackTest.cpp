// The fallback by coverage of the platform: which installed face draws a cluster.

#include "CoverageFonts.h"

#include <support/CountingLoader.h>
#include <support/ErrorText.h>

#include <gmock/gmock.h>

#include <filesystem>

namespace Vell::Testing {

using namespace FontLoaders;

namespace {

using ::testing::HasSubstr;

const CodeRanges latin = {{'A', 'Z'}};
const CodeRanges cyrillic = {{0x400, 0x4FF}};
const CodeRanges both = {{'A', 'Z'}, {0x400, 0x4FF}};
constexpr const char32_t* zhe = U"\u0416";

} // namespace

class CoverageFallback : public ::testing::Test {
protected:
    const FontSandbox sandbox{makePreferRule("Own", {"Second", "First"}) +
                              makePreferRule("Default", {"Fallen"})};
};

TEST_F(CoverageFallback, PrefersTheTextsOwnFamily) {
    install(sandbox, "Another", both);
    install(sandbox, "Own", both);
    install(sandbox, "Second", both);
    const CoverageFonts fonts;
    EXPECT_EQ(fonts.find(zhe), "Own");
    EXPECT_EQ(fonts.find(zhe, {"another"}), "another") << "the name is the text's";
}

TEST_F(CoverageFallback, TakesTheClientsFamiliesNextInTheirOrder) {
    install(sandbox, "Own", latin);
    install(sandbox, "Second", both);
    install(sandbox, "Third", cyrillic);
    install(sandbox, "Fourth", cyrillic);
    const CoverageFonts fonts;
    EXPECT_EQ(fonts.find(zhe, {"Own", "en", false, false, {"Missing", "Fourth", "Third"}}), "Fourth");
    EXPECT_EQ(fonts.find(zhe, {"Own", "en", false, false, {"Third", "Fourth"}}), "Third");
    EXPECT_EQ(fonts.find(U"A", {"Own", "en", false, false, {"Second"}}), "Own");
}

TEST_F(CoverageFallback, TakesTheOthersInFontconfigsOrderForTheOwnFamily) {
    for (const char* family : {"Another", "First", "Second"}) {
        install(sandbox, family, cyrillic);
    }
    install(sandbox, "Own", latin);
    const CoverageFonts fonts;
    EXPECT_EQ(fonts.find(zhe), "Second");
    std::filesystem::remove(sandbox.getPath("Second-400.ttf"));
    EXPECT_EQ(CoverageFonts().find(zhe), "First");
}

TEST_F(CoverageFallback, UsesTheDefaultFamilyInPlaceOfAMissingOne) {
    install(sandbox, "Another", both);
    install(sandbox, "Default", both);
    install(sandbox, "First", both);
    EXPECT_EQ(CoverageFonts().find(zhe, {"Missing"}), "Default");
    EXPECT_EQ(CoverageFonts().find(zhe, {""}), "Default");
    EXPECT_EQ(CoverageFonts("First").find(zhe, {""}), "First");
}

TEST_F(CoverageFallback, FindsNothingIfNoFaceHasTheCharacter) {
    install(sandbox, "Own", latin);
    EXPECT_EQ(CoverageFonts().find(zhe), "none");
    EXPECT_EQ(CoverageFonts().find(U"\U0010FFFF"), "none");
    EXPECT_EQ(CoverageFonts().find(std::u32string(1, char32_t(0xFFFFFFFF))), "none");
}

TEST_F(CoverageFallback, FindsNothingWithoutFonts) {
    const CoverageFonts fonts;
    EXPECT_EQ(fonts.find(U"A"), "none");
    EXPECT_EQ(fonts.find(U"A", {""}), "none");
    EXPECT_EQ(fonts.find(U"\U0001F600"), "none");
    EXPECT_EQ(fonts.find(U""), "none");
}

TEST_F(CoverageFallback, KeepsMarksWithTheirBase) {
    install(sandbox, "Own", {{'A', 'Z'}});
    install(sandbox, "Second", {{0x32F, 0x32F}});
    install(sandbox, "Third", {{'Q', 'Q'}, {0x32F, 0x32F}});
    EXPECT_EQ(CoverageFonts().find(U"Q"), "Own");
    EXPECT_EQ(CoverageFonts().find(U"Q\u032F"), "Third");
}

TEST_F(CoverageFallback, TakesAFaceWithTheBaseIfNoneHasTheMark) {
    install(sandbox, "Own", latin);
    install(sandbox, "Second", cyrillic);
    EXPECT_EQ(CoverageFonts().find(U"\u0416\u032F"), "Second");
    EXPECT_EQ(CoverageFonts().find(U"Q\u032F"), "Own");
}

TEST_F(CoverageFallback, NeedsNoGlyphsForJoinersAndSelectors) {
    install(sandbox, "Own", {{0x915, 0x94D}});
    install(sandbox, "Second", {{0x915, 0x94D}, {0x200C, 0x200D}, {0xFE00, 0xFE0F}});
    const CoverageFonts fonts;
    EXPECT_EQ(fonts.find(U"\u0915\u094D\u200D"), "Own");
    EXPECT_EQ(fonts.find(U"\u0915\uFE00"), "Own");
    EXPECT_EQ(fonts.find(U"\u200D"), "Own") << "nothing is needed";
    EXPECT_EQ(fonts.find(U""), "Own");
}

TEST_F(CoverageFallback, CountsEquivalentSpellings) {
    install(sandbox, "Own", {{0xE9, 0xE9}});
    install(sandbox, "Second", {{'a', 'z'}, {0x300, 0x30F}});
    const CoverageFonts fonts;
    EXPECT_EQ(fonts.find(U"e\u0301"), "Own") << "composed";
    EXPECT_EQ(fonts.find(U"\u00E8"), "Second") << "decomposed";
}

TEST_F(CoverageFallback, FindsTheStyleOfTheText) {
    for (const unsigned int weight : {400U, 700U}) {
        install(sandbox, "Own", both, weight, false);
        install(sandbox, "Own", both, weight, true);
    }
    const CoverageFonts fonts;
    for (const bool bold : {false, true}) {
        for (const bool italic : {false, true}) {
            const CoverageText text{"Own", "en", bold, italic};
            EXPECT_EQ(fonts.find(zhe, text), fonts.findDrawn(zhe, text));
            EXPECT_EQ(fonts.find(zhe, text), describeFace(*makeClientFaceInfo("Own", bold, italic)));
        }
    }
}

TEST_F(CoverageFallback, LetsTheFactoryAddAMissingStyle) {
    install(sandbox, "Own", latin);
    install(sandbox, "Second", cyrillic);
    const CoverageText text{"Own", "en", true, true};
    EXPECT_EQ(CoverageFonts().find(zhe, text), "Second");
    EXPECT_EQ(CoverageFonts().findDrawn(zhe, text), "Second bold italic");
}

TEST_F(CoverageFallback, TakesTheStyleThatHasTheCharacterAsItIs) {
    install(sandbox, "Own", latin, 700);
    install(sandbox, "Own", both, 400);
    const CoverageText text{"Own", "en", true};
    EXPECT_EQ(CoverageFonts().find(zhe, text), "Own");
    EXPECT_EQ(CoverageFonts().findDrawn(zhe, text), "Own") << "a factory would draw the bold face";
    EXPECT_EQ(CoverageFonts().find(U"A", text), "Own bold");
}

TEST_F(CoverageFallback, AsksForABoldItalicFaceByItsStyle) {
    install(sandbox, "Own", both, 700, true);
    EXPECT_EQ(CoverageFonts().find(zhe), "Own bold italic");
    EXPECT_EQ(CoverageFonts().findDrawn(zhe, {}), "Own bold italic")
        << "a factory takes it for no other style";
}

TEST_F(CoverageFallback, PassesOverFacesThatTheLoaderDoesNotServe) {
    install(sandbox, "Own", latin);
    install(sandbox, "Second", cyrillic);
    install(sandbox, "First", cyrillic);
    install(sandbox, "Another", cyrillic);
    const CoverageFonts fonts;
    sandbox.write("Second-400.ttf", FontBuilder("Second").build()); // without a charmap
    sandbox.write("First-400.ttf", {'n', 'o', ' ', 'f', 'o', 'n', 't'});
    EXPECT_EQ(fonts.find(zhe), "Another");
    EXPECT_EQ(fonts.find(zhe, {"Second"}), "Another");
    sandbox.remove("Another-400.ttf");
    const CoverageFonts later;
    EXPECT_EQ(later.find(zhe), "none");
}

TEST_F(CoverageFallback, PassesOverADeletedFile) {
    install(sandbox, "Own", both);
    install(sandbox, "Second", cyrillic);
    const CoverageFonts fonts;
    sandbox.remove("Own-400.ttf");
    EXPECT_EQ(fonts.find(zhe), "Second");
}

TEST_F(CoverageFallback, LeavesSymbolFontsToTextsThatNameThem) {
    install(sandbox, "Own", cyrillic);
    FontBuilder symbols("Wingdings");
    symbols.map(CharMapKind::Symbol, 0xF041, symbols.addGlyph(FontGlyph()));
    sandbox.write("w.ttf", symbols.build());
    EXPECT_EQ(CoverageFonts().find(U"\uF041"), "none");
    EXPECT_EQ(CoverageFonts().find(U"\uF041", {"Wingdings"}), "Wingdings");
}

TEST_F(CoverageFallback, FindsFacesOfCollections) {
    sandbox.write("c.ttc",
                  buildCollection({makeBlankFont("Own"), makeBlankFont("Second", 400, false, cyrillic)}));
    EXPECT_EQ(CoverageFonts().find(zhe), "Second");
}

TEST_F(CoverageFallback, RemembersItsAnswers) {
    install(sandbox, "Own", latin);
    install(sandbox, "Second", cyrillic);
    const CoverageFonts fonts;
    const auto first = fonts.fallback->findFace(makeRequest(zhe, {}));
    const auto second = fonts.fallback->findFace(makeRequest(zhe, {}));
    ASSERT_TRUE(first && second);
    EXPECT_EQ(first->face.get(), second->face.get()) << "the same object";
    const auto otherStyle = fonts.fallback->findFace(makeRequest(zhe, {"Own", "en", true}));
    EXPECT_NE(otherStyle->drawnFace.get(), first->drawnFace.get());
}

TEST_F(CoverageFallback, ForgetsItsAnswersWhenAFaceIsRemoved) {
    install(sandbox, "Own", both);
    install(sandbox, "Second", both);
    const CoverageFonts fonts;
    EXPECT_EQ(fonts.find(zhe), "Own");
    EXPECT_EQ(fonts.fallback->findFace(makeRequest(U"A", {}))->face->getName(), "Own");
    load(fonts.loader, "Second"); // so that the loader keeps no bytes of Own
    sandbox.write("Own-400.ttf", FontBuilder("Own").build());
    EXPECT_EQ(load(fonts.loader, "Own"), nullptr);
    EXPECT_EQ(fonts.find(U"A"), "Second");
}

TEST_F(CoverageFallback, NamesAMalformedLanguage) {
    install(sandbox, "Own", both);
    const CoverageFonts fonts;
    for (const char* language : {"zh_CN", "e", "en-", "-", "en--US", "\u65E5\u672C"}) {
        const auto text = getErrorText<FontLoaderException>([&] { fonts.find(zhe, {"Own", language}); });
        EXPECT_THAT(text, HasSubstr("\"" + std::string(language) + "\""));
    }
    EXPECT_EQ(fonts.find(zhe), "Own");
}

TEST_F(CoverageFallback, SurvivesItsLoader) {
    install(sandbox, "Own", both);
    std::shared_ptr<const FontLoaders::CoverageFallback> fallback;
    {
        const auto loader = createPlatformDefaultFontLoader("Own");
        fallback = createPlatformCoverageFallback(*loader);
    }
    EXPECT_TRUE(fallback->findFace(makeRequest(zhe, {})));
}

TEST_F(CoverageFallback, IsNullForTheLoadersOfClients) {
    EXPECT_EQ(createPlatformCoverageFallback(CountingLoader()), nullptr);
    createPlatformDefaultFontLoader("Own");
    EXPECT_EQ(createPlatformCoverageFallback(CountingLoader()), nullptr);
}

TEST_F(CoverageFallback, StandsAMillionMarks) {
    install(sandbox, "Own", {{'A', 'Z'}, {0x300, 0x36F}});
    const std::u32string cluster = U"A" + std::u32string(1'000'000, U'\u0301');
    EXPECT_EQ(CoverageFonts().find(cluster), "Own");
}

TEST_F(CoverageFallback, LeavesTheAnswersByBlockAsTheyAre) {
    install(sandbox, "Own", latin);
    install(sandbox, "Second", {{0x400, 0x410}});
    install(sandbox, "Third", cyrillic);
    const CoverageFonts fonts;
    EXPECT_EQ(fonts.loader->getFamilyNameForRange(UnicodeRangeMap::find(0x405)), "Third");
    EXPECT_EQ(fonts.find(U"\u0405"), "Second");
    EXPECT_EQ(fonts.loader->getFamilyNameForRange(UnicodeRangeMap::find(0x405)), "Third");
}

} // namespace Vell::Testing
