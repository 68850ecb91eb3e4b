// Colour glyphs in SVG and PDF documents, and in recordings.

#include "ColorCanvas.h"

#include <cairo-pdf.h>
#include <cairo-svg.h>

#include <ft2build.h>
#include FT_FREETYPE_H

#include <gmock/gmock.h>

#include <cstdlib>
#include <string>

namespace Vell::CairoAdapter::Testing {

namespace {

using FontEngine::ColorLine;
using FontEngine::CompositeMode;
using FontEngine::GradientExtend;
using FontEngine::LinearGradient;
using FontEngine::RadialGradient;
using FontEngine::SweepGradient;
using ::testing::HasSubstr;
using ::testing::Not;

const ColorLine line{{{0, red}, {0.5F, {250, 200, 0, 255}}, {1, blue}}, GradientExtend::Reflect};

cairo_status_t appendBytes(void* text, const unsigned char* bytes, unsigned int count) {
    static_cast<std::string*>(text)->append(reinterpret_cast<const char*>(bytes), count);
    return CAIRO_STATUS_SUCCESS;
}

using MakeSurface = cairo_surface_t* (*)(cairo_write_func_t, void*, double, double);

std::string makeDocument(MakeSurface make, const Paint& paint) {
    std::string text;
    const SurfacePtr surface = adoptSurface(make(appendBytes, &text, ColorCanvas::side, ColorCanvas::side));
    CairoPainter painter(surface.get());
    painter.translate({0, ColorCanvas::side});
    ClipFont().draw(painter, paint);
    finishSurface(surface.get());
    return text;
}

std::string makeSvg(const Paint& paint) {
    return makeDocument(cairo_svg_surface_create_for_stream, paint);
}

std::string makePdf(const Paint& paint) {
    return makeDocument(cairo_pdf_surface_create_for_stream, paint);
}

void fillWithColor(ColorPaintTarget& target) {
    target.pushClip(ClipFont::triangle);
    target.fill(red);
    target.popClip();
}

void fillLinearly(ColorPaintTarget& target) {
    target.pushClip(ClipFont::box);
    target.fill(LinearGradient{line, {10, 0}, {20, 0}, {10, 9}});
    target.popClip();
}

void fillRadially(ColorPaintTarget& target) {
    target.pushClip(ClipFont::triangle);
    target.fill(RadialGradient{line, {10, 10}, 0, {10, 10}, 20});
    target.popClip();
}

void sweep(ColorPaintTarget& target) {
    target.pushClip(PaintBox{5, 5, 45, 45});
    target.fill(SweepGradient{line, {25, 25}, 0.5F, 4.0F});
    target.popClip();
}

void drawPixels(ColorPaintTarget& target) {
    const Bitmap bitmap(FT_PIXEL_MODE_BGRA, 2, 1, 8, {0, 0, 255, 255, 255, 0, 0, 255});
    target.drawImage(bitmap.image, {10, 10, 30, 20});
}

TEST(CairoColorDocument, SvgKeepsGradientsAndOutlinesAsVectors) {
    const std::string svg = makeSvg([](ColorPaintTarget& target) {
        fillWithColor(target);
        fillLinearly(target);
        fillRadially(target);
    });
    EXPECT_THAT(svg, HasSubstr("M 0 50 L 0 10 L 40 50 Z M 0 50")); // a path, not a clip around a fill
    EXPECT_THAT(svg, Not(HasSubstr("<clipPath")));
    EXPECT_THAT(svg, HasSubstr("<linearGradient"));
    EXPECT_THAT(svg, HasSubstr("<radialGradient"));
    EXPECT_THAT(svg, HasSubstr("spreadMethod=\"reflect\""));
    EXPECT_THAT(svg, Not(HasSubstr("<image")));
}

TEST(CairoColorDocument, SvgHoldsTheBitmapsOfAFontAsImages) {
    const std::string svg = makeSvg(drawPixels);
    EXPECT_THAT(svg, HasSubstr("<image"));
    EXPECT_THAT(svg, HasSubstr("width=\"2\" height=\"1\""));
}

TEST(CairoColorDocument, PdfKeepsAllGradientsAsShadings) {
    const std::string pdf = makePdf([](ColorPaintTarget& target) {
        fillLinearly(target);
        fillRadially(target);
        sweep(target);
    });
    EXPECT_THAT(pdf, HasSubstr("/ShadingType 2"));
    EXPECT_THAT(pdf, HasSubstr("/ShadingType 3"));
    EXPECT_THAT(pdf, HasSubstr("/ShadingType 7"));
    EXPECT_THAT(pdf, Not(HasSubstr("/Subtype /Image")));
}

TEST(CairoColorDocument, PdfHoldsTheBitmapsOfAFontAsImages) {
    EXPECT_THAT(makePdf(drawPixels), HasSubstr("/Subtype /Image"));
}

TEST(CairoColorDocument, PdfKeepsBlendModesOfGroups) {
    const std::string pdf = makePdf([](ColorPaintTarget& target) {
        fillWithColor(target);
        target.pushGroup();
        fillRadially(target);
        target.popGroup(CompositeMode::Multiply);
    });
    EXPECT_THAT(pdf, HasSubstr("/BM /Multiply"));
    EXPECT_THAT(pdf, Not(HasSubstr("/Subtype /Image")));
}

/// A group within a group, as compositions of fonts are.
void composeShapes(ColorPaintTarget& target, CompositeMode mode) {
    target.pushGroup();
    fillWithColor(target);
    target.pushGroup();
    fillLinearly(target);
    target.popGroup(mode);
    target.popGroup(CompositeMode::SourceOver);
}

std::size_t count(const std::string& text, const std::string& part) {
    std::size_t found = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
        ++found;
    }
    return found;
}

/// The page around it keeps its vectors, and the image is as small as what the group covers.
TEST(CairoColorDocument, AGroupThatADocumentCannotExpressIsOneSmallImage) {
    const auto paint = [](ColorPaintTarget& target) {
        fillRadially(target);
        composeShapes(target, CompositeMode::SourceIn);
    };
    const std::string svg = makeSvg(paint);
    EXPECT_EQ(count(svg, "<image"), 1U);
    EXPECT_THAT(svg, HasSubstr("<radialGradient"));
    EXPECT_THAT(svg, HasSubstr("width=\"167\" height=\"168\"")); // 40 units at 300 pixels per 72 units
    const std::string pdf = makePdf(paint);
    EXPECT_EQ(count(pdf, "/Subtype /Image"), 2U); // the other is its mask
    EXPECT_THAT(pdf, HasSubstr("/ShadingType 3"));
    EXPECT_THAT(pdf, HasSubstr("/Width 167"));
}

TEST(CairoColorDocument, ASweepInAnSvgDocumentIsAnImageOfItsClip) {
    const std::string svg = makeSvg([](ColorPaintTarget& target) {
        fillLinearly(target);
        sweep(target);
    });
    EXPECT_EQ(count(svg, "<image"), 1U);
    EXPECT_THAT(svg, HasSubstr("width=\"168\" height=\"168\"")); // 40 units at 300 pixels per 72 units
    EXPECT_THAT(svg, HasSubstr("<linearGradient"));
}

TEST(CairoColorDocument, AHugeSweepIsAnImageOfALowerResolution) {
    std::string svg;
    const SurfacePtr surface =
        adoptSurface(cairo_svg_surface_create_for_stream(appendBytes, &svg, 2000, 9000));
    CairoPainter painter(surface.get());
    ClipFont().draw(painter, [](ColorPaintTarget& target) {
        target.pushClip(PaintBox{0, -9000, 1, 0});
        target.fill(SweepGradient{line, {0, 0}, 1, 5});
        target.popClip();
    });
    finishSurface(surface.get());
    EXPECT_THAT(svg, HasSubstr("width=\"5\" height=\"4096\""));
}

/// In SVG, the focal point of a radial gradient must lie within its circle.
TEST(CairoColorDocument, CirclesBesideEachOtherAreAnImageInSvg) {
    for (const bool isBeside : {false, true}) {
        const std::string svg = makeSvg([isBeside](ColorPaintTarget& target) {
            target.pushClip(ClipFont::box);
            target.fill(RadialGradient{line, {15, 25}, 5, {isBeside ? 30.0F : 16.0F, 25}, 10});
            target.popClip();
        });
        EXPECT_EQ(count(svg, "<image"), isBeside ? 1U : 0U);
        EXPECT_EQ(count(svg, "<radialGradient"), isBeside ? 0U : 1U);
    }
}

TEST(CairoColorDocument, PdfKeepsTheColorBeforeASharpChangeAtTheBeginning) {
    const std::string pdf = makePdf([](ColorPaintTarget& target) {
        target.pushClip(ClipFont::box);
        target.fill(LinearGradient{
            {{{0, {51, 0, 0, 255}}, {0, blue}, {1, blue}}, GradientExtend::Pad}, {20, 0}, {30, 0}, {20, 9}});
        target.popClip();
    });
    EXPECT_THAT(pdf, HasSubstr("/C0 [ 0.2 0 0 ]"));
}

/// The mean difference of the channels of two pictures, in levels.
double getMeanDifference(const ColorCanvas& a, const ColorCanvas& b) {
    const std::vector<std::uint32_t> left = a.getPixels();
    const std::vector<std::uint32_t> right = b.getPixels();
    double sum = 0.0;
    for (std::size_t i = 0; i < left.size(); ++i) {
        for (const int shift : {0, 8, 16, 24}) {
            sum += std::abs(static_cast<int>(left[i] >> shift & 0xFF) -
                            static_cast<int>(right[i] >> shift & 0xFF));
        }
    }
    return sum / (4.0 * static_cast<double>(left.size()));
}

ColorCanvas replay(const Paint& paint) {
    const cairo_rectangle_t bounds{0, 0, ColorCanvas::side, ColorCanvas::side};
    const SurfacePtr recording =
        adoptSurface(cairo_recording_surface_create(CAIRO_CONTENT_COLOR_ALPHA, &bounds));
    CairoPainter painter(recording.get());
    painter.translate({0, ColorCanvas::side});
    ClipFont().draw(painter, paint);
    ColorCanvas canvas;
    const ContextPtr context = makeContext(canvas.surface.get());
    cairo_set_source_surface(context.get(), recording.get(), 0, 0);
    cairo_paint(context.get());
    return canvas;
}

TEST(CairoColorDocument, ARecordingReplaysToTheSamePixels) {
    for (void (*const paint)(ColorPaintTarget&) : {fillWithColor, fillLinearly, fillRadially, drawPixels}) {
        const ColorCanvas direct(paint);
        EXPECT_EQ(replay(paint).getPixels(), direct.getPixels());
        EXPECT_FALSE(direct.isEmpty());
    }
}

/// Those put pixels in places that are up to a pixel away.
TEST(CairoColorDocument, ARecordedSweepIsAsExactAsTheMeshesOfCairo) {
    for (const SweepGradient& gradient :
         {SweepGradient{line, {25, 25}, 0.5F, 4.0F}, SweepGradient{line, {25, 25}, 4.0F, 3.0F},
          SweepGradient{line, {-40, 10}, 0.1F, 0.2F}}) {
        const auto paint = [&gradient](ColorPaintTarget& target) {
            target.pushClip(ClipFont::box);
            target.fill(gradient);
            target.popClip();
        };
        EXPECT_LT(getMeanDifference(replay(paint), ColorCanvas(paint)), 3.0);
    }
}

} // namespace

} // namespace Vell::CairoAdapter::Testing
