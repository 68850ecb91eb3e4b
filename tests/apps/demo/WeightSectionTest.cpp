#include "demo/WeightSection.h"

#include <apps/Pixels.h>

#include <gtest/gtest.h>

namespace Vell::Tool {

namespace {

DemoPage compose(const NNPtr<const FontLoaders::FontLoader>& loader) {
    const FactoryPtr factory = FontEngine::FontFactory::create(loader, defaultFamily);
    DemoPageBuilder page(factory);
    addWeightSection(page);
    DemoPage finished = page.finish();
    EXPECT_EQ(finished.rules.size(), finished.drawings.size() / 2);
    for (const PlacedDrawing& placed : finished.drawings) { // while the factory exists
        const auto width = static_cast<int>(placed.drawing.width);
        const auto height = static_cast<int>(placed.drawing.height);
        const auto surface = CairoAdapter::makeImageSurface(width, height);
        CairoAdapter::CairoPainter painter(surface.get());
        placed.drawing.draw(painter, placed.paint);
        cairo_surface_flush(surface.get());
        unsigned int previous = 0;
        for (int step = 0; step < 9; ++step) {
            unsigned int ink = 0;
            for (int x = width * step / 9; x < width * (step + 1) / 9; ++x) {
                for (int y = 0; y < height - 16; ++y) { // above the numbers
                    ink += Testing::readPixel(surface.get(), x, y) >> 24U;
                }
            }
            EXPECT_GT(ink, previous) << step;
            previous = ink;
        }
    }
    return finished;
}

TEST(WeightSection, ShowsNineWeightsOfGrowingInk) {
    const auto loader =
        FontLoaders::createVariationLoader(FontLoaders::createPlatformDefaultFontLoader(defaultFamily));
    EXPECT_EQ(compose(loader).drawings.size(), 2U);
}

TEST(WeightSection, IsLeftOutWithoutSettingsInNames) {
    EXPECT_TRUE(compose(FontLoaders::createPlatformDefaultFontLoader(defaultFamily)).drawings.empty());
}

} // namespace

} // namespace Vell::Tool
