#include "LoaderFonts.h"

#include <support/CountingLoader.h>

#include <gtest/gtest.h>

namespace Vell::Testing {

using namespace FontLoaders;

namespace {

void expectPlace(const FontLoader& loader, const std::shared_ptr<const Bytes>& bytes, const std::string& file,
                 unsigned int index) {
    const auto place = findFontFile(loader, bytes);
    ASSERT_TRUE(place.has_value());
    EXPECT_EQ(place->file, file);
    EXPECT_EQ(place->index, index);
}

} // namespace

TEST(FontFilePlace, IsTheFileOfTheFont) {
    const FontSandbox sandbox;
    sandbox.write("a.ttf", makeBlankFont("Alpha").build());
    sandbox.write("b.ttf", makeBlankFont("Alpha", 700).build());
    const auto loader = createPlatformDefaultFontLoader("Alpha");
    const auto bold = load(loader, "Alpha", true);
    const auto plain = loader->loadDefaultFont(false, false);
    expectPlace(*loader, bold, sandbox.getPath("b.ttf"), 0);
    expectPlace(*loader, plain, sandbox.getPath("a.ttf"), 0);
}

TEST(FontFilePlace, HasTheIndexOfTheFaceInACollection) {
    const FontSandbox sandbox;
    sandbox.write("a.ttc", buildCollection({makeBlankFont("Alpha"), makeBlankFont("Beta")}));
    const auto loader = createPlatformDefaultFontLoader("");
    const auto alpha = load(loader, "Alpha");
    const auto beta = load(loader, "Beta");
    expectPlace(*loader, alpha, sandbox.getPath("a.ttc"), 0);
    expectPlace(*loader, beta, sandbox.getPath("a.ttc"), 1);
}

TEST(FontFilePlace, IsKnownOnlyForBytesOfTheSameLoader) {
    const FontSandbox sandbox;
    sandbox.write("a.ttf", makeBlankFont("Alpha").build());
    const auto loader = createPlatformDefaultFontLoader("");
    const auto bytes = load(loader, "Alpha");
    EXPECT_FALSE(findFontFile(*loader, nullptr).has_value());
    EXPECT_FALSE(findFontFile(*loader, std::make_shared<const Bytes>(*bytes)).has_value());
    EXPECT_FALSE(findFontFile(*createPlatformDefaultFontLoader(""), bytes).has_value());
    EXPECT_FALSE(findFontFile(CountingLoader(), bytes).has_value());
}

TEST(FontFilePlace, IsUnknownForTheBuiltInFont) {
    const FontSandbox sandbox;
    const auto loader = createPlatformDefaultFontLoader("");
    const auto bytes = loader->loadDefaultFont(false, false);
    ASSERT_EQ(bytes != nullptr, FONT_IS_EMBEDDED != 0);
    EXPECT_FALSE(findFontFile(*loader, bytes).has_value());
}

} // namespace Vell::Testing
