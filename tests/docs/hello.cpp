//! [hello]
#include <CairoAdapter/CairoAdapter.h>
#include <FontEngine/FontEngine.h>
using namespace Vell;

int main() {
    const auto factory = FontEngine::FontFactory::create("DejaVu Sans");
    const auto font = FontEngine::describeFont("DejaVu Serif", 32.0F, FontEngine::FontStyle{}.setItalic());
    const cinder::ColorAT<unsigned char> ink(20, 60, 160, 255);

    const auto surface = CairoAdapter::makeImageSurface(300, 60);
    CairoAdapter::CairoPainter painter(surface.get());
    CairoAdapter::CairoGlyphPainter glyphPainter(painter, ink);
    painter.translate({10.0F, 40.0F}); // where the base line starts
    FontEngine::drawRasterText(*factory, "Hello, text", font, {painter, glyphPainter, ink});
    return cairo_surface_write_to_png(surface.get(), "hello.png");
}
//! [hello]
