#include "demo/ShapedSection.h"

#include <apps/Pixels.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace Vell::Tool {

namespace {

/// The drawings of one painter, from top to bottom.
std::vector<PlacedDrawing> select(const DemoPage& page, PainterKind kind) {
    std::vector<PlacedDrawing> selected;
    std::copy_if(page.drawings.begin(), page.drawings.end(), std::back_inserter(selected),
                 [&](const PlacedDrawing& placed) { return placed.paint.kind == kind; });
    return selected;
}

class ShapedSection : public ::testing::Test {
protected:
    FactoryPtr factory = FontEngine::FontFactory::create(defaultFamily);
    DemoPage page = composeDemoPage(factory, "Pair");
};

struct InkCount {
    int all = 0;
    int colored = 0;
};

/// Pixels of a drawing that are not white, and those of them that are not grey.
InkCount countInk(const PlacedDrawing& placed) {
    const auto width = static_cast<int>(placed.drawing.width);
    const auto height = static_cast<int>(placed.drawing.height);
    const auto surface = CairoAdapter::makeImageSurface(width, height);
    CairoAdapter::CairoPainter painter(surface.get());
    cairo_set_source_rgb(painter.getContext(), 1.0, 1.0, 1.0);
    cairo_paint(painter.getContext());
    TextPaint paint = placed.paint;
    paint.pixelRatio = 1.0F;
    placed.drawing.draw(painter, paint);
    cairo_surface_flush(surface.get());
    InkCount count;
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const std::uint32_t pixel = Testing::readPixel(surface.get(), x, y);
            count.all += (pixel & 0xFFFFFFU) != 0xFFFFFFU ? 1 : 0;
            count.colored += (pixel & 0xFFU) != (pixel >> 16U & 0xFFU) ? 1 : 0;
        }
    }
    return count;
}

TEST_F(ShapedSection, ShowsEveryDrawingRasterBesideVector) {
    const auto left = select(page, PainterKind::Raster);
    const auto right = select(page, PainterKind::Vector);
    ASSERT_EQ(left.size(), 4U);
    ASSERT_EQ(right.size(), left.size());
    for (std::size_t i = 0; i < left.size(); ++i) {
        EXPECT_EQ(left[i].start.y, right[i].start.y);
        EXPECT_LE(left[i].start.x + left[i].drawing.width, right[i].start.x);
        EXPECT_LE(right[i].start.x + right[i].drawing.width, page.size.width - 30.0F);
    }
}

TEST_F(ShapedSection, KeepsItsDrawingsApart) {
    const auto drawings = select(page, PainterKind::Raster);
    for (std::size_t i = 1; i < drawings.size(); ++i) {
        EXPECT_GE(drawings[i].start.y, drawings[i - 1].start.y + drawings[i - 1].drawing.height);
    }
    for (const PlacedDrawing& placed : drawings) {
        EXPECT_LT(placed.start.y + placed.drawing.height, page.size.height - 30.0F);
        for (const PlacedText& text : page.texts) {
            EXPECT_TRUE(text.start.y <= placed.start.y ||
                        text.start.y > placed.start.y + placed.drawing.height)
                << text.text;
        }
    }
}

TEST_F(ShapedSection, DrawsTheSameInkWithBothPainters) {
    const auto left = select(page, PainterKind::Raster);
    const auto right = select(page, PainterKind::Vector);
    for (std::size_t i = 0; i < left.size(); ++i) {
        const InkCount raster = countInk(left[i]);
        const InkCount vector = countInk(right[i]);
        EXPECT_GT(raster.all, 3000) << i;
        EXPECT_NEAR(raster.all, vector.all, raster.all / 5) << i;
        EXPECT_NEAR(raster.colored, vector.colored, raster.colored / 3) << i;
    }
    EXPECT_GT(countInk(left[1]).colored, 5000); // the emoji
    EXPECT_GT(countInk(left[2]).colored, 500);  // the spans of the paragraph
}

} // namespace

} // namespace Vell::Tool
