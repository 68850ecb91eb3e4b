// A string as a picture: the shortest way from words to pixels. The picture is as large as its text.
//
//     string-to-png [TEXT [FILE.png]]

#include <CairoAdapter/CairoAdapter.h>
#include <FontEngine/FontEngine.h>

#include <cmath>
#include <exception>
#include <iostream>
#include <stdexcept>
#include <string>

using namespace Vell;

namespace {

constexpr float margin = 12.0F;
constexpr cinder::ColorAT<unsigned char> ink(20, 60, 160, 255);

void drawPicture(const std::string& text, const std::string& file) {
    // The factory holds all caches: make one, and keep it as long as there is text to draw.
    const auto factory = FontEngine::FontFactory::create("DejaVu Sans");
    const auto font = FontEngine::describeFont("DejaVu Serif", 48.0F, FontEngine::FontStyle{}.setItalic());

    const FontEngine::TextSize size = FontEngine::measureText(*factory, text, font);
    const auto surface =
        CairoAdapter::makeImageSurface(static_cast<int>(std::ceil(size.width + 2.0F * margin)),
                                       static_cast<int>(std::ceil(size.height + 2.0F * margin)));
    CairoAdapter::CairoPainter painter(surface.get());
    CairoAdapter::CairoGlyphPainter glyphPainter(painter, ink);
    cairo_set_source_rgb(painter.getContext(), 1.0, 1.0, 1.0);
    cairo_paint(painter.getContext());

    // Text starts on its base line. It is sharpest where that is a whole pixel.
    painter.translate({margin, std::round(margin + size.ascent)});
    FontEngine::drawRasterText(*factory, text, font, {painter, glyphPainter, ink});

    if (cairo_surface_write_to_png(surface.get(), file.c_str()) != CAIRO_STATUS_SUCCESS) {
        throw std::runtime_error("cannot write " + file);
    }
}

} // namespace

int main(int argc, char** argv) {
    try {
        drawPicture(argc > 1 ? argv[1] : "Hello, text", argc > 2 ? argv[2] : "string-to-png.png");
        return 0;
    } catch (const std::exception& error) {
        std::cerr << "string-to-png: " << error.what() << '\n';
        return 1;
    }
}
