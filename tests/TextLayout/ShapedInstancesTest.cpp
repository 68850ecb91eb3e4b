// Text in instances of one variable font.

#include <FontLoaders/VaryingFonts.h>
#include <support/CountingLoader.h>

#include <FontEngine/FontEngine.h>
#include <TextLayout/TextLayout.h>

#include <gtest/gtest.h>

namespace Vell::Testing {

namespace {

using FontEngine::describeFont;

TEST(ShapedInstances, HaveWordsOfTheirOwn) {
    auto loader = std::make_shared<CountingLoader>();
    loader->setFont("Vary", false, false, makeVaryingFont().build());
    const auto factory =
        FontEngine::FontFactory::create(FontLoaders::createVariationLoader(std::move(loader)), "Vary");
    const TextLayout::TextShaper shaper(factory);
    for (int i = 0; i < 2; ++i) {
        EXPECT_FLOAT_EQ(shaper.shape("AB", describeFont("Vary:wght=400", 10.0F))->getWidth(), 10.0F);
        EXPECT_FLOAT_EQ(shaper.shape("AB", describeFont("Vary:wght=650", 10.0F))->getWidth(), 12.0F);
        EXPECT_FLOAT_EQ(shaper.shape("AB", describeFont("Vary:wght=650.1", 10.0F))->getWidth(), 12.0F);
        EXPECT_FLOAT_EQ(shaper.shape("AB", describeFont("Vary:wght=900", 10.0F))->getWidth(), 14.0F);
    }
    EXPECT_EQ(shaper.getCacheFigures().entries, 4U);
    EXPECT_EQ(shaper.getCacheFigures().misses, 4U);
    EXPECT_EQ(shaper.getCacheFigures().hits, 4U);
}

} // namespace

} // namespace Vell::Testing
