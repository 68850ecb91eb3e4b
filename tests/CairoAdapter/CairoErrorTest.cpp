#include "Canvas.h"

#include <cairo-svg.h>

#include <ft2build.h>
#include FT_FREETYPE_H

#include <gmock/gmock.h>

#include <string>

namespace Vell::CairoAdapter::Testing {

namespace {

template <class Action>
std::string getErrorOf(Action action) {
    try {
        action();
    } catch (const CairoAdapterException& error) {
        return error.what();
    }
    return "no exception";
}

std::string getText(cairo_status_t status) {
    return cairo_status_to_string(status);
}

TEST(CairoError, ThrowsCairosTextForEveryStatusButSuccess) {
    EXPECT_NO_THROW(throwIfFailed(CAIRO_STATUS_SUCCESS));
    for (int status = CAIRO_STATUS_NO_MEMORY; status < CAIRO_STATUS_LAST_STATUS; ++status) {
        const auto failure = static_cast<cairo_status_t>(status);
        EXPECT_EQ(getErrorOf([failure] { throwIfFailed(failure); }), getText(failure));
    }
}

TEST(CairoError, RefusesNullHandles) {
    const std::string text = getText(CAIRO_STATUS_NULL_POINTER);
    EXPECT_EQ(getErrorOf([] { CairoPainter painter(static_cast<cairo_t*>(nullptr)); }), text);
    EXPECT_EQ(getErrorOf([] { CairoPainter painter(static_cast<cairo_surface_t*>(nullptr)); }), text);
    EXPECT_EQ(getErrorOf([] { shareContext(nullptr); }), text);
    EXPECT_EQ(getErrorOf([] { makeContext(nullptr); }), text);
    EXPECT_EQ(getErrorOf([] { adoptSurface(nullptr); }), text);
    EXPECT_EQ(getErrorOf([] { adoptPattern(nullptr); }), text);
    EXPECT_EQ(getErrorOf([] { finishSurface(nullptr); }), text);
}

TEST(CairoError, ThrowsForASizeThatCairoRefuses) {
    EXPECT_EQ(getErrorOf([] { makeImageSurface(-1, 5); }), getText(CAIRO_STATUS_INVALID_SIZE));
    EXPECT_EQ(getErrorOf([] { makeImageSurface(1 << 20, 5); }), getText(CAIRO_STATUS_INVALID_SIZE));
}

TEST(CairoError, APainterRefusesAFinishedSurface) {
    const Canvas canvas(4, 4);
    finishSurface(canvas.surface.get());
    EXPECT_EQ(getErrorOf([&canvas] { CairoPainter painter(canvas.surface.get()); }),
              getText(CAIRO_STATUS_SURFACE_FINISHED));
}

TEST(CairoError, APainterRefusesAContextInAnErrorState) {
    const Canvas canvas(4, 4);
    const ContextPtr context = makeContext(canvas.surface.get());
    cairo_scale(context.get(), 0, 0);
    EXPECT_EQ(getErrorOf([&context] { CairoPainter painter(context.get()); }),
              getText(CAIRO_STATUS_INVALID_MATRIX));
    EXPECT_EQ(cairo_get_reference_count(context.get()), 1U);
}

TEST(CairoError, DrawingOnASurfaceFinishedSinceThrows) {
    const Canvas canvas(4, 4);
    CairoPainter painter(canvas.surface.get());
    const auto path = makeBox(painter, 0, 0, 4, 4);
    finishSurface(canvas.surface.get());
    const std::string text = getText(CAIRO_STATUS_SURFACE_FINISHED);
    EXPECT_EQ(getErrorOf([&] { painter.drawPath(*path, true); }), text);
    EXPECT_EQ(getErrorOf([&] { painter.drawPath(*path, false); }), text);
}

TEST(CairoError, DrawingAGlyphOnASurfaceFinishedSinceThrows) {
    const Canvas canvas(4, 4);
    CairoPainter painter(canvas.surface.get());
    const Bitmap bitmap(FT_PIXEL_MODE_GRAY, 1, 1, 1, {255});
    finishSurface(canvas.surface.get());
    EXPECT_EQ(getErrorOf([&] {
                  CairoGlyphPainter(painter, black).drawGlyph(bitmap.image, {0, 0});
              }),
              getText(CAIRO_STATUS_SURFACE_FINISHED));
}

TEST(CairoError, ABitmapTooLargeForCairoIsAnErrorAndThePainterStillDraws) {
    const Canvas canvas(4, 4);
    CairoPainter painter(canvas.surface.get());
    CairoGlyphPainter glyphPainter(painter, black);
    Bitmap bitmap(FT_PIXEL_MODE_GRAY, 40000, 1, 40000, std::vector<unsigned char>(40000, 255));
    const std::string text = getText(CAIRO_STATUS_INVALID_SIZE);
    EXPECT_EQ(getErrorOf([&] { glyphPainter.drawGlyph(bitmap.image, {0, 0}); }), text);
    bitmap.image.width = 0xFFFFFFFF;
    EXPECT_EQ(getErrorOf([&] { glyphPainter.drawGlyph(bitmap.image, {0, 0}); }), text);
    bitmap.image.width = 2;
    glyphPainter.drawGlyph(bitmap.image, {1, 1});
    EXPECT_TRUE(canvas.isBox(1, 1, 3, 2));
}

TEST(CairoError, AFailedWriteIsReportedWhenTheSurfaceIsFinished) {
    const auto fail = [](void*, const unsigned char*, unsigned int) { return CAIRO_STATUS_WRITE_ERROR; };
    const SurfacePtr surface = adoptSurface(cairo_svg_surface_create_for_stream(fail, nullptr, 10, 10));
    CairoPainter painter(surface.get());
    painter.drawPath(*makeBox(painter, 1, 1, 4, 4), true);
    EXPECT_EQ(getErrorOf([&surface] { finishSurface(surface.get()); }), getText(CAIRO_STATUS_WRITE_ERROR));
}

} // namespace

} // namespace Vell::CairoAdapter::Testing
