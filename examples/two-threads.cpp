// Two threads, two factories: each thread draws its half of the picture with fonts and caches of its own, so
// neither ever waits for a lock. One factory may serve both threads as well. Then it renders each glyph once
// for both, under its locks.
//
//     two-threads [FILE.png]

#include <CairoAdapter/CairoAdapter.h>
#include <FontEngine/FontEngine.h>

#include <exception>
#include <future>
#include <iostream>
#include <string>

using namespace Vell;

namespace {

constexpr int columnWidth = 300;
constexpr int height = 400;
constexpr int lines = 16;

/// One thread's work. The picture belongs to the thread until it is handed over.
CairoAdapter::SurfacePtr drawColumn(const std::string& family) {
    const auto factory = FontEngine::FontFactory::create(family);
    auto surface = CairoAdapter::makeImageSurface(columnWidth, height);
    CairoAdapter::CairoPainter painter(surface.get());
    CairoAdapter::CairoGlyphPainter glyphPainter(painter, painter.getColor());
    for (int line = 1; line <= lines; ++line) {
        const auto font = FontEngine::describeFont(family, 8.0F + static_cast<float>(line));
        painter.resetTransform();
        const int baseLine = height * line / (lines + 1);
        painter.translate({10.0F, static_cast<float>(baseLine)});
        FontEngine::drawRasterText(*factory, family + " " + std::to_string(8 + line), font,
                                   {painter, glyphPainter, painter.getColor()});
    }
    return surface;
}

void putColumn(cairo_t* context, cairo_surface_t* column, int x) {
    cairo_set_source_surface(context, column, x, 0.0);
    cairo_paint(context);
}

void drawPicture(const std::string& file) {
    auto left = std::async(std::launch::async, drawColumn, "DejaVu Sans");
    auto right = std::async(std::launch::async, drawColumn, "DejaVu Serif");
    const auto surface = CairoAdapter::makeImageSurface(2 * columnWidth, height);
    const auto context = CairoAdapter::makeContext(surface.get());
    cairo_set_source_rgb(context.get(), 1.0, 1.0, 1.0);
    cairo_paint(context.get());
    putColumn(context.get(), left.get().get(), 0); // get() throws what the thread threw
    putColumn(context.get(), right.get().get(), columnWidth);
    CairoAdapter::throwIfFailed(cairo_surface_write_to_png(surface.get(), file.c_str()));
}

} // namespace

int main(int argc, char** argv) {
    try {
        drawPicture(argc > 1 ? argv[1] : "two-threads.png");
        return 0;
    } catch (const std::exception& error) {
        std::cerr << "two-threads: " << error.what() << '\n';
        return 1;
    }
}
