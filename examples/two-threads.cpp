// Two threads, two factories: each thread draws its half of the picture with fonts and caches of its own, and
// no lock is ever waited for. (One factory may serve both as well: then glyphs are rendered once for all,
// under its locks.)
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
    const auto face = makeNNPtr<const FontEngine::Internal::FontFaceInfo>(family, false, false);
    auto surface = CairoAdapter::makeImageSurface(columnWidth, height);
    CairoAdapter::CairoPainter painter(surface.get());
    CairoAdapter::CairoGlyphPainter glyphPainter(painter, painter.getColor());
    for (int line = 1; line <= lines; ++line) {
        const auto info = makeNNPtr<const FontEngine::Internal::FontInfo>(
            face, 8.0F + static_cast<float>(line), Gfx::TextPositionType::Normal);
        const auto style = makeNNPtr<const FontEngine::Internal::ExtFontInfo>(info);
        painter.resetTransform();
        const int baseLine = height * line / (lines + 1);
        painter.translate({10.0F, static_cast<float>(baseLine)});
        FontEngine::RasterTextPainter(painter, glyphPainter, false)
            .drawText(family + " " + std::to_string(8 + line), style, factory->getFont(info),
                      painter.getColor(), 1.0F);
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
    putColumn(context.get(), left.get().get(), 0); // get() throws what the thread has thrown
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
