// The snapshots that cairo keeps of an image while glyphs are blended into it without cairo.

#include "CairoSpy.h"
#include "Canvas.h"

#include <ft2build.h>
#include FT_FREETYPE_H

#include <gmock/gmock.h>

namespace Vell::CairoAdapter::Testing {

namespace {

class CairoGlyphSnapshot : public ::testing::Test {
protected:
    void drawDot(float x, float y) {
        glyphPainter.beginGlyphRun();
        glyphPainter.drawGlyph(dot.image, {x, y});
        glyphPainter.endGlyphRun();
    }

    Canvas canvas{4, 4};
    CairoPainter painter{canvas.surface.get()};
    CairoGlyphPainter glyphPainter{painter, black};
    const Bitmap dot{FT_PIXEL_MODE_GRAY, 1, 1, 1, {255}};
};

void paint(cairo_surface_t* from, cairo_surface_t* to) {
    const ContextPtr context = makeContext(to);
    cairo_set_source_surface(context.get(), from, 0, 0);
    cairo_paint(context.get());
}

SurfacePtr makeRecording() {
    return adoptSurface(cairo_recording_surface_create(CAIRO_CONTENT_COLOR_ALPHA, nullptr));
}

TEST_F(CairoGlyphSnapshot, IsNotTakenForAnEmptyPictureAfterItsFirstGlyph) {
    drawDot(1, 2);
    const Canvas copy(4, 4);
    paint(canvas.surface.get(), copy.surface.get());
    EXPECT_TRUE(copy.isBox(1, 2, 2, 3));
}

TEST_F(CairoGlyphSnapshot, OfARecordingKeepsTheEarlierPicture) {
    drawDot(1, 2);
    const SurfacePtr recording = makeRecording();
    paint(canvas.surface.get(), recording.get());
    drawDot(3, 0);
    EXPECT_EQ(canvas.getPixel(3, 0), blackPixel);
    const Canvas replayed(4, 4);
    paint(recording.get(), replayed.surface.get());
    EXPECT_TRUE(replayed.isBox(1, 2, 2, 3));
}

TEST_F(CairoGlyphSnapshot, OfALaterRecordingContainsTheGlyphsOfBothRuns) {
    drawDot(0, 0);
    {
        const SurfacePtr recording = makeRecording();
        paint(canvas.surface.get(), recording.get());
    }
    drawDot(1, 0);
    const SurfacePtr recording = makeRecording();
    paint(canvas.surface.get(), recording.get());
    const Canvas replayed(4, 4);
    paint(recording.get(), replayed.surface.get());
    EXPECT_TRUE(replayed.isBox(0, 0, 2, 1));
}

TEST_F(CairoGlyphSnapshot, InAnotherFormIsDropped) {
    const auto attach = [this] {
        static const unsigned char jpeg[] = {1, 2, 3};
        cairo_surface_set_mime_data(canvas.surface.get(), CAIRO_MIME_TYPE_JPEG, jpeg, sizeof(jpeg), nullptr,
                                    nullptr);
    };
    const auto getAttached = [this] {
        const unsigned char* data = nullptr;
        unsigned long length = 0;
        cairo_surface_get_mime_data(canvas.surface.get(), CAIRO_MIME_TYPE_JPEG, &data, &length);
        return data;
    };
    attach();
    ASSERT_NE(getAttached(), nullptr);
    drawDot(1, 2);
    EXPECT_EQ(getAttached(), nullptr);
}

TEST_F(CairoGlyphSnapshot, OfAGroupReachesThePicture) {
    cairo_t* const context = painter.getContext();
    CairoSpy::takeDrawingCount();
    cairo_push_group(context);
    drawDot(1, 2);
    drawDot(2, 2);
    EXPECT_EQ(CairoSpy::takeDrawingCount(), 0);
    EXPECT_TRUE(canvas.isEmpty());
    const PatternPtr group = adoptPattern(cairo_pop_group(context));
    drawDot(0, 0);
    cairo_set_source(context, group.get());
    cairo_paint(context);
    EXPECT_EQ(canvas.getPixel(0, 0), blackPixel);
    EXPECT_EQ(canvas.getPixel(1, 2), blackPixel);
    EXPECT_EQ(canvas.getPixel(2, 2), blackPixel);
}

TEST_F(CairoGlyphSnapshot, LeavesTheContextAndItsReferencesUnchanged) {
    cairo_t* const context = painter.getContext();
    cairo_translate(context, 1, 2);
    cairo_pattern_t* const source = cairo_get_source(context);
    const unsigned int references = cairo_surface_get_reference_count(canvas.surface.get());
    drawDot(1, 2);
    cairo_matrix_t matrix;
    cairo_get_matrix(context, &matrix);
    EXPECT_EQ(matrix.x0, 1.0);
    EXPECT_EQ(matrix.y0, 2.0);
    EXPECT_EQ(cairo_get_source(context), source);
    EXPECT_EQ(cairo_surface_get_reference_count(canvas.surface.get()), references);
}

} // namespace

} // namespace Vell::CairoAdapter::Testing
