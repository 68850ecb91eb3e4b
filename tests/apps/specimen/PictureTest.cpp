#include "specimen/Picture.h"

#include "drawing/Color.h"

#include <apps/Pixels.h>

#include <gmock/gmock.h>

#include <stdexcept>

namespace Vell::Tool {

namespace {

using CairoAdapter::CairoPainter;
using namespace Testing;

constexpr std::uint32_t rgb = 0xFFFFFF;

/// Fills the left half of a picture of 4 x 2 units.
void fillLeftHalf(CairoPainter& painter, const Color& color) {
    painter.setColor(color);
    painter.beginPath();
    painter.moveTo({0.0F, 0.0F});
    painter.lineTo({2.0F, 0.0F});
    painter.lineTo({2.0F, 2.0F});
    painter.lineTo({0.0F, 2.0F});
    painter.lineTo({0.0F, 0.0F});
    painter.drawPath(*painter.takePath(), true);
}

TEST(Picture, HasInkInBlackOnWhiteAtThePixelRatio) {
    const Picture picture =
        drawInk(4, 2, 2, [](CairoPainter& painter) { fillLeftHalf(painter, Color(200, 0, 0, 255)); });
    EXPECT_EQ(picture.width, 4);
    EXPECT_EQ(picture.height, 2);
    const auto surface = decodePng(picture.png);
    EXPECT_EQ(cairo_image_surface_get_width(surface.get()), 8);
    EXPECT_EQ(cairo_image_surface_get_height(surface.get()), 4);
    EXPECT_EQ(readPixel(surface.get(), 3, 3) & rgb, 0x000000U);
    EXPECT_EQ(readPixel(surface.get(), 4, 3) & rgb, 0xFFFFFFU);
}

TEST(Picture, RoundsCoverageToSixteenLevels) {
    for (const int alpha : {0, 8, 9, 100, 247, 255}) {
        const Color color(0, 0, 0, static_cast<unsigned char>(alpha));
        const Picture picture =
            drawInk(4, 2, 1, [&](CairoPainter& painter) { fillLeftHalf(painter, color); });
        const std::uint32_t blue = readPixel(decodePng(picture.png).get(), 0, 0) & 0xFFU;
        EXPECT_EQ(blue % 17, 0U);
        EXPECT_NEAR(static_cast<double>(blue), 255.0 - alpha, 8.0);
    }
}

TEST(Picture, KeepsColoursOnWhite) {
    const Picture picture =
        drawInColor(4, 2, 1, [](CairoPainter& painter) { fillLeftHalf(painter, Color(200, 100, 0, 255)); });
    const auto surface = decodePng(picture.png);
    EXPECT_EQ(readPixel(surface.get(), 1, 1) & rgb, 0xC86400U);
    EXPECT_EQ(readPixel(surface.get(), 2, 1) & rgb, 0xFFFFFFU);
}

TEST(Picture, IsAnImageElementWithItsPictureInside) {
    const Picture picture = drawInk(4, 2, 1, [](CairoPainter&) {});
    EXPECT_THAT(makeImage(picture, "ink", "\"<x>"),
                ::testing::StartsWith("<img class=\"ink\" width=\"4\" height=\"2\" "
                                      "alt=\"&quot;&lt;x&gt;\" src=\"data:image/png;base64,"));
    EXPECT_THAT(makeImage(picture, "ink", "", 8),
                ::testing::StartsWith("<img class=\"ink zoomed\" width=\"32\" height=\"16\""));
    EXPECT_EQ(readDataUri(makeDataUri(picture)), picture.png);
}

TEST(Picture, HandsOnWhatTheDrawingThrows) {
    EXPECT_THROW(drawInk(1, 1, 1, [](CairoPainter&) { throw std::runtime_error("no"); }), std::runtime_error);
}

} // namespace

} // namespace Vell::Tool
