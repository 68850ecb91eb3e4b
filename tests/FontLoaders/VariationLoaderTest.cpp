#include "VaryingFonts.h"

#include <support/CountingLoader.h>
#include <support/ErrorText.h>

#include <gtest/gtest.h>

#include <thread>

namespace Vell::Testing {

using namespace FontLoaders;

namespace {

/// Serves the variable family "Vary" and the static family "Alpha".
std::shared_ptr<CountingLoader> makeInner() {
    auto inner = std::make_shared<CountingLoader>();
    inner->setFont("Vary", false, false, makeVaryingFont().build());
    inner->setFont("Alpha", false, false, makeBlankFont("Alpha").build());
    inner->setDefaultFont(false, false, makeBlankFont("Default").build());
    inner->setRangeFamily(7, "Alpha");
    return inner;
}

FontBytes makeVaryingInstance(float weight) {
    return makeFontInstance(buildVaryingFont(), {{"wght", weight}});
}

std::string getError(const NNPtr<FontLoader>& loader, const std::string& name, bool bold = false) {
    return getErrorText<FontLoaderException>([&] { load(loader, name, bold); });
}

} // namespace

class VariationLoader : public ::testing::Test {
protected:
    const std::shared_ptr<CountingLoader> _inner = makeInner();
    const NNPtr<FontLoader> _loader = createVariationLoader(_inner);
};

TEST_F(VariationLoader, ServesAnInstanceForANameWithSettings) {
    ASSERT_NE(load(_loader, "Vary:wght=650"), nullptr);
    EXPECT_EQ(*load(_loader, "Vary:wght=650"), *makeVaryingInstance(650));
    EXPECT_EQ(*load(_loader, "Vary:wght=9999"), *makeVaryingInstance(900));
}

TEST_F(VariationLoader, PassesEverythingElseOn) {
    EXPECT_EQ(load(_loader, "Vary"), load(_inner, "Vary"));
    EXPECT_EQ(load(_loader, "Missing"), nullptr);
    EXPECT_EQ(load(_loader, "Missing:wght=650"), nullptr);
    EXPECT_EQ(load(_loader, "Vary:Text"), nullptr);
    EXPECT_EQ(_loader->loadDefaultFont(false, false), _inner->loadDefaultFont(false, false));
    EXPECT_EQ(_loader->loadDefaultFont(true, false), nullptr);
    EXPECT_EQ(_loader->getFamilyNameForRange(7), "Alpha");
    EXPECT_EQ(_loader->getFamilyNameForRange(8), "");
}

TEST_F(VariationLoader, MakesEachInstanceOnce) {
    const FontBytes first = load(_loader, "Vary:wght=650");
    const std::size_t calls = _inner->countCalls();
    EXPECT_EQ(load(_loader, "Vary:wght=650"), first);
    EXPECT_EQ(_inner->countCalls(), calls);
    EXPECT_NE(load(_loader, "Vary:wght=651"), first);
}

TEST_F(VariationLoader, ForgetsInstancesBeyondSixtyFour) {
    const std::weak_ptr<const Bytes> first = load(_loader, "Vary:wght=100");
    for (int weight = 101; weight <= 163; ++weight) {
        load(_loader, "Vary:wght=" + std::to_string(weight));
    }
    EXPECT_FALSE(first.expired());
    load(_loader, "Vary:wght=164");
    EXPECT_TRUE(first.expired());
}

TEST_F(VariationLoader, LetsASettingDecideAboutBold) {
    EXPECT_EQ(*load(_loader, "Vary:wght=650", true), *makeVaryingInstance(650));
}

TEST_F(VariationLoader, HasNoItalicWithoutAnAxisForIt) {
    EXPECT_EQ(load(_loader, "Vary:wght=650", false, true), nullptr);
    EXPECT_EQ(load(_loader, "Vary:wght=650", true, true), nullptr);
}

TEST_F(VariationLoader, PrefersAVariableFaceOfTheStyle) {
    _inner->setFont("Vary", false, true, makeVaryingFont("Leaning").build());
    const FontBytes italic = load(_loader, "Vary:wght=650", false, true);
    ASSERT_NE(italic, nullptr);
    EXPECT_EQ(*italic, *makeFontInstance(load(_inner, "Vary", false, true), {{"wght", 650.0F}}));
}

TEST_F(VariationLoader, PassesOverAStaticFaceOfTheStyle) {
    _inner->setFont("Vary", true, false, makeBlankFont("Vary", 700).build());
    const FontBytes bold = load(_loader, "Vary:wght=650", true);
    ASSERT_NE(bold, nullptr);
    EXPECT_EQ(*bold, *makeVaryingInstance(650));
}

TEST_F(VariationLoader, SlantsInterForItalic) {
    const auto inter = makeNNPtr<const Bytes>(readFile(std::string(interFolder) + "Inter.var.ttf"));
    _inner->setFont("Inter", false, false, inter);
    const FontBytes both = load(_loader, "Inter:wght=650", true, true);
    ASSERT_NE(both, nullptr);
    EXPECT_EQ(*both, *makeFontInstance(inter, {{"wght", 650.0F}, {"slnt", -10.0F}}));
    const FontBytes bold = load(_loader, "Inter:slnt=-3", true, true);
    ASSERT_NE(bold, nullptr);
    EXPECT_EQ(*bold, *makeFontInstance(inter, {{"wght", 700.0F}, {"slnt", -3.0F}}));
}

TEST_F(VariationLoader, LeavesAFamilyWithAColonInItsNameAlone) {
    _inner->setFont("Vary:wght=1", true, false, makeBlankFont("Odd").build());
    EXPECT_EQ(load(_loader, "Vary:wght=1", true), load(_inner, "Vary:wght=1", true));
    EXPECT_EQ(load(_loader, "Vary:wght=1"), nullptr);
    _inner->setFont("A:b", false, false, makeVaryingFont("A:b").build());
    EXPECT_EQ(load(_loader, "A:b"), load(_inner, "A:b"));
    EXPECT_NE(load(_loader, "A:b:wght=650"), nullptr);
}

TEST_F(VariationLoader, NamesWhatIsWrong) {
    EXPECT_EQ(getError(_loader, "Vary:wdth=90"), "the font has no axis \"wdth\"; it has wght");
    EXPECT_EQ(getError(_loader, "Vary:wdth=90", true), "the font has no axis \"wdth\"; it has wght");
    EXPECT_EQ(getError(_loader, "Alpha:wght=90"), "the font has no axis \"wght\": it is not a variable font");
    EXPECT_EQ(getError(_loader, "Vary:wght=nan"), "the value of the setting \"wght=nan\" is not a number");
    EXPECT_EQ(getError(_loader, "Vary:wght=1,"), "the settings \"wght=1,\" end with a comma");
    EXPECT_NE(load(_loader, "Vary:wght=650"), nullptr);
}

TEST_F(VariationLoader, ServesOneVectorToManyThreads) {
    std::vector<FontBytes> found(8, nullptr);
    std::vector<std::thread> threads;
    for (FontBytes& bytes : found) {
        threads.emplace_back([&] { bytes = load(_loader, "Vary:wght=650"); });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    for (const FontBytes& bytes : found) {
        ASSERT_NE(bytes, nullptr);
        EXPECT_EQ(bytes, found[0]);
    }
    EXPECT_EQ(_inner->countCalls("loadFont \"Vary\" regular"), 1U);
}

} // namespace Vell::Testing
