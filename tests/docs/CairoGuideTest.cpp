// The part of docs/guide.md about screens with several device pixels in a unit.

#include "MemoryFontLoader.h"

#include <support/FontBuilder.h>

#include <CairoAdapter/CairoAdapter.h>
#include <FontEngine/FontEngine.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>

namespace Vell::Docs {

namespace {

/// 1000 units an em. A: 600 wide with a box of 100..500 x 0..700.
NNPtr<FontEngine::FontFactory> makeFactory() {
    Testing::FontBuilder font("House Sans");
    font.map('A', font.addGlyph(Testing::makeBoxGlyph(600, 100, 0, 500, 700)));
    const auto loader = std::make_shared<MemoryFontLoader>("House Sans");
    loader->add("House Sans", false, false, font.build());
    return FontEngine::FontFactory::create(loader, "House Sans");
}

/// How many pixels are covered.
int countInk(cairo_surface_t* surface) {
    cairo_surface_flush(surface);
    int ink = 0;
    for (int y = 0; y < cairo_image_surface_get_height(surface); ++y) {
        const unsigned char* row = cairo_image_surface_get_data(surface) +
                                   static_cast<std::ptrdiff_t>(y) * cairo_image_surface_get_stride(surface);
        for (int x = 0; x < cairo_image_surface_get_width(surface); ++x) {
            std::uint32_t pixel = 0;
            std::memcpy(&pixel, row + sizeof(pixel) * static_cast<std::size_t>(x), sizeof(pixel));
            ink += pixel >> 24U == 255 ? 1 : 0;
        }
    }
    return ink;
}

} // namespace

TEST(CairoGuide, DrawsOnADenseScreen) {
    const auto factory = makeFactory();
    const auto font = FontEngine::describeFont("House Sans", 20.0F);
    const cinder::ColorAT<unsigned char> color(0, 0, 0, 255);
    //! [dense]
    constexpr float ratio = 2.0F;
    const auto surface = CairoAdapter::makeImageSurface(80, 60); // 40 x 30 units
    CairoAdapter::CairoPainter painter(surface.get(), {ratio, 0, 0, ratio, 0, 0});
    CairoAdapter::CairoGlyphPainter glyphPainter(painter, color, ratio);
    painter.translate({4.0F, 20.0F});
    FontEngine::drawRasterText(*factory, "AA", font, {painter, glyphPainter, color, ratio});
    //! [dense]
    EXPECT_EQ(countInk(surface.get()), 2 * 16 * 28);
}

} // namespace Vell::Docs
