#include "LoaderFonts.h"

#include <gtest/gtest.h>

namespace Vell::Testing {

using namespace FontLoaders;

namespace {

constexpr const char* standardRules =
    "<include ignore_missing=\"no\">/etc/fonts/conf.d/30-metric-aliases.conf"
    "</include>";

std::string bind(const std::string& from, const std::string& to, const std::string& binding) {
    return "<match target=\"pattern\"><test name=\"family\"><string>" + from +
           "</string></test><edit name=\"family\" mode=\"append\" binding=\"" + binding + "\"><string>" + to +
           "</string></edit></match>";
}

} // namespace

TEST(FontNames, AnInstalledFamilyGivesTheBytesOfItsFile) {
    const FontSandbox sandbox;
    sandbox.link(std::string(dejaVu) + "DejaVuSans.ttf");
    const auto loader = createPlatformDefaultFontLoader("DejaVu Sans");
    const auto bytes = load(loader, "DejaVu Sans");
    ASSERT_NE(bytes, nullptr);
    EXPECT_EQ(*bytes, readFile(std::string(dejaVu) + "DejaVuSans.ttf"));
}

TEST(FontNames, TheCaseOfTheLettersDoesNotMatter) {
    const FontSandbox sandbox;
    sandbox.write("a.ttf", makeBlankFont("\u00C4pfel Gr\u00FCn").build());
    const auto loader = createPlatformDefaultFontLoader("");
    const auto bytes = load(loader, "\u00C4pfel Gr\u00FCn");
    ASSERT_NE(bytes, nullptr);
    EXPECT_EQ(load(loader, "\u00E4PFEL GR\u00DCN"), bytes);
}

TEST(FontNames, AFamilyIsFoundByItsNamesInAllLanguages) {
    const FontSandbox sandbox;
    FontBuilder font = makeBlankFont("Alpha");
    font.addName({0x411, 1, "\u6E38\u30B4\u30B7\u30C3\u30AF"});
    sandbox.write("a.ttf", font.build());
    const auto loader = createPlatformDefaultFontLoader("");
    const auto bytes = load(loader, "Alpha");
    ASSERT_NE(bytes, nullptr);
    EXPECT_EQ(load(loader, "\u6E38\u30B4\u30B7\u30C3\u30AF"), bytes);
}

TEST(FontNames, SpacesMatter) {
    const FontSandbox sandbox;
    sandbox.write("a.ttf", makeBlankFont("Alpha Beta").build());
    const auto loader = createPlatformDefaultFontLoader("");
    EXPECT_NE(load(loader, "Alpha Beta"), nullptr);
    EXPECT_EQ(load(loader, "AlphaBeta"), nullptr);
    EXPECT_EQ(load(loader, "Alpha  Beta"), nullptr);
    EXPECT_EQ(load(loader, " Alpha Beta"), nullptr);
}

TEST(FontNames, AFamilyThatIsNotInstalledIsNull) {
    const FontSandbox sandbox;
    sandbox.write("a.ttf", makeBlankFont("Alpha").build());
    const auto loader = createPlatformDefaultFontLoader("Alpha");
    EXPECT_EQ(load(loader, "Beta"), nullptr);
    EXPECT_EQ(load(loader, "Alph"), nullptr);
    EXPECT_EQ(load(loader, "Alpha,Beta"), nullptr);
    EXPECT_EQ(load(loader, "Alpha-12:bold"), nullptr);
    EXPECT_EQ(load(loader, ""), nullptr);
}

TEST(FontNames, AZeroByteIsPartOfTheName) {
    const FontSandbox sandbox;
    sandbox.write("a.ttf", makeBlankFont("Alpha").build());
    const auto loader = createPlatformDefaultFontLoader("Alpha");
    EXPECT_EQ(load(loader, std::string("Alpha\0x", 7)), nullptr);
    EXPECT_EQ(load(loader, std::string("serif\0x", 7)), nullptr);
}

TEST(FontNames, IllFormedTextMatchesNoFamily) {
    const FontSandbox sandbox;
    sandbox.write("a.ttf", makeBlankFont("Alpha").build());
    const auto loader = createPlatformDefaultFontLoader("Alpha");
    EXPECT_EQ(load(loader, "\xFF\xFE\xED\xA0\x80"), nullptr);
    EXPECT_EQ(load(loader, "Alpha\xF0\x9F"), nullptr);
}

TEST(FontNames, EveryGenericNameResolvesToTheFamilyThatServesIt) {
    const FontSandbox sandbox(bind("serif", "Beta", "strong") + bind("monospace", "Gamma", "weak"));
    sandbox.write("a.ttf", makeBlankFont("Alpha").build());
    sandbox.write("b.ttf", makeBlankFont("Beta").build());
    sandbox.write("c.ttf", makeBlankFont("Gamma").build());
    const auto loader = createPlatformDefaultFontLoader("");
    EXPECT_EQ(load(loader, "serif"), load(loader, "Beta"));
    EXPECT_EQ(load(loader, "Serif"), load(loader, "Beta"));
    EXPECT_EQ(load(loader, "monospace"), load(loader, "Gamma"));
    for (const char* generic : {"sans-serif", "serif", "monospace", "cursive", "fantasy", "system-ui", "math",
                                "emoji", "sans", "sans serif", "mono", "system ui"}) {
        EXPECT_NE(load(loader, generic), nullptr) << generic;
    }
}

TEST(FontNames, AGenericNameHasOnlyTheStylesOfItsFamily) {
    const FontSandbox sandbox(bind("serif", "Alpha", "strong"));
    sandbox.write("a.ttf", makeBlankFont("Alpha").build());
    sandbox.write("b.ttf", makeBlankFont("Beta", 700).build());
    const auto loader = createPlatformDefaultFontLoader("");
    EXPECT_NE(load(loader, "serif"), nullptr);
    EXPECT_EQ(load(loader, "serif", true), nullptr);
}

TEST(FontNames, AGenericNameIsNullOnAMachineWithoutFonts) {
    const FontSandbox sandbox;
    EXPECT_EQ(load(createPlatformDefaultFontLoader(""), "sans-serif"), nullptr);
}

TEST(FontNames, AFamilyWithASameBindingServesTheName) {
    const FontSandbox sandbox(bind("Old", "Missing", "same") + bind("Old", "Alpha", "same"));
    sandbox.write("a.ttf", makeBlankFont("Alpha").build());
    const auto loader = createPlatformDefaultFontLoader("");
    ASSERT_NE(load(loader, "Alpha"), nullptr);
    EXPECT_EQ(load(loader, "Old"), load(loader, "Alpha"));
    EXPECT_EQ(load(loader, "OLD"), load(loader, "Alpha"));
}

TEST(FontNames, AnInstalledFamilyIsNotReplacedByItsAlias) {
    const FontSandbox sandbox(bind("Alpha", "Beta", "same"));
    sandbox.write("a.ttf", makeBlankFont("Alpha").build());
    sandbox.write("b.ttf", makeBlankFont("Beta").build());
    const auto loader = createPlatformDefaultFontLoader("");
    EXPECT_EQ(*load(loader, "Alpha"), readFile(sandbox.getPath("a.ttf")));
}

TEST(FontNames, AliasesOfAnyOtherBindingResolveToNothing) {
    const FontSandbox sandbox(bind("Weak", "Alpha", "weak") + bind("Strong", "Alpha", "strong"));
    sandbox.write("a.ttf", makeBlankFont("Alpha").build());
    const auto loader = createPlatformDefaultFontLoader("");
    EXPECT_EQ(load(loader, "Weak"), nullptr);
    EXPECT_EQ(load(loader, "Strong"), nullptr);
}

TEST(FontNames, AChainOfAliasesServesTheNameOnlyIfEveryBindingIsSame) {
    const FontSandbox sandbox(bind("One", "Two", "same") + bind("Two", "Alpha", "same") +
                              bind("Loose", "Firm", "weak") + bind("Firm", "Alpha", "same"));
    sandbox.write("a.ttf", makeBlankFont("Alpha").build());
    const auto loader = createPlatformDefaultFontLoader("");
    EXPECT_EQ(load(loader, "One"), load(loader, "Alpha"));
    EXPECT_EQ(load(loader, "Firm"), load(loader, "Alpha"));
    EXPECT_EQ(load(loader, "Loose"), nullptr);
}

TEST(FontNames, ABindingToAGenericNameServesNothing) {
    const FontSandbox sandbox(bind("Gone Emoji", "emoji", "same"));
    sandbox.write("a.ttf", makeBlankFont("Alpha").build());
    const auto loader = createPlatformDefaultFontLoader("");
    EXPECT_NE(load(loader, "emoji"), nullptr);
    EXPECT_EQ(load(loader, "Gone Emoji"), nullptr);
}

TEST(FontNames, TheStandardMetricAliasesHold) {
    const FontSandbox sandbox(standardRules);
    sandbox.link(std::string(liberation) + "LiberationSans-Regular.ttf");
    sandbox.link(std::string(liberation) + "LiberationSans-Bold.ttf");
    sandbox.link(std::string(liberation) + "LiberationSerif-Regular.ttf");
    const auto loader = createPlatformDefaultFontLoader("");
    ASSERT_NE(load(loader, "Liberation Sans"), nullptr);
    EXPECT_EQ(load(loader, "Arial"), load(loader, "Liberation Sans"));
    EXPECT_EQ(load(loader, "Arial", true), load(loader, "Liberation Sans", true));
    EXPECT_EQ(load(loader, "Times New Roman"), load(loader, "Liberation Serif"));
    // The standard rules bind these two names only weakly to the families above.
    EXPECT_EQ(load(loader, "Helvetica"), nullptr);
    EXPECT_EQ(load(loader, "Times"), nullptr);
}

} // namespace Vell::Testing
