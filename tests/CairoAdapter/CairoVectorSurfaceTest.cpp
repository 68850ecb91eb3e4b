#include "Canvas.h"

#include <cairo-pdf.h>
#include <cairo-svg.h>

#include <ft2build.h>
#include FT_FREETYPE_H

#include <gmock/gmock.h>

#include <string>

namespace Vell::CairoAdapter::Testing {

namespace {

using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

cairo_status_t append(void* text, const unsigned char* bytes, unsigned int count) {
    static_cast<std::string*>(text)->append(reinterpret_cast<const char*>(bytes), count);
    return CAIRO_STATUS_SUCCESS;
}

/// Returns a drawing of 100 by 50 points as an SVG document.
template <class Draw>
std::string makeSvg(Draw draw) {
    std::string text;
    const SurfacePtr surface = adoptSurface(cairo_svg_surface_create_for_stream(append, &text, 100, 50));
    CairoPainter painter(surface.get());
    draw(painter);
    finishSurface(surface.get());
    return text;
}

TEST(CairoVectorSurface, SvgKeepsFillsAsPathsInDeviceUnits) {
    const std::string svg = makeSvg([](CairoPainter& painter) {
        painter.setColor({255, 0, 0, 255});
        painter.scale({0.01F, 0.01F});
        painter.beginPath();
        painter.moveTo({1000, 1000});
        painter.cubicTo({1000, 2000}, {3000, 2000}, {3000, 1000});
        painter.drawPath(*painter.takePath(), true);
    });
    EXPECT_THAT(svg, HasSubstr("M 10 10 C 10 20 30 20 30 10"));
    EXPECT_THAT(svg, HasSubstr("rgb(100%,0%,0%)"));
    EXPECT_THAT(svg, HasSubstr("fill-rule:nonzero"));
    EXPECT_THAT(svg, Not(HasSubstr("<image")));
}

TEST(CairoVectorSurface, SvgAcceptsGlyphBitmapsAndTransformsThatDrawNothing) {
    const std::string svg = makeSvg([](CairoPainter& painter) {
        CairoGlyphPainter glyphPainter(painter, black, 2);
        const Bitmap gray(FT_PIXEL_MODE_GRAY, 2, 1, 2, {100, 255});
        const Bitmap colored(FT_PIXEL_MODE_LCD, 1, 1, 4, {1, 2, 3, 255});
        glyphPainter.drawGlyph(gray.image, {10.25F, 10});
        glyphPainter.drawGlyph(colored.image, {20, 10});
        painter.scale({0, 0});
        glyphPainter.drawGlyph(gray.image, {10, 10});
    });
    EXPECT_THAT(svg, HasSubstr("<image"));
    EXPECT_THAT(svg, HasSubstr("</svg>"));
}

TEST(CairoVectorSurface, SvgKeepsThePlaceAndColorOfCoverage) {
    const std::string svg = makeSvg([](CairoPainter& painter) {
        CairoGlyphPainter glyphPainter(painter, {255, 0, 0, 128});
        glyphPainter.drawGlyph(Bitmap(FT_PIXEL_MODE_GRAY, 2, 1, 2, {100, 255}).image, {30, 10});
    });
    EXPECT_THAT(svg, HasSubstr("<use xlink:href=\"#image"));
    EXPECT_THAT(svg, HasSubstr("transform=\"matrix(1,0,0,1,30,10)\""));
    EXPECT_THAT(svg, Not(HasSubstr("<mask")));
}

TEST(CairoVectorSurface, RecordingsShowCoverageLikePictures) {
    const auto draw = [](cairo_surface_t* surface) {
        CairoPainter painter(surface);
        CairoGlyphPainter glyphPainter(painter, {250, 100, 0, 128});
        glyphPainter.drawGlyph(Bitmap(FT_PIXEL_MODE_GRAY, 3, 1, 3, {0, 100, 255}).image, {2, 1});
    };
    const Canvas direct(8, 4);
    draw(direct.surface.get());
    const SurfacePtr recording =
        adoptSurface(cairo_recording_surface_create(CAIRO_CONTENT_COLOR_ALPHA, nullptr));
    draw(recording.get());
    const Canvas replayed(8, 4);
    const ContextPtr context = makeContext(replayed.surface.get());
    cairo_set_source_surface(context.get(), recording.get(), 0, 0);
    cairo_paint(context.get());
    EXPECT_EQ(replayed.getPixels(), direct.getPixels());
    EXPECT_EQ(direct.getAlpha(4, 1), 128U);
}

TEST(CairoVectorSurface, PdfAcceptsPathsAndGlyphBitmaps) {
    std::string text;
    const SurfacePtr surface = adoptSurface(cairo_pdf_surface_create_for_stream(append, &text, 100, 50));
    CairoPainter painter(surface.get());
    painter.drawPath(*makeBox(painter, 1, 1, 20, 20), true);
    painter.drawPath(*makeBox(painter, 1, 1, 20, 20), false);
    CairoGlyphPainter glyphPainter(painter, black);
    painter.rotate(0.1F);
    glyphPainter.drawGlyph(Bitmap(FT_PIXEL_MODE_GRAY, 2, 1, 2, {100, 255}).image, {10.25F, 10});
    glyphPainter.drawGlyph(Bitmap(FT_PIXEL_MODE_LCD, 1, 1, 4, {1, 2, 3, 255}).image, {20, 10});
    finishSurface(surface.get());
    EXPECT_THAT(text, StartsWith("%PDF-"));
    EXPECT_THAT(text, HasSubstr("/Subtype /Image"));
    EXPECT_THAT(text, HasSubstr("%%EOF"));
}

TEST(CairoVectorSurface, ARecordingReplaysToTheSamePixels) {
    const SurfacePtr recording =
        adoptSurface(cairo_recording_surface_create(CAIRO_CONTENT_COLOR_ALPHA, nullptr));
    CairoPainter painter(recording.get());
    painter.drawPath(*makeBox(painter, 1, 1, 3, 3), true);
    CairoGlyphPainter(painter, black).drawGlyph(Bitmap(FT_PIXEL_MODE_GRAY, 1, 1, 1, {77}).image, {4, 4});
    const Canvas canvas(6, 6);
    const ContextPtr context = makeContext(canvas.surface.get());
    cairo_set_source_surface(context.get(), recording.get(), 0, 0);
    cairo_paint(context.get());
    EXPECT_EQ(canvas.getPixel(1, 1), blackPixel);
    EXPECT_EQ(canvas.getPixel(3, 3), 0U);
    EXPECT_EQ(canvas.getAlpha(4, 4), 77U);
}

} // namespace

} // namespace Vell::CairoAdapter::Testing
