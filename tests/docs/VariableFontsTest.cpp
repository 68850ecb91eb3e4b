// The programs of docs/variable-fonts.md.

#include <support/FontSandbox.h>

#include <FontEngine/FontEngine.h>

#include <gmock/gmock.h>

#include <string>

namespace Vell::Docs {

namespace {

using FontEngine::FontFactory;
using FontEngine::Internal::FontFaceInfo;
using FontLoaders::createPlatformDefaultFontLoader;
using FontLoaders::createVariationLoader;
using FontLoaders::FontAxis;
using FontLoaders::FontBytes;
using FontLoaders::makeFontInstance;
using FontLoaders::parseVariations;
using FontLoaders::readVariations;

FontBytes readInter() {
    return std::make_shared<const Testing::Bytes>(
        Testing::readFile("/usr/share/fonts/truetype/inter-vf/Inter.var.ttf"));
}

TEST(VariableFonts, AreListedAndInstanced) {
    const FontBytes bytes = readInter();
    std::string listed;
    //! [axes]
    for (const FontAxis& axis : readVariations(bytes).axes) {
        listed += axis.tag + " " + std::to_string(static_cast<int>(axis.minimum)) + ".." +
                  std::to_string(static_cast<int>(axis.maximum)) + "\n"; // wght 100..900
    }
    const FontBytes semibold = makeFontInstance(bytes, parseVariations("wght=650,slnt=-4"));
    //! [axes]
    EXPECT_EQ(listed, "wght 100..900\nslnt -10..0\n");
    EXPECT_TRUE(readVariations(semibold).axes.empty());
}

TEST(VariableFonts, AreServedByNamesWithSettings) {
    //! [loader]
    const auto loader = createVariationLoader(createPlatformDefaultFontLoader("Inter"));
    const auto factory = FontFactory::create(loader, "Inter");
    const auto light = factory->getFace(makeNNPtr<const FontFaceInfo>("Inter:wght=250", false, false));
    const auto heavy = factory->getFace(makeNNPtr<const FontFaceInfo>("Inter:wght=850", false, false));
    //! [loader]
    EXPECT_NE(light.get(), heavy.get());
}

TEST(VariableFonts, AreServedByTheNamesOfTheirInstances) {
    const auto loader = createPlatformDefaultFontLoader("Inter");
    //! [named]
    const FontBytes semibold =
        loader->loadFont(makeNNPtr<const FontFaceInfo>("Inter SemiBold", false, false));
    const FontBytes bold = loader->loadFont(makeNNPtr<const FontFaceInfo>("Inter", true, false)); // wght=700
    //! [named]
    ASSERT_NE(semibold, nullptr);
    ASSERT_NE(bold, nullptr);
    EXPECT_NE(*semibold, *bold);
}

} // namespace

} // namespace Vell::Docs
