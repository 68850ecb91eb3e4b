//! [hello]
#include <CairoAdapter/CairoAdapter.h>
#include <FontEngine/FontEngine.h>

using namespace Vell;

int main() {
    const auto factory = FontEngine::FontFactory::create("DejaVu Sans");
    const bool isBold = false;
    const bool isItalic = true;
    const auto face = makeNNPtr<FontEngine::Internal::FontFaceInfo>("DejaVu Serif", isBold, isItalic);
    const auto info = makeNNPtr<FontEngine::Internal::FontInfo>(face, 32.0F, Gfx::TextPositionType::Normal);
    const auto style = makeNNPtr<FontEngine::Internal::ExtFontInfo>(info);
    const auto font = factory->getFontMetrics(info);

    const auto surface = CairoAdapter::makeImageSurface(300, 60);
    const cinder::ColorAT<unsigned char> color(20, 60, 160, 255);
    CairoAdapter::CairoPainter painter(surface.get());
    CairoAdapter::CairoGlyphPainter glyphPainter(painter, color);
    cairo_set_source_rgb(painter.getContext(), 1.0, 1.0, 1.0);
    cairo_paint(painter.getContext());

    painter.translate({10.0F, 40.0F}); // the base line of the text
    FontEngine::RasterTextPainter(painter, glyphPainter, false)
        .drawText("Hello, text", style, *font, color, 1.0F);
    return cairo_surface_write_to_png(surface.get(), "hello.png");
}
//! [hello]
