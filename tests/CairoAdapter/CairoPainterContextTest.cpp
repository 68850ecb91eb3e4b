#include "Canvas.h"

#include <gtest/gtest.h>

namespace Vell::CairoAdapter::Testing {

namespace {

TEST(CairoPainterContext, OutlivesTheClientsReference) {
    const Canvas canvas(4, 4);
    ContextPtr context = makeContext(canvas.surface.get());
    CairoPainter painter(context.get());
    EXPECT_EQ(painter.getContext(), context.get());
    EXPECT_EQ(cairo_get_reference_count(context.get()), 2U);
    context.reset();
    painter.drawPath(*makeBox(painter, 1, 1, 3, 3), true);
    EXPECT_TRUE(canvas.isBox(1, 1, 3, 3));
}

TEST(CairoPainterContext, IsRestoredAtTheEnd) {
    const Canvas canvas(4, 4);
    const ContextPtr context = makeContext(canvas.surface.get());
    cairo_translate(context.get(), 1, 2);
    cairo_set_line_width(context.get(), 7);
    cairo_matrix_t before;
    cairo_get_matrix(context.get(), &before);
    cairo_pattern_t* source = cairo_get_source(context.get());
    {
        CairoPainter painter(context.get(), {2, 0, 0, 2, 0, 0});
        painter.setColor({255, 0, 0, 255});
        painter.drawPath(*makeBox(painter, 0, 0, 1, 1), true);
        painter.drawPath(*makeBox(painter, 0, 0, 1, 1), false);
    }
    cairo_matrix_t after;
    cairo_get_matrix(context.get(), &after);
    EXPECT_EQ(after.xx, before.xx);
    EXPECT_EQ(after.x0, before.x0);
    EXPECT_EQ(after.y0, before.y0);
    EXPECT_EQ(cairo_get_line_width(context.get()), 7.0);
    EXPECT_EQ(cairo_get_source(context.get()), source);
    EXPECT_EQ(cairo_get_reference_count(context.get()), 1U);
}

} // namespace

} // namespace Vell::CairoAdapter::Testing
